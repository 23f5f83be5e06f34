// NumberText.h -- numbers as they stand in the names of tools. Stateless, any thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <string>

namespace Varn::ToolLibraries::NumberText {

/// At most \a precision digits behind the point, without zeros at the end: "10.5", "100", "0".
TOOL_LIBRARY_EXPORT std::wstring withPrecision(double value, int precision);

/// A length: at most five digits behind the point; in inches as a fraction where it is one, such as "1-1/2".
TOOL_LIBRARY_EXPORT std::wstring length(double value, bool isInch);

/// A value of an insert: at most two digits behind the point, or a fraction where \a asFraction asks for it.
TOOL_LIBRARY_EXPORT std::wstring ofInsert(double value, bool asFraction);

} // namespace Varn::ToolLibraries::NumberText

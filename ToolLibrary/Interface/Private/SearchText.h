// SearchText.h -- texts in the form in which a search compares them. Stateless, any thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <string>
#include <string_view>

namespace Varn::ToolLibraries::SearchText {

/// Without white space and in lower case, as the C library's wide characters know them; then every digit that stands
/// before "in" goes together with it into one double quote, so that "10 in" and "10IN" are both 1". The digit that is
/// lost that way is lost on both sides of a search.
TOOL_LIBRARY_EXPORT std::wstring normalised(std::wstring_view text);

/// Whether \a needle occurs in \a text, both normalised.
TOOL_LIBRARY_EXPORT bool contains(std::wstring_view text, std::wstring_view needle);

/// Where \a needle occurs in \a text at \a from or behind it, or npos. However long both are, the time is that of
/// reading them.
TOOL_LIBRARY_EXPORT std::size_t find(std::string_view text, std::string_view needle, std::size_t from = 0);

} // namespace Varn::ToolLibraries::SearchText

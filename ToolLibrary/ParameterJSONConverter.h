// ParameterJSONConverter.h -- parameters as the web dialog of tools is told of them. Stateless, any thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <string>

namespace Varn::Tools {

class TOOL_LIBRARY_EXPORT ParameterJSONConverter
{
public:
    /// An expression as a dialog can evaluate it, which cannot ask for the feature flags of the host: each
    /// Util.featureFlagEnabled('x') becomes true or false. A flag that nobody has set is on.
    static std::wstring preprocessExpression(const std::wstring &expression);
};

} // namespace Varn::Tools

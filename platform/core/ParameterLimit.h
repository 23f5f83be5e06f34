// ParameterLimit.h -- the bounds that a constraint sets to a parameter. A value, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <string>
#include <string_view>
#include <vector>

namespace Varn {

/// A comparison of the parameter, alone or times a number on one side, with something on the other: of tool_bodyLength
/// in "tool_type == 'probe' || tool_bodyLength >= tool_fluteLength".
struct VARN_PLATFORM_EXPORT ParameterLimit {
    std::wstring comparison; ///< "tool_bodyLength >= tool_fluteLength"
    std::wstring bound;      ///< "tool_fluteLength"; "(b) / 2" for b <= 2 times the parameter

    /// Those that stand between the && and || of \a constraint, outside of parentheses, in their order. None of a
    /// choice.
    static std::vector<ParameterLimit> of(std::wstring_view parameter, std::wstring_view constraint);
};

} // namespace Varn

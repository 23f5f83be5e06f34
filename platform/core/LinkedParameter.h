// LinkedParameter.h -- speeds and feeds that belong together: how one follows from another, and what an edit by a
// person changes along. Stateless, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/core/ParameterTable.h"

#include <string_view>

namespace Varn {

/// Lengths in one unit throughout, speeds and feedrates in that unit per minute, spindle speeds in turns per minute.
class VARN_PLATFORM_EXPORT LinkedParameter
{
public:
    static double calculateSpindleSpeed(double surfaceSpeed, double diameter); ///< 0 for a diameter of 0
    static double calculateSurfaceSpeed(double spindleSpeed, double diameter);
    static double calculateCuttingFeedrate(double feedPerTooth, double flutes, double spindleSpeed);

    /// 0 without flutes or without spindle speed.
    static double calculateFeedPerTooth(double cuttingFeedrate, double flutes, double spindleSpeed);
    static double calculateFeedPerMinute(double spindleSpeed, double feedPerRevolution);
    static double calculateFeedPerRevolution(double feedrate, double spindleSpeed); ///< 0 without spindle speed

    /// Sets a parameter as a person does, and the parameters that its links name: in the order of the links, each
    /// seeing what those before it changed, those with a condition where it holds. A division by zero gives 0; a link
    /// without a value for another reason changes nothing. What a link has changed starts no links of its own, and is
    /// no own value of the tool (ParameterTable::Parameter::isOwn). Raises as ParameterTable::setParameterExpression.
    static void edit(ParameterTable &table, std::wstring_view name, std::wstring_view expression, Units::Unit unit);
    static void edit(ParameterTable &table, std::wstring_view name, double value, Units::Unit unit);

    /// The links alone, after the parameter was set by other means. Nothing for an unknown name.
    static void applyLinks(ParameterTable &table, std::wstring_view name);
};

} // namespace Varn

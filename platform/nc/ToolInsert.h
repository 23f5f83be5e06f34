// ToolInsert.h -- the codes by which an indexable insert is ordered, from its sizes: ISO 1832 for metric tools, ANSI
// B212.4 for inch ones. Stateless, any thread.
#pragma once

#include "platform/nc/ToolGeometry.h"

#include <string>

namespace Varn {

class VARN_PLATFORM_EXPORT ToolInsert
{
public:
    /// A value of the tables as it is written in a designation; "?" in both units for a value that has none.
    struct Designation {
        std::wstring metric;
        std::wstring inch; ///< "?" too for what exists in millimeters only
    };

    /// The code of the size that is nearest to an inscribed circle of \a value, in mm or, for a tool that is not
    /// \a metric, inches. Sizes that differ by more than \a tolerance are none, and those of other shapes. Only the
    /// code of the tool's unit is there; the other is "?".
    static Designation getClosestSize(double value, double tolerance, ToolGeometry::InsertType type, bool metric);

    /// The same for the thickness, which does not depend on the shape.
    static Designation getClosestThickness(double value, double tolerance, bool metric);

    /// The same for the corner radius. A round insert has the code of its own, whatever its radius.
    static Designation getClosestCornerRadius(double value, double tolerance, ToolGeometry::InsertType type,
                                              bool metric);

    /// The letter of a clearance angle in degrees, such as "C" for 7; "?" for an angle without one.
    static std::wstring getReliefAngleChar(double degrees);
};

} // namespace Varn

// ToolInsert.h -- the codes by which an indexable insert is ordered, from its sizes: ISO 1832 for metric tools, ANSI
// B212.4 for inch ones. Stateless, any thread.
#pragma once

#include "platform/nc/ToolGeometry.h"
#include "platform/utils/LocalizedMessage.h"

#include <string>
#include <vector>

namespace Varn {

class VARN_PLATFORM_EXPORT ToolInsert
{
public:
    /// A value of the tables as it is written in a designation; "?" in both units for a value that has none.
    struct Designation {
        std::wstring metric;
        std::wstring inch; ///< "?" too for what exists in millimeters only
    };

    // What a dialog offers, in its order. An entry whose code or name is "?" is last in its table where there is one:
    // it stands for a value without designation, has the value -1, and is not to be chosen.
    struct CrossSection {
        std::wstring key; ///< a letter
        LocalizedMessage title;
    };
    struct ReliefAngle {
        std::wstring code; ///< a letter
        LocalizedMessage title;
        double angle; ///< degrees
    };
    struct CornerRadius {
        std::wstring metricName;
        std::wstring inchName;
        double metricValue; ///< mm
        double inchValue;
    };
    struct Thickness {
        std::wstring inchCode; ///< empty for what exists in millimeters only
        std::wstring metricCode;
        double value; ///< inches
    };
    struct Size {
        bool metric;
        std::wstring insertTypes; ///< the letters of the shapes that it is for; empty for every shape
        std::wstring name;
        double value; ///< diameter of the inscribed circle, mm or inches
    };
    static const std::vector<CrossSection> &crossSections();
    static const std::vector<wchar_t> &tolerances(); ///< the letters of the tolerance classes
    static const std::vector<ReliefAngle> &reliefAngles();
    static const std::vector<CornerRadius> &cornerRadiuses();
    static const std::vector<Thickness> &thicknesses();
    static const std::vector<Size> &insertSizes();

    /// Makes these tables and registers their titles, which the first question after one of them does as well.
    static void init();

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

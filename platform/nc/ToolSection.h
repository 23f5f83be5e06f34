// ToolSection.h -- outlines of shafts and holders, from the cutting end upwards. Values, any thread.
#pragma once

namespace Varn {

/// One step of an outline: \a offset up the axis, then at \a diameter. An offset of 0 is a step in the diameter.
struct ToolSection {
    double offset = 0;
    double diameter = 0;

    friend bool operator==(const ToolSection &, const ToolSection &) = default;
};

/// The same as a truncated cone, as files hold it.
struct ToolSegment {
    double height = 0;
    double lowerDiameter = 0;
    double upperDiameter = 0;

    friend bool operator==(const ToolSegment &, const ToolSegment &) = default;
};

} // namespace Varn

// ToolSegmentStream.h -- what receives the picture of a tool, part by part. A stream is for one thread at a time; the
// rest are values, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/nc/ToolGeometryTypes.h"
#include "platform/utils/Vector2D.h"

#include <array>
#include <compare>
#include <vector>

namespace Varn {

/// A part of a tool that is drawn, or one of the axes beside it. Ordered, so that it can be a key.
class ToolRenderSegmentType
{
public:
    enum Group : int {
        GROUP_TURNING = 0,
        GROUP_GENERIC = 1,
        GROUP_MILLING = 2,
    };

    /// The parts of a turning tool.
    enum Turning : int {
        TURNING_INSERT = 0,
        TURNING_HOLDER = 1,
        TURNING_TOOL_BLOCK = 2,
    };

    /// The axes of the coordinate system.
    enum Generic : int {
        GENERIC_AXIS_X = 0,
        GENERIC_AXIS_Y = 1,
        GENERIC_AXIS_Z = 2,
    };

    ToolRenderSegmentType(Turning part) : m_group(GROUP_TURNING), m_value(part) {}
    ToolRenderSegmentType(Generic axis) : m_group(GROUP_GENERIC), m_value(axis) {}
    ToolRenderSegmentType(ToolGeometryTypes::ToolSegment part) : m_group(GROUP_MILLING), m_value(part) {}

    Group group() const { return m_group; }
    int value() const { return m_value; } ///< within the group

    friend auto operator<=>(const ToolRenderSegmentType &, const ToolRenderSegmentType &) = default;

private:
    Group m_group;
    int m_value;
};

/// A triangle, whose corners run counter-clockwise as seen from outside. Lengths in the unit of the tool.
struct ToolRenderFacet {
    std::array<Vector3D, 3> corners;
    std::array<Vector3D, 3> normals; ///< at the corners, of length 1

    friend bool operator==(const ToolRenderFacet &, const ToolRenderFacet &) = default;
};

/// A piece of a part; a part may come in several.
struct ToolRenderSegment {
    ToolRenderSegmentType type;
    std::vector<ToolRenderFacet> facets;
};

class VARN_PLATFORM_EXPORT ToolSegmentStream
{
public:
    ToolSegmentStream() = default;
    ToolSegmentStream(const ToolSegmentStream &) = delete;
    ToolSegmentStream &operator=(const ToolSegmentStream &) = delete;
    virtual ~ToolSegmentStream();

    /// Takes the next piece, which is the caller's and may go afterwards.
    virtual void receiveSegment(const ToolRenderSegment &segment) = 0;
};

} // namespace Varn

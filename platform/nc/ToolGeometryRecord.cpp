// The part of ToolGeometry that answers for one tool.
#include "platform/nc/Tool3DGeometry.h"
#include "platform/nc/ToolGeometry.h"
#include "platform/nc/ToolPlaceholder3DGeometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Varn {

namespace {

double radians(double degrees)
{
    return degrees * std::numbers::pi / 180.0;
}

/// By how much a cone of that angle to the axis widens in diameter over a length.
double widening(double degrees, double length)
{
    return 2 * std::tan(radians(degrees)) * length;
}

double finiteOr(double value, double otherwise)
{
    return std::isfinite(value) ? value : otherwise;
}

/// The waist of a dovetail mill: where the upper tangent of its corner radius has come to the end of the flute.
double dovetailWaist(const ToolCuttingGeometry &tool)
{
    const double corner = tool.cornerRadius == 0 ? 0 : tool.cornerRadius * (1 + 1 / std::sin(radians(tool.taperAngle)));
    return tool.diameter - widening(tool.taperAngle, tool.fluteLength - corner) - 2 * tool.cornerRadius;
}

} // namespace

ToolGeometry::ToolGeometry() = default;
ToolGeometry::ToolGeometry(const ToolGeometry &) = default;
ToolGeometry::ToolGeometry(ToolGeometry &&) noexcept = default;
ToolGeometry &ToolGeometry::operator=(const ToolGeometry &) = default;
ToolGeometry &ToolGeometry::operator=(ToolGeometry &&) noexcept = default;
ToolGeometry::~ToolGeometry() = default;

double ToolGeometry::getOverallLength() const
{
    return m_cutting.overallLength.value_or(m_cutting.bodyLength + 3 * m_cutting.shaftDiameter);
}

double ToolGeometry::getShoulderDiameter() const
{
    const ToolCuttingGeometry &tool = m_cutting;
    if (tool.shoulderDiameter)
        return *tool.shoulderDiameter;
    const double shaft = tool.shaftDiameter > 0 ? tool.shaftDiameter : tool.diameter;
    switch (m_type) {
    case TYPE_FLAT_END_MILL:
    case TYPE_BALL_END_MILL:
    case TYPE_BULL_NOSE_END_MILL:
    case TYPE_CORNER_CHAMFER_END_MILL:
        return tool.diameter;
    case TYPE_TAPERED_MILL:
        return tool.diameter + widening(tool.taperAngle, tool.shoulderLength);
    case TYPE_FACE_MILL:
        return tool.diameter + widening(tool.taperAngle, tool.fluteLength);
    case TYPE_RADIUS_MILL:
        return tool.diameter + 2 * tool.cornerRadius;
    case TYPE_DOVETAIL_MILL:
        return finiteOr(dovetailWaist(tool), tool.diameter);
    case TYPE_THREAD_MILL:
        return finiteOr(tool.diameter - tool.threadPitch / std::tan(radians(tool.threadProfileAngle / 2)),
                        tool.diameter);
    case TYPE_CHAMFER_MILL:
    case TYPE_LOLLIPOP_MILL:
        return std::min(tool.diameter, shaft);
    case TYPE_SLOT_MILL:
        return hasShaft() ? m_shaft.back().diameter : shaft;
    default:
        return shaft;
    }
}

double ToolGeometry::getMaximumCutterDiameter() const
{
    const ToolCuttingGeometry &tool = m_cutting;
    if (tool.maximumCuttingDiameter)
        return *tool.maximumCuttingDiameter;
    switch (m_type) {
    case TYPE_FACE_MILL:
    case TYPE_TAPERED_MILL:
        return tool.diameter + widening(tool.taperAngle, tool.fluteLength);
    case TYPE_RADIUS_MILL:
        return tool.diameter + 2 * tool.cornerRadius;
    default:
        return tool.diameter;
    }
}

double ToolGeometry::getUpperRadius() const
{
    return m_cutting.upperRadius.value_or(0);
}

double ToolGeometry::getLowerRadius() const
{
    return m_cutting.lowerRadius.value_or(0);
}

double ToolGeometry::getProfileRadius() const
{
    return m_cutting.profileRadius.value_or(5 * m_cutting.diameter);
}

double ToolGeometry::getAxialDistance() const
{
    if (m_cutting.axialDistance)
        return *m_cutting.axialDistance;
    const double profile = getProfileRadius();
    if (m_type == TYPE_CIRCLE_SEGMENT_LENS)
        return profile;
    const double lower = getLowerRadius();
    const double along = profile - lower;                   // between both centers
    const double across = profile - m_cutting.diameter / 2; // the same, along the radius
    const double square = along * along - across * across;
    return square >= 0 ? lower + std::sqrt(square) : 0;
}

double ToolGeometry::getChamferWidth() const
{
    return m_cutting.chamferWidth.value_or(m_unit == NCUnit::inches ? 0.02 : 0.5);
}

Angle ToolGeometry::getChamferAngle() const
{
    return Angle::fromDegrees(m_cutting.chamferAngle.value_or(45));
}

double ToolGeometry::getAssemblyGaugeLength() const
{
    return m_cutting.assemblyGaugeLength.value_or((hasHolder() ? m_holder.gaugeLength : 0) + m_cutting.bodyLength);
}

void ToolGeometry::setHolder(std::vector<ToolSection> sections)
{
    if (!sections.empty() && !isHolderOnly(m_type))
        m_holder.attached = true;
    m_holder.sections = std::move(sections);
}

void ToolGeometry::removeHolder()
{
    m_holder.attached = false;
    m_holder.guid.clear();
    m_holder.sections.clear();
}

void ToolGeometry::removeToolBlock()
{
    m_toolBlock.attached = false;
    m_toolBlock.guid.clear();
    m_turning.toolBlockTransform.reset();
    m_nestedGeometry.reset();
}

std::shared_ptr<const Tool3DGeometry> ToolGeometry::getLoaded3DGeometry() const
{
    return std::dynamic_pointer_cast<const Tool3DGeometry>(m_geometry);
}

std::shared_ptr<const Tool3DGeometry> ToolGeometry::getLoadedNested3DGeometry() const
{
    return std::dynamic_pointer_cast<const Tool3DGeometry>(m_nestedGeometry);
}

std::shared_ptr<const ToolPlaceholder3DGeometry> ToolGeometry::getPlaceholder3DGeometry() const
{
    return std::dynamic_pointer_cast<const ToolPlaceholder3DGeometry>(m_geometry);
}

std::shared_ptr<const ToolPlaceholder3DGeometry> ToolGeometry::getPlaceholderNested3DGeometry() const
{
    return std::dynamic_pointer_cast<const ToolPlaceholder3DGeometry>(m_nestedGeometry);
}

} // namespace Varn

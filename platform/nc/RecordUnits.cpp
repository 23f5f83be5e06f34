#include "platform/nc/RecordUnits.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace Varn {

namespace {

/// What one inch unit of a quantity is in the metric one.
double metricPerInch(FieldQuantity quantity)
{
    switch (quantity) {
    case FieldQuantity::Plain:
        return 1;
    case FieldQuantity::Length:
    case FieldQuantity::Feed:
        return 25.4;
    case FieldQuantity::Pressure:
        return 0.45359237 * 9.80665 / (0.0254 * 0.0254) / 1e5; // bar per psi
    case FieldQuantity::GasFlow:
        return 28.316846592 / 60; // l/min per cubic foot per hour
    case FieldQuantity::MassFlow:
        return 453.59237 / 16; // g per oz
    }
    return 1;
}

/// The decimal number of 15 digits that is next to \a value, if the error of two roundings explains the difference. So
/// the numbers that people write come back as they were, which one bare product and quotient in eight do not.
double withoutRoundingError(double value)
{
    char text[32];
    const auto written = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific, 14);
    double decimal = value;
    std::from_chars(text, written.ptr, decimal);
    const double above = std::nextafter(std::abs(value), std::numeric_limits<double>::infinity());
    const double lastPlace = above - std::abs(value);
    return std::abs(decimal - value) <= 2 * lastPlace ? decimal : value;
}

double toMetric(double value, double factor)
{
    return withoutRoundingError(value * factor);
}

double toInches(double value, double factor)
{
    const double bare = value / factor;
    const double decimal = withoutRoundingError(bare);
    return toMetric(decimal, factor) == value ? decimal : bare;
}

} // namespace

double inUnit(double value, FieldQuantity quantity, NCUnit::Unit from, NCUnit::Unit to)
{
    if ((from == NCUnit::inches) == (to == NCUnit::inches))
        return value;
    const double factor = metricPerInch(quantity);
    if (factor == 1 || !std::isfinite(value))
        return value;
    return from == NCUnit::inches ? toMetric(value, factor) : toInches(value, factor);
}

std::vector<ToolSection> inUnit(std::vector<ToolSection> sections, NCUnit::Unit from, NCUnit::Unit to)
{
    for (ToolSection &section : sections) {
        section.offset = inUnit(section.offset, FieldQuantity::Length, from, to);
        section.diameter = inUnit(section.diameter, FieldQuantity::Length, from, to);
    }
    return sections;
}

ToolProfile inUnit(ToolProfile profile, NCUnit::Unit from, NCUnit::Unit to)
{
    for (ToolProfileEntity &entity : profile) {
        for (Vector2D *point : {&entity.end, &entity.center}) {
            point->x = inUnit(point->x, FieldQuantity::Length, from, to);
            point->y = inUnit(point->y, FieldQuantity::Length, from, to);
        }
    }
    return profile;
}

Matrix4x4 inUnit(const Matrix4x4 &motion, NCUnit::Unit from, NCUnit::Unit to)
{
    const Vector3D &by = motion.getTranslation();
    return {motion.getRotation(),
            {inUnit(by.x, FieldQuantity::Length, from, to), inUnit(by.y, FieldQuantity::Length, from, to),
             inUnit(by.z, FieldQuantity::Length, from, to)}};
}

} // namespace Varn

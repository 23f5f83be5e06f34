#include "platform/core/Units.h"

#include "platform/tool/Exception.h"

#include <iterator>
#include <string>

namespace Varn {

namespace {

using Quantity = Units::Quantity;
using System = Units::System;
using enum Units::Quantity;
using enum Units::System;

/// A unit is numerator / denominator of the coherent SI unit of its quantity: two whole numbers where there are such,
/// so that a factor between two units is rounded once.
struct UnitRow {
    std::string_view name;
    std::string_view symbol;
    Quantity quantity;
    System system;
    double numerator;
    double denominator;
    bool settled;
};

constexpr double pi = 3.14159265358979323846;

// In the order of Units::Unit. An inch is 25.4 mm, a pound 0.45359237 kg, both exactly (ISO 80000-1). Turns per minute
// and Rockwell C are their own measure.
// clang-format off
constexpr UnitRow rows[] = {
    // name                   symbol         quantity           system  numerator        denominator         settled
    { "unknown",               "",            None,              Both,   1,               1,                  true  },
    { "none",                  "",            None,              Both,   1,               1,                  true  },
    { "degree",                "\u00B0",      Angle,             Both,   pi,              180,                false },
    { "radian",                "rad",         Angle,             Both,   1,               1,                  false },
    { "second",                "s",           Time,              Both,   1,               1,                  false },
    { "minute",                "min",         Time,              Both,   60,              1,                  false },
    { "turn per minute",       "1/min",       RotationalSpeed,   Both,   1,               1,                  false },
    { "millimeter per second", "mm/s",        Velocity,          Metric, 1,               1000,               false },
    { "millimeter per minute", "mm/min",      Velocity,          Metric, 1,               60000,              true  },
    { "inch per second",       "in/s",        Velocity,          Inch,   254,             10000,              false },
    { "inch per minute",       "in/min",      Velocity,          Inch,   254,             600000,             true  },
    { "watt",                  "W",           Power,             Both,   1,               1,                  false },
    { "kilowatt",              "kW",          Power,             Both,   1000,            1,                  false },
    { "meter per second",      "m/s",         Velocity,          Metric, 1,               1,                  false },
    { "meter per minute",      "m/min",       Velocity,          Metric, 1,               60,                 true  },
    { "foot per second",       "ft/s",        Velocity,          Inch,   3048,            10000,              false },
    { "foot per minute",       "ft/min",      Velocity,          Inch,   3048,            600000,             true  },
    { "micrometer",            "\u00B5m",     Length,            Metric, 1,               1000000,            false },
    { "millimeter",            "mm",          Length,            Metric, 1,               1000,               true  },
    { "centimeter",            "cm",          Length,            Metric, 1,               100,                false },
    { "meter",                 "m",           Length,            Metric, 1,               1,                  false },
    { "kilometer",             "km",          Length,            Metric, 1000,            1,                  false },
    { "thousandth of an inch", "thou",        Length,            Inch,   254,             10000000,           false },
    { "inch",                  "in",          Length,            Inch,   254,             10000,              true  },
    { "foot",                  "ft",          Length,            Inch,   3048,            10000,              false },
    { "millimeter per turn",   "mm/rev",      FeedPerRevolution, Metric, 1,               1000,               false },
    { "inch per turn",         "in/rev",      FeedPerRevolution, Inch,   254,             10000,              false },
    { "millimeter per tooth",  "mm/tooth",    FeedPerTooth,      Metric, 1,               1000,               false },
    { "inch per tooth",        "in/tooth",    FeedPerTooth,      Inch,   254,             10000,              false },
    { "pascal",                "Pa",          Pressure,          Metric, 1,               1,                  false },
    { "bar",                   "bar",         Pressure,          Metric, 100000,          1,                  false },
    { "pound per square inch", "psi",         Pressure,          Inch,   6894757293168.0, 1000000000,         false },
    { "liter per minute",      "l/min",       GasFlow,           Metric, 1,               60000,              false },
    { "cubic foot per hour",   "ft\u00B3/h",  GasFlow,           Inch,   28316846592.0,   3600000000000000.0, false },
    { "gram per minute",       "g/min",       MassFlow,          Metric, 1,               60000,              false },
    { "ounce per minute",      "oz/min",      MassFlow,          Inch,   28349523125.0,   60000000000000.0,   false },
    { "ampere",                "A",           Current,           Both,   1,               1,                  false },
    { "volt",                  "V",           Voltage,           Both,   1,               1,                  false },
    { "Rockwell C",            "HRC",         Hardness,          Both,   1,               1,                  false },
};
// clang-format on
static_assert(std::size(rows) == Units::UNIT_ROCKWELL_C - Units::UNIT_UNKNOWN + 1);

const UnitRow &rowOf(int unit)
{
    return rows[Units::isUnit(unit) ? unit - Units::UNIT_UNKNOWN : 0];
}

bool areConvertible(const UnitRow &from, const UnitRow &to)
{
    return from.quantity == to.quantity && from.quantity != Quantity::None;
}

double factorBetween(const UnitRow &from, const UnitRow &to)
{
    return from.numerator * to.denominator / (from.denominator * to.numerator);
}

} // namespace

bool Units::isUnit(int number)
{
    return number >= UNIT_UNKNOWN && number <= UNIT_ROCKWELL_C;
}

std::string_view Units::getName(Unit unit)
{
    return rowOf(unit).name;
}

std::string_view Units::getSymbol(Unit unit)
{
    return rowOf(unit).symbol;
}

Units::Quantity Units::getQuantity(Unit unit)
{
    return rowOf(unit).quantity;
}

Units::System Units::getSystem(Unit unit)
{
    return rowOf(unit).system;
}

bool Units::isSettled(Unit unit)
{
    return rowOf(unit).settled;
}

double Units::getUnitConversionFactor(Unit from, Unit to)
{
    const UnitRow &source = rowOf(from);
    const UnitRow &target = rowOf(to);
    if (!areConvertible(source, target))
        throw ToolLibraries::InvalidInput("No conversion from " + std::string(source.name) + " to " +
                                          std::string(target.name));
    return factorBetween(source, target);
}

double Units::getUnitConversionFactorNoThrow(Unit from, Unit to)
{
    const UnitRow &source = rowOf(from);
    const UnitRow &target = rowOf(to);
    return areConvertible(source, target) ? factorBetween(source, target) : 1;
}

double Units::convert(double value, Unit from, Unit to)
{
    const UnitRow &source = rowOf(from);
    const UnitRow &target = rowOf(to);
    if (from == to || !areConvertible(source, target))
        return value;
    return value * (source.numerator * target.denominator) / (source.denominator * target.numerator);
}

} // namespace Varn

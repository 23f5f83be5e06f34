// Units.h -- the units of the host's quantities, and what leads from one to another. Stateless, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <string_view>

namespace Varn {

class VARN_PLATFORM_EXPORT Units
{
public:
    /// The host's own numbers, which its parameters store. Data that lies in files relies on those of unknown, none,
    /// millimeters, inches, and the velocities per minute; see isSettled().
    enum Unit : int {
        UNIT_UNKNOWN = -2, ///< nothing says which
        UNIT_NONE = -1,    ///< a value that is no measure
        UNIT_DEGREES = 0,
        UNIT_RADIANS = 1,
        UNIT_SECONDS = 2,
        UNIT_MINUTES = 3,
        UNIT_TURNS_PER_MINUTE = 4,
        UNIT_MILLIMETERS_PER_SECOND = 5,
        UNIT_MILLIMETERS_PER_MINUTE = 6,
        UNIT_INCHES_PER_SECOND = 7,
        UNIT_INCHES_PER_MINUTE = 8,
        UNIT_WATTS = 9,
        UNIT_KILOWATTS = 10,
        UNIT_METERS_PER_SECOND = 11,
        UNIT_METERS_PER_MINUTE = 12,
        UNIT_FEET_PER_SECOND = 13,
        UNIT_FEET_PER_MINUTE = 14,
        UNIT_MICROMETERS = 15,
        UNIT_MILLIMETERS = 16,
        UNIT_CENTIMETERS = 17,
        UNIT_METERS = 18,
        UNIT_KILOMETERS = 19,
        UNIT_THOUSANDTHS_OF_AN_INCH = 20,
        UNIT_INCHES = 21,
        UNIT_FEET = 22,
        UNIT_MILLIMETERS_PER_TURN = 23,
        UNIT_INCHES_PER_TURN = 24,
        UNIT_MILLIMETERS_PER_TOOTH = 25,
        UNIT_INCHES_PER_TOOTH = 26,
        UNIT_PASCALS = 27,
        UNIT_BARS = 28,
        UNIT_POUNDS_PER_SQUARE_INCH = 29,
        UNIT_LITERS_PER_MINUTE = 30,
        UNIT_CUBIC_FEET_PER_HOUR = 31,
        UNIT_GRAMS_PER_MINUTE = 32,
        UNIT_OUNCES_PER_MINUTE = 33,
        UNIT_AMPERES = 34,
        UNIT_VOLTS = 35,
        UNIT_ROCKWELL_C = 36,
    };

    /// What a unit measures. Units convert into each other only within one of these.
    enum class Quantity {
        None,
        Angle,
        Time,
        RotationalSpeed,
        Velocity,
        Power,
        Length,
        FeedPerRevolution,
        FeedPerTooth,
        Pressure,
        GasFlow,
        MassFlow,
        Current,
        Voltage,
        Hardness,
    };

    /// The system that a unit is of: that of the millimeter, that of the inch, or both for seconds, watts, degrees...
    enum class System { Both, Metric, Inch };

    /// Whether the number is one of the units above. What is none counts as unknown in all that follows.
    static bool isUnit(int number);

    /// "millimeter per minute". English, for logs and documents.
    static std::string_view getName(Unit unit);

    /// "mm/min" in UTF-8, the same in every language; empty for none and unknown.
    static std::string_view getSymbol(Unit unit);

    static Quantity getQuantity(Unit unit);
    static System getSystem(Unit unit);

    /// Whether stored data relies on the number of the unit.
    static bool isSettled(Unit unit);

    /// What a value in \a from is multiplied by to be one in \a to, correctly rounded: 25.4 from inches to millimeters.
    /// Throws ToolLibraries::InvalidInput unless both measure one quantity.
    static double getUnitConversionFactor(Unit from, Unit to);

    /// The same; 1 where there is no conversion: between different quantities, and for none and unknown.
    static double getUnitConversionFactorNoThrow(Unit from, Unit to);

    /// The value in another unit of its quantity; as it is where there is no conversion. Nearer than by the factor,
    /// which is rounded: 25.4 millimeters are 1 inch.
    static double convert(double value, Unit from, Unit to);
};

} // namespace Varn

// ParameterTable.h -- the quantities that a parameter of a tool can be of. Stateless, any thread.
#pragma once

namespace Varn {

class ParameterTable
{
public:
    /// The quantity of a parameter, which decides its units and its rounding. Not its value type.
    enum Kind : int {
        KIND_NONE = 0, ///< texts, booleans, enumerations, counts and plain numbers
        KIND_LENGTH = 1,
        KIND_ANGLE = 2,
        KIND_FEED_PER_REVOLUTION = 3,
        KIND_FEED_PER_TOOTH = 4,
        KIND_TIME = 5,
        KIND_VELOCITY = 6,         ///< feedrates and surface speeds: two decimals in millimeters, three in inches
        KIND_ROTATIONAL_SPEED = 7, ///< turns per minute: whole numbers
        KIND_POWER = 8,
        KIND_PRESSURE = 9,
        KIND_GAS_FLOW = 10,
        KIND_MASS_FLOW = 11,
        KIND_CURRENT = 12,
        KIND_VOLTAGE = 13,
        KIND_HARDNESS = 14,
    };
};

} // namespace Varn

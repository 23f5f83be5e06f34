// Units.h -- the units of the host's quantities. Values only.
#pragma once

namespace Varn {

class Units
{
public:
    /// The host's own numbers, which its parameters store.
    enum Unit : int {
        UNIT_UNKNOWN = -2, ///< nothing says which
        UNIT_NONE = -1,    ///< a value that is no measure
        UNIT_MILLIMETERS = 16,
        UNIT_INCHES = 21,
    };
};

} // namespace Varn

// Strategy.h -- the sets of parameters that a tool can have. Stateless, any thread.
#pragma once

#include <array>

namespace Varn {

class Strategy
{
public:
    /// The values are those that documents store.
    enum Type : int {
        INVALID = -1,     ///< no set
        UNSPECIFIED = 97, ///< a tool without type: holds what the rotating tools hold
        ROTATING = 198,   ///< mills, drills, probes, holders and tool blocks
        SHARED = 207,     ///< what every tool has; each of the others holds it too
        TURNING = 212,
        JET = 213,
        DEPOSITING = 214,
    };

    /// All of them, those with the most tools first.
    static constexpr std::array<Type, 6> getToolStrategies()
    {
        return {ROTATING, TURNING, JET, DEPOSITING, SHARED, UNSPECIFIED};
    }
};

} // namespace Varn

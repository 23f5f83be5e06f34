// ParameterStrategies.h -- sets of strategies, as the definitions of the parameters hold them. Stateless, any thread.
#pragma once

#include "platform/core/Strategy.h"

namespace Varn::ParameterStrategies {

inline constexpr unsigned every = (1u << Strategy::getToolStrategies().size()) - 1;

/// The bit of a strategy in a set, 0 for what is none.
constexpr unsigned bitOf(int strategy)
{
    unsigned bit = 1;
    for (const Strategy::Type known : Strategy::getToolStrategies()) {
        if (known == strategy)
            return bit;
        bit <<= 1;
    }
    return 0;
}

} // namespace Varn::ParameterStrategies

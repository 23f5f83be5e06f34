// ParameterEnum.h -- one of the values that a parameter of the enumeration type can have. A value, any thread.
#pragma once

#include "platform/core/MaybeLocalizedMessage.h"
#include "platform/core/ParameterExpression.h"
#include "platform/core/Strategy.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Varn {

struct ParameterEnum {
    std::wstring expression;                    ///< whose value the entry is: its key in single quotes, "'carbide'"
    std::wstring key;                           ///< "carbide"
    int value = 0;                              ///< the number of the value in the host's own enumerations
    MaybeLocalizedMessage description;          ///< what people read: "Carbide"
    std::wstring enableExpression;              ///< where the entry is offered; empty for always
    std::optional<std::vector<int>> strategies; ///< where it is valid at all; nothing for everywhere

    bool isValidFor(Strategy::Type strategy) const
    {
        return !strategies || std::find(strategies->begin(), strategies->end(), strategy) != strategies->end();
    }
};

/// An entry that is made of a table of the host rather than of the definitions.
struct ParameterEnumDynamicDescription : ParameterEnum {
    ParameterEnumDynamicDescription(std::wstring_view ownKey, MaybeLocalizedMessage ownDescription)
    {
        expression = ParameterExpression::quoted(ownKey);
        key = ownKey;
        description = std::move(ownDescription);
    }
};

} // namespace Varn

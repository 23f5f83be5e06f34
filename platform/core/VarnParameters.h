// VarnParameters.h -- what is known of the parameters of tools. Stateless, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/core/ParameterTable.h"
#include "platform/core/Strategy.h"

#include <string_view>

namespace Varn {

class VARN_PLATFORM_EXPORT VarnParameters
{
public:
    /// The quantity of the parameter \a name ("tool_diameter") in the tables of \a strategy. KIND_NONE for an unknown
    /// name, one that the strategy does not hold, and Strategy::INVALID. Allocates nothing, except that the first call
    /// of the process reads the definitions.
    static ParameterTable::Kind getParameterKind(std::wstring_view name, Strategy::Type strategy);
};

} // namespace Varn

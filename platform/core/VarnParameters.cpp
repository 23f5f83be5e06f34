#include "platform/core/VarnParameters.h"

#include "platform/core/ParameterKinds.h"

namespace Varn {

ParameterTable::Kind VarnParameters::getParameterKind(std::wstring_view name, Strategy::Type strategy)
{
    return ParameterKinds::get().find(name, strategy);
}

} // namespace Varn

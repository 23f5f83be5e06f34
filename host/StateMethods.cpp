#include "host/RpcMethods.h"

#include "platform/utils/LocaleRegistry.h"

namespace Quillon {

using Varn::LocaleRegistry;

void addStateMethods(JsonRpcDispatcher &dispatcher)
{
    dispatcher.add("locale.set", {{{"country", RpcKind::Text}}, [](const RpcParameters &parameters) {
                                      LocaleRegistry::setCountry(parameters.text("country"));
                                      return std::string("null");
                                  }});
}

} // namespace Quillon

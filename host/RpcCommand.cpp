#include "host/Commands.h"
#include "host/Engine.h"
#include "host/RpcMethods.h"

#include <string>

namespace Quillon {

void runRpc(const Streams &streams)
{
    const Engine engine;
    JsonRpcDispatcher dispatcher;
    addReadingMethods(dispatcher, engine.interface());
    addConversionMethods(dispatcher);
    addStateMethods(dispatcher);
    for (std::string line; std::getline(streams.in, line);)
        if (const std::optional<std::string> answer = dispatcher.handle(line))
            streams.out << *answer << '\n' << std::flush;
}

} // namespace Quillon

// RpcLineFuzz.cpp -- any bytes as a message to the JSON-RPC host. The answer, when there is one, is one line of JSON.
#include "host/RpcMethods.h"
#include "platform/tool/JsonText.h"

#include <cstdint>
#include <cstdlib>

using Quillon::JsonRpcDispatcher;

namespace {

const JsonRpcDispatcher &dispatcher()
{
    static const JsonRpcDispatcher instance = [] {
        JsonRpcDispatcher made;
        Quillon::addConversionMethods(made);
        return made;
    }();
    return instance;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto answer = dispatcher().handle({reinterpret_cast<const char *>(data), size});
    if (answer && (answer->find('\n') != std::string::npos || !Varn::ToolLibraries::JsonText::parse(*answer)))
        std::abort();
    return 0;
}

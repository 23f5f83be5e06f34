// JsonRpcDispatcher.h -- JSON-RPC 2.0: takes a message, calls the method that it names, gives the answer. Knows nothing
// of where messages come from. One message at a time.
#pragma once

#include "host/RpcParameters.h"

#include <rapidjson/document.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Quillon {

/// One method: its parameters, and what it does with them. The result is JSON text.
struct RpcMethod {
    std::vector<RpcParameter> parameters;
    std::function<std::string(const RpcParameters &)> call;
};

class JsonRpcDispatcher
{
public:
    // The codes of the standard, and the one of an operation that failed.
    static constexpr int parseError = -32700;
    static constexpr int invalidRequest = -32600;
    static constexpr int methodNotFound = -32601;
    static constexpr int invalidParameters = -32602;
    static constexpr int operationFailed = -32000;

    void add(std::string name, RpcMethod method);

    /// The answer to one message (a request or a batch), without a newline; nothing when it asks for none. Whatever
    /// \a message is and whatever a method throws, the answer says so.
    std::optional<std::string> handle(std::string_view message) const;

private:
    std::optional<std::string> handleRequest(const rapidjson::Value &request) const;
    std::optional<std::string> handleBatch(const rapidjson::Value &batch) const;
    std::string call(const RpcMethod &method, const rapidjson::Value *parameters, const std::string &id) const;

    std::map<std::string, RpcMethod, std::less<>> m_methods;
};

} // namespace Quillon

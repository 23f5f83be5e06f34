#include "host/JsonRpcDispatcher.h"

#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonConvert.h"
#include "platform/ox/HubLibrariesCache.h"
#include "platform/tool/Exception.h"
#include "platform/tool/JsonSax.h"
#include "platform/tool/JsonText.h"
#include "platform/utils/Messages.h"

#include <boost/core/demangle.hpp>

#include <typeinfo>
#include <utility>

namespace Quillon {

using Varn::Messages;
using Varn::ToolLibraries::RapidJsonConvert;
namespace JsonText = Varn::ToolLibraries::JsonText;

namespace {

std::string quoted(std::string_view text)
{
    std::string json;
    JsonText::printString(text, json);
    return json;
}

std::string resultAnswer(const std::string &id, const std::string &result)
{
    return R"({"jsonrpc":"2.0","result":)" + result + R"(,"id":)" + id + "}";
}

std::string errorAnswer(const std::string &id, int code, std::string_view message, const std::string &data = {})
{
    return R"({"jsonrpc":"2.0","error":{"code":)" + std::to_string(code) + R"(,"message":)" + quoted(message) +
           (data.empty() ? std::string() : R"(,"data":)" + data) + R"(},"id":)" + id + "}";
}

/// The name of the class, without its namespace.
std::string className(const std::exception &failure)
{
    const std::string full = boost::core::demangle(typeid(failure).name());
    const std::size_t colon = full.rfind(':');
    return colon == std::string::npos ? full : full.substr(colon + 1);
}

std::optional<std::wstring> translatedText(const std::exception &failure)
{
    if (const auto *ours = dynamic_cast<const Varn::ToolLibraries::Exception *>(&failure))
        return ours->translatedWhat();
    if (const auto *hub = dynamic_cast<const Ox::HubLibrariesCache::Exception *>(&failure))
        return hub->translatedWhat();
    return std::nullopt;
}

/// What the caller learns of a failure beside its text.
std::string failureData(const std::exception &failure, const RpcParameters &parameters)
{
    const std::optional<std::wstring> translated = translatedText(failure);
    std::string data = R"({"type":)" + quoted(className(failure)) + R"(,"translatedText":)" +
                       (translated ? quoted(Messages::fromWideUnicodeToUTF8(*translated)) : "null");
    if (parameters.has("locator"))
        data += R"(,"locator":)" + parameters.locator("locator").toJson();
    return data + "}";
}

const rapidjson::Value *memberOf(const rapidjson::Value &object, const char *name)
{
    const auto found = object.FindMember(name);
    return found == object.MemberEnd() ? nullptr : &found->value;
}

bool isRequest(const rapidjson::Value &request)
{
    if (!request.IsObject())
        return false;
    const rapidjson::Value *version = memberOf(request, "jsonrpc");
    const rapidjson::Value *method = memberOf(request, "method");
    const rapidjson::Value *id = memberOf(request, "id");
    const rapidjson::Value *parameters = memberOf(request, "params");
    return version && version->IsString() && *version == "2.0" && method && method->IsString() &&
           (!id || id->IsString() || id->IsNumber() || id->IsNull()) &&
           (!parameters || parameters->IsObject() || parameters->IsArray());
}

bool parse(std::string_view message, rapidjson::Document &document)
{
    bool parsed = false;
    auto generator = [&](rapidjson::Document &target) {
        parsed = Varn::ToolLibraries::JsonSax::read(message, target, nullptr);
        return parsed;
    };
    document.Populate(generator);
    return parsed;
}

} // namespace

void JsonRpcDispatcher::add(std::string name, RpcMethod method)
{
    m_methods.insert_or_assign(std::move(name), std::move(method));
}

std::optional<std::string> JsonRpcDispatcher::handle(std::string_view message) const
{
    rapidjson::Document document;
    if (!parse(message, document))
        return errorAnswer("null", parseError, "Parse error");
    return document.IsArray() ? handleBatch(document) : handleRequest(document);
}

std::optional<std::string> JsonRpcDispatcher::handleBatch(const rapidjson::Value &batch) const
{
    if (batch.Empty())
        return errorAnswer("null", invalidRequest, "Invalid Request");
    std::string answers;
    for (const rapidjson::Value &request : batch.GetArray())
        if (const std::optional<std::string> answer = handleRequest(request))
            answers += (answers.empty() ? "[" : ",") + *answer;
    if (answers.empty())
        return std::nullopt;
    return answers + "]";
}

std::optional<std::string> JsonRpcDispatcher::handleRequest(const rapidjson::Value &request) const
{
    if (!isRequest(request))
        return errorAnswer("null", invalidRequest, "Invalid Request");
    const rapidjson::Value *id = memberOf(request, "id");
    const std::string idText = id ? RapidJsonConvert::toString(*id) : "null";
    const rapidjson::Value &name = *memberOf(request, "method");
    const auto method = m_methods.find(std::string_view(name.GetString(), name.GetStringLength()));
    std::string answer = method == m_methods.end()
                             ? errorAnswer(idText, methodNotFound, "Method not found: " + std::string(name.GetString()))
                             : call(method->second, memberOf(request, "params"), idText);
    if (!id)
        return std::nullopt;
    return answer;
}

std::string JsonRpcDispatcher::call(const RpcMethod &method, const rapidjson::Value *parameters,
                                    const std::string &id) const
{
    if (parameters && parameters->IsArray())
        return errorAnswer(id, invalidParameters, "Parameters are given by name");
    try {
        const RpcParameters checked(method.parameters, parameters);
        try {
            return resultAnswer(id, method.call(checked));
        } catch (const RpcParameterError &) {
            throw;
        } catch (const std::exception &failure) {
            return errorAnswer(id, operationFailed, failure.what(), failureData(failure, checked));
        }
    } catch (const RpcParameterError &error) {
        return errorAnswer(id, invalidParameters, error.what());
    }
}

} // namespace Quillon

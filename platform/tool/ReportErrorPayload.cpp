#include "platform/tool/ReportErrorPayload.h"

#include "platform/tool/Exception.h"
#include "platform/tool/JsonText.h"

#include <utility>

namespace Varn::ToolLibraries {

namespace {

std::string textMember(const Json::Value &object, const char *name)
{
    const Json::Value &value = object[name];
    if (value.isNull())
        return {};
    if (!value.isString())
        throw InvalidInput(std::string("Error report: \"") + name + "\" is not a text");
    return value.asString();
}

} // namespace

ReportErrorPayload::ReportErrorPayload(std::string callStackInfo, std::string details, std::string userDescription)
    : m_callStackInfo(std::move(callStackInfo)),
      m_details(std::move(details)),
      m_userDescription(std::move(userDescription))
{
}

std::string ReportErrorPayload::toJson() const
{
    std::string json = "{\"callStackInfo\":";
    JsonText::printString(m_callStackInfo, json);
    json += ",\"details\":";
    JsonText::printString(m_details, json);
    json += ",\"userDescription\":";
    JsonText::printString(m_userDescription, json);
    json += '}';
    return json;
}

ReportErrorPayload ReportErrorPayload::fromJson(const std::string &json)
{
    std::string error;
    const std::optional<Json::Value> value = JsonText::parse(json, &error);
    if (!value)
        throw InvalidInput("Error report is not valid JSON: " + error);
    if (!value->isObject())
        throw InvalidInput("Error report is not a JSON object");
    return ReportErrorPayload(textMember(*value, "callStackInfo"), textMember(*value, "details"),
                              textMember(*value, "userDescription"));
}

} // namespace Varn::ToolLibraries

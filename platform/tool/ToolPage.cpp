#include "platform/tool/ToolPage.h"

#include "platform/tool/Exception.h"
#include "platform/tool/JsonText.h"

#include <utility>

namespace Varn::ToolLibraries {

ToolPage::ToolPage(Json::Value &&value) : m_value(std::move(value)) {}

std::unique_ptr<ToolPage> ToolPage::make(Json::Value &&tools, Json::Value &&toolTypes, int limit, int offset,
                                         int matched, int total, int version)
{
    Json::Value page(Json::objectValue);
    page["data"] = std::move(tools);
    page["toolTypes"] = std::move(toolTypes);
    page["limit"] = limit;
    page["offset"] = offset;
    page["matched"] = matched;
    page["total"] = total;
    page["version"] = version;
    return std::unique_ptr<ToolPage>(new ToolPage(std::move(page)));
}

std::unique_ptr<ToolPage> ToolPage::fromJson(const std::string &json)
{
    std::string error;
    std::optional<Json::Value> page = JsonText::parse(json, &error);
    if (!page)
        throw InvalidInput("Tool page is not valid JSON: " + error);
    if (!page->isObject())
        throw InvalidInput("Tool page is not a JSON object");
    if (!page->isMember("data") || !((*page)["data"].isNull() || (*page)["data"].isObject()))
        throw InvalidInput("Tool page has no object \"data\"");
    return std::unique_ptr<ToolPage>(new ToolPage(std::move(*page)));
}

std::string ToolPage::toJson() const
{
    return JsonText::print(m_value);
}

} // namespace Varn::ToolLibraries

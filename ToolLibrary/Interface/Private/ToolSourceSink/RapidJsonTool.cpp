#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidJsonTool.h"

#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonConvert.h"
#include "platform/tool/ToolParameterJSONKeyPaths.h"

using Varn::ToolLibraries::RapidJsonConvert;
using Varn::ToolLibraries::ToolId;
using Varn::ToolLibraries::ToolParameterJSONKeyPaths;

namespace {

const rapidjson::Value *member(const rapidjson::Value &value, std::string_view name)
{
    if (!value.IsObject())
        return nullptr;
    const rapidjson::Value key(rapidjson::StringRef(name.data(), static_cast<rapidjson::SizeType>(name.size())));
    const auto found = value.FindMember(key);
    return found == value.MemberEnd() ? nullptr : &found->value;
}

} // namespace

RapidJsonTool::RapidJsonTool(const rapidjson::Value *value)
    : Tool(Unparsed{RapidJsonConvert::toString(*value)}), m_value(value)
{
}

RapidJsonTool::~RapidJsonTool() = default;

std::unique_ptr<RapidJsonTool> RapidJsonTool::view(const rapidjson::Value *value)
{
    return std::unique_ptr<RapidJsonTool>(new RapidJsonTool(View{}, value));
}

std::string RapidJsonTool::toJson() const
{
    return m_isView ? RapidJsonConvert::toString(*m_value) : Tool::toJson();
}

std::optional<RapidJsonTool::Property> RapidJsonTool::getRawPropertyImpl(std::string_view key) const
{
    const auto *paths = ToolParameterJSONKeyPaths::find(key);
    if (!paths)
        return std::nullopt;
    for (const auto &path : *paths) {
        const rapidjson::Value *value = m_value;
        for (auto name = path.begin(); value && name != path.end(); ++name)
            value = member(*value, *name);
        if (!value)
            continue;
        if (auto property = plainValue(*value))
            return property;
    }
    return std::nullopt;
}

std::optional<RapidJsonTool::Property> RapidJsonTool::plainValue(const rapidjson::Value &value)
{
    if (value.IsString())
        return std::string(value.GetString(), value.GetStringLength());
    if (value.IsInt())
        return value.GetInt();
    if (value.IsDouble())
        return foldedNumber(value.GetDouble());
    if (value.IsBool())
        return value.GetBool();
    return std::nullopt; // null, a container, or an integer beyond 32 bits
}

Json::Value RapidJsonTool::makeToolValue() const
{
    return m_isView ? RapidJsonConvert::toJsonValue(*m_value) : Tool::makeToolValue();
}

ToolId RapidJsonTool::findToolId() const
{
    // Of several members the last counts, as in the parsed value.
    for (auto at = m_value->MemberEnd(); at != m_value->MemberBegin();) {
        --at;
        if (at->name == "guid")
            return ToolId(at->value.IsString() ? std::string(at->value.GetString(), at->value.GetStringLength())
                                               : std::string());
    }
    return ToolId(std::string());
}

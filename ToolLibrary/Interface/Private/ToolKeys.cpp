#include "ToolLibrary/Interface/Private/ToolKeys.h"

#include "platform/utils/Messages.h"

#include <json/reader.h>

#include <memory>

namespace Varn::ToolLibraries::ToolKeys {

std::optional<std::string_view> propertyOf(std::string_view key)
{
    if (!key.starts_with(propertyPrefix))
        return std::nullopt;
    return key.substr(propertyPrefix.size());
}

std::optional<double> numberOf(const IndexedTool &tool, std::string_view key)
{
    const std::optional<std::string_view> property = propertyOf(key);
    return property ? IndexedToolLookup::getRoundedDouble(tool, *property) : std::nullopt;
}

std::optional<std::string> textOf(const IndexedTool &tool, std::string_view key)
{
    if (key == name)
        return Messages::fromWideUnicodeToUTF8(tool.getName());
    const std::optional<std::string_view> property = propertyOf(key);
    return property ? tool.getTool().getString(*property) : std::nullopt;
}

Json::Value parseState(std::string_view json)
{
    Json::CharReaderBuilder builder;
    builder["collectComments"] = true;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    Json::Value value;
    try {
        reader->parse(json.data(), json.data() + json.size(), &value, nullptr);
    } catch (const Json::Exception &) {
        return {}; // nested too deep
    }
    return value;
}

} // namespace Varn::ToolLibraries::ToolKeys

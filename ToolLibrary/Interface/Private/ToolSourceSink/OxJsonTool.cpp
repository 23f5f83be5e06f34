#include "ToolLibrary/Interface/Private/ToolSourceSink/OxJsonTool.h"

#include "platform/ox/JSONRef.h"
#include "platform/tool/ToolParameterJSONKeyPaths.h"

#include <utility>

using Ox::JSONRef;
using Varn::ToolLibraries::ToolParameterJSONKeyPaths;

namespace {

std::optional<JSONRef> walk(const Ox::JSONNode &node, const std::list<std::string_view> &path)
{
    if (path.empty())
        return std::nullopt;
    std::optional<JSONRef> value = node.get(path.front());
    for (auto name = std::next(path.begin()); value && name != path.end(); ++name) {
        if (!value->exists(*name))
            return std::nullopt;
        value = (*value)[*name];
    }
    return value;
}

std::optional<OxJsonTool::Property> propertyOf(const JSONRef &value)
{
    if (value.isString())
        return value.asHString();
    if (value.isInt())
        return value.getInt().value_or(0);
    if (value.isDouble())
        return value.getDouble().value_or(0);
    if (value.isBool())
        return value.asBool();
    return std::nullopt;
}

} // namespace

OxJsonTool::OxJsonTool(std::shared_ptr<const Ox::JSONNode> node) : Tool(node->stringify()), m_node(std::move(node)) {}

OxJsonTool::~OxJsonTool() = default;

std::optional<OxJsonTool::Property> OxJsonTool::getRawPropertyImpl(std::string_view key) const
{
    const auto *paths = ToolParameterJSONKeyPaths::find(key);
    if (!paths)
        return std::nullopt;
    for (const auto &path : *paths) {
        const std::optional<JSONRef> value = walk(*m_node, path);
        if (!value)
            continue;
        if (auto property = propertyOf(*value))
            return property;
    }
    return std::nullopt;
}

#include "host/Commands.h"
#include "host/Engine.h"
#include "host/ProgressLine.h"
#include "host/TextTable.h"
#include "host/ToolKeyTable.h"
#include "host/ToolQuery.h"

#include "ToolLibrary/Interface/Private/IndexedTool.h"
#include "platform/core/ToolSpecification.h"
#include "platform/tool/Exception.h"
#include "platform/tool/JsonText.h"
#include "platform/tool/Tool.h"
#include "platform/tool/ToolPageRequest.h"
#include "platform/utils/Messages.h"

#include <QLocale>

namespace Quillon {

using namespace Varn::ToolLibraries;
using Varn::Messages;
using Varn::ToolSpecification;

namespace {

constexpr std::size_t idLength = 8; // enough to tell the tools of a library apart

std::string number(std::optional<double> value)
{
    return value ? QString::number(*value, 'g', 6).toStdString() : std::string();
}

/// The type's name in lists; a keyword that is none as it is.
std::string typeName(const Tool &tool)
{
    const std::string keyword = tool.getType();
    const auto type = ToolSpecification::getToolTypeByString(keyword);
    return type ? ToolSpecification::getToolTypeAsLocalizedString(*type).asString() : keyword;
}

std::string unitName(const Tool &tool)
{
    const std::string unit = tool.getString("tool_unit").value_or("");
    return unit == "inches" ? "in" : unit == "millimeters" ? "mm" : unit;
}

std::string text(const IndexedTool &tool, const ToolKeyRow &key)
{
    switch (key.kind) {
    case ToolKeyKind::Name:
        return Messages::fromWideUnicodeToUTF8(tool.getName());
    case ToolKeyKind::Type:
        return typeName(tool.getTool());
    case ToolKeyKind::Unit:
        return unitName(tool.getTool());
    case ToolKeyKind::Text:
        return tool.getTool().getString(key.property).value_or("");
    default:
        return number(tool.getTool().getDouble(key.property));
    }
}

using Keys = std::vector<const ToolKeyRow *>;

std::vector<std::string> rowOf(const IndexedTool &tool, const Keys &keys)
{
    std::vector<std::string> cells{tool.getTool().getToolId().guid().asString().substr(0, idLength)};
    for (const ToolKeyRow *key : keys)
        cells.push_back(text(tool, *key));
    return cells;
}

TextTable tableOf(const Keys &keys)
{
    std::vector<TextColumn> columns{{"Id"}};
    for (const ToolKeyRow *key : keys) {
        const bool isNumber =
            key->kind == ToolKeyKind::Number || key->kind == ToolKeyKind::Angle || key->kind == ToolKeyKind::Length;
        columns.push_back({std::string(key->title), isNumber, !isNumber && key->kind != ToolKeyKind::Unit});
    }
    return TextTable(columns);
}

/// The page of the one library that was asked for.
const Json::Value &toolsOf(const ToolPage &page, const ToolLibraryLocator &library)
{
    const Json::Value &tools = page.value()["data"][Messages::fromWideUnicodeToUTF8(library.url())];
    if (!tools.isArray()) // the payload of a failure
        throw Exception(tools["error"]["developerText"].asString());
    return tools;
}

std::string counted(int count)
{
    return QLocale(QLocale::English).toString(count).toStdString();
}

/// "Tools 1 to 20 of 246", and from how many they were chosen.
std::string countLine(const Json::Value &page, std::size_t shown, int offset)
{
    const int matched = page["matched"].asInt();
    const int total = page["total"].asInt();
    const std::string window =
        shown == 0 ? "No tools of "
                   : "Tools " + counted(offset + 1) + " to " + counted(offset + static_cast<int>(shown)) + " of ";
    return window + counted(matched) + (matched < total ? " that match, from " + counted(total) : "");
}

void printTable(const Json::Value &tools, const Json::Value &page, const Keys &keys, int offset, const Streams &streams)
{
    TextTable table = tableOf(keys);
    for (const Json::Value &tool : tools)
        table.addRow(rowOf(IndexedTool(Tool::fromJson(JsonText::print(tool))), keys));
    if (!tools.empty())
        streams.out << table.print(streams.width) << '\n';
    streams.out << countLine(page, tools.size(), offset) << '\n';
}

} // namespace

void runTools(const ToolsOptions &options, const Streams &streams)
{
    const ToolLibraryLocator library = libraryNamed(options.library);
    const std::string filters = filtersState(options.filters);
    const std::string sorts = sortState(options.sorts);
    Keys keys;
    for (const std::string &column : options.columns)
        keys.push_back(&toolKey(column));
    const Engine engine(treeFor(library));
    const std::unique_ptr<ToolPage> page = [&] {
        const ProgressLine progress(streams, engine);
        return engine->fetchTools(
            ToolPageRequest({library}, filters, options.limit, options.offset, options.search, sorts));
    }();
    const Json::Value &tools = toolsOf(*page, library);
    if (options.json)
        streams.out << page->toJson() << '\n';
    else
        printTable(tools, page->value(), keys, options.offset, streams);
}

} // namespace Quillon

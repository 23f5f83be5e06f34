#include "host/Commands.h"
#include "host/Engine.h"
#include "host/ProgressLine.h"
#include "host/TextTable.h"

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

const std::vector<TextColumn> toolColumns{
    {"Id"},
    {"No", true},
    {"Description", false, true},
    {"Type", false, true},
    {"Diameter", true},
    {"Unit"},
    {"Vendor", false, true},
    {"Product id", false, true},
};

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

std::vector<std::string> rowOf(const Tool &tool)
{
    const std::optional<int> toolNumber = tool.getToolNumber();
    return {tool.getToolId().guid().asString().substr(0, idLength),
            toolNumber ? std::to_string(*toolNumber) : "",
            tool.getDescription(),
            typeName(tool),
            number(tool.getDouble("tool_diameter")),
            unitName(tool),
            tool.getString("tool_vendor").value_or(""),
            tool.getString("tool_productId").value_or("")};
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

void printTable(const Json::Value &tools, int offset, int matched, const Streams &streams)
{
    TextTable table(toolColumns);
    for (const Json::Value &tool : tools)
        table.addRow(rowOf(Tool(JsonText::print(tool))));
    if (!tools.empty())
        streams.out << table.print(streams.width) << '\n';
    if (tools.empty())
        streams.out << "No tools of " << counted(matched) << '\n';
    else
        streams.out << "Tools " << counted(offset + 1) << " to " << counted(offset + static_cast<int>(tools.size()))
                    << " of " << counted(matched) << '\n';
}

} // namespace

void runTools(const ToolsOptions &options, const Streams &streams)
{
    const ToolLibraryLocator library = libraryNamed(options.library);
    const Engine engine(treeFor(library));
    const std::unique_ptr<ToolPage> page = [&] {
        const ProgressLine progress(streams, engine);
        return engine->fetchTools(ToolPageRequest({library}, "[]", options.limit, options.offset, "", "[]"));
    }();
    const Json::Value &tools = toolsOf(*page, library);
    if (options.json)
        streams.out << page->toJson() << '\n';
    else
        printTable(tools, options.offset, page->value()["matched"].asInt(), streams);
}

} // namespace Quillon

#include "host/Commands.h"
#include "host/Engine.h"
#include "host/ProgressLine.h"
#include "host/TextTable.h"

#include "ToolLibrary/Interface/Private/ToolSourceSink/DiskLibrary.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSource.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSourceLoader.h"
#include "platform/tool/Exception.h"
#include "platform/tool/JsonText.h"
#include "platform/utils/Abortable.h"

#include <QString>

#include <algorithm>

namespace Quillon {

using namespace Varn::ToolLibraries;

namespace {

std::shared_ptr<ToolSource> sourceOf(const ToolLibraryLocator &library, const Engine &engine)
{
    const Varn::Tools::ToolLibraryUrl url(library);
    if (engine.cache().hasLibrary(url))
        return engine.cache().getLoadedLibrary(url);
    return ToolSourceLoader::load(library, Varn::AbortableImpl());
}

/// The one tool whose GUID begins with \a beginning, in either case.
ToolId toolNamed(const ToolSource &source, const std::string &beginning)
{
    const QString wanted = QString::fromStdString(beginning);
    std::vector<ToolId> found;
    for (const ToolId &id : source.getToolIds())
        if (QString::fromStdString(id.guid().asString()).startsWith(wanted, Qt::CaseInsensitive))
            found.push_back(id);
    if (beginning.empty() || found.empty())
        throw ToolMissing("Tool not found: " + beginning);
    if (found.size() > 1)
        throw InvalidInput("Several tools begin with " + beginning + ": " + found[0].guid().asString() + ", " +
                           found[1].guid().asString() + (found.size() > 2 ? ", ..." : ""));
    return found.front();
}

std::string valueText(const Json::Value &value)
{
    return value.isString() ? value.asString() : JsonText::print(value);
}

/// A row for each plain value, named by the way to it. What is nested deeper than a tool reaches is printed as JSON.
void addRows(const Json::Value &value, const std::string &name, int depth, TextTable &table)
{
    constexpr int deepest = 8;
    const bool isContainer = (value.isObject() || value.isArray()) && !value.empty();
    if (!isContainer || depth == deepest) {
        table.addRow({name, valueText(value)});
        return;
    }
    if (value.isArray()) {
        for (Json::ArrayIndex i = 0; i < value.size(); ++i)
            addRows(value[i], name + '[' + std::to_string(i + 1) + ']', depth + 1, table);
        return;
    }
    for (auto member = value.begin(); member != value.end(); ++member)
        addRows(*member, name.empty() ? member.name() : name + '.' + member.name(), depth + 1, table);
}

} // namespace

void runShow(const ShowOptions &options, const Streams &streams)
{
    const ToolLibraryLocator library = libraryNamed(options.library);
    const Engine engine(treeFor(library));
    const std::shared_ptr<ToolSource> source = [&] {
        const ProgressLine progress(streams, engine);
        return sourceOf(library, engine);
    }();
    const std::optional<std::shared_ptr<Tool>> tool = source->get(toolNamed(*source, options.tool));
    if (!tool) // the hub has lost it
        throw ToolMissing("Tool not found: " + options.tool);
    if (options.json) {
        streams.out << (*tool)->toJson() << '\n';
        return;
    }
    TextTable table({{"Member"}, {"Value", false, true}});
    addRows((*tool)->getToolValue(), "", 0, table);
    streams.out << table.print(streams.width);
}

} // namespace Quillon

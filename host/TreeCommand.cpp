#include "host/Commands.h"
#include "host/Engine.h"
#include "host/ProgressLine.h"
#include "host/TextTable.h"

#include "ToolLibrary/IO/ToolLibraryUrl.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/DiskLibrary.h"
#include "platform/utils/Messages.h"

#include <map>
#include <utility>

namespace Quillon {

using namespace Varn::ToolLibraries;
using Varn::Messages;
using Varn::Tools::ToolLibraryUrl;

namespace {

struct Contents {
    std::string tools; ///< how many
    std::string failure;
};
using ContentsByUrl = std::map<std::wstring, Contents>;

Contents contentsOf(const ToolLibraryUrl &url, const Engine &engine)
{
    try {
        return {std::to_string(engine.cache().getLoadedLibrary(url)->numberOfTools()), ""};
    } catch (const std::exception &failure) {
        return {"failed", failure.what()};
    }
}

/// Waits for every library of the tree that lies on this machine or on the hub.
ContentsByUrl readContents(const LibraryMetadataTree &tree, const Engine &engine, const Streams &streams)
{
    const ProgressLine progress(streams, engine);
    ContentsByUrl contents;
    for (const ToolLibraryLocator &locator : tree.traverseUrls())
        if (engine.cache().hasLibrary(ToolLibraryUrl(locator)))
            contents.emplace(locator.url(), contentsOf(ToolLibraryUrl(locator), engine));
    return contents;
}

class TreePrinter
{
public:
    TreePrinter(TextTable &table, const ContentsByUrl *contents) : m_table(table), m_contents(contents) {}

    /// Rows of the node and of all below it, however deep.
    void addRows(const LibraryMetadataTree::Node &root)
    {
        std::vector<std::pair<const LibraryMetadataTree::Node *, std::size_t>> open{{&root, 0}};
        while (!open.empty()) {
            const auto [node, depth] = open.back();
            open.pop_back();
            addRow(*node->metadata(), depth);
            for (auto child = node->children().rbegin(); child != node->children().rend(); ++child)
                open.emplace_back(&*child, depth + 1);
        }
    }

private:
    void addRow(const LibraryMetadata &metadata, std::size_t depth)
    {
        std::vector<std::string> cells{std::string(2 * depth, ' ') + Messages::fromWideUnicodeToUTF8(metadata.name()),
                                       Messages::fromWideUnicodeToUTF8(metadata.url().url()),
                                       metadata.readOnly().value_or(false) ? "read-only" : ""};
        if (m_contents) {
            const auto contents = m_contents->find(metadata.url().url());
            cells.insert(cells.begin() + 1, contents == m_contents->end() ? "" : contents->second.tools);
        }
        m_table.addRow(std::move(cells));
    }

    TextTable &m_table;
    const ContentsByUrl *m_contents;
};

void printTable(const LibraryMetadataTree &tree, const ContentsByUrl *contents, const Streams &streams)
{
    std::vector<TextColumn> columns{{"Name"}, {"URL", false, true}, {"Access"}};
    if (contents)
        columns.insert(columns.begin() + 1, TextColumn{"Tools", true});
    TextTable table(columns);
    TreePrinter printer(table, contents);
    for (const LibraryMetadataTree::Node *root : tree.traverseRootNodes())
        printer.addRows(*root);
    streams.out << table.print(streams.width);
}

} // namespace

void runTree(const TreeOptions &options, const Streams &streams)
{
    const Engine engine;
    const LibraryMetadataTree tree = engine->toolLibrariesIndex();
    if (options.json) {
        streams.out << tree.toJson() << '\n';
        return;
    }
    if (!options.tools) {
        printTable(tree, nullptr, streams);
        return;
    }
    const ContentsByUrl contents = readContents(tree, engine, streams);
    printTable(tree, &contents, streams);
    for (const auto &[url, library] : contents)
        if (!library.failure.empty())
            streams.err << oneLine(Messages::fromWideUnicodeToUTF8(url) + ": " + library.failure) << '\n';
}

} // namespace Quillon

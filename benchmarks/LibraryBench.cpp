// LibraryBench.cpp -- what it costs to read a library, to keep it, and to look into it.
#include "Bare.h"
#include "Libraries.h"
#include "Measure.h"
#include "SqliteTables.h"
#include "Trees.h"

#include "ToolLibrary/Interface/Private/IndexedToolLookup.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSourceLoader.h"
#include "platform/tool/ToolId.h"
#include "platform/tool/ToolLibraryInterface.h"
#include "platform/utils/Abortable.h"

#include <random>

namespace Bench {

using namespace Varn::ToolLibraries;

namespace {

std::shared_ptr<ToolSource> load(std::size_t tools)
{
    return ToolSourceLoader::load(ToolLibraryLocator(libraryUrl(tools)), Varn::AbortableImpl());
}

void benchLoad(std::size_t tools, const std::string &bytes)
{
    const Work bare = [&] {
        rapidjson::Document document;
        parseBare(bytes, document);
    };
    printRatio("load", tools, measurePair([tools] { load(tools); }, bare), "parse in memory", 1.3);
}

void benchMemory(std::size_t tools, double fileSize)
{
    const double before = residentMemory();
    std::shared_ptr<ToolSource> source;
    const double peak = peakMemoryOf([&] { source = load(tools); });
    const double kept = residentMemory() - before;
    printMemory("memory kept", tools, kept, fileSize, 1.15);
    printMemory("peak of a load", tools, peak, fileSize, 1.3);
}

void benchFind(std::size_t tools, const rapidjson::Document &document, ToolLibraryInterface &engine)
{
    constexpr int lookups = 1000;
    const ToolLibraryLocator library(libraryUrl(tools));
    const ToolTable table(document);
    std::vector<std::string> guids = guidsOf(document);
    std::ranges::shuffle(guids, std::mt19937(7));
    const auto each = [&](const auto &find) {
        return [&guids, find] {
            for (std::size_t i = 0; i < lookups; ++i)
                find(guids[i % guids.size()]);
        };
    };
    const Pair times = measurePair(each([&](const std::string &guid) {
                                       if (!engine.findToolById(library, ToolId(guid)))
                                           throw std::runtime_error("A tool is missing");
                                   }),
                                   each([&](const std::string &guid) { table.find(guid); }));
    printRatio("findToolById, 1000 times", tools, times, "SQLite by key", 3);
}

void benchTools(std::size_t tools, const rapidjson::Document &document, const ToolLibraryInterface &engine)
{
    const ToolLibraryLocator library(libraryUrl(tools));
    const Pair times = measurePair([&] { engine.getToolsFromLibrary(library); }, [&] { printBare(document); });
    printRatio("getToolsFromLibrary", tools, times, "compact writer", 2);
}

/// Type, unit, diameter, number and description of every tool, against the same members by name.
void benchProperties(std::size_t tools, const rapidjson::Document &document)
{
    const std::shared_ptr<ToolSource> source = load(tools);
    double sum = 0;
    const Work ours = [&] {
        const auto end = source->end();
        for (auto at = source->begin(); !(at == end); ++at) {
            const IndexedTool tool(*at);
            sum += static_cast<double>(tool.getType()) + static_cast<double>(tool.getUnit());
            sum += static_cast<double>(tool.getTool().getDescription().size());
            sum += IndexedToolLookup::getRoundedDouble(tool, "tool_diameter.normValue").value_or(0);
            sum += tool.getTool().getToolNumber().value_or(0);
        }
    };
    const Work bare = [&] {
        const auto length = [](const rapidjson::Value &value) { return value.GetStringLength(); };
        for (const auto &tool : document["data"].GetArray()) {
            sum += length(tool["type"]) + length(tool["unit"]) + length(tool["description"]);
            const auto geometry = tool.FindMember("geometry");
            if (geometry != tool.MemberEnd()) {
                const auto diameter = geometry->value.FindMember("DC");
                sum += diameter != geometry->value.MemberEnd() ? diameter->value.GetDouble() : 0;
            }
            const auto post = tool.FindMember("post-process");
            sum += post != tool.MemberEnd() ? post->value["number"].GetDouble() : 0;
        }
    };
    printRatio("five typed properties of every tool", tools, measurePair(ours, bare), "members by name", 10);
    if (sum == 0)
        throw std::runtime_error("Nothing was read");
}

} // namespace

void benchLibrary(std::size_t tools)
{
    const std::string bytes = libraryBytes(tools);
    benchLoad(tools, bytes);
    benchMemory(tools, static_cast<double>(bytes.size()));
    rapidjson::Document document;
    parseBare(bytes, document);
    const std::shared_ptr<ToolLibraryInterface> engine = engineOf({libraryUrl(tools)});
    benchFind(tools, document, *engine);
    benchTools(tools, document, *engine);
    benchProperties(tools, document);
}

} // namespace Bench

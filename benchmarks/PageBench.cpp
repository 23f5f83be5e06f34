// PageBench.cpp -- what a page of tools costs: the first after a load, and those that people turn to after it.
#include "Bare.h"
#include "Libraries.h"
#include "Measure.h"
#include "SqliteTables.h"
#include "Trees.h"

#include "ToolLibrary/Interface/Private/IndexedToolLookup.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonConvert.h"
#include "ToolLibrary/Interface/Private/SearchText.h"
#include "ToolLibrary/Interface/Private/ToolPageAggregator.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidJsonTool.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidjsonToolLibrary.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSourceLoader.h"
#include "platform/utils/Abortable.h"

#include <algorithm>
#include <cstdio>
#include <limits>

namespace Bench {

using namespace Varn::ToolLibraries;

namespace {

constexpr int pageSize = 50;
constexpr const char *byName = R"([{"key":"components.info.name","order":"asc"}])";
constexpr const char *byDiameter = R"([{"key":"components.indexedProperties.tool_diameter.normValue","order":"asc"}])";
constexpr const char *middling =
    R"([{"key":"components.indexedProperties.tool_diameter.normValue","values":[{"lowerBound":4,"upperBound":14}]}])";

/// The same tools as plain columns.
struct Columns {
    std::vector<std::string> searchTexts;
    std::vector<std::wstring> names;
    std::vector<double> diameters;
};

Columns columnsOf(const rapidjson::Document &document)
{
    Columns columns;
    for (const auto &value : document["data"].GetArray()) {
        const IndexedTool tool(std::make_unique<RapidJsonTool>(&value));
        std::wstring text;
        for (const std::wstring &part : {tool.getComment(), tool.getProductId(), tool.getVendor(), tool.getName()})
            text += SearchText::normalised(part) + L'\n';
        columns.searchTexts.push_back(QString::fromStdWString(text).toStdString());
        columns.names.push_back(tool.getName());
        columns.diameters.push_back(IndexedToolLookup::getRoundedDouble(tool, "tool_diameter.normValue").value_or(-1));
    }
    return columns;
}

/// The rows of a page out of plain columns, with a partial sort.
template <typename Passes, typename Before>
std::vector<std::uint32_t> pageOf(std::size_t size, std::size_t offset, const Passes &passes, const Before &before)
{
    std::vector<std::uint32_t> rows;
    for (std::uint32_t row = 0; row < size; ++row)
        if (passes(row))
            rows.push_back(row);
    const std::size_t end = std::min(rows.size(), offset + pageSize);
    std::partial_sort(rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(end), rows.end(), before);
    rows.resize(end);
    return rows;
}

PageTable tableOf(const Columns &columns, const rapidjson::Document &document)
{
    std::vector<PageTable::Tool> tools;
    for (std::size_t row = 0; row < columns.names.size(); ++row) {
        const rapidjson::Value &tool = document["data"][static_cast<rapidjson::SizeType>(row)];
        tools.push_back({QString::fromStdWString(columns.names[row]).toStdString(), columns.searchTexts[row],
                         tool["type"].GetString(), columns.diameters[row], RapidJsonConvert::toString(tool)});
    }
    return PageTable(tools);
}

struct Page {
    const char *name;
    const char *filters;
    std::string search;
    const char *sort;
    int offset;
    Work bare;
    Work sqlite;
};

std::vector<Page> pagesOf(const Columns &columns, const PageTable &table, std::size_t &sink)
{
    using Order = PageTable::Order;
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const std::size_t size = columns.names.size();
    const int middle = static_cast<int>(size / 2);
    const auto ask = [&](std::string text, double lower, double upper, Order order, int offset) {
        return [=, &table, &sink] { sink += table.page(text, lower, upper, order, pageSize, offset).tools.size(); };
    };
    const auto keep = [&sink](const std::vector<std::uint32_t> &rows) { sink += rows.size(); };
    const auto everything = [](std::uint32_t) { return true; };
    const auto byDiameterOf = [&columns](auto a, auto b) { return columns.diameters[a] < columns.diameters[b]; };
    const auto byNameOf = [&columns](auto a, auto b) { return columns.names[a] < columns.names[b]; };
    const std::string rare = columns.searchTexts[size / 2].substr(0, columns.searchTexts[size / 2].find('\n', 1));
    return {
        {"search, filter and sort", middling, "mill", byDiameter, 0,
         [=, &columns] {
             keep(pageOf(
                 size, 0,
                 [&](auto row) {
                     return columns.diameters[row] >= 4 && columns.diameters[row] <= 14 &&
                            columns.searchTexts[row].find("mill") != std::string::npos;
                 },
                 byDiameterOf));
         },
         ask("mill", 4, 14, Order::Diameter, 0)},
        {"browse by name", "", "", byName, 0, [=] { keep(pageOf(size, 0, everything, byNameOf)); },
         ask("", -infinity, infinity, Order::Name, 0)},
        {"rare text", "", rare, byName, 0,
         [=, &columns] {
             keep(pageOf(
                 size, 0, [&](auto row) { return columns.searchTexts[row].find(rare) != std::string::npos; },
                 byNameOf));
         },
         ask(rare, -infinity, infinity, Order::Name, 0)},
        {"deep page by diameter", "", "", byDiameter, middle,
         [=] { keep(pageOf(size, size / 2, everything, byDiameterOf)); },
         ask("", -infinity, infinity, Order::Diameter, middle)},
    };
}

ToolPageRequest requestOf(const Page &page, const ToolLibraryLocator &library)
{
    return ToolPageRequest({library}, page.filters, pageSize, page.offset, page.search, page.sort);
}

void benchFirstPage(std::size_t tools, const std::string &bytes)
{
    const ToolLibraryLocator library(libraryUrl(tools));
    const ToolPageRequest request({library}, "", pageSize, 0, "", byName);
    Pair best{1e9, 1e9};
    const int rounds = tools < 10'000 ? 20 : 3;
    for (int round = 0; round < rounds; ++round) {
        const std::shared_ptr<ToolSource> source = ToolSourceLoader::load(library, Varn::AbortableImpl());
        const ToolPageAggregator aggregator([&](const auto &) { return source; });
        best.ours = std::min(best.ours, secondsOf([&] { aggregator.fetchPage(request); }));
        best.bare = std::min(best.bare, secondsOf([&] {
                                 rapidjson::Document document;
                                 parseBare(bytes, document);
                             }));
    }
    printRatio("first page after a load", tools, best, "parse in memory", 0.5);
}

/// A page behind a write of one tool, against the same page without one.
void benchPageAfterAnEdit(std::size_t tools)
{
    const ToolLibraryLocator locator(libraryUrl(tools));
    const std::shared_ptr<ToolSource> source = ToolSourceLoader::load(locator, Varn::AbortableImpl());
    auto &library = dynamic_cast<RapidjsonToolLibrary &>(*source);
    const ToolPageAggregator aggregator([&](const auto &) { return source; });
    const ToolPageRequest page({locator}, middling, pageSize, 0, "mill", byName);
    const Work fetch = [&] { aggregator.fetchPage(page); };
    fetch();
    const double kept = static_cast<double>(library.useColumns()->memory());
    const std::vector<ToolId> ids = source->getToolIds();
    Pair best{1e9, 1e9};
    for (std::size_t round = 0; round < 50; ++round) {
        const ToolId &id = ids[round * 7919 % ids.size()];
        const std::string other = (*source->get(ids[round * 104729 % ids.size()]))->toJson();
        best.bare = std::min(best.bare, secondsOf(fetch));
        if (!library.updateTool(id, Tool(other)))
            throw std::runtime_error("The tool could not be written");
        best.ours = std::min(best.ours, secondsOf(fetch));
    }
    printRatio("warm page after one edit", tools, best, "the page without it", 1.2);
    printMemory("memory kept for pages", tools, kept, static_cast<double>(libraryBytes(tools).size()), 0.15);
    std::printf("%-44s %8zu %9.0f bytes for each tool\n", "", tools, kept / static_cast<double>(tools));
}

/// A whole library as text.
void benchWholeLibrary(std::size_t tools, const rapidjson::Document &document, ToolLibraryInterface &engine)
{
    const ToolLibraryLocator library(libraryUrl(tools));
    const Work bare = [&] {
        rapidjson::StringBuffer text;
        printIndentedBare(document, text);
    };
    printRatio("library()", tools, measurePair([&] { engine.library(library); }, bare, 1), "indenting writer", 2);
}

} // namespace

void benchPages(std::size_t tools)
{
    const std::string bytes = libraryBytes(tools);
    benchFirstPage(tools, bytes);
    rapidjson::Document document;
    parseBare(bytes, document);
    const Columns columns = columnsOf(document);
    const std::shared_ptr<ToolLibraryInterface> engine = engineOf({libraryUrl(tools)});
    const ToolLibraryLocator library(libraryUrl(tools));
    benchWholeLibrary(tools, document, *engine);
    const PageTable table = tableOf(columns, document);
    std::size_t sink = 0;
    const Work json = [&] {
        for (rapidjson::SizeType row = 0; row < pageSize; ++row)
            sink += RapidJsonConvert::toJsonValue(document["data"][row]).size();
    };
    for (const Page &page : pagesOf(columns, table, sink)) {
        const Work ours = [&] { engine->fetchTools(requestOf(page, library)); };
        ours(); // warm
        printRatio(page.name, tools, measurePair(ours, page.bare, 1), "plain columns, no JSON", 2);
        printRatio(page.name, tools, measurePair(ours, page.sqlite, 1), "SQLite, columns indexed", 1);
        if (tools <= 1000)
            printRatio(page.name, tools, measurePair(ours, json, 1), "50 tools to Json::Value", 2);
    }
    if (sink == 0)
        throw std::runtime_error("Nothing was found");
    benchPageAfterAnEdit(tools);
}

} // namespace Bench

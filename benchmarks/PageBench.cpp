// PageBench.cpp -- what a page of tools costs: the first after a load, and those that people turn to after it.
#include "Bare.h"
#include "Libraries.h"
#include "Measure.h"
#include "Trees.h"

#include "ToolLibrary/Interface/Private/IndexedToolLookup.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonConvert.h"
#include "ToolLibrary/Interface/Private/SearchText.h"
#include "ToolLibrary/Interface/Private/ToolPageAggregator.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidJsonTool.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSourceLoader.h"
#include "platform/utils/Abortable.h"

#include <algorithm>
#include <numeric>

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

struct Page {
    const char *name;
    const char *filters;
    std::string search;
    const char *sort;
    int offset;
    Work bare;
};

std::vector<Page> pagesOf(const Columns &columns, std::size_t &sink)
{
    const std::size_t size = columns.names.size();
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
         }},
        {"browse by name", "", "", byName, 0, [=] { keep(pageOf(size, 0, everything, byNameOf)); }},
        {"rare text", "", rare, byName, 0,
         [=, &columns] {
             keep(pageOf(
                 size, 0, [&](auto row) { return columns.searchTexts[row].find(rare) != std::string::npos; },
                 byNameOf));
         }},
        {"deep page by diameter", "", "", byDiameter, static_cast<int>(size / 2),
         [=] { keep(pageOf(size, size / 2, everything, byDiameterOf)); }},
    };
}

ToolPageRequest requestOf(const Page &page, const ToolLibraryLocator &library)
{
    return ToolPageRequest({library}, page.filters, pageSize, page.offset, page.search, page.sort);
}

void benchFirstPage(std::size_t tools, const std::string &bytes)
{
    const ToolLibraryLocator library(libraryUrl(tools));
    double best = 1e9;
    for (int round = 0; round < 3; ++round) {
        const std::shared_ptr<ToolSource> source = ToolSourceLoader::load(library, Varn::AbortableImpl());
        const ToolPageAggregator aggregator([&](const auto &) { return source; });
        best = std::min(
            best, secondsOf([&] { aggregator.fetchPage(ToolPageRequest({library}, "", pageSize, 0, "", byName)); }));
    }
    const double bare = secondsOf([&] {
        rapidjson::Document document;
        parseBare(bytes, document);
    });
    printRatio("first page after a load", tools, {best, bare}, "parse in memory", 0.5);
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
    std::size_t sink = 0;
    for (const Page &page : pagesOf(columns, sink)) {
        const Work ours = [&] { engine->fetchTools(requestOf(page, library)); };
        ours(); // warm
        printRatio(page.name, tools, measurePair(ours, page.bare, 1), "plain columns, no JSON", 2);
    }
    const Work json = [&] {
        for (rapidjson::SizeType row = 0; row < pageSize; ++row)
            sink += RapidJsonConvert::toJsonValue(document["data"][row]).size();
    };
    const Page first = pagesOf(columns, sink).front();
    printRatio("the first of them", tools, measurePair([&] { engine->fetchTools(requestOf(first, library)); }, json, 1),
               "50 tools to Json::Value", 2);
    if (sink == 0)
        throw std::runtime_error("Nothing was found");
}

} // namespace Bench

#include "ToolLibrary/Interface/Private/ToolPageAggregator.h"

#include "ToolLibrary/Interface/Private/Columns/ColumnedSource.h"
#include "ToolLibrary/Interface/Private/IndexedTool.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSource.h"
#include "ToolLibrary/Interface/Private/ToolTypeRecorder.h"
#include "platform/core/ToolLibraryVersion.h"
#include "platform/tool/ErrorResult.h"
#include "platform/tool/Exception.h"
#include "platform/utils/Messages.h"
#include "util/utility/Assert.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Varn::ToolLibraries {

ToolPageAggregator::ToolPageAggregator(LibraryGetter getLibrary) : m_latestVersion(ToolLibraryVersion::latestVersion())
{
    VARN_EXPECTS(getLibrary);
    m_getLibrary = std::move(getLibrary);
}

std::unique_ptr<ToolPage> ToolPageAggregator::fetchPage(const ToolPageRequest &request) const
{
    const Question question{ToolFilter::createFilterFunction(request.filtersState(), request.searchQuery()),
                            std::string(request.sortState()),
                            ToolSorter::createSortFunction(request.sortState()),
                            {request.pageLimit(), request.pageOffset()}};
    Counters counters;
    bool filled = false;
    Json::Value tools;
    ToolTypeRecorder recorder;
    for (const ToolLibraryLocator &locator : request.libraryIds()) {
        Json::Value &entry = tools[Messages::fromWideUnicodeToUTF8(locator.url())];
        if (filled) {
            entry = Json::Value(Json::arrayValue);
            continue;
        }
        entry = fetchToolsInPage(locator, question, recorder, counters);
        filled = counters.matched > question.window.end();
    }
    return ToolPage::make(std::move(tools), recorder.getRecordedToolTypes(), request.pageLimit(), request.pageOffset(),
                          counters.matched, counters.total, m_latestVersion);
}

Json::Value ToolPageAggregator::fetchToolsInPage(const ToolLibraryLocator &locator, const Question &question,
                                                 ToolTypeRecorder &recorder, Counters &counters) const
{
    std::shared_ptr<ToolSource> source;
    try {
        source = m_getLibrary(locator);
    } catch (const Exception &failure) {
        return ErrorResult::createPayload(failure.what(), failure.translatedWhat());
    }
    VARN_ASSERT_TEXT(source->getVersion() == m_latestVersion,
                     "Tool library should have been migrated to the latest version already");
    if (const auto *columned = dynamic_cast<const ColumnedSource *>(source.get()))
        if (std::optional<Json::Value> page = fetchFromColumns(*columned, locator, question, recorder, counters))
            return std::move(*page);
    int seen = 0;
    const Tools matches = fetchToolsInLibrary(*source, locator, question, seen);
    counters.total += seen;
    Json::Value page(Json::arrayValue);
    for (const auto &match : matches) {
        ++counters.matched;
        if (question.window.holds(counters.matched))
            page.append(match->getTool().getToolValue());
        recorder.addToolType(match->getType());
    }
    return page;
}

/// The same by way of what the library keeps; nothing where that has no order to offer.
std::optional<Json::Value> ToolPageAggregator::fetchFromColumns(const ColumnedSource &source,
                                                                const ToolLibraryLocator &locator,
                                                                const Question &question, ToolTypeRecorder &recorder,
                                                                Counters &counters)
{
    const ColumnedSource::Use columns = source.useColumns();
    const ToolRows *order = columns->order(question.sortState);
    if (!order)
        return std::nullopt;
    const ToolMarks marks = question.filter.marksOf(*columns, locator);
    counters.total += static_cast<int>(columns->size());
    Json::Value page(Json::arrayValue);
    std::array<bool, ToolGeometry::TYPE_PLUNGE_MILL + 1> isMatched{}; // by type
    const std::vector<PageColumns::Basics> &basics = columns->basics();
    for (const ToolRow row : *order) {
        if (!marks[row])
            continue;
        ++counters.matched;
        if (question.window.holds(counters.matched))
            page.append(source.toolOfRow(row)->getToolValue());
        isMatched[basics[row].type] = true;
    }
    for (std::size_t type = 0; type < isMatched.size(); ++type)
        if (isMatched[type])
            recorder.addToolType(static_cast<ToolGeometry::Type>(type));
    return page;
}

ToolPageAggregator::Tools ToolPageAggregator::fetchToolsInLibrary(const ToolSource &source,
                                                                  const ToolLibraryLocator &locator,
                                                                  const Question &question, int &seen)
{
    Tools tools;
    tools.reserve(source.numberOfTools());
    const auto end = source.end();
    for (auto at = source.begin(); !(at == end); ++at) {
        std::unique_ptr<const Tool> tool = *at;
        if (!tool)
            continue;
        ++seen;
        auto indexed = std::make_unique<IndexedTool>(std::move(tool));
        if (question.filter(*indexed, locator))
            tools.push_back(std::move(indexed));
    }
    std::ranges::stable_sort(tools, question.order);
    return tools;
}

} // namespace Varn::ToolLibraries

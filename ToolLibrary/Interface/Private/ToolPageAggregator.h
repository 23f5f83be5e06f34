// ToolPageAggregator.h -- answers the request for one page of tools over one or more libraries. Runs on the caller's
// thread; copies are independent.
#pragma once

#include "ToolLibrary/Interface/Private/ToolFilter.h"
#include "ToolLibrary/Interface/Private/ToolSorter.h"
#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/tool/ToolLibraryLocator.h"
#include "platform/tool/ToolPage.h"
#include "platform/tool/ToolPageRequest.h"

#include <json/value.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Varn::ToolLibraries {

class ColumnedSource;
class IndexedTool;
class ToolSource;
class ToolTypeRecorder;

class TOOL_LIBRARY_EXPORT ToolPageAggregator
{
public:
    using LibraryGetter = std::function<std::shared_ptr<ToolSource>(const ToolLibraryLocator &)>;

    /// \a getLibrary must not be empty.
    explicit ToolPageAggregator(LibraryGetter getLibrary);

    /// The tools that pass the filters and the search (see ToolFilter), in the order of the request (see ToolSorter),
    /// library after library. A library whose getter throws an Exception is an error payload in place of its list. Once
    /// more tools matched than the page can hold, later libraries are not opened, and count for nothing. Throws what
    /// the filters and the order throw.
    std::unique_ptr<ToolPage> fetchPage(const ToolPageRequest &request) const;

private:
    struct Window {
        int limit;
        int offset;

        std::int64_t end() const { return std::int64_t{limit} + offset; }
        /// Whether the match of that number, counted from 1, is on the page.
        bool holds(int number) const { return number > offset && number <= end(); }
    };
    struct Counters {
        int matched = 0;
        int total = 0;
    };

    using Tools = std::vector<std::unique_ptr<IndexedTool>>;
    /// A request, made ready.
    struct Question {
        ToolFilter::Predicate filter;
        std::string sortState;
        ToolSorter::Order order;
        Window window;
    };

    Json::Value fetchToolsInPage(const ToolLibraryLocator &locator, const Question &question,
                                 ToolTypeRecorder &recorder, Counters &counters) const;
    static std::optional<Json::Value> fetchFromColumns(const ColumnedSource &source, const ToolLibraryLocator &locator,
                                                       const Question &question, ToolTypeRecorder &recorder,
                                                       Counters &counters);
    static Tools fetchToolsInLibrary(const ToolSource &source, const ToolLibraryLocator &locator,
                                     const Question &question, int &seen);

    LibraryGetter m_getLibrary;
    int m_latestVersion;
};

} // namespace Varn::ToolLibraries

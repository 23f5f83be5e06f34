// PageSources.h -- libraries as pages are made of them: with what they keep and without it.
#pragma once

#include "ToolLibrary/Interface/Private/ToolPageAggregator.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidjsonToolLibrary.h"
#include "platform/tool/JsonText.h"
#include "platform/utils/Abortable.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace TestSupport {

using Library = std::shared_ptr<Varn::ToolLibraries::RapidjsonToolLibrary>;

inline Library libraryOf(const std::string &text)
{
    return Varn::ToolLibraries::RapidjsonToolLibrary::fromString(text, Varn::AbortableImpl());
}

/// Hides what a library keeps.
class PlainSource : public Varn::ToolLibraries::ToolSource
{
public:
    using Tool = Varn::ToolLibraries::Tool;
    using ToolId = Varn::ToolLibraries::ToolId;

    explicit PlainSource(Library library) : m_library(std::move(library)) {}
    std::string toJson() const override { return m_library->toJson(); }
    std::optional<std::shared_ptr<Tool>> get(ToolId id) const override { return m_library->get(id); }
    unsigned int numberOfTools() const override { return m_library->numberOfTools(); }
    std::vector<ToolId> getToolIds() const override { return m_library->getToolIds(); }
    int getVersion() const override { return m_library->getVersion(); }

protected:
    std::unique_ptr<const Tool> at(unsigned int index) const override { return m_library->toolOfRow(index); }

private:
    Library m_library;
};

/// Keeps columns, and calls a function whenever they ask for a tool.
class WatchedSource : public PlainSource, public Varn::ToolLibraries::ColumnedSource
{
public:
    WatchedSource(Library library, std::function<void()> onTool)
        : PlainSource(std::move(library)), m_onTool(std::move(onTool))
    {
    }
    std::unique_ptr<const Tool> toolOfRow(Varn::ToolLibraries::ToolRow row) const override
    {
        m_onTool();
        return at(row);
    }
    Varn::ToolLibraries::ToolRow numberOfRows() const override { return numberOfTools(); }

private:
    std::function<void()> m_onTool;
};

/// The page's text, or that of the failure.
inline std::string pageOf(const std::shared_ptr<Varn::ToolLibraries::ToolSource> &source,
                          const Varn::ToolLibraries::ToolPageRequest &request)
{
    using namespace Varn::ToolLibraries;
    try {
        return JsonText::print(ToolPageAggregator([&](const auto &) { return source; }).fetchPage(request)->value());
    } catch (const std::exception &failure) {
        return failure.what();
    }
}

inline void expectSamePages(const Library &library, const Varn::ToolLibraries::ToolPageRequest &request)
{
    ASSERT_EQ(pageOf(library, request), pageOf(std::make_shared<PlainSource>(library), request))
        << request.filtersState() << " " << request.searchQuery() << " " << request.sortState();
}

} // namespace TestSupport

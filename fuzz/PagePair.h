// PagePair.h -- one request answered in two ways, with the columns that a library keeps and without them.
#pragma once

#include "ToolLibrary/Interface/Private/ToolPageAggregator.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidjsonToolLibrary.h"
#include "platform/tool/JsonText.h"
#include "platform/utils/Abortable.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace Fuzz {

using namespace Varn::ToolLibraries;

inline const ToolLibraryLocator here(L"custom://a.json");

inline std::shared_ptr<RapidjsonToolLibrary> read(const char *tools)
{
    return RapidjsonToolLibrary::fromString(std::string(R"({"version":36,"data":[)") + tools + "]}",
                                            Varn::AbortableImpl());
}

/// The first has tools whose columns are in order; the second names whose numbers are written in two ways, a vendor
/// that is a number, and two tools that end up with one GUID.
inline const std::array<std::shared_ptr<RapidjsonToolLibrary>, 2> &libraries()
{
    static const std::array made{
        read(
            R"({"guid":"a0000000-2222-4333-8444-000000000005","type":"drill","unit":"millimeters","vendor":"A",)"
            R"("geometry":{"DC":10,"SIG":118},"description":"Drill 10","post-process":{"number":3,"comment":"1/2 in"}},)"
            R"({"guid":"a0000000-2222-4333-8444-000000000004","type":"drill","unit":"millimeters","vendor":"a b",)"
            R"("geometry":{"DC":6,"SIG":140},"description":"Drill 6","product-id":"AB-12in"},)"
            R"({"guid":"A0000000-2222-4333-8444-000000000001","type":"bull nose end mill","unit":"inches",)"
            R"("vendor":"B","geometry":{"DC":0.5,"RE":0.0625,"NOF":3}},)"
            R"({"guid":"a0000000-2222-4333-8444-000000000002","type":"probe","unit":"inches","vendor":"B",)"
            R"("geometry":{"DC":1},"description":"T9"},)"
            R"({"guid":"a0000000-2222-4333-8444-000000000003","type":"probe","description":"T10"},)"
            R"({"guid":"a0000000-2222-4333-8444-000000000006","type":"turning general","unit":"inches",)"
            R"("geometry":{"SC":"C","RA":0,"INSD":0.5,"S":0.1875,"RE":0.03125},"holder":{"HAND":"R","THSC":"L"}})"),
        read(
            R"({"guid":"a0000000-2222-4333-8444-000000000003","type":"drill","unit":"millimeters","vendor":"A",)"
            R"("geometry":{"DC":10,"SIG":118},"description":"T2"},)"
            R"({"guid":"a0000000-2222-4333-8444-000000000001","type":"bull nose end mill","unit":"inches",)"
            R"("vendor":"B","geometry":{"DC":0.5,"RE":0.0625,"NOF":3},"description":"T02b"},)"
            R"({"guid":"a0000000-2222-4333-8444-000000000004","type":"holder","description":"T2a","vendor":"a b"},)"
            R"({"guid":"a0000000-2222-4333-8444-000000000005","type":"drill","vendor":7,"geometry":{"DC":"10"}},)"
            R"({"guid":"a0000000-2222-4333-8444-000000000006","guid":"a0000000-2222-4333-8444-000000000001",)"
            R"("description":"日本 1e2","geometry":{"DC":1e308}},)"
            R"({"guid":"a0000000-2222-4333-8444-000000000007","description":"T2\u0000z 100","geometry":{"DC":-0.0}})")};
    return made;
}

/// A library without what it keeps.
class PlainSource : public ToolSource
{
public:
    explicit PlainSource(const RapidjsonToolLibrary &library) : m_library(library) {}
    std::string toJson() const override { return m_library.toJson(); }
    std::optional<std::shared_ptr<Tool>> get(ToolId id) const override { return m_library.get(id); }
    unsigned int numberOfTools() const override { return m_library.numberOfTools(); }
    std::vector<ToolId> getToolIds() const override { return m_library.getToolIds(); }
    int getVersion() const override { return m_library.getVersion(); }

protected:
    std::unique_ptr<const Tool> at(unsigned int index) const override { return m_library.toolOfRow(index); }

private:
    const RapidjsonToolLibrary &m_library;
};

/// A library with columns that nobody has used yet.
class FreshColumns : public PlainSource, public ColumnedSource
{
public:
    using PlainSource::PlainSource;
    std::unique_ptr<const Tool> toolOfRow(ToolRow row) const override { return at(row); }
    ToolRow numberOfRows() const override { return numberOfTools(); }
};

/// The text of the page, or that of one of the failures that a request may have.
inline std::string pageOf(const std::shared_ptr<ToolSource> &source, const ToolPageRequest &request)
{
    try {
        return JsonText::print(ToolPageAggregator([&](const auto &) { return source; }).fetchPage(request)->value());
    } catch (const Json::Exception &failure) {
        return failure.what();
    } catch (const std::runtime_error &failure) {
        if (!std::string_view(failure.what()).starts_with("Type mismatch for key: "))
            std::abort();
        return failure.what();
    }
}

/// The same pages either way, also when they are asked for again.
inline void checkPages(const ToolPageRequest &request)
{
    for (const auto &library : libraries()) {
        const std::string plain = pageOf(std::make_shared<PlainSource>(*library), request);
        const auto columns = std::make_shared<FreshColumns>(*library);
        for (int round = 0; round < 2; ++round)
            if (pageOf(columns, request) != plain)
                std::abort();
    }
}

/// The first two lines, and what follows them.
inline std::array<std::string, 3> linesOf(std::string_view text)
{
    std::array<std::string, 3> lines;
    for (std::size_t line = 0; line < 2; ++line) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines[line] = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    lines[2] = text;
    return lines;
}

} // namespace Fuzz

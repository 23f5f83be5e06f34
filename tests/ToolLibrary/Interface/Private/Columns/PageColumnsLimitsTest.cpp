// PageColumnsLimitsTest.cpp -- what a library keeps stays right and small, whatever is asked and whatever goes wrong.
#include "ToolLibrary/Interface/Private/Columns/PageColumns.h"
#include "support/LibraryFile.h"
#include "support/LibraryGenerator.h"
#include "support/PageSources.h"

#include "platform/utils/LocaleRegistry.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using namespace Varn::ToolLibraries;
using Varn::LocaleRegistry;

namespace {

const ToolLibraryLocator here(L"custom://a.json");
const std::string byName = R"([{"key":"components.info.name","order":"asc"}])";
const std::string byDiameter = R"([{"key":"components.indexedProperties.tool_diameter.normValue","order":"asc"}])";

ToolPageRequest request(const std::string &filters, const std::string &search, const std::string &sort)
{
    return ToolPageRequest({here}, filters, 1000, 0, search, sort);
}

std::string propertyKey(int number)
{
    return "\"key\":\"components.indexedProperties.property" + std::to_string(number) + "\"";
}

Library generated(int count)
{
    return libraryOf(LibraryGenerator({QStringLiteral("--count"), QString::number(count)}).text());
}

/// Writes a library's every tool, then removes it.
void writeAndEmpty(RapidjsonToolLibrary &library)
{
    const std::vector<ToolId> ids = library.getToolIds();
    for (const ToolId &id : ids)
        ASSERT_TRUE(library.updateTool(id, Tool(R"({"description":"other"})")));
    for (auto id = ids.rbegin(); id != ids.rend(); ++id)
        ASSERT_TRUE(library.removeTool(*id));
}

} // namespace

TEST(PageColumnsLimits, ToolsOfOneGuidKeepTheirOrder)
{
    // A library knows a tool by its first "guid", orders go by the last.
    std::vector<std::string> tools;
    for (unsigned i = 1; i <= 100; ++i)
        tools.push_back(toolText(i, R"("description":")" + std::to_string(i) + R"(","guid":")" + guidOf(i % 2) + "\""));
    const Library library = libraryOf(libraryText(tools));
    for (const std::string &sort : {std::string(), byDiameter}) {
        expectSamePages(library, request("", "", sort));
        expectSamePages(library, request("", "5", sort));
    }
    for (const unsigned changed : {50U, 1U, 100U}) {
        const std::string text = toolText(changed, R"("description":"changed")");
        ASSERT_TRUE(library->updateTool(ToolId(guidOf(changed)), Tool(text)));
        for (const std::string &sort : {std::string(), byDiameter})
            expectSamePages(library, request("", "", sort));
    }
}

TEST(PageColumnsLimits, ALanguageThatComesWhileAPageIsMadeIsThatOfTheNextPage)
{
    const Library library = generated(40);
    int tools = 0;
    const auto source = std::make_shared<WatchedSource>(library, [&] {
        if (++tools % 7 == 0)
            LocaleRegistry::addCatalogue("yy", {{"Drill", "Bohrer " + std::to_string(tools)}});
    });
    const auto plain = std::make_shared<PlainSource>(library);
    for (const std::string &sort : {byDiameter, byName, byDiameter, std::string()})
        EXPECT_EQ(pageOf(source, request("", "mill", sort)), pageOf(plain, request("", "mill", sort)));
}

TEST(PageColumnsLimits, AColumnThatFailedIsMadeAnew)
{
    const Library library = generated(30);
    const auto plain = std::make_shared<PlainSource>(library);
    const std::string filter =
        R"([{"key":"components.indexedProperties.tool_numberOfFlutes","values":[{"op":">","value":2}]},)"
        R"({"key":"components.indexedProperties.tool_vendor","values":["Quillon"]}])";
    const ToolPageRequest requests[] = {request("", "", ""), request("", "mill", byName),
                                        request(filter, "", byDiameter)};
    for (const ToolPageRequest &asked : requests) {
        const std::string expected = pageOf(plain, asked);
        for (int failing = 1; failing <= 180; failing += 13) {
            int left = failing;
            const auto source = std::make_shared<WatchedSource>(library, [&left] {
                if (--left == 0)
                    throw std::bad_alloc();
            });
            const std::string first = pageOf(source, asked);
            ASSERT_EQ(first, left <= 0 ? "std::bad_alloc" : expected) << failing;
            left = 0;
            ASSERT_EQ(pageOf(source, asked), expected) << failing;
        }
    }
}

TEST(PageColumnsLimits, KeysThatAreAskedForOnceAreNotKeptForEver)
{
    const Library library = generated(300);
    for (int i = 0; i < 1000; ++i) {
        const std::string key = "[{" + propertyKey(i);
        const auto ask = [&](const std::string &filters, const std::string &sort) {
            pageOf(library, ToolPageRequest({here}, filters, 1, 0, "", sort));
        };
        ask(key + R"(,"values":["x"]}])", "");
        ask(key + R"(,"values":[{"op":">","value":2}]}])", "");
        ask("", key + R"(,"order":"asc"}])");
    }
    EXPECT_LE(library->useColumns()->memory(), 1'000'000U);
}

TEST(PageColumnsLimits, AnOrderOfManyKeysNeedsNoColumnForEach)
{
    const Library library = generated(300);
    std::string sort = "[";
    for (int i = 0; i < 2000; ++i)
        sort += "{" + propertyKey(i) + R"(,"order":"asc"},)";
    sort += byName.substr(1);
    expectSamePages(library, request("", "", sort));
    EXPECT_LE(library->useColumns()->memory(), 2'000'000U);
}

TEST(PageColumnsLimits, AKeyThatIsRepeatedDecidesNothing)
{
    const Library library = generated(50);
    const std::string again = R"(,{"key":"components.info.name","order":"desc"})";
    std::string sort = byName.substr(0, byName.size() - 1);
    for (int i = 0; i < 1000; ++i)
        sort += again;
    EXPECT_EQ(pageOf(library, request("", "", sort + "]")), pageOf(library, request("", "", byName)));
    expectSamePages(library, request("", "", sort + "]"));
    EXPECT_EQ(ToolSorter::keysOf(sort + "]").size(), 1U);
}

TEST(PageColumnsLimits, TextsThatNoToolHasAnyMoreAreForgotten)
{
    PropertyColumn column;
    column.append(Tool::Property(std::string("first")));
    column.append(std::nullopt);
    for (int i = 0; i < 10'000; ++i)
        column.replace(0, Tool::Property("text " + std::to_string(i)));
    EXPECT_LE(column.memory(), 100'000U);
    column.replace(1, Tool::Property(std::string("text 2")));
    EXPECT_TRUE(column.compare(1, 0) < 0) << "\"text 2\" comes before \"text 9999\"";
    EXPECT_LT(column.ordinals()[1], column.ordinals()[0]);
    ToolMarks marks(2, 1);
    column.narrow({"text 9999"}, marks);
    EXPECT_THAT(marks, testing::ElementsAre(1, 0));
}

TEST(PageColumnsLimits, ALibraryThatIsEmptiedToolByToolHasEmptyPages)
{
    const Library library = generated(6000);
    pageOf(library, request("", "mill", byName));
    writeAndEmpty(*library);
    expectSamePages(library, request("", "mill", byName));
    EXPECT_LE(library->useColumns()->memory(), 1'000U);
}

TEST(PageColumnsLimits, ATextThatNearlyIsTheQueryAtEveryPlaceDoesNotMatch)
{
    const std::string text(1'000'000, 'a');
    const std::string query = std::string(500'000, 'a') + "b";
    const Library library = libraryOf(
        libraryText({toolText(1, R"("vendor":")" + text + "\""), toolText(2, R"("vendor":")" + text + "b\"")}));
    expectSamePages(library, request("", query, ""));
    EXPECT_THAT(pageOf(library, request("", query, "")), testing::HasSubstr(R"("matched":1,)"));
}

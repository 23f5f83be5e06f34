// PageColumnsTest.cpp -- a page comes out the same with what a library keeps and without it.
#include "ToolLibrary/Interface/Private/Columns/PageColumns.h"
#include "support/Failure.h"
#include "support/LibraryFile.h"
#include "support/LibraryGenerator.h"
#include "support/PageSources.h"

#include "platform/utils/LocaleRegistry.h"

#include <gmock/gmock.h>

#include <random>
#include <thread>

using namespace TestSupport;
using namespace Varn::ToolLibraries;
using Varn::LocaleRegistry;

namespace {

const ToolLibraryLocator here(L"custom://a.json");

ToolPageRequest request(const std::string &filters, const std::string &search, const std::string &sort, int limit = 20,
                        int offset = 0)
{
    return ToolPageRequest({here}, filters, limit, offset, search, sort);
}

const char *const filters[] = {
    "",
    R"([{"key":"components.indexedProperties.tool_diameter.normValue","values":[{"lowerBound":4,"upperBound":14}]}])",
    R"([{"key":"components.indexedProperties.tool_diameter","values":[{"op":":","value":6,"negated":true}]}])",
    R"([{"key":"components.indexedProperties.tool_numberOfFlutes","values":[{"op":">=","value":3}]},)"
    R"({"key":"components.indexedProperties.tool_unit","values":["inches"]}])",
    R"([{"key":"components.indexedProperties.tool_type","values":["drill","ball end mill","turning general"]}])",
    R"([{"key":"components.indexedProperties.tool_vendor","values":[]}])",
    R"([{"key":"nothing","values":["x"]}])",
    R"([{"key":"components.info.name","values":["x"]}])",
    "[1]",
};
const char *const searches[] = {"", " ", "mill", "6 MM", "1/2 in", "\"", "zzz", "a", "∅"};
const char *const sorts[] = {
    "",
    R"([{"key":"components.info.name","order":"asc"}])",
    R"([{"key":"components.info.name","order":"desc"}])",
    R"([{"key":"components.indexedProperties.tool_diameter.normValue","order":"desc"}])",
    R"([{"key":"components.indexedProperties.tool_type","order":"asc"},{"key":"components.indexedProperties.tool_unit","order":"desc"}])",
    R"([{"key":"components.indexedProperties.tool_vendor","order":"asc"}])",
    R"([{"key":"components.indexedProperties.tool_diameter","order":"asc"}])",
    R"([{"key":"x","order":[]}])",
};

} // namespace

TEST(PageColumns, EveryRequestGivesTheSamePage)
{
    const auto library = libraryOf(LibraryGenerator({QStringLiteral("--count"), QStringLiteral("300")}).text());
    for (const char *filter : filters)
        for (const char *search : searches)
            for (const char *sort : sorts)
                for (const auto &[limit, offset] : {std::pair{20, 0}, {5, 40}, {0, 0}, {1000, -3}})
                    expectSamePages(library, request(filter, search, sort, limit, offset));
}

TEST(PageColumns, NamesWithoutAConsistentOrderGiveTheSamePage)
{
    std::mt19937 random(5);
    const char *const names[] = {"T2",       "T02b",   "T2a",  "T1", "T01x", "T1a", "T002",
                                 "8.0 mill", "8 mill", "0x10", "16", "1e1",  "10"};
    for (int round = 0; round < 20; ++round) {
        std::vector<std::string> tools;
        for (unsigned i = 1; i <= 60; ++i)
            tools.push_back(toolText(i, R"("description":")" + std::string(names[random() % std::size(names)]) +
                                            R"(","vendor":")" + (random() % 2 ? "A" : "B") + "\""));
        const auto library = libraryOf(libraryText(tools));
        const std::string onlyA = R"([{"key":"components.indexedProperties.tool_vendor","values":["A"]}])";
        for (const char *sort : {sorts[1], sorts[2]}) {
            expectSamePages(library, request("", "", sort, 100));
            expectSamePages(library, request(onlyA, "", sort, 100));
        }
    }
}

TEST(PageColumns, ValuesOfTwoKindsRaiseOnlyWhereTheyMeet)
{
    const auto library = libraryOf(
        libraryText({toolText(1, R"("vendor":"A","description":"x")"), toolText(2, R"("vendor":3,"description":"y")"),
                     toolText(3, R"("vendor":"B","description":"x")")}));
    expectSamePages(library, request("", "", sorts[5]));
    expectSamePages(library, request("", "x", sorts[5]));
    EXPECT_EQ(pageOf(library, request("", "", sorts[5])),
              "Type mismatch for key: components.indexedProperties.tool_vendor");
}

TEST(PageColumns, AWriteIsSeenAtOnce)
{
    const auto library = libraryOf(LibraryGenerator({QStringLiteral("--count"), QStringLiteral("50")}).text());
    const auto check = [&] {
        for (const char *search : searches)
            for (const char *sort : sorts)
                expectSamePages(library, request(filters[1], search, sort));
    };
    check();
    const ToolId added(guidOf(77));
    ASSERT_TRUE(library->createTool(added, Tool(toolText(77, R"("description":"new mill 6 mm","geometry":{"DC":6})"))));
    check();
    ASSERT_TRUE(library->updateTool(added, Tool(toolText(77, R"("description":"other","geometry":{"DC":5})"))));
    check();
    ASSERT_TRUE(library->removeTool(library->getToolIds().front()));
    check();
}

namespace {

/// Texts that random tools are made of.
struct Vocabulary {
    const char *title;
    std::vector<std::string> descriptions;
    std::vector<std::string> vendors; ///< JSON values
};
const Vocabulary vocabularies[] = {
    {"consistent names",
     {"mill", "mill a", "drill", "T1", "T2", "T10", "T10a", "∅8 mm"},
     {R"("A")", R"("Bb")", R"("")"}},
    {"names that write numbers in two ways", {"T1", "T01", "T01a", "T2", "T02b", "T2a"}, {R"("A")", R"("B")"}},
    {"vendors of two kinds now and then", {"x", "y 1/2 in"}, {R"("A")", R"("B")", R"("C")", R"("D")", R"("E")", "3"}},
};

std::string randomTool(unsigned number, const Vocabulary &words, std::mt19937 &random)
{
    const auto one = [&random](const auto &of) -> const std::string & { return of[random() % of.size()]; };
    std::string members = R"("type":")" + std::string(random() % 2 ? "drill" : "ball end mill") + R"(","unit":")" +
                          (random() % 3 ? "millimeters" : "inches") + R"(","description":")" + one(words.descriptions) +
                          "\"";
    if (random() % 3)
        members += R"(,"vendor":)" + one(words.vendors);
    if (random() % 4)
        members += R"(,"geometry":{"DC":)" + std::to_string(random() % 20) + (random() % 2 ? ".5" : "") + "}";
    return toolText(number, members);
}

/// Creates, changes or removes one of the tools 1 to 60.
void writeAtRandom(RapidjsonToolLibrary &library, const Vocabulary &words, std::mt19937 &random)
{
    const auto number = static_cast<unsigned>(1 + random() % 60);
    const ToolId id(guidOf(number));
    const Tool tool(randomTool(number, words, random));
    if (!library.get(id))
        ASSERT_TRUE(library.createTool(id, tool));
    else if (random() % 2)
        ASSERT_TRUE(library.updateTool(id, tool));
    else
        ASSERT_TRUE(library.removeTool(id));
}

} // namespace

TEST(PageColumns, AnySequenceOfWritesGivesTheSamePages)
{
    const std::string onlyA = R"([{"key":"components.indexedProperties.tool_vendor","values":["A","D"]}])";
    const std::string named = R"x([{"key":"components.info.name","values":["T1","∅2mm (T1)","∅4mm (mill)"]}])x";
    const auto entry = [](unsigned tool) {
        return R"({"libraryUrl":"custom://a.json","guid":")" + guidOf(tool) + R"("})";
    };
    const std::string these = R"([{"key":"toolIdentifier","values":[)" + entry(7) + "," + entry(30) + "]}]";
    const std::string choices[] = {"", filters[1], filters[4], onlyA, named, these};
    for (const Vocabulary &words : vocabularies) {
        SCOPED_TRACE(words.title);
        std::mt19937 random(21);
        const auto library = libraryOf(libraryText({}));
        for (int round = 0; round < 400; ++round) {
            for (auto writes = random() % (round % 50 == 49 ? 150 : 4); writes > 0; --writes)
                writeAtRandom(*library, words, random);
            const std::string &filter = choices[random() % std::size(choices)];
            ASSERT_NO_FATAL_FAILURE(expectSamePages(
                library, request(filter, random() % 2 ? "" : searches[random() % std::size(searches)],
                                 sorts[random() % std::size(sorts)], 60, static_cast<int>(random() % 3))));
        }
    }
}

TEST(PageColumns, ALibraryThatIsReadAnewAfterManyWritesGivesTheSamePages)
{
    const auto library = libraryOf(LibraryGenerator({QStringLiteral("--count"), QStringLiteral("1500")}).text());
    expectSamePages(library, request(filters[1], "mill", sorts[1]));
    const std::vector<ToolId> ids = library->getToolIds();
    for (std::size_t i = 0; i < ids.size(); i += 3)
        ASSERT_TRUE(library->removeTool(ids[i]));
    for (const char *sort : sorts)
        expectSamePages(library, request(filters[1], "mill", sort, 1000));
}

TEST(PageColumns, NamesFollowTheLanguage)
{
    const auto library = libraryOf(libraryText({toolText(1, R"("type":"drill")"), toolText(2, R"("type":"probe")")}));
    LocaleRegistry::addCatalogue("xx", {{"Drill", "Zbohrer"}, {"Probe", "Ataster"}});
    for (const char *country : {"en", "xx", "en"}) {
        LocaleRegistry::setCountry(country);
        for (const char *sort : {sorts[1], sorts[4]})
            expectSamePages(library, request("", "", sort));
        expectSamePages(library, request("", "taster", ""));
    }
    LocaleRegistry::setCountry("en");
}

TEST(PageColumns, NamesFollowATranslationThatComesLater)
{
    const auto library = libraryOf(libraryText({toolText(1, R"("type":"drill")"), toolText(2, R"("type":"probe")")}));
    LocaleRegistry::setCountry("xy");
    expectSamePages(library, request("", "", sorts[1]));
    LocaleRegistry::addCatalogue("xy", {{"Drill", "Zbohrer"}});
    expectSamePages(library, request("", "", sorts[1]));
    expectSamePages(library, request("", "zbohrer", ""));
    LocaleRegistry::setCountry("en");
}

TEST(PageColumns, ManyThreadsMayAskOneLibrary)
{
    const auto library = libraryOf(LibraryGenerator({QStringLiteral("--count"), QStringLiteral("200")}).text());
    const std::string expected = pageOf(std::make_shared<PlainSource>(library), request(filters[1], "mill", sorts[1]));
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&] {
            for (int round = 0; round < 20; ++round) {
                EXPECT_EQ(pageOf(library, request(filters[1], "mill", sorts[1])), expected);
                pageOf(library, request("", searches[round % 9], sorts[round % 7]));
            }
        });
}

TEST(PageColumns, AnEmptyLibraryHasEmptyPages)
{
    const auto library = libraryOf(libraryText({}));
    for (const char *filter : filters)
        expectSamePages(library, request(filter, "x", sorts[1]));
}

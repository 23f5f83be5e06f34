#include "ToolLibrary/Interface/Private/ToolPageAggregator.h"
#include "support/Asserts.h"
#include "support/Failure.h"
#include "support/FakeToolSource.h"
#include "support/LibraryFile.h"

#include "platform/tool/JsonText.h"

#include <gmock/gmock.h>

#include <limits>
#include <random>

using namespace TestSupport;
using namespace Varn::ToolLibraries;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Libraries by their URLs, and which of them were opened.
class ToolPages : public testing::Test
{
protected:
    /// A library "custom://NAME" of tools with these numbers.
    void add(const std::wstring &name, const std::vector<unsigned> &numbers)
    {
        auto source = std::make_shared<FakeToolSource>();
        for (const unsigned number : numbers)
            source->texts.push_back(toolText(number, R"("type":"drill")"));
        addSource(name, source);
    }
    void addSource(const std::wstring &name, std::shared_ptr<ToolSource> source)
    {
        m_sources[locator(name).url()] = std::move(source);
        m_all.push_back(locator(name));
    }

    static ToolLibraryLocator locator(const std::wstring &name) { return ToolLibraryLocator(L"custom://" + name); }

    ToolPageAggregator aggregator()
    {
        return ToolPageAggregator([this](const ToolLibraryLocator &library) {
            m_opened.push_back(library.url().substr(9));
            const auto found = m_sources.find(library.url());
            if (found == m_sources.end())
                throw LibraryMissing("There is no such library", L"Es gibt keine solche Bibliothek");
            return found->second;
        });
    }

    Json::Value page(int limit, int offset) { return page(m_all, limit, offset); }
    Json::Value page(const std::vector<ToolLibraryLocator> &libraries, int limit, int offset)
    {
        m_opened.clear();
        return aggregator().fetchPage(ToolPageRequest(libraries, "", limit, offset, "", ""))->value();
    }

    /// The numbers of the tools under a library.
    static std::vector<int> numbers(const Json::Value &page, const std::string &name)
    {
        const Json::Value &list = page["data"]["custom://" + name];
        EXPECT_TRUE(list.isArray()) << JsonText::print(page);
        std::vector<int> found;
        for (const Json::Value &tool : list)
            found.push_back(std::stoi(tool["guid"].asString().substr(24)));
        return found;
    }

    static std::pair<int, int> counters(const Json::Value &page)
    {
        return {page["matched"].asInt(), page["total"].asInt()};
    }

    std::map<std::wstring, std::shared_ptr<ToolSource>> m_sources;
    std::vector<ToolLibraryLocator> m_all;
    std::vector<std::wstring> m_opened;
};

} // namespace

TEST_F(ToolPages, HoldTheToolsInTheOrderOfTheirGuids)
{
    add(L"a.json", {3, 1, 2});
    const Json::Value whole = page(10, 0);
    EXPECT_THAT(numbers(whole, "a.json"), ElementsAre(1, 2, 3));
    EXPECT_EQ(JsonText::print(whole["data"]["custom://a.json"][0]),
              R"({"guid":")" + guidOf(1) + R"(","type":"drill"})");
    EXPECT_EQ(JsonText::print(whole["toolTypes"]), R"(["drill"])");
    EXPECT_EQ(whole["limit"], 10);
    EXPECT_EQ(whole["offset"], 0);
    EXPECT_EQ(whole["version"], 36);
    EXPECT_EQ(counters(whole), std::pair(3, 3));
}

TEST_F(ToolPages, OrderGuidsByTheirValueNotByTheirNotation)
{
    const auto tool = [](const std::string &guid) { return R"({"guid":")" + guid + R"("})"; };
    addSource(L"a.json", std::make_shared<FakeToolSource>(std::vector{tool("{B0000000-2222-4333-8444-000000000002}"),
                                                                      tool("a0000000-2222-4333-8444-000000000003"),
                                                                      tool("A0000000-2222-4333-8444-000000000001"),
                                                                      tool("90000000-2222-4333-8444-000000000004")}));
    EXPECT_THAT(numbers(page(10, 0), "a.json").size(), 4);
    const Json::Value whole = page(10, 0);
    std::string order;
    for (const Json::Value &one : whole["data"]["custom://a.json"])
        order += QString::fromStdString(one["guid"].asString()).remove(u'}').right(1).toStdString();
    EXPECT_EQ(order, "4132");
}

TEST_F(ToolPages, RunOnFromOneLibraryToTheNext)
{
    add(L"a.json", {1, 2, 3});
    add(L"b.json", {4, 5, 6, 7});
    const Json::Value window = page(3, 2);
    EXPECT_THAT(numbers(window, "a.json"), ElementsAre(3));
    EXPECT_THAT(numbers(window, "b.json"), ElementsAre(4, 5));
    EXPECT_EQ(counters(window), std::pair(7, 7));
}

TEST_F(ToolPages, NeverInterleaveLibraries)
{
    add(L"b.json", {2, 4});
    add(L"a.json", {1, 3});
    EXPECT_THAT(numbers(page(2, 0), "b.json"), ElementsAre(2, 4)) << "the order of the request counts";
    EXPECT_THAT(numbers(page(2, 0), "a.json"), IsEmpty());
}

TEST_F(ToolPages, OpenNoLibraryBehindAFilledPage)
{
    add(L"a.json", {1, 2, 3});
    add(L"b.json", {4});
    add(L"c.json", {5});
    const Json::Value window = page(2, 0);
    EXPECT_THAT(m_opened, ElementsAre(L"a.json"));
    EXPECT_THAT(numbers(window, "a.json"), ElementsAre(1, 2));
    EXPECT_THAT(numbers(window, "b.json"), IsEmpty());
    EXPECT_THAT(numbers(window, "c.json"), IsEmpty());
    EXPECT_EQ(counters(window), std::pair(3, 3)) << "what was not visited is not counted";
}

TEST_F(ToolPages, OpenOneMoreLibraryWhenThePageIsJustFull)
{
    add(L"a.json", {1, 2, 3});
    add(L"b.json", {4});
    add(L"c.json", {5});
    const Json::Value window = page(2, 1);
    EXPECT_THAT(m_opened, ElementsAre(L"a.json", L"b.json"));
    EXPECT_THAT(numbers(window, "a.json"), ElementsAre(2, 3));
    EXPECT_THAT(numbers(window, "b.json"), IsEmpty());
    EXPECT_EQ(counters(window), std::pair(4, 4));
}

TEST_F(ToolPages, OfNoToolsTellHowManyThereAre)
{
    add(L"empty.json", {});
    add(L"a.json", {1, 2});
    add(L"b.json", {3});
    const Json::Value window = page(0, 0);
    EXPECT_THAT(m_opened, ElementsAre(L"empty.json", L"a.json")) << "one match fills it";
    for (const char *const name : {"empty.json", "a.json", "b.json"})
        EXPECT_THAT(numbers(window, name), IsEmpty());
    EXPECT_EQ(counters(window), std::pair(2, 2));
    EXPECT_EQ(JsonText::print(window["toolTypes"]), R"(["drill"])");
}

TEST_F(ToolPages, BeyondTheLastToolAreEmptyAndCountAll)
{
    add(L"a.json", {1, 2});
    add(L"b.json", {3});
    const Json::Value window = page(5, 100);
    EXPECT_THAT(m_opened, ElementsAre(L"a.json", L"b.json"));
    EXPECT_THAT(numbers(window, "a.json"), IsEmpty());
    EXPECT_THAT(numbers(window, "b.json"), IsEmpty());
    EXPECT_EQ(counters(window), std::pair(3, 3));
}

TEST_F(ToolPages, OfNoLibraryHaveNullForData)
{
    const Json::Value window = page({}, 10, 0);
    EXPECT_EQ(JsonText::print(window),
              R"({"data":null,"limit":10,"matched":0,"offset":0,"toolTypes":[],"total":0,"version":36})");
}

TEST_F(ToolPages, PutTogetherAreTheWhole)
{
    std::mt19937 random(3);
    std::vector<int> whole;
    for (const wchar_t *const name : {L"a.json", L"b.json", L"c.json"}) {
        std::vector<unsigned> some(random() % 15);
        for (unsigned &number : some)
            number = 1 + random() % 1000;
        std::ranges::sort(some);
        some.erase(std::ranges::unique(some).begin(), some.end());
        whole.insert(whole.end(), some.begin(), some.end());
        std::ranges::shuffle(some, random);
        add(name, some);
    }
    for (int limit = 1; limit <= int(whole.size()) + 1; ++limit) {
        std::vector<int> joined;
        for (int offset = 0; offset < int(whole.size()); offset += limit) {
            const Json::Value window = page(limit, offset);
            for (const char *const name : {"a.json", "b.json", "c.json"})
                std::ranges::copy(numbers(window, name), std::back_inserter(joined));
        }
        EXPECT_EQ(joined, whole) << limit;
    }
}

TEST_F(ToolPages, TakeAnyWindow)
{
    add(L"a.json", {1, 2, 3});
    constexpr int most = std::numeric_limits<int>::max();
    constexpr int least = std::numeric_limits<int>::min();
    EXPECT_THAT(numbers(page(most, 0), "a.json"), ElementsAre(1, 2, 3));
    EXPECT_THAT(numbers(page(most, most), "a.json"), IsEmpty());
    EXPECT_THAT(numbers(page(most, 1), "a.json"), ElementsAre(2, 3));
    EXPECT_THAT(numbers(page(most, least), "a.json"), IsEmpty());
    EXPECT_THAT(numbers(page(-1, 0), "a.json"), IsEmpty());
    EXPECT_THAT(numbers(page(least, least), "a.json"), IsEmpty());
    EXPECT_THAT(numbers(page(4, -2), "a.json"), ElementsAre(1, 2)) << "places before the first tool count too";
    EXPECT_EQ(page(4, -2)["offset"], -2);
}

TEST_F(ToolPages, NameTheTypesOfAllMatches)
{
    addSource(L"a.json", std::make_shared<FakeToolSource>(
                             std::vector{toolText(1, R"("type":"right hand tap")"), toolText(2, R"("type":"drill")"),
                                         toolText(3, R"("type":"ball end mill")"), toolText(4, R"("type":"drill")")}));
    addSource(L"b.json", std::make_shared<FakeToolSource>(std::vector{toolText(5, R"("type":"reamer")")}));
    const Json::Value window = page(1, 1);
    EXPECT_THAT(numbers(window, "a.json"), ElementsAre(2));
    EXPECT_EQ(JsonText::print(window["toolTypes"]), R"(["ball end mill","drill","right hand tap"])")
        << "the library of the reamer was not visited";
}

TEST_F(ToolPages, PutTheFailureOfALibraryInItsPlace)
{
    add(L"a.json", {1});
    m_all.push_back(locator(L"missing.json"));
    add(L"b.json", {2});
    const Json::Value window = page(10, 0);
    EXPECT_THAT(m_opened, ElementsAre(L"a.json", L"missing.json", L"b.json"));
    EXPECT_EQ(
        JsonText::print(window["data"]["custom://missing.json"]),
        R"({"error":{"developerText":"There is no such library","translatedText":"Es gibt keine solche Bibliothek"}})");
    EXPECT_THAT(numbers(window, "a.json"), ElementsAre(1));
    EXPECT_THAT(numbers(window, "b.json"), ElementsAre(2));
    EXPECT_EQ(counters(window), std::pair(2, 2));
}

TEST_F(ToolPages, FailAsAWholeWhenSomethingElseIsThrown)
{
    const ToolPageRequest request({locator(L"a.json")}, "", 1, 0, "", "");
    const auto failureOfGetter = [&](const auto &failure) {
        const ToolPageAggregator pages(
            [&](const ToolLibraryLocator &) -> std::shared_ptr<ToolSource> { throw failure; });
        return failureOf([&] { pages.fetchPage(request); });
    };
    EXPECT_EQ(failureOfGetter(std::runtime_error("disk on fire")), "runtime_error: disk on fire");
    EXPECT_EQ(failureOfGetter(Ox::HubLibrariesCache::Exception("hub")), "Exception: hub");
    EXPECT_EQ(failureOfGetter(InvalidInput("caught")), "none");
}

TEST_F(ToolPages, PassOverPlacesWithoutATool)
{
    addSource(L"a.json", std::make_shared<FakeToolSource>(std::vector<std::string>{"", toolText(2), "", toolText(1)}));
    const Json::Value window = page(10, 0);
    EXPECT_THAT(numbers(window, "a.json"), ElementsAre(1, 2));
    EXPECT_EQ(counters(window), std::pair(2, 2));
}

TEST_F(ToolPages, ListALibraryOnceThatIsAskedForTwice)
{
    add(L"a.json", {1, 2});
    m_all.push_back(locator(L"a.json"));
    const Json::Value window = page(10, 1);
    EXPECT_THAT(m_opened, ElementsAre(L"a.json", L"a.json"));
    EXPECT_THAT(numbers(window, "a.json"), ElementsAre(1, 2)) << "as places 3 and 4";
    EXPECT_EQ(counters(window), std::pair(4, 4));
}

TEST_F(ToolPages, NameALibraryByItsUrlInUtf8)
{
    add(L"Fr\u00E4ser \U0001F6E0.json", {1});
    m_all.push_back(ToolLibraryLocator::fromFilePath(L"/tmp/\u5DE5\u5177.json"));
    const Json::Value window = page(10, 0);
    EXPECT_THAT(numbers(window, "Fräser 🛠.json"), ElementsAre(1));
    EXPECT_TRUE(window["data"]["/tmp/工具.json"].isMember("error"));
}

TEST_F(ToolPages, WantLibrariesOfTheCurrentVersion)
{
    addSource(L"old.json", std::make_shared<FakeToolSource>(std::vector{toolText(1)}, 35));
    addSource(L"new.json", std::make_shared<FakeToolSource>(std::vector{toolText(2)}, 37));
    addSource(L"now.json", std::make_shared<FakeToolSource>(std::vector{toolText(3)}, 36));
    const std::string unasserted = JsonText::print(page(10, 0));
    const Asserts asserts;
    const Json::Value window = page(10, 0);
    EXPECT_THAT(asserts.messages(),
                ElementsAre("Tool library should have been migrated to the latest version already",
                            "Tool library should have been migrated to the latest version already"));
    EXPECT_EQ(JsonText::print(window), unasserted);
    EXPECT_EQ(counters(window), std::pair(3, 3));
    EXPECT_EQ(window["version"], 36);
}

TEST_F(ToolPages, WithoutAFilterOrAnOrderComeByGuid)
{
    add(L"a.json", {2, 1});
    const char *const nothing[] = {"",  "[]",   " [ ] ", "[\n]", "nonsense",
                                   "[", "null", "0",     "{}",   R"([{"key":"x","order":"asc","values":3}])"};
    for (const char *const filters : nothing)
        for (const char *const order : nothing) {
            const auto window = aggregator().fetchPage(ToolPageRequest(m_all, filters, 10, 0, "", order));
            EXPECT_THAT(numbers(window->value(), "a.json"), ElementsAre(1, 2)) << filters << " " << order;
        }
}

TEST_F(ToolPages, HoldWhatPassesInTheOrderThatWasAskedFor)
{
    const auto source = std::make_shared<FakeToolSource>();
    for (const unsigned number : {1u, 2u, 3u, 4u, 5u})
        source->texts.push_back(toolText(number, R"("unit":"millimeters","geometry":{"DC":)" +
                                                     std::to_string(number % 3 + 1) + R"(},"description":")" +
                                                     (number == 4 ? "reamer" : "End mill") + "\""));
    addSource(L"a.json", source);
    const auto window = aggregator().fetchPage(ToolPageRequest(
        m_all, R"([{"key":"components.indexedProperties.tool_diameter","values":[{"op":">","value":1}]}])", 2, 1,
        "END MILL", R"([{"key":"components.indexedProperties.tool_diameter.normValue","order":"desc"}])"));
    EXPECT_THAT(numbers(window->value(), "a.json"), ElementsAre(5, 1)) << "2, 5 with three, then 1 with two";
    EXPECT_EQ(window->value()["matched"], 3);
    EXPECT_EQ(window->value()["total"], 5);
}

TEST_F(ToolPages, AFilterCountsLibraryByLibrary)
{
    add(L"a.json", {1, 2, 3});
    add(L"b.json", {2, 4});
    const std::string filter = R"([{"key":"toolIdentifier","values":[{"guid":")" + guidOf(2) +
                               R"(","libraryUrl":"custom://b.json"},{"guid":")" + guidOf(3) +
                               R"(","libraryUrl":"custom://a.json"}]}])";
    const auto window = aggregator().fetchPage(ToolPageRequest(m_all, filter, 10, 0, "", ""));
    EXPECT_THAT(numbers(window->value(), "a.json"), ElementsAre(3));
    EXPECT_THAT(numbers(window->value(), "b.json"), ElementsAre(2));
    EXPECT_EQ(window->value()["matched"], 2);
    EXPECT_EQ(window->value()["total"], 5);
}

TEST_F(ToolPages, ARequestThatCannotBeReadOpensNothing)
{
    add(L"a.json", {1});
    for (const char *const state : {"[1]", "[\"x\"]", R"([{"key":{}}])", R"([{"key":[],"order":"asc"}])"}) {
        EXPECT_THROW(aggregator().fetchPage(ToolPageRequest(m_all, state, 10, 0, "", "")), Json::Exception) << state;
        EXPECT_THROW(aggregator().fetchPage(ToolPageRequest(m_all, "", 10, 0, "", state)), Json::Exception) << state;
    }
    EXPECT_THAT(m_opened, IsEmpty());
}

TEST_F(ToolPages, APropertyOfTwoKindsFailsTheWholeRequest)
{
    const auto source = std::make_shared<FakeToolSource>();
    source->texts = {toolText(1, R"("vendor":"A")"), toolText(2, R"("vendor":3)")};
    addSource(L"a.json", source);
    const std::string order = R"([{"key":"components.indexedProperties.tool_vendor","order":"asc"}])";
    EXPECT_EQ(failureOf([&] { aggregator().fetchPage(ToolPageRequest(m_all, "", 1, 0, "", order)); }),
              "runtime_error: Type mismatch for key: components.indexedProperties.tool_vendor");
}

TEST_F(ToolPages, MakeEachToolOnceWhateverTheSize)
{
    for (const unsigned size : {0u, 1u, 1000u, 10000u}) {
        const auto source = std::make_shared<FakeToolSource>();
        for (unsigned number = 1; number <= size; ++number)
            source->texts.push_back(toolText(number));
        m_all.clear();
        addSource(L"a.json", source);
        page(10, 0);
        EXPECT_EQ(source->walked(), int(size));
        EXPECT_EQ(m_opened.size(), 1u);
    }
}

TEST_F(ToolPages, ComeFromACopyOfTheAggregatorToo)
{
    add(L"a.json", {1});
    const ToolPageAggregator original = aggregator();
    ToolPageAggregator copy = original;
    const ToolPageAggregator moved = std::move(copy);
    const ToolPageRequest request(m_all, "", 10, 0, "", "");
    EXPECT_EQ(moved.fetchPage(request)->toJson(), original.fetchPage(request)->toJson());
}

TEST(ToolPageAggregator, NeedsAWayToTheLibraries)
{
    const Asserts asserts;
    const ToolPageAggregator pages{ToolPageAggregator::LibraryGetter()};
    EXPECT_THAT(asserts.messages(), ElementsAre("EXPECTS:getLibrary"));
}

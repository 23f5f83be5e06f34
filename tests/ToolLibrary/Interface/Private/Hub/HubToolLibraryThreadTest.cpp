#include "ToolLibrary/Interface/Private/Hub/HubToolLibrary.h"

#include "support/Asserts.h"
#include "support/FakePlatformLibraries.h"
#include "support/LibraryFile.h"

#include "ToolLibrary/Interface/Private/JsonManipulation/JsonConvert.h"

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <set>
#include <thread>

using namespace TestSupport;
using namespace Varn::ToolLibraries;
using testing::ElementsAre;

namespace {

QVariantMap document(const std::vector<std::string> &tools)
{
    return JsonConvert::toQVariantMap(libraryText(tools));
}

std::vector<std::string> walk(const ToolSource &source)
{
    std::vector<std::string> tools;
    for (auto it = source.begin(); it != source.end(); ++it)
        tools.push_back((*it)->getDescription());
    return tools;
}

std::string described(unsigned number, const std::string &description)
{
    return toolText(number, R"("description":")" + description + "\"");
}

class HubToolLibraryThreadTest : public testing::Test
{
protected:
    std::shared_ptr<FakePlatformLibraries> m_hub = std::make_shared<FakePlatformLibraries>();
    HubInUse m_use{m_hub};
};

} // namespace

TEST_F(HubToolLibraryThreadTest, ANewLibraryHasItsToolsInTheOrderOfTheDocument)
{
    // The hub takes its time for the earlier ones.
    std::atomic<int> begun{0};
    m_hub->meanwhile = [&](const std::string &operation) {
        if (operation == "createTool" && begun++ % 3 == 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
    };
    std::vector<std::string> texts;
    std::vector<std::string> expected;
    for (unsigned number = 60; number > 0; --number) {
        expected.push_back(std::to_string(number));
        texts.push_back(described(number, expected.back()));
    }
    const HubToolLibrary library("lib", document(texts));
    EXPECT_EQ(walk(library), expected);
    EXPECT_EQ(library.getToolIds().front(), ToolId(guidOf(1)));
}

TEST_F(HubToolLibraryThreadTest, ADocumentWithoutToolsAsksNothing)
{
    for (const QVariantMap &map : {QVariantMap(), document({}), QVariantMap{{"data", "no list"}}})
        EXPECT_EQ(HubToolLibrary("lib", map).numberOfTools(), 0u);
    EXPECT_THAT(m_hub->calls(), testing::IsEmpty());
}

TEST_F(HubToolLibraryThreadTest, OfTwoToolsWithOneGuidInADocumentTheFirstKeepsIt)
{
    for (int round = 0; round < 20; ++round) {
        const HubToolLibrary library("lib", document({described(1, "a"), described(1, "b"), described(1, "c")}));
        EXPECT_THAT(walk(library), ElementsAre("a", "b", "c"));
        EXPECT_EQ((*library.get(ToolId(guidOf(1))))->getDescription(), "a");
    }
    const Asserts asserts;
    const HubToolLibrary library("lib", document({described(1, "a"), described(1, "b")}));
    EXPECT_THAT(asserts.messages(), ElementsAre("Tool already exists!"));
}

TEST_F(HubToolLibraryThreadTest, AToolThatTheHubRefusesIsLeftOutOfANewLibrary)
{
    m_hub->failAt("createTool", "full");
    EXPECT_EQ(HubToolLibrary("lib", document({toolText(1), toolText(2)})).numberOfTools(), 0u);
    const Asserts asserts;
    EXPECT_EQ(HubToolLibrary("lib", document({toolText(1), toolText(2)})).numberOfTools(), 0u);
    EXPECT_THAT(asserts.messages(), ElementsAre("full", "full"));
}

TEST_F(HubToolLibraryThreadTest, AToolNestedTooDeeplyIsLeftOutOfANewLibrary)
{
    QVariant deep = 1;
    for (int level = 0; level < 1001; ++level)
        deep = QVariantList{deep};
    const QVariantList tools{QVariantMap{{"guid", QString::fromStdString(guidOf(1))}, {"deep", deep}},
                             QVariantMap{{"guid", QString::fromStdString(guidOf(2))}}};
    const HubToolLibrary library("lib", QVariantMap{{"data", tools}});
    EXPECT_THAT(library.getToolIds(), ElementsAre(ToolId(guidOf(2))));
}

TEST_F(HubToolLibraryThreadTest, WithoutAHubANewLibraryIsEmpty)
{
    Varn::ToolLibraryWrappers::setPlatformLibrariesInterface(
        Ox::unexpected<Varn::ToolLibraryWrappers::Failure>(std::make_shared<Ox::HubLibrariesCache::Exception>("down")));
    const Asserts asserts;
    EXPECT_EQ(HubToolLibrary("lib", document({toolText(1)})).numberOfTools(), 0u);
    EXPECT_THAT(asserts.messages(), ElementsAre("down"));
}

TEST_F(HubToolLibraryThreadTest, ToolsMayBeWrittenOnManyThreadsWhileOthersRead)
{
    constexpr unsigned threads = 4;
    constexpr unsigned each = 40;
    HubToolLibrary library("lib", QList<QVariant>());
    std::atomic<bool> stop{false};
    std::thread reader([&] {
        while (!stop) {
            for (const ToolId &id : library.getToolIds())
                library.get(id);
            for (auto it = library.begin(); it != library.end(); ++it)
                *it;
            library.toJson();
        }
    });
    std::vector<std::thread> writers;
    for (unsigned thread = 0; thread < threads; ++thread) {
        writers.emplace_back([&, thread] {
            for (unsigned i = 0; i < each; ++i) {
                const unsigned number = 1 + thread * each + i;
                const ToolId id(guidOf(number));
                EXPECT_TRUE(library.createTool(id, Tool(described(number, "new"))));
                EXPECT_TRUE(library.updateTool(id, Tool(described(number, std::to_string(number)))));
                EXPECT_TRUE(library.syncTool(id));
                if (i % 2 == 1) {
                    EXPECT_TRUE(library.removeTool(id));
                }
            }
        });
    }
    for (std::thread &writer : writers)
        writer.join();
    stop = true;
    reader.join();
    EXPECT_EQ(library.numberOfTools(), threads * each / 2);
    for (const ToolId &id : library.getToolIds())
        EXPECT_EQ(ToolId(guidOf(static_cast<unsigned>(std::stoul((*library.get(id))->getDescription())))), id);
}

TEST_F(HubToolLibraryThreadTest, OfToolsThatArriveAtOnceWithOneGuidOnlyOneGetsIt)
{
    constexpr int threads = 4;
    std::atomic<int> arrived{0};
    m_hub->meanwhile = [&](const std::string &operation) {
        if (operation != "createTool")
            return;
        ++arrived;
        while (arrived < threads) // all are on their way at the same time
            std::this_thread::yield();
    };
    HubToolLibrary library("lib", QList<QVariant>());
    std::vector<std::thread> writers;
    for (int i = 0; i < threads; ++i)
        writers.emplace_back([&] { EXPECT_TRUE(library.createTool(ToolId(guidOf(1)), Tool(toolText(1)))); });
    for (std::thread &writer : writers)
        writer.join();
    EXPECT_EQ(library.numberOfTools(), 4u);
    std::set<std::string> guids;
    for (auto it = library.begin(); it != library.end(); ++it)
        guids.insert((*it)->getToolId().guid().asString());
    EXPECT_EQ(guids.size(), 4u);
    EXPECT_TRUE(guids.contains(guidOf(1)));
}

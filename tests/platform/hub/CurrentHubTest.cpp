// The class is not exported: the pointer that ToolLibraryWrappers hands out leads to it.
#include "support/FakePlatformLibraries.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using namespace Varn;
using testing::ElementsAre;

namespace {

using Hub = IPlatformLibrariesInterface;

template <typename T>
std::string outcomeOf(const Hub::Result<T> &result)
{
    return result ? "done" : result.error()->what();
}
std::string outcomeOf(const LibrariesPlatform::HubLibraryRefreshResult &result)
{
    return result.hasError() ? result.error().what() : "done";
}

/// Every operation once; what came of each.
std::vector<std::string> useAll(Hub &hub)
{
    ToolLibraries::LibraryMetadataTree tree;
    QList<QVariant> tools;
    return {
        outcomeOf(hub.index()),
        outcomeOf(hub.addHubLibraryNodes(tree)),
        outcomeOf(hub.listTools("l", tools, AbortableImpl())),
        outcomeOf(hub.listChildNames("f")),
        outcomeOf(hub.checkNodeEditable("f")),
        outcomeOf(hub.createNode("library", "n", "p")),
        outcomeOf(hub.deleteNode("f")),
        outcomeOf(hub.updateNode("f", "n", "p")),
        outcomeOf(hub.fetchLibraryNodes()),
        outcomeOf(hub.fetchItems()),
        hub.lastSyncTime() ? "done" : "never",
        outcomeOf(hub.createTool("l", "{}")),
        outcomeOf(hub.getTool("tool-2")),
        outcomeOf(hub.updateTool("tool-2", "l", "{}")),
        outcomeOf(hub.syncTool("tool-2+")),
        outcomeOf(hub.removeTool("tool-2+")),
    };
}

} // namespace

TEST(CurrentHub, EachOperationReachesTheHubWithItsArguments)
{
    const auto fake = std::make_shared<FakePlatformLibraries>();
    fake->syncTime = std::chrono::system_clock::now();
    const HubInUse use(fake);
    EXPECT_THAT(useAll(**ToolLibraryWrappers::getPlatformLibrariesInterface()),
                testing::AllOf(testing::SizeIs(16), testing::Each("done")));
    EXPECT_THAT(fake->calls(),
                ElementsAre("index", "addHubLibraryNodes", "listTools l", "listChildNames f", "checkNodeEditable f",
                            "createNode library n p", "deleteNode f", "updateNode f n p", "fetchLibraryNodes",
                            "fetchItems", "lastSyncTime", "createTool l {}", "getTool tool-2", "updateTool tool-2 l {}",
                            "syncTool tool-2+", "removeTool tool-2+"));
}

TEST(CurrentHub, TheResultsAreThoseOfTheHub)
{
    const auto fake = std::make_shared<FakePlatformLibraries>();
    fake->syncTime = std::chrono::system_clock::time_point(std::chrono::hours(5));
    fake->childNames = {"a", "b"};
    fake->libraryNodes = LibrariesPlatform::HubLibraryRefreshResult({}, {7});
    fake->items = LibrariesPlatform::HubLibraryRefreshResult({}, {8, 9});
    fake->put("l", R"({"guid":"g"})");
    const HubInUse use(fake);
    const auto hub = *ToolLibraryWrappers::getPlatformLibrariesInterface();

    QList<QVariant> tools;
    EXPECT_TRUE(hub->listTools("l", tools, AbortableImpl()));
    ASSERT_EQ(tools.size(), 1);
    EXPECT_EQ(tools[0].toMap()["toolId"], "tool-1");
    EXPECT_EQ(hub->listChildNames("f").value(), fake->childNames);
    EXPECT_EQ(hub->createNode("folder", "n", "p").value(), "node-2");
    EXPECT_EQ(hub->fetchLibraryNodes().libraryTools().size(), 1);
    EXPECT_EQ(hub->fetchItems().libraryTools().size(), 2);
    EXPECT_EQ(hub->lastSyncTime(), fake->syncTime);
    EXPECT_EQ(hub->getTool("tool-1").value()->stringify(), R"({"guid":"g"})");
    EXPECT_EQ(hub->updateTool("tool-1", "l", "{}").value(), "tool-1+");
    EXPECT_EQ(fake->held("tool-1+"), "l {}");
}

TEST(CurrentHub, AFailureKeepsItsKind)
{
    const auto fake = std::make_shared<FakePlatformLibraries>();
    const HubInUse use(fake);
    const auto synced = (*ToolLibraryWrappers::getPlatformLibrariesInterface())->syncTool("none");
    ASSERT_FALSE(synced);
    const Ox::HubLibrariesCache::Exception *failure = synced.error().get().get();
    EXPECT_TRUE(dynamic_cast<const Ox::HubLibrariesCache::HubItemMissingError *>(failure));
}

TEST(CurrentHub, WithoutAHubEachOperationFailsWithTheReason)
{
    SafePointer<Hub> pointer; // from the time when there was a hub
    {
        const HubInUse use(std::make_shared<FakePlatformLibraries>());
        pointer = *ToolLibraryWrappers::getPlatformLibrariesInterface();
    }
    const HubInUse use("The server is down");
    std::vector<std::string> outcomes = useAll(*pointer);
    EXPECT_EQ(outcomes[10], "never");
    outcomes.erase(outcomes.begin() + 10);
    EXPECT_THAT(outcomes, testing::Each("The server is down"));
}

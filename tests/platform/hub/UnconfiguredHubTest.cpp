#include "platform/hub/UnconfiguredHub.h"

#include "platform/utils/Abortable.h"
#include "platform/utils/LocaleRegistry.h"

#include <gtest/gtest.h>

using namespace Varn;
using Ox::HubLibrariesCache::Exception;

namespace {

/// The text of the failure; empty where there is none.
template <typename Result>
std::string failureOf(const Result &result)
{
    return result ? std::string() : result.error()->what();
}

} // namespace

TEST(UnconfiguredHub, HasNothingToList)
{
    UnconfiguredHub hub;
    const auto index = hub.index();
    ASSERT_TRUE(index);
    EXPECT_TRUE(index->traverse().empty());

    QList<QVariant> tools{1};
    EXPECT_TRUE(hub.listTools("library", tools, AbortableImpl()));
    EXPECT_EQ(tools.size(), 1);

    const auto names = hub.listChildNames("folder");
    ASSERT_TRUE(names);
    EXPECT_TRUE(names->isEmpty());
    EXPECT_EQ(hub.lastSyncTime(), std::nullopt);
}

TEST(UnconfiguredHub, ARefreshFindsThatThereIsNothing)
{
    UnconfiguredHub hub;
    for (const auto &result : {hub.fetchLibraryNodes(), hub.fetchItems()}) {
        EXPECT_TRUE(result.hasValue());
        EXPECT_FALSE(result.hasError());
        EXPECT_FALSE(result.hasWarnings());
        EXPECT_TRUE(result.libraryNodes().empty());
        EXPECT_TRUE(result.libraryTools().isEmpty());
    }
}

TEST(UnconfiguredHub, WhatNeedsAHubFailsAndSaysWhy)
{
    UnconfiguredHub hub;
    ToolLibraries::LibraryMetadataTree tree;
    const std::pair<const char *, std::string> rows[] = {
        {"addHubLibraryNodes", failureOf(hub.addHubLibraryNodes(tree))},
        {"checkNodeEditable", failureOf(hub.checkNodeEditable("f"))},
        {"createNode", failureOf(hub.createNode("library", "n", "f"))},
        {"deleteNode", failureOf(hub.deleteNode("f"))},
        {"updateNode", failureOf(hub.updateNode("f", "n", "p"))},
        {"getTool", failureOf(hub.getTool("t"))},
        {"createTool", failureOf(hub.createTool("l", "{}"))},
        {"updateTool", failureOf(hub.updateTool("t", "l", "{}"))},
        {"removeTool", failureOf(hub.removeTool("t"))},
        {"syncTool", failureOf(hub.syncTool("t"))},
    };
    for (const auto &[operation, failure] : rows)
        EXPECT_EQ(failure, "No hub is configured") << operation;
    EXPECT_TRUE(tree.traverse().empty());
}

TEST(UnconfiguredHub, ToolsHaveNotVanishedFromAHubThatIsNotThere)
{
    const auto synced = UnconfiguredHub().syncTool("t");
    const Exception *failure = synced.error().get().get();
    EXPECT_FALSE(dynamic_cast<const Ox::HubLibrariesCache::HubItemMissingError *>(failure));
}

TEST(UnconfiguredHub, TheReasonFollowsTheLanguage)
{
    LocaleRegistry::addCatalogue("xh", {{"No hub is configured", "Akukho hub"}});
    LocaleRegistry::setCountry("xh");
    const auto failure = UnconfiguredHub().deleteNode("f");
    LocaleRegistry::setCountry("en");
    EXPECT_STREQ(failure.error()->what(), "No hub is configured");
    EXPECT_EQ(failure.error()->translatedWhat(), L"Akukho hub");
}

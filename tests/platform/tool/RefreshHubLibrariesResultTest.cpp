#include "platform/tool/RefreshHubLibrariesResult.h"

#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

TEST(RefreshHubLibrariesResultTest, PrintsNodesAndTime)
{
    UpdateNodesResult nodes;
    nodes.append(UpdateNodeResult(LibraryMetadata::fromJson(R"({"type":"folder","url":"hub://a"})"), "x", L"y"));
    const RefreshHubLibrariesResult result(nodes, 1700000000.25);
    EXPECT_EQ(result.nodes().numResults(), 1U);
    EXPECT_EQ(result.lastSyncTime(), 1700000000.25);
    EXPECT_EQ(result.toJson(), R"({"nodes":[{"item":{"name":"","type":"folder","url":"hub://a"},)"
                               R"("error":{"developerText":"x","translatedText":"y"}}],"lastSyncTime":1700000000.25})");
}

TEST(RefreshHubLibrariesResultTest, ZeroIsNever)
{
    EXPECT_EQ(RefreshHubLibrariesResult(UpdateNodesResult(), 0).toJson(), R"({"nodes":[],"lastSyncTime":0.0})");
}

} // namespace Varn::ToolLibraries

#include "platform/hub/HubLibraryRefreshResult.h"

#include "support/Asserts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Varn::LibrariesPlatform {

namespace {

using ToolLibraries::LibraryMetadata;

std::shared_ptr<LibraryMetadata> node()
{
    return LibraryMetadata::fromJson(R"({"type":"folder","url":"hub://a"})");
}

HubLibraryRefreshResult failure(const char *text)
{
    return HubLibraryRefreshResult(std::make_shared<Ox::HubLibrariesCache::HubItemConflictError>(text));
}

} // namespace

TEST(HubLibraryRefreshResultTest, StartsWithNeitherValueNorError)
{
    const HubLibraryRefreshResult result;
    EXPECT_FALSE(result.hasValue());
    EXPECT_FALSE(result.hasError());
    EXPECT_FALSE(result.hasWarnings());
    EXPECT_TRUE(result.libraryNodes().empty());
    EXPECT_TRUE(result.libraryTools().isEmpty());
    EXPECT_TRUE(result.status().isOk());
}

TEST(HubLibraryRefreshResultTest, NodesAndToolsAreAValue)
{
    const auto shared = node();
    const HubLibraryRefreshResult result({shared}, {QVariantMap{{"folderId", "1"}}});
    EXPECT_TRUE(result.hasValue());
    EXPECT_FALSE(result.hasError());
    EXPECT_THAT(result.libraryNodes(), testing::ElementsAre(shared));
    ASSERT_EQ(result.libraryTools().size(), 1);
    EXPECT_EQ(result.libraryTools()[0].toMap()["folderId"], "1");
    EXPECT_TRUE(result.status().isOk());
}

TEST(HubLibraryRefreshResultTest, EmptyListsAreAValueToo)
{
    EXPECT_TRUE(HubLibraryRefreshResult({}, {}).hasValue());
    EXPECT_TRUE(HubLibraryRefreshResult(HubLibraryRefreshResult::Nodes{node()}).hasValue());
}

TEST(HubLibraryRefreshResultTest, AFailureKeepsItsKindAndLeavesTheStatusAlone)
{
    const HubLibraryRefreshResult result = failure("lost");
    EXPECT_FALSE(result.hasValue());
    EXPECT_TRUE(result.hasError());
    EXPECT_STREQ(result.error().what(), "lost");
    EXPECT_TRUE(dynamic_cast<const Ox::HubLibrariesCache::HubItemConflictError *>(&result.error()));
    EXPECT_TRUE(result.status().isOk());
    EXPECT_TRUE(result.status().getTopLevelStatusCodes().empty());
}

TEST(HubLibraryRefreshResultTest, WarningsComeWithAValueOrAnErrorAndLeaveItWell)
{
    for (HubLibraryRefreshResult result : {HubLibraryRefreshResult({node()}, {}), failure("x")}) {
        result.addWarning("Some are missing", "PARTIAL_SYNC_SUCCESS");
        result.addWarning("Slow", "SLOW");
        EXPECT_TRUE(result.hasWarnings());
        EXPECT_TRUE(result.status().isOk());
        const auto &codes = result.status().getTopLevelStatusCodes();
        ASSERT_EQ(codes.size(), 2U);
        EXPECT_EQ(codes[0].code(), "PARTIAL_SYNC_SUCCESS");
        EXPECT_EQ(codes[0].message(), "Some are missing");
        EXPECT_TRUE(codes[0].isWarning());
        EXPECT_EQ(codes[1].code(), "SLOW");
    }
}

TEST(HubLibraryRefreshResultTest, TheStatusTakesErrorsOfTheHub)
{
    HubLibraryRefreshResult result;
    result.status().addCode("SERVER_ERROR", "down");
    EXPECT_FALSE(result.status().isOk());
    EXPECT_FALSE(result.hasWarnings());
    EXPECT_FALSE(result.hasError());
}

TEST(HubLibraryRefreshResultTest, ACopyHasItsOwnStatusAndSharesTheNodes)
{
    const HubLibraryRefreshResult result({node()}, {});
    HubLibraryRefreshResult copy = result;
    copy.addWarning("m", "c");
    EXPECT_FALSE(result.hasWarnings());
    EXPECT_EQ(copy.libraryNodes()[0], result.libraryNodes()[0]);
}

TEST(HubLibraryRefreshResultTest, AskingForAnErrorThatIsNotThereAsserts)
{
    const HubLibraryRefreshResult result;
    {
        const TestSupport::Asserts asserts;
        EXPECT_STREQ(result.error().what(), "Unknown exception");
        EXPECT_THAT(asserts.messages(), testing::ElementsAre("EXPECTS:hasError()"));
    }
    EXPECT_STREQ(result.error().what(), "Unknown exception");
}

} // namespace Varn::LibrariesPlatform

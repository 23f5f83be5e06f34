#include "platform/tool/ExportLibraryResult.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

TEST(ExportLibraryResultTest, AWrittenFileHasItsErrorCodes)
{
    const ExportLibraryResult result(ToolLibraryLocator(L"u"), {2310, 7});
    EXPECT_FALSE(result.hasError());
    EXPECT_THAT(result.errorCodes(), testing::ElementsAre(2310, 7));
    EXPECT_EQ(result.toJson(), R"({"item":"u","errorCodes":[2310,7]})");
}

TEST(ExportLibraryResultTest, NoErrorCodesAreAnEmptyList)
{
    const ExportLibraryResult result(ToolLibraryLocator::fromFilePath(L"/a"), std::vector<unsigned int>());
    EXPECT_EQ(result.toJson(), R"({"item":{"path":"/a"},"errorCodes":[]})");
}

TEST(ExportLibraryResultTest, AFailureHasAnErrorInstead)
{
    const ExportLibraryResult result(ToolLibraryLocator(L"u"), "User cancelled export", std::nullopt);
    EXPECT_TRUE(result.hasError());
    EXPECT_TRUE(result.errorCodes().empty());
    EXPECT_EQ(result.toJson(), R"({"item":"u","error":{"developerText":"User cancelled export"}})");
}

TEST(ExportLibrariesResultTest, EachResultPrintsItsOwnKind)
{
    ExportLibrariesResult results;
    results.append(ExportLibraryResult(ToolLibraryLocator(L"a"), {1}));
    results.append(ExportLibraryResult(ToolLibraryLocator(L"b"), "x", std::nullopt));
    EXPECT_EQ(results.toJson(), R"([{"item":"a","errorCodes":[1]},{"item":"b","error":{"developerText":"x"}}])");
}

} // namespace Varn::ToolLibraries

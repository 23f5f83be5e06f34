#include "platform/tool/ToolPageRequest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

TEST(ToolPageRequestTest, KeepsEachPartInItsPlace)
{
    const ToolLibraryLocator first(L"b");
    const ToolLibraryLocator second = ToolLibraryLocator::fromFilePath(L"a");
    const ToolPageRequest request({first, second}, "filters", 7, -3, "query", "sort");
    EXPECT_THAT(request.libraryIds(), testing::ElementsAre(first, second));
    EXPECT_EQ(request.filtersState(), "filters");
    EXPECT_EQ(request.pageLimit(), 7);
    EXPECT_EQ(request.pageOffset(), -3);
    EXPECT_EQ(request.searchQuery(), "query");
    EXPECT_EQ(request.sortState(), "sort");
}

TEST(ToolPageRequestTest, TakesBrokenTextsByteForByte)
{
    const std::string broken("[{\0\xFF", 4);
    const ToolPageRequest request({}, broken, 0, 0, broken, broken);
    EXPECT_EQ(request.filtersState(), broken);
    EXPECT_EQ(request.searchQuery(), broken);
    EXPECT_EQ(request.sortState(), broken);
}

} // namespace Varn::ToolLibraries

#include "platform/tool/UpdateMultipleResult.h"

#include "platform/tool/ToolLibraryLocator.h"
#include "platform/tool/UpdateResult.h"

#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

namespace {

using LocatorResult = UpdateResult<ToolLibraryLocator>;

} // namespace

TEST(UpdateMultipleResultTest, StartsEmpty)
{
    const UpdateMultipleResult<LocatorResult> results;
    EXPECT_EQ(results.numResults(), 0U);
    EXPECT_EQ(results.toJson(), "[]");
}

TEST(UpdateMultipleResultTest, KeepsTheOrderOfAppending)
{
    UpdateMultipleResult<LocatorResult> results;
    results.append(LocatorResult(ToolLibraryLocator(L"b")));
    results.append(LocatorResult(ToolLibraryLocator(L"a"), "x", std::nullopt));
    EXPECT_EQ(results.numResults(), 2U);
    EXPECT_EQ(results.results()[1].item(), ToolLibraryLocator(L"a"));
    EXPECT_EQ(results.toJson(), R"([{"item":"b"},{"item":"a","error":{"developerText":"x"}}])");
}

TEST(UpdateMultipleResultTest, ConvertsAnyResults)
{
    const LocatorResult result(ToolLibraryLocator(L"a"));
    EXPECT_EQ(UpdateMultipleImpl::convert({}), "[]");
    EXPECT_EQ(UpdateMultipleImpl::convert({nullptr, &result, nullptr}), R"([null,{"item":"a"},null])");
}

} // namespace Varn::ToolLibraries

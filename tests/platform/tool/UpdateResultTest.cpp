#include "platform/tool/UpdateResult.h"

#include "platform/tool/ToolLibraryLocator.h"

#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

namespace {

using LocatorResult = UpdateResult<ToolLibraryLocator>;

class MarkedResult : public LocatorResult
{
public:
    using LocatorResult::LocatorResult;

protected:
    void appendMembers(std::string &json) const override { json += ",\"mark\":true"; }
};

} // namespace

TEST(UpdateResultTest, SuccessIsTheItemAlone)
{
    const LocatorResult result(ToolLibraryLocator(L"u"));
    EXPECT_EQ(result.item(), ToolLibraryLocator(L"u"));
    EXPECT_FALSE(result.hasError());
    EXPECT_EQ(result.errorText(), "");
    EXPECT_EQ(result.translatedErrorText(), std::nullopt);
    EXPECT_EQ(result.toJson(), R"({"item":"u"})");
}

TEST(UpdateResultTest, FailureHasTheErrorBesideTheItem)
{
    const LocatorResult result(ToolLibraryLocator(L"u"), "failed", L"misslungen");
    EXPECT_TRUE(result.hasError());
    EXPECT_EQ(result.errorText(), "failed");
    EXPECT_EQ(result.translatedErrorText(), L"misslungen");
    EXPECT_EQ(result.toJson(), R"({"item":"u","error":{"developerText":"failed","translatedText":"misslungen"}})");
}

TEST(UpdateResultTest, AnEmptyErrorIsAnErrorStill)
{
    const LocatorResult result(ToolLibraryLocator(L"u"), "", std::nullopt);
    EXPECT_TRUE(result.hasError());
    EXPECT_EQ(result.toJson(), R"({"item":"u","error":{"developerText":""}})");
}

TEST(UpdateResultTest, ANullItemIsNull)
{
    using Shared = UpdateResult<std::shared_ptr<LocatorResult>>;
    EXPECT_EQ(Shared(nullptr).toJson(), R"({"item":null})");
    EXPECT_EQ(Shared(std::make_shared<LocatorResult>(ToolLibraryLocator(L"u"))).toJson(), R"({"item":{"item":"u"}})");
}

TEST(UpdateResultTest, ASubclassAddsItsMembersBeforeTheError)
{
    EXPECT_EQ(MarkedResult(ToolLibraryLocator(L"u")).toJson(), R"({"item":"u","mark":true})");
    EXPECT_EQ(MarkedResult(ToolLibraryLocator(L"u"), "x", std::nullopt).toJson(),
              R"({"item":"u","mark":true,"error":{"developerText":"x"}})");
}

} // namespace Varn::ToolLibraries

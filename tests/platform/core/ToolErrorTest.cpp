#include "platform/core/ToolError.h"

#include "platform/core/ToolErrorFactory.h"

#include <gtest/gtest.h>

using Varn::ToolError;
using Varn::ToolErrorFactory;

TEST(ToolError, TheCodeTellsHowGraveItIs)
{
    EXPECT_EQ(ToolError::kindOf(ToolError::CODE_INVALID_VALUE), ToolError::Kind::Error);
    EXPECT_EQ(ToolError::kindOf(ToolError::CODE_GEOMETRY_NOT_FOUND), ToolError::Kind::Error);
    EXPECT_EQ(ToolError::kindOf(ToolError::CODE_DOUBTFUL_VALUE), ToolError::Kind::Warning);
    EXPECT_EQ(ToolError::kindOf(ToolError::CODE_NEWER_VERSION), ToolError::Kind::Warning);
    EXPECT_EQ(ToolError::kindOf(4000), ToolError::Kind::Fail);
    for (const int code : {0, -1, 1999, 3000, 3999, 5000})
        EXPECT_EQ(ToolError::kindOf(code), ToolError::Kind::Error) << code;
}

TEST(ToolError, WarningsAreNoErrors)
{
    EXPECT_TRUE(ToolError::isError(ToolErrorFactory::make(3201, L"a", L"1")));
    EXPECT_TRUE(ToolError::isError(ToolErrorFactory::make(4001)));
    EXPECT_TRUE(ToolErrorFactory::make(4001)->isFail());
    EXPECT_FALSE(ToolErrorFactory::make(3201)->isFail());
    EXPECT_FALSE(ToolError::isError(ToolErrorFactory::make(2201, L"a", L"1")));
    EXPECT_FALSE(ToolError::isError(nullptr));
}

TEST(ToolError, AnEntryHoldsOnlyWhatThereIs)
{
    const QVariantMap whole = ToolErrorFactory::make(3201, L"tool_diameter", L"-1", L"Too small.")->toMap();
    EXPECT_EQ(whole, (QVariantMap{{"code", 3201},
                                  {"parameter", "tool_diameter"},
                                  {"value", "-1"},
                                  {"kind", "error"},
                                  {"message", "Too small."}}));
    EXPECT_EQ(ToolErrorFactory::make(2201, {}, {}, {})->toMap(), (QVariantMap{{"code", 2201}, {"kind", "warning"}}));
}

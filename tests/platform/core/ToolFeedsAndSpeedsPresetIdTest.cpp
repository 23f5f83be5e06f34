#include "platform/core/ToolFeedsAndSpeedsPresetId.h"

#include <gtest/gtest.h>

using Varn::ToolFeedsAndSpeedsPresetId;

TEST(ToolFeedsAndSpeedsPresetId, KeepsTheTextAsItIs)
{
    const ToolFeedsAndSpeedsPresetId id(L"{Any Text \u00FC}");
    EXPECT_EQ(id.asString(), L"{Any Text \u00FC}");
    EXPECT_EQ(id.toString(), id.rawString());
}

TEST(ToolFeedsAndSpeedsPresetId, IsEqualByText)
{
    EXPECT_EQ(ToolFeedsAndSpeedsPresetId(L"a"), ToolFeedsAndSpeedsPresetId(L"a"));
    EXPECT_FALSE(ToolFeedsAndSpeedsPresetId(L"a") == ToolFeedsAndSpeedsPresetId(L"A"));
}

TEST(ToolFeedsAndSpeedsPresetId, NoPresetHasAnEmptyId)
{
    EXPECT_EQ(ToolFeedsAndSpeedsPresetId::tryMake(L""), std::nullopt);
    EXPECT_EQ(ToolFeedsAndSpeedsPresetId::tryMake(L" "), ToolFeedsAndSpeedsPresetId(L" "));
}

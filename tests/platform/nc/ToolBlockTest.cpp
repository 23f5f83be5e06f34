#include "platform/nc/ToolBlock.h"

#include <gtest/gtest.h>

#include <algorithm>

using Varn::ToolBlock;

TEST(ToolBlock, EveryConnectionHasAKeyThatLeadsBackAndATitle)
{
    int value = 0;
    for (const auto type : ToolBlock::s_turretConnectionTypes) {
        EXPECT_EQ(type, value++);
        const ToolBlock::EnumValue entry = ToolBlock::getAsEnumValue(type);
        EXPECT_EQ(ToolBlock::getAsTurretConnectionType(entry.key), type);
        EXPECT_EQ(ToolBlock::getTurretConnectionTypeAsWideString(type), entry.key);
        EXPECT_FALSE(entry.title.empty());
    }
    EXPECT_EQ(ToolBlock::getAsEnumValue(ToolBlock::CONNECTION_BMT).key, L"BMT");
    EXPECT_EQ(ToolBlock::getAsEnumValue(ToolBlock::CONNECTION_BMT).title, L"BMT, base mount");
}

TEST(ToolBlock, AConnectionThatNobodyKnowsIsACustomOne)
{
    EXPECT_EQ(ToolBlock::getAsTurretConnectionType(L"in-house 60"), ToolBlock::CONNECTION_CUSTOM);
    EXPECT_EQ(ToolBlock::getAsTurretConnectionType(L"vdi"), ToolBlock::CONNECTION_CUSTOM);
}

TEST(ToolBlock, SizesAscendAndTheCustomOneIsLast)
{
    const auto last = ToolBlock::s_sizes.end() - 1;
    EXPECT_EQ(last->name, "Custom");
    EXPECT_TRUE(std::is_sorted(ToolBlock::s_sizes.begin(), last, [](auto &a, auto &b) { return a.value < b.value; }));
    for (auto size = ToolBlock::s_sizes.begin(); size != last; ++size) {
        EXPECT_EQ(ToolBlock::getAsEnumValue(*size).key, ToolBlock::getAsString(*size));
        EXPECT_EQ(ToolBlock::getAsEnumValue(*size).title, ToolBlock::getAsString(*size));
    }
    EXPECT_EQ(ToolBlock::getAsString(ToolBlock::s_sizes[3]), L"30");
    EXPECT_EQ(ToolBlock::getAsEnumValue(*last).title, L"Custom");
}

TEST(ToolBlock, OrientationsAndKeywordsLeadToEachOther)
{
    for (int value = 0; value <= 3; ++value) {
        const auto type = ToolBlock::OrientationType(value);
        EXPECT_EQ(ToolBlock::getAsOrientationType(ToolBlock::getOrientationTypeAsWideString(type)), type);
    }
    EXPECT_EQ(ToolBlock::getOrientationTypeAsWideString(ToolBlock::ORIENTATION_RADIAL_AND_AXIAL), L"radial and axial");
    EXPECT_FALSE(ToolBlock::getAsOrientationType(L"Radial").has_value());
}

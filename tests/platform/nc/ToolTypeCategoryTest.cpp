#include "platform/nc/ToolTypeCategory.h"

#include <gtest/gtest.h>

using Varn::getToolTypeCategory;
using Varn::ToolGeometry;
using Varn::ToolTypeCategory;

TEST(ToolTypeCategory, FollowsTheFamilyOfTheType)
{
    for (int value = 1; value <= 48; ++value) {
        const auto type = ToolGeometry::Type(value);
        const int expected = ToolGeometry::isHolderOnly(type) || ToolGeometry::isToolBlockOnly(type) ? 1
                             : ToolGeometry::isJetCutter(type)                                       ? 2
                             : ToolGeometry::isDrill(type)                                           ? 3
                             : ToolGeometry::isMill(type)                                            ? 4
                             : ToolGeometry::isProbe(type)                                           ? 5
                             : ToolGeometry::isTurning(type)                                         ? 6
                             : ToolGeometry::isDepositing(type)                                      ? 7
                                                                                                     : -1;
        EXPECT_EQ(static_cast<int>(getToolTypeCategory(type)), expected) << value;
    }
}

TEST(ToolTypeCategory, NoTypeHasNone)
{
    for (const int value : {0, -1, 49, 1000})
        EXPECT_EQ(getToolTypeCategory(ToolGeometry::Type(value)), ToolTypeCategory::None) << value;
}

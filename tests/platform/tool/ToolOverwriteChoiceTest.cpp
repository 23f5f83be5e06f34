#include "platform/tool/ToolOverwriteChoice.h"

#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

TEST(ToolOverwriteChoiceTest, HasTheNumbersThatHostsKnow)
{
    EXPECT_EQ(int(ToolOverwriteChoice::Update), 0);
    EXPECT_EQ(int(ToolOverwriteChoice::Keep), 1);
    EXPECT_EQ(int(ToolOverwriteChoice::Cancel), 2);
}

} // namespace Varn::ToolLibraries

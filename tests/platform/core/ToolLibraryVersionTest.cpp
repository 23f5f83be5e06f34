#include "platform/core/ToolLibraryVersion.h"

#include <gtest/gtest.h>

TEST(ToolLibraryVersion, TheLatestIsThirtySix)
{
    EXPECT_EQ(Varn::ToolLibraryVersion::latestVersion(), 36);
}

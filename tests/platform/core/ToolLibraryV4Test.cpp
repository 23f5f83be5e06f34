#include "platform/core/ToolLibraryV4.h"

#include "platform/core/FeatureFlag.h"

#include <gtest/gtest.h>

using namespace Varn;

TEST(ToolLibraryV4, LibrariesOfTheHubAreOnUntilTheirFlagIsTurnedOff)
{
    FeatureFlag::reset();
    EXPECT_TRUE(ToolLibraryV4::platformHubToolLibrariesIsEnabled());
    FeatureFlag::setEnabled("tool-library-v4-hub-libraries", false);
    EXPECT_FALSE(ToolLibraryV4::platformHubToolLibrariesIsEnabled());
    FeatureFlag::setEnabled("tool-library-v4-hub-libraries", true);
    EXPECT_TRUE(ToolLibraryV4::platformHubToolLibrariesIsEnabled());
    FeatureFlag::reset();
}

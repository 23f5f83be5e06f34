#include "platform/core/ToolLibraryV4.h"

#include "platform/core/FeatureFlag.h"
#include "platform/nc/ToolGeometry.h"

#include <gtest/gtest.h>

#include <set>

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

TEST(ToolLibraryV4, SolidsAreOfTurningToolsAndBlocksUntilTheirFlagIsTurnedOff)
{
    const auto typesWithSolids = [] {
        std::set<int> types;
        for (int type = -1; type <= 49; ++type) {
            if (ToolLibraryV4::tool3DGeometryIsEnabled(ToolGeometry::Type(type)))
                types.insert(type);
        }
        return types;
    };
    FeatureFlag::reset();
    EXPECT_EQ(typesWithSolids(), (std::set{22, 23, 24, 25, 47}));
    FeatureFlag::setEnabled("tool-3D-geometry", false);
    EXPECT_TRUE(typesWithSolids().empty());
    FeatureFlag::setEnabled("tool-3D-geometry", true);
    EXPECT_EQ(typesWithSolids(), (std::set{22, 23, 24, 25, 47}));
    FeatureFlag::reset();
}

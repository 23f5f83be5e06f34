#include "platform/utils/Angle.h"

#include <gtest/gtest.h>

#include <limits>

using Varn::Angle;

TEST(Angle, DegreesComeBackWithinAFullTurn)
{
    for (double degrees = 0; degrees < 360; degrees += 0.5)
        EXPECT_NEAR(Angle::fromDegrees(degrees).getDegrees(), degrees, 1e-12);
    EXPECT_NEAR(Angle::fromDegrees(-30).getDegrees(), 330, 1e-12);
    EXPECT_NEAR(Angle::fromDegrees(725).getDegrees(), 5, 1e-12);
}

TEST(Angle, QuarterTurnsAreExact)
{
    for (const double degrees : {0.0, 90.0, 180.0, 270.0})
        EXPECT_EQ(Angle::fromDegrees(degrees).getDegrees(), degrees);
}

TEST(Angle, IsNeverAFullTurn)
{
    EXPECT_EQ(Angle(-std::numeric_limits<double>::min(), 1).getDegrees(), 0);
    EXPECT_LT(Angle(-1e-17, 1).getDegrees(), 360);
}

TEST(Angle, TheComponentsMayHaveAnyLength)
{
    EXPECT_NEAR(Angle(5, 5).getDegrees(), 45, 1e-12);
    EXPECT_NEAR(Angle(-2, 2).getDegrees(), 315, 1e-12);
}

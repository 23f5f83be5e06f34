#include "platform/utils/Vector2D.h"

#include <gtest/gtest.h>

using Varn::Vector2D;

TEST(Vector2D, OneNotANumberMakesThePointNone)
{
    EXPECT_TRUE(Vector2D::getNaN().isNaN());
    EXPECT_TRUE((Vector2D{0, Vector2D::getNaN().y}).isNaN());
    EXPECT_TRUE((Vector2D{Vector2D::getNaN().x, 0}).isNaN());
    EXPECT_FALSE((Vector2D{0, 0}).isNaN());
    EXPECT_NE(Vector2D::getNaN(), Vector2D::getNaN());
}

TEST(Vector2D, EqualWhenBothCoordinatesAre)
{
    EXPECT_EQ((Vector2D{1, 2}), (Vector2D{1, 2}));
    EXPECT_NE((Vector2D{1, 2}), (Vector2D{2, 1}));
}

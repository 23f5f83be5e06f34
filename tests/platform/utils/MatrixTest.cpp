#include "platform/utils/Matrix.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

using Varn::Matrix3x3;
using Varn::Matrix4x4;
using Varn::Vector3D;

namespace {

void expectNear(const Vector3D &a, const Vector3D &b, double tolerance = 1e-9)
{
    EXPECT_NEAR(a.x, b.x, tolerance);
    EXPECT_NEAR(a.y, b.y, tolerance);
    EXPECT_NEAR(a.z, b.z, tolerance);
}

} // namespace

TEST(Matrix, QuarterTurnsAreExactAndRightHanded)
{
    EXPECT_EQ(Matrix3x3::getEulerXYZRotation({90, 0, 0}) * (Vector3D{0, 1, 0}), (Vector3D{0, 0, 1}));
    EXPECT_EQ(Matrix3x3::getEulerXYZRotation({0, 90, 0}) * (Vector3D{0, 0, 1}), (Vector3D{1, 0, 0}));
    EXPECT_EQ(Matrix3x3::getEulerXYZRotation({0, 0, 90}) * (Vector3D{1, 0, 0}), (Vector3D{0, 1, 0}));
    EXPECT_EQ(Matrix3x3::getEulerXYZRotation({0, 0, -270}), Matrix3x3::getEulerXYZRotation({0, 0, 90}));
    EXPECT_EQ(Matrix3x3::getEulerXYZRotation({0, 0, 0}), Matrix3x3());
}

TEST(Matrix, TurnsAboutXFirstThenYThenZ)
{
    const Matrix3x3 all = Matrix3x3::getEulerXYZRotation({20, 30, 40});
    const Matrix3x3 steps = Matrix3x3::getEulerXYZRotation({0, 0, 40}) * Matrix3x3::getEulerXYZRotation({0, 30, 0}) *
                            Matrix3x3::getEulerXYZRotation({20, 0, 0});
    expectNear(all * Vector3D{1, 2, 3}, steps * Vector3D{1, 2, 3});
}

TEST(Matrix, AnglesComeBack)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> turn(-179.9, 179.9);
    std::uniform_real_distribution<double> tilt(-89.9, 89.9);
    for (int i = 0; i < 1000; ++i) {
        const Vector3D angles{turn(random), tilt(random), turn(random)};
        expectNear(Matrix3x3::getEulerXYZRotation(angles).getEulerXYZAngles(), angles, 1e-6);
    }
}

TEST(Matrix, WhereTwoAxesFallTogetherTheRotationIsStillTheSame)
{
    for (const double y : {90.0, -90.0}) {
        const Matrix3x3 rotation = Matrix3x3::getEulerXYZRotation({25, y, 40});
        const Vector3D angles = rotation.getEulerXYZAngles();
        EXPECT_EQ(angles.z, 0);
        EXPECT_NEAR(angles.y, y, 1e-9);
        expectNear(Matrix3x3::getEulerXYZRotation(angles) * Vector3D{1, 2, 3}, rotation * Vector3D{1, 2, 3});
    }
}

TEST(Matrix, AMotionTurnsAndThenMoves)
{
    const Matrix4x4 motion(Matrix3x3::getEulerXYZRotation({0, 0, 90}), {10, 20, 30});
    EXPECT_EQ(motion * (Vector3D{1, 0, 0}), (Vector3D{10, 21, 30}));
    EXPECT_EQ((motion * motion) * (Vector3D{1, 2, 3}), motion * (motion * (Vector3D{1, 2, 3})));
    EXPECT_EQ(motion(0, 3), 10);
    EXPECT_EQ(motion(1, 3), 20);
    EXPECT_EQ(motion(2, 3), 30);
    EXPECT_EQ(motion(1, 0), 1);
    EXPECT_EQ(motion(3, 0), 0);
    EXPECT_EQ(motion(3, 3), 1);
    expectNear(motion.getEulerXYZAngles(), {0, 0, 90});
    EXPECT_EQ(Matrix4x4() * (Vector3D{1, 2, 3}), (Vector3D{1, 2, 3}));
}

TEST(Matrix, AnglesThatAreNoneGiveNoRotationAndNoCrash)
{
    for (const double bad : {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        const Matrix3x3 rotation = Matrix3x3::getEulerXYZRotation({0, 0, bad});
        EXPECT_NE(rotation(0, 0), rotation(0, 0));
    }
}

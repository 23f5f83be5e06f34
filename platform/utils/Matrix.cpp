#include "platform/utils/Matrix.h"

#include <cmath>
#include <numbers>

namespace Varn {

namespace {

constexpr double degreesPerRadian = 180.0 / std::numbers::pi;

struct Turn {
    double sine;
    double cosine;
};

/// Exact at quarter turns, where sin(pi) of the library is not 0.
Turn turnBy(double degrees)
{
    const double quarters = degrees / 90.0;
    constexpr double farthest = 1e9; // infinity has no quarter
    if (quarters == std::floor(quarters) && std::abs(quarters) < farthest) {
        constexpr Turn exact[] = {{0, 1}, {1, 0}, {0, -1}, {-1, 0}};
        const double place = quarters - 4 * std::floor(quarters / 4);
        return exact[static_cast<int>(place) % 4];
    }
    return {std::sin(degrees / degreesPerRadian), std::cos(degrees / degreesPerRadian)};
}

} // namespace

Matrix3x3 Matrix3x3::getEulerXYZRotation(const Vector3D &degrees)
{
    const Turn x = turnBy(degrees.x);
    const Turn y = turnBy(degrees.y);
    const Turn z = turnBy(degrees.z);
    Matrix3x3 result;
    result.m_rows = {{{z.cosine * y.cosine, z.cosine * y.sine * x.sine - z.sine * x.cosine,
                       z.cosine * y.sine * x.cosine + z.sine * x.sine},
                      {z.sine * y.cosine, z.sine * y.sine * x.sine + z.cosine * x.cosine,
                       z.sine * y.sine * x.cosine - z.cosine * x.sine},
                      {-y.sine, y.cosine * x.sine, y.cosine * x.cosine}}};
    return result;
}

Vector3D Matrix3x3::getEulerXYZAngles() const
{
    const auto &m = m_rows;
    const double cosineOfY = std::hypot(m[0][0], m[1][0]);
    const double y = std::atan2(-m[2][0], cosineOfY) * degreesPerRadian;
    constexpr double locked = 1e-9; // both axes have come to lie on one line
    if (cosineOfY < locked)
        return {std::atan2(-m[1][2], m[1][1]) * degreesPerRadian, y, 0};
    return {std::atan2(m[2][1], m[2][2]) * degreesPerRadian, y, std::atan2(m[1][0], m[0][0]) * degreesPerRadian};
}

Matrix3x3 operator*(const Matrix3x3 &a, const Matrix3x3 &b)
{
    Matrix3x3 product;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            product(row, column) = a(row, 0) * b(0, column) + a(row, 1) * b(1, column) + a(row, 2) * b(2, column);
    }
    return product;
}

Vector3D operator*(const Matrix3x3 &a, const Vector3D &v)
{
    const auto row = [&](int i) { return a(i, 0) * v.x + a(i, 1) * v.y + a(i, 2) * v.z; };
    return {row(0), row(1), row(2)};
}

double Matrix4x4::operator()(int row, int column) const
{
    if (row == 3)
        return column == 3 ? 1.0 : 0.0;
    if (column < 3)
        return m_rotation(row, column);
    return row == 0 ? m_translation.x : row == 1 ? m_translation.y : m_translation.z;
}

Matrix4x4 operator*(const Matrix4x4 &a, const Matrix4x4 &b)
{
    return {a.m_rotation * b.m_rotation, a * b.m_translation};
}

Vector3D operator*(const Matrix4x4 &a, const Vector3D &point)
{
    const Vector3D turned = a.m_rotation * point;
    return {turned.x + a.m_translation.x, turned.y + a.m_translation.y, turned.z + a.m_translation.z};
}

} // namespace Varn

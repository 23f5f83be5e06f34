// Matrix.h -- rotations and rigid motions in space. Values, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/utils/Vector2D.h"

#include <array>

namespace Varn {

/// Rows and columns count from 0. The identity by default. Vectors are columns: (A * B) * v applies B first.
class VARN_PLATFORM_EXPORT Matrix3x3
{
public:
    double operator()(int row, int column) const { return m_rows[std::size_t(row)][std::size_t(column)]; }
    double &operator()(int row, int column) { return m_rows[std::size_t(row)][std::size_t(column)]; }

    /// Rz(z) * Ry(y) * Rx(x): turns about the fixed x axis first, then y, then z; angles in degrees, right-handed.
    static Matrix3x3 getEulerXYZRotation(const Vector3D &degrees);

    /// Angles in degrees from which getEulerXYZRotation() makes this rotation, y within -90 .. 90, x and z within -180
    /// .. 180. Where y is 90 or -90 only one angle about x and z together is defined; z is 0 then.
    Vector3D getEulerXYZAngles() const;

    friend VARN_PLATFORM_EXPORT Matrix3x3 operator*(const Matrix3x3 &a, const Matrix3x3 &b);
    friend VARN_PLATFORM_EXPORT Vector3D operator*(const Matrix3x3 &a, const Vector3D &v);
    friend bool operator==(const Matrix3x3 &, const Matrix3x3 &) = default;

private:
    std::array<std::array<double, 3>, 3> m_rows{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
};

/// A rotation and then a translation, whose unit is that of whoever holds it. The identity by default.
class VARN_PLATFORM_EXPORT Matrix4x4
{
public:
    Matrix4x4() = default;
    Matrix4x4(const Matrix3x3 &rotation, const Vector3D &translation) : m_rotation(rotation), m_translation(translation)
    {
    }

    const Matrix3x3 &getRotation() const { return m_rotation; }
    const Vector3D &getTranslation() const { return m_translation; }

    /// The element of the homogeneous form, whose last row is 0 0 0 1.
    double operator()(int row, int column) const;

    Vector3D getEulerXYZAngles() const { return m_rotation.getEulerXYZAngles(); } ///< degrees

    friend VARN_PLATFORM_EXPORT Matrix4x4 operator*(const Matrix4x4 &a, const Matrix4x4 &b);
    friend VARN_PLATFORM_EXPORT Vector3D operator*(const Matrix4x4 &a, const Vector3D &point);
    friend bool operator==(const Matrix4x4 &, const Matrix4x4 &) = default;

private:
    Matrix3x3 m_rotation;
    Vector3D m_translation;
};

} // namespace Varn

// Vector2D.h -- points and directions in the plane and in space. Values, any thread.
#pragma once

#include <cmath>
#include <limits>

namespace Varn {

/// A point of a profile: x is the radius, y runs along the axis. The unit is that of whoever holds it.
struct Vector2D {
    double x = 0;
    double y = 0;

    /// Stands for a point that could not be read: both coordinates are not-a-number.
    static Vector2D getNaN()
    {
        constexpr double nan = std::numeric_limits<double>::quiet_NaN();
        return {nan, nan};
    }
    bool isNaN() const { return std::isnan(x) || std::isnan(y); }

    /// As numbers compare: a point that is not-a-number equals nothing.
    friend bool operator==(const Vector2D &, const Vector2D &) = default;
};

struct Vector3D {
    double x = 0;
    double y = 0;
    double z = 0;

    friend bool operator==(const Vector3D &, const Vector3D &) = default;
};

} // namespace Varn

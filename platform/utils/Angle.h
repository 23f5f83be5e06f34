// Angle.h -- a direction in the plane, held as two components. A value, any thread.
#pragma once

#include <cmath>
#include <numbers>

namespace Varn {

/// The components are sine and cosine up to a common positive factor, so that the quarter turns are exact.
class Angle
{
public:
    Angle() = default; ///< 0 degrees
    Angle(double sine, double cosine) : m_sine(sine), m_cosine(cosine) {}

    static Angle fromDegrees(double degrees)
    {
        if (degrees == 90)
            return {1, 0};
        if (degrees == 180)
            return {0, -1};
        if (degrees == 270)
            return {-1, 0};
        const double radians = degrees * std::numbers::pi / 180.0;
        return {std::sin(radians), std::cos(radians)};
    }

    double sine() const { return m_sine; }
    double cosine() const { return m_cosine; }

    /// At least 0 and below 360.
    double getDegrees() const
    {
        const double radians = std::atan2(m_sine, m_cosine);
        const double degrees = (radians < 0 ? radians + 2 * std::numbers::pi : radians) * 180.0 / std::numbers::pi;
        return degrees < 360 ? degrees : 0;
    }

    friend bool operator==(const Angle &, const Angle &) = default;

private:
    double m_sine = 0;
    double m_cosine = 1;
};

} // namespace Varn

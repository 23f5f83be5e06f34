// RecordComparison.h -- whether two values of a record are the same. Stateless, any thread.
#pragma once

#include "platform/nc/ToolProfile.h"
#include "platform/nc/ToolSection.h"
#include "platform/utils/Matrix.h"

#include <cmath>
#include <optional>
#include <tuple>
#include <vector>

namespace Varn::RecordComparison {

/// Numbers are the same when they differ by at most \a tolerance; also two that are both not-a-number, and equal
/// infinities.
inline bool isSame(double a, double b, double tolerance)
{
    return a == b || std::abs(a - b) <= tolerance || (std::isnan(a) && std::isnan(b));
}

inline bool isSame(const std::optional<double> &a, const std::optional<double> &b, double tolerance)
{
    return a && b ? isSame(*a, *b, tolerance) : a.has_value() == b.has_value();
}

inline bool isSame(const ToolSection &a, const ToolSection &b, double tolerance)
{
    return isSame(a.offset, b.offset, tolerance) && isSame(a.diameter, b.diameter, tolerance);
}

inline bool isSame(const Vector2D &a, const Vector2D &b, double tolerance)
{
    return isSame(a.x, b.x, tolerance) && isSame(a.y, b.y, tolerance);
}

/// What only an arc has does not count in a line.
inline bool isSame(const ToolProfileEntity &a, const ToolProfileEntity &b, double tolerance)
{
    return isSame(a.end, b.end, tolerance) && a.arc == b.arc &&
           (!a.arc || (a.ccw == b.ccw && isSame(a.center, b.center, tolerance)));
}

inline bool isSame(const Matrix4x4 &a, const Matrix4x4 &b, double tolerance)
{
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 4; ++column) {
            if (!isSame(a(row, column), b(row, column), tolerance))
                return false;
        }
    }
    return true;
}

inline bool isSame(const std::optional<Matrix4x4> &a, const std::optional<Matrix4x4> &b, double tolerance)
{
    return a && b ? isSame(*a, *b, tolerance) : a.has_value() == b.has_value();
}

template <typename Item>
bool isSame(const std::vector<Item> &a, const std::vector<Item> &b, double tolerance)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (!isSame(a[i], b[i], tolerance))
            return false;
    }
    return true;
}

/// Anything else is the same when it is equal.
template <typename Value>
bool isSame(const Value &a, const Value &b, double)
{
    return a == b;
}

/// The fields of \a kinds in a table.
template <typename Part, typename Fields>
bool areFieldsSame(const Part &a, const Part &b, const Fields &fields, double tolerance, unsigned kinds = ~0u)
{
    const auto same = [&](const auto &field) {
        return (field.kinds & kinds) == 0 || isSame(a.*field.member, b.*field.member, tolerance);
    };
    return std::apply([&](const auto &...field) { return (same(field) && ...); }, fields);
}

} // namespace Varn::RecordComparison

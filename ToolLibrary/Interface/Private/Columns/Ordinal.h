// Ordinal.h -- numbers as integers without sign that stand in the same order, so that rows are sorted by plain
// comparisons.
#pragma once

#include <bit>
#include <cstdint>

namespace Varn::ToolLibraries::Ordinal {

// No number has one of these.
inline constexpr std::uint64_t first = 0;
inline constexpr std::uint64_t last = ~std::uint64_t{0};

/// REQUIRES: not a NaN. The two zeros are one.
inline std::uint64_t of(double number)
{
    constexpr std::uint64_t sign = std::uint64_t{1} << 63;
    const auto bits = std::bit_cast<std::uint64_t>(number + 0.0); // -0.0 + 0.0 is 0.0
    return bits & sign ? ~bits : bits | sign;
}

} // namespace Varn::ToolLibraries::Ordinal

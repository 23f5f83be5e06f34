// ToolRows.h -- the rows of a library's columns: each is the place of a tool in the library.
#pragma once

#include <algorithm>
#include <cstdint>
#include <future>
#include <system_error>
#include <thread>
#include <vector>

namespace Varn::ToolLibraries {

using ToolRow = std::uint32_t;
using ToolRows = std::vector<ToolRow>;
using ToolMarks = std::vector<std::uint8_t>; ///< by row; 1 for a tool that is still in question

/// Does \a first and \a second, side by side when \a size is worth a thread and there is one to be had.
template <typename First, typename Second>
void sideBySide(ToolRow size, const First &first, const Second &second)
{
    constexpr ToolRow worthAThread = 500;
    std::future<void> other;
    if (size >= worthAThread && std::thread::hardware_concurrency() > 1) {
        try {
            other = std::async(std::launch::async, [&second] { second(); });
        } catch (const std::system_error &) { // no thread: one after the other
        }
    }
    first();
    if (other.valid())
        other.get();
    else
        second();
}

/// Sorts in two halves side by side. \a comesBefore is a strict weak order.
template <typename Value, typename ComesBefore>
void sortRows(std::vector<Value> &values, const ComesBefore &comesBefore)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    sideBySide(
        static_cast<ToolRow>(values.size()), [&] { std::sort(values.begin(), middle, comesBefore); },
        [&] { std::sort(middle, values.end(), comesBefore); });
    std::inplace_merge(values.begin(), middle, values.end(), comesBefore);
}

} // namespace Varn::ToolLibraries

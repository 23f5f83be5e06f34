// RowUpkeep.h -- what a write does to a column and to an order of rows. Stateless.
#pragma once

#include "ToolLibrary/Interface/Private/Columns/ToolRows.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Varn::ToolLibraries::RowUpkeep {

/// Takes the elements of the rows \a removed, ascending, out of a column.
template <typename Value>
void removeElements(std::vector<Value> &column, const ToolRows &removed)
{
    if (removed.empty())
        return;
    auto next = removed.begin();
    ToolRow row = 0;
    std::erase_if(column, [&](const Value &) {
        const bool isRemoved = next != removed.end() && *next == row++;
        next += isRemoved;
        return isRemoved;
    });
}

/// Takes the rows \a removed, ascending, out of an order; those behind them move up.
inline void removeRows(ToolRows &order, const ToolRows &removed)
{
    if (removed.empty())
        return;
    std::erase_if(order, [&removed](ToolRow row) { return std::ranges::binary_search(removed, row); });
    for (ToolRow &row : order)
        row -= static_cast<ToolRow>(std::ranges::lower_bound(removed, row) - removed.begin());
}

/// Takes a few rows out of an order; the others keep their numbers.
inline void takeOut(ToolRows &order, const ToolRows &taken)
{
    for (const ToolRow row : taken)
        if (const auto at = std::ranges::find(order, row); at != order.end())
            order.erase(at);
}

} // namespace Varn::ToolLibraries::RowUpkeep

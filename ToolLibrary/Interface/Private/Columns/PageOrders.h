// PageOrders.h -- the rows of a library in the orders that were asked for last. One thread at a time.
#pragma once

#include "ToolLibrary/Interface/Private/Columns/ToolRows.h"
#include "ToolLibrary/Interface/Private/ToolSorter.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Varn::ToolLibraries {

class PageColumns;

class TOOL_LIBRARY_EXPORT PageOrders
{
public:
    /// All rows in the order of a request; null when they have none, see PageColumns::order().
    const ToolRows *find(std::string_view sortState, PageColumns &columns);

    /// Takes out the rows \a removed, ascending; those behind them move up.
    void remove(const ToolRows &removed);

    /// Finds the places of the rows \a changed, ascending, anew. The columns are up to date.
    void change(const ToolRows &changed, PageColumns &columns);

    void clear() { m_kept.clear(); }
    std::size_t memory() const; ///< bytes

private:
    using Keys = std::vector<ToolSorter::Key>;
    struct Kept {
        std::string state;
        Keys keys;
        std::optional<ToolRows> rows;
    };

    static std::optional<ToolRows> make(const Keys &keys, PageColumns &columns);

    std::list<Kept> m_kept; ///< those used last in front
};

} // namespace Varn::ToolLibraries

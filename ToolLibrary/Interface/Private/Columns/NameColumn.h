// NameColumn.h -- the names of all tools of a library, and the tools in their order. One thread writes, or any read.
#pragma once

#include "ToolLibrary/Interface/Private/Columns/ToolRows.h"
#include "ToolLibrary/ToolLibraryExport.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT NameColumn
{
public:
    explicit NameColumn(std::vector<std::wstring> names) : m_names(std::move(names)) {}

    const std::wstring &operator[](ToolRow row) const { return m_names[row]; }

    /// The place of each tool's name among the different names; nothing when their order is not consistent (see
    /// NaturalOrder). Keeps the order that it finds.
    std::optional<std::vector<std::uint64_t>> ranks();

    /// Whether the order is known to be consistent, also after writes.
    bool isOrdered() const { return m_order && m_isConsistent; }

    /// Takes out the rows \a removed, ascending; those behind them move up.
    void remove(const ToolRows &removed);

    /// Takes the new names of some rows, ascending; those behind the last one that there was come in the order of their
    /// rows.
    struct Change {
        ToolRow row;
        std::wstring name;
    };
    void change(std::vector<Change> changes);

    std::size_t memory() const; ///< bytes

private:
    void makeOrder();
    bool insert(ToolRow row);

    std::vector<std::wstring> m_names;
    std::optional<ToolRows> m_order; ///< by NaturalOrder::comesBefore
    bool m_isConsistent = false;
};

} // namespace Varn::ToolLibraries

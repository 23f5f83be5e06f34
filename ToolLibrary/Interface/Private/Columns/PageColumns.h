// PageColumns.h -- what a library keeps of its tools so that pages of them are found fast: numbers, texts, types, names
// and orders.
//
// One thread at a time; ColumnedSource hands it out under a lock. Each column is made when it is first asked for. A
// write is noted, and brought into the columns and orders, tool by tool, before they are used again.
#pragma once

#include "ToolLibrary/Interface/Private/Columns/NameColumn.h"
#include "ToolLibrary/Interface/Private/Columns/PageOrders.h"
#include "ToolLibrary/Interface/Private/Columns/PropertyColumn.h"
#include "ToolLibrary/Interface/Private/Columns/SearchColumn.h"
#include "ToolLibrary/Interface/Private/Columns/ToolRows.h"
#include "platform/nc/NCUnit.h"
#include "platform/nc/ToolGeometry.h"
#include "platform/utils/Guid.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Varn::ToolLibraries {

class ColumnedSource;
class IndexedTool;

class TOOL_LIBRARY_EXPORT PageColumns
{
public:
    /// Of each tool what nearly every page needs.
    struct Basics {
        ToolGeometry::Type type;
        NCUnit::Unit unit;
        Guid guid;
    };
    struct Numbers {
        std::vector<double> values;
        std::vector<std::uint8_t> isPresent;
    };

    /// \a source must outlive this object, and give no null tool.
    explicit PageColumns(const ColumnedSource &source);
    PageColumns(const PageColumns &) = delete;
    PageColumns &operator=(const PageColumns &) = delete;

    ToolRow size() const { return m_size; }
    const std::vector<Basics> &basics();
    const Numbers &numbers(const std::string &key);            ///< by the key of a request, as ToolKeys::numberOf
    const PropertyColumn &property(std::string_view property); ///< as IndexedTool::getRawProperty
    NameColumn &names();
    const SearchColumn &searchTexts();
    const std::vector<std::uint64_t> &typeRanks(); ///< by type: its place in the order of the types' names

    /// All rows in the order of a request. Null when the order of some of them could be another one than among all: for
    /// values of two kinds, which cannot be compared, and names whose equal numbers are written differently.
    const ToolRows *order(std::string_view sortState);

    // A write to the source: a tool was changed in its place, or taken out of it. One at the end needs no note. False
    // when so much was written that making all anew costs less; then this object is of no more use.
    bool noteUpdated(ToolRow row);
    bool noteRemoved(ToolRow row);

    /// Brings all that is kept up to date, with the writes and with the language, which stays the same until the next
    /// call. False as for a note.
    bool refresh();

    std::size_t memory() const; ///< bytes

private:
    IndexedTool toolOf(ToolRow row) const;
    template <typename Visit>
    void overTools(const Visit &visit) const;
    bool isWorthNotes(std::size_t added) const;
    void dropForeignLanguage();
    void removeRows(const ToolRows &removed);
    void changeRows(const ToolRows &changed);
    void changeRow(ToolRow row, bool isNew, const IndexedTool &tool);

    const ColumnedSource &m_source;
    ToolRow m_size;
    std::uint64_t m_language; ///< of names, search texts and orders
    std::vector<Basics> m_basics;
    std::map<std::string, Numbers> m_numbers;
    std::map<std::string, PropertyColumn, std::less<>> m_properties;
    std::vector<std::uint64_t> m_typeRanks;
    std::optional<NameColumn> m_names;
    std::optional<SearchColumn> m_searchTexts;
    PageOrders m_orders;

    std::set<ToolRow> m_updated; ///< numbered as the source numbers them now
    ToolRows m_removed;          ///< each numbered as at its time
};

} // namespace Varn::ToolLibraries

// InsertTypeTable.h -- what is known of the turning inserts: one row for each. Immutable, any thread.
#pragma once

#include "platform/nc/ToolGeometry.h"

#include <span>
#include <string_view>

namespace Varn {

/// Which turning tools an insert is made for.
enum class InsertUse {
    General, ///< general turning and boring
    Grooving,
    Threading,
};

struct InsertTypeRow {
    int value;              ///< a ToolGeometry::InsertType, and the place of the row
    std::string_view key;   ///< the text under "SC" in a tool map
    std::string_view title; ///< English name in lists
    wchar_t letter;         ///< shape letter of ISO 1832, 0 without one
    InsertUse use;
    double lengthPerCircle; ///< cutting edge length / inscribed circle; 1 where there is no such relation
};

/// All rows in the order of their values.
std::span<const InsertTypeRow> insertTypeRows();

/// The row of \a type; that of the free insert for a value that is no insert.
const InsertTypeRow &insertTypeRow(ToolGeometry::InsertType type);

/// The row of a keyword, compared exactly, or null.
const InsertTypeRow *findInsertTypeRow(std::string_view keyword);
const InsertTypeRow *findInsertTypeRow(std::wstring_view keyword);

} // namespace Varn

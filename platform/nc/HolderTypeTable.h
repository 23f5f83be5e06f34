// HolderTypeTable.h -- what is known of the styles of turning tool holders: one row for each. Immutable, any thread.
#pragma once

#include "platform/nc/ToolGeometry.h"

#include <span>
#include <string_view>

namespace Varn {

struct HolderTypeRow {
    int value;              ///< a ToolGeometry::HolderType, and the place of the row
    std::string_view key;   ///< the text under "THSC" in a tool map; empty for no holder
    std::string_view title; ///< English name in lists
};

/// All rows in the order of their values.
std::span<const HolderTypeRow> holderTypeRows();

/// The row of \a type; that of no holder for a value that is no style.
const HolderTypeRow &holderTypeRow(ToolGeometry::HolderType type);

/// The row of a keyword, compared exactly, or null.
const HolderTypeRow *findHolderTypeRow(std::string_view keyword);
const HolderTypeRow *findHolderTypeRow(std::wstring_view keyword);

} // namespace Varn

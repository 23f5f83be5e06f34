// ToolTypeTable.h -- what is known of the tool types: one row for each. Immutable, any thread.
#pragma once

#include "platform/nc/ToolTypeCategory.h"

#include <span>
#include <string_view>

namespace Varn {

/// What a tool type is, as bits. The first eight are the families, of which each type has exactly one.
namespace ToolTypeFlag {
enum : unsigned {
    Mill = 1u << 0,
    Drill = 1u << 1,
    Probe = 1u << 2,
    JetCutter = 1u << 3,
    Turning = 1u << 4,
    Depositing = 1u << 5,
    HolderOnly = 1u << 6,
    ToolBlockOnly = 1u << 7,
    Families = (1u << 8) - 1,

    FormMill = 1u << 8,
    CircleSegment = 1u << 9,
    CornerChamfer = 1u << 10,
    GeneralHole = 1u << 11,
    BoringHole = 1u << 12,
    TipAngle = 1u << 13,
    Solid = 1u << 14, ///< may carry a solid of its own
};
}

struct ToolTypeRow {
    int value;                 ///< a ToolGeometry::Type, and the place of the row
    std::string_view key;      ///< the text under "type" in a tool map
    std::string_view title;    ///< English name in lists
    unsigned flags;            ///< bits of ToolTypeFlag
    ToolTypeCategory category; ///< group in a dialog
    int strategy;              ///< its set of parameters, a Strategy::Type
};

/// All rows in the order of their values, that of TYPE_NONE first.
std::span<const ToolTypeRow> toolTypeRows();

/// The row of \a type; that of TYPE_NONE for a value that is no type.
const ToolTypeRow &toolTypeRow(ToolGeometry::Type type);

/// The row of a keyword, compared exactly, or null.
const ToolTypeRow *findToolTypeRow(std::string_view keyword);
const ToolTypeRow *findToolTypeRow(std::wstring_view keyword);

} // namespace Varn

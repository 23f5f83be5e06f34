// ToolKeyTable.h -- the words by which people name what they filter, sort and show tools by. Immutable, any thread.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace Quillon {

enum class ToolKeyKind {
    Name, ///< the tool's name, made of its data
    Type, ///< a tool type, by keyword or by name
    Unit, ///< millimeters or inches
    Text,
    Number, ///< a count or a plain number
    Angle,  ///< degrees
    Length, ///< in the unit of the tool
};

struct ToolKeyRow {
    std::string_view word;
    std::string_view property; ///< flat key of the engine, such as "tool_diameter"; empty for the name
    ToolKeyKind kind;
    std::string_view title; ///< of a column
};

/// In the order of their words.
std::span<const ToolKeyRow> toolKeyRows();

/// The row of a word, or of the flat key of a property. Throws UsageError, which lists the words, for any other text.
const ToolKeyRow &toolKey(std::string_view word);

/// The key by which a filter of the engine compares the values of a row; lengths in millimeters.
std::string filterKey(const ToolKeyRow &row);

/// The key by which the engine sorts. Angles go by a key that holds only among tools of one unit, because the other one
/// takes whole and broken numbers for different kinds.
std::string sortKey(const ToolKeyRow &row);

} // namespace Quillon

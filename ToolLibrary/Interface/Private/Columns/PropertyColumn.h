// PropertyColumn.h -- one property of all tools of a library, as it stands in their data. One thread writes, or any
// read.
#pragma once

#include "ToolLibrary/Interface/Private/Columns/ToolRows.h"
#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/tool/Tool.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT PropertyColumn
{
public:
    void append(const std::optional<Tool::Property> &value);
    void replace(ToolRow row, const std::optional<Tool::Property> &value);
    void remove(const ToolRows &removed);

    /// Unmarks the tools whose value is none of these texts.
    void narrow(const std::set<std::string> &texts, ToolMarks &marks) const;

    /// Whether any two of the values can be compared: they are of one kind, and none is a NaN.
    bool isComparable() const;

    /// Of comparable values, as the sorter has it: a tool without a value is greater.
    std::strong_ordering compare(ToolRow a, ToolRow b) const;

    /// By row; in the order of compare().
    std::vector<std::uint64_t> ordinals() const;

    std::size_t memory() const; ///< bytes

private:
    enum class Kind : std::uint8_t { None, Text, Whole, Number, NaN, Flag };
    static constexpr std::size_t kinds = 6;

    struct Value {
        Kind kind;
        std::uint64_t ordinal; ///< of a text its id, else in the order of the values
    };
    Value valueOf(const std::optional<Tool::Property> &value);
    std::uint64_t idOf(const std::string &text);
    void forgetUnusedTexts();

    std::vector<Kind> m_kinds;
    std::vector<std::uint64_t> m_ordinals;
    std::size_t m_counts[kinds] = {};
    std::map<std::string, std::uint64_t, std::less<>> m_idOfText;
    std::vector<const std::string *> m_textOfId; // keys of the map
};

} // namespace Varn::ToolLibraries

// TextTable.h -- a table of texts that fits a terminal. A value.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Quillon {

struct TextColumn {
    std::string title;
    bool alignRight = false;
    bool mayShrink = false; ///< cut, with "…", where the table is too wide
};

class TextTable
{
public:
    explicit TextTable(std::vector<TextColumn> columns);

    /// One text for each column, in UTF-8. A control character is shown as a blank.
    void addRow(std::vector<std::string> cells);

    /// Title, rule and rows, each line ended; at most \a width character cells wide, for which columns shrink and, when
    /// that is not enough, the last ones are left out. A width of 0 is as wide as it needs.
    std::string print(std::size_t width) const;

private:
    std::vector<std::size_t> neededWidths() const;
    std::size_t shownColumns(const std::vector<std::size_t> &needed, std::size_t width) const;
    std::vector<std::size_t> columnWidths(std::size_t width) const; ///< of the columns that are shown

    std::vector<TextColumn> m_columns;
    std::vector<std::vector<std::string>> m_rows;
};

/// How many cells of a terminal \a text takes: two for a wide East Asian character, none for a combining mark.
std::size_t displayWidth(const std::string &text);

} // namespace Quillon

#include "host/TextTable.h"

#include "platform/utils/Messages.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <cwctype>
#include <numeric>
#include <utility>

namespace Quillon {

using Varn::Messages;

namespace {

constexpr std::size_t gap = 2;       // cells between columns
constexpr std::size_t narrowest = 6; // a shrinking column stays readable
constexpr const char *ellipsis = "\u2026";

/// Cells of one character, after Unicode Standard Annex 11.
std::size_t cellsOf(wchar_t character)
{
    const auto code = static_cast<UChar32>(character);
    const auto category = static_cast<UCharCategory>(u_charType(code));
    if (category == U_NON_SPACING_MARK || category == U_ENCLOSING_MARK || category == U_FORMAT_CHAR)
        return 0;
    const int width = u_getIntPropertyValue(code, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

std::size_t cellsOf(const std::wstring &text)
{
    return std::accumulate(text.begin(), text.end(), std::size_t{0},
                           [](std::size_t sum, wchar_t character) { return sum + cellsOf(character); });
}

std::string printable(const std::string &text)
{
    std::wstring wide = Messages::fromUTF8ToWideUnicode(text);
    std::ranges::replace_if(
        wide, [](wchar_t character) { return u_iscntrl(static_cast<UChar32>(character)) != 0; }, L' ');
    return Messages::fromWideUnicodeToUTF8(wide);
}

/// \a text in at most \a width cells.
std::string cut(const std::string &text, std::size_t width)
{
    if (displayWidth(text) <= width)
        return text;
    const std::wstring wide = Messages::fromUTF8ToWideUnicode(text);
    std::size_t cells = 0;
    std::size_t length = 0;
    while (cells + cellsOf(wide[length]) + 1 <= width)
        cells += cellsOf(wide[length++]);
    return Messages::fromWideUnicodeToUTF8(std::wstring_view(wide).substr(0, length)) + ellipsis;
}

std::string padded(const std::string &text, std::size_t width, bool alignRight)
{
    const std::string blanks(width - std::min(width, displayWidth(text)), ' ');
    return alignRight ? blanks + text : text + blanks;
}

std::size_t totalOf(const std::vector<std::size_t> &widths)
{
    return std::accumulate(widths.begin(), widths.end(), gap * (widths.size() - 1));
}

void trimRight(std::string &line)
{
    line.erase(line.find_last_not_of(' ') + 1);
}

} // namespace

std::size_t displayWidth(const std::string &text)
{
    return cellsOf(Messages::fromUTF8ToWideUnicode(text));
}

TextTable::TextTable(std::vector<TextColumn> columns) : m_columns(std::move(columns)) {}

void TextTable::addRow(std::vector<std::string> cells)
{
    cells.resize(m_columns.size());
    std::ranges::transform(cells, cells.begin(), &printable);
    m_rows.push_back(std::move(cells));
}

std::vector<std::size_t> TextTable::neededWidths() const
{
    std::vector<std::size_t> widths;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        widths.push_back(displayWidth(m_columns[i].title));
        for (const auto &row : m_rows)
            widths[i] = std::max(widths[i], displayWidth(row[i]));
    }
    return widths;
}

std::size_t TextTable::shownColumns(const std::vector<std::size_t> &needed, std::size_t width) const
{
    std::vector<std::size_t> least = needed;
    for (std::size_t i = 0; i < least.size(); ++i)
        if (m_columns[i].mayShrink)
            least[i] = std::min(least[i], narrowest);
    while (least.size() > 1 && totalOf(least) > width)
        least.pop_back();
    return least.size();
}

std::vector<std::size_t> TextTable::columnWidths(std::size_t width) const
{
    std::vector<std::size_t> widths = neededWidths();
    if (width == 0)
        return widths;
    widths.resize(shownColumns(widths, width));
    const auto room = [&](std::size_t i) { return m_columns[i].mayShrink && widths[i] > narrowest ? widths[i] : 0; };
    while (totalOf(widths) > width) { // the widest column gives first
        std::size_t widest = 0;
        for (std::size_t i = 1; i < widths.size(); ++i)
            if (room(i) > room(widest))
                widest = i;
        if (room(widest) == 0)
            break;
        --widths[widest];
    }
    return widths;
}

std::string TextTable::print(std::size_t width) const
{
    const std::vector<std::size_t> widths = columnWidths(width);
    std::string text;
    const auto addLine = [&](const auto &cellAt) {
        std::string line;
        for (std::size_t i = 0; i < widths.size(); ++i)
            line += (i ? std::string(gap, ' ') : "") +
                    padded(cut(cellAt(i), widths[i]), widths[i], m_columns[i].alignRight);
        trimRight(line);
        text += line + '\n';
    };
    addLine([&](std::size_t i) { return m_columns[i].title; });
    addLine([&](std::size_t i) { return std::string(widths[i], '-'); });
    for (const auto &row : m_rows)
        addLine([&](std::size_t i) { return row[i]; });
    return text;
}

} // namespace Quillon

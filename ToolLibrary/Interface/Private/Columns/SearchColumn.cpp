#include "ToolLibrary/Interface/Private/Columns/SearchColumn.h"

#include "ToolLibrary/Interface/Private/IndexedTool.h"
#include "ToolLibrary/Interface/Private/SearchText.h"
#include "platform/utils/Messages.h"

#include <iterator>
#include <utility>

namespace Varn::ToolLibraries {

namespace {

constexpr char separator = '\n'; // white space, so neither a normalised text nor a needle has it
constexpr std::size_t rowsOfPiece = 1024;

std::string textsOf(const IndexedTool &tool)
{
    std::string texts;
    for (const std::wstring &text : {tool.getComment(), tool.getProductId(), tool.getVendor(), tool.getName()}) {
        if (text.empty())
            continue;
        texts += Messages::fromWideUnicodeToUTF8(SearchText::normalised(text));
        texts += separator;
    }
    return texts;
}

} // namespace

void SearchColumn::append(const IndexedTool &tool)
{
    if (m_pieces.empty() || m_pieces.back().ends.size() >= rowsOfPiece)
        m_pieces.emplace_back();
    Piece &last = m_pieces.back();
    last.text += textsOf(tool);
    last.ends.push_back(static_cast<std::uint32_t>(last.text.size()));
}

void SearchColumn::append(SearchColumn &&behind)
{
    std::move(behind.m_pieces.begin(), behind.m_pieces.end(), std::back_inserter(m_pieces));
}

SearchColumn::Place SearchColumn::placeOf(ToolRow row)
{
    auto piece = m_pieces.begin();
    for (; row >= piece->ends.size(); ++piece)
        row -= static_cast<ToolRow>(piece->ends.size());
    return {*piece, row};
}

void SearchColumn::replaceTexts(Place place, std::string_view texts)
{
    auto &ends = place.piece.ends;
    const std::uint32_t begin = place.row == 0 ? 0 : ends[place.row - 1];
    const std::uint32_t length = ends[place.row] - begin;
    place.piece.text.replace(begin, length, texts);
    for (std::size_t row = place.row; row < ends.size(); ++row)
        ends[row] += static_cast<std::uint32_t>(texts.size()) - length; // modulo 2^32, also for a shorter text
}

void SearchColumn::replace(ToolRow row, const IndexedTool &tool)
{
    replaceTexts(placeOf(row), textsOf(tool));
}

void SearchColumn::remove(ToolRow row)
{
    const Place place = placeOf(row);
    replaceTexts(place, {});
    place.piece.ends.erase(place.piece.ends.begin() + place.row);
}

void SearchColumn::search(std::wstring_view needle, ToolMarks &marks) const
{
    // Every text has a separator behind it, so a tool with any text has an empty needle.
    const std::string bytes = needle.empty() ? std::string(1, separator) : Messages::fromWideUnicodeToUTF8(needle);
    auto mark = marks.begin();
    for (const Piece &piece : m_pieces) {
        const std::string_view text = piece.text;
        const auto endOfMarks = mark + static_cast<std::ptrdiff_t>(piece.ends.size());
        auto end = piece.ends.begin();
        for (std::size_t at = 0; (at = SearchText::find(text, bytes, at)) != std::string_view::npos; at = *end++) {
            const auto hit = std::upper_bound(end, piece.ends.end(), at);
            std::fill_n(mark, hit - end, std::uint8_t{0});
            mark += hit - end + 1;
            end = hit;
        }
        std::fill(mark, endOfMarks, std::uint8_t{0});
        mark = endOfMarks;
    }
}

std::size_t SearchColumn::memory() const
{
    std::size_t bytes = m_pieces.capacity() * sizeof(Piece);
    for (const Piece &piece : m_pieces)
        bytes += piece.text.capacity() + piece.ends.capacity() * sizeof(std::uint32_t);
    return bytes;
}

} // namespace Varn::ToolLibraries

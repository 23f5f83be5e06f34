// SearchColumn.h -- the texts that a search looks into, normalised, of all tools of a library. One thread writes, or
// any read.
#pragma once

#include "ToolLibrary/Interface/Private/Columns/ToolRows.h"
#include "ToolLibrary/ToolLibraryExport.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Varn::ToolLibraries {

class IndexedTool;

/// The texts lie one behind the other, so that one pass over them answers a search; in pieces, so that a write moves
/// little.
class TOOL_LIBRARY_EXPORT SearchColumn
{
public:
    void append(const IndexedTool &tool);
    void append(SearchColumn &&behind);
    void replace(ToolRow row, const IndexedTool &tool);
    void remove(ToolRow row);

    /// Unmarks the tools in none of whose texts \a needle, a normalised text, occurs. An empty one occurs in every
    /// text.
    void search(std::wstring_view needle, ToolMarks &marks) const;

    std::size_t memory() const; ///< bytes

private:
    struct Piece {
        std::string text;                ///< UTF-8; a separator behind each text
        std::vector<std::uint32_t> ends; ///< by row of the piece: where its texts end
    };
    struct Place {
        Piece &piece;
        ToolRow row; ///< of the piece
    };

    Place placeOf(ToolRow row);
    static void replaceTexts(Place place, std::string_view texts);

    std::vector<Piece> m_pieces;
};

} // namespace Varn::ToolLibraries

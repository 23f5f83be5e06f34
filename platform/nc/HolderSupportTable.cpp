#include "platform/nc/HolderSupportTable.h"

#include "platform/nc/HolderTypeTable.h"
#include "platform/nc/InsertTypeTable.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

namespace Varn {

namespace {

using G = ToolGeometry; // short, for the sake of the tables

struct GeneralInsertRow {
    ToolGeometry::InsertType insert;
    std::string_view letters;    ///< styles for general turning
    std::string_view boringBars; ///< letters of the boring bars
};

// A style takes an insert when leading angle + included angle is at most 180 degrees, so that the minor edge clears the
// face it leaves (ISO 5608 angles, ISO 1832 shapes). A round insert goes into D and G, and into bars F and S. Bar F is
// kept for every insert because it is what a dialog falls back to; "offset profile" and "custom" are, too, for general
// turning, and "custom" for boring, so they have no column.
// clang-format off
constexpr GeneralInsertRow generalInserts[] = {
    // insert           letters                    boring bars
    {G::INSERT_CUSTOM, "ABCDEFGHJKLMNPQRSTUVWY", "FGJKLPQSTUWY"},
    {G::INSERT_A,      "ABCDEFGJKLMNRSTUVWY",    "FGJKLSTUWY"},
    {G::INSERT_B,      "ABCDEFGJKLMNRSTUVWY",    "FGJKLSTUWY"},
    {G::INSERT_C,      "ABCDEFGJKLMNRSTUVWY",    "FGJKLSTUWY"},
    {G::INSERT_D,      "ABCDEFGHJKLMNPQRSTUVWY", "FGJKLPQSTUWY"},
    {G::INSERT_E,      "ABCDEFGJKLMNRSTUVWY",    "FGJKLSTUWY"},
    {G::INSERT_H,      "DEMSTW",                 "FSTW"},
    {G::INSERT_K,      "ABCDEFGHJKLMNPQRSTUVWY", "FGJKLPQSTUWY"},
    {G::INSERT_L,      "ABCDEFGKMNRSTVWY",       "FGKSTWY"},
    {G::INSERT_M,      "ABCDEFGJKMNRSTUVWY",     "FGJKSTUWY"},
    {G::INSERT_O,      "DS",                     "FS"},
    {G::INSERT_P,      "DEMNSTW",                "FSTW"},
    {G::INSERT_R,      "DG",                     "FS"},
    {G::INSERT_S,      "ABCDEFGKMNRSTVWY",       "FGKSTWY"},
    {G::INSERT_T,      "ABCDEFGHJKLMNPQRSTUVWY", "FGJKLPQSTUWY"},
    {G::INSERT_V,      "ABCDEFGHJKLMNPQRSTUVWY", "FGJKLPQSTUWY"},
    {G::INSERT_W,      "ABCDEFGJKLMNRSTUVWY",    "FGJKLSTUWY"},
};

constexpr ToolGeometry::HolderType threadingHolders[] = {
    G::HOLDER_THREAD_STRAIGHT,
    G::HOLDER_THREAD_OFFSET,
    G::HOLDER_THREAD_INTERNAL,
    G::HOLDER_CUSTOM,
};

constexpr ToolGeometry::HolderType groovingHolders[] = {
    G::HOLDER_GROOVE_EXTERNAL,
    G::HOLDER_PARTING_BLADE, // not for a V, which cannot part
    G::HOLDER_GROOVE_FACE,
    G::HOLDER_GROOVE_INTERNAL,
    G::HOLDER_CUSTOM,
};
// clang-format on

template <typename Range>
bool contains(const Range &range, ToolGeometry::HolderType holder)
{
    return std::find(std::begin(range), std::end(range), holder) != std::end(range);
}

constexpr bool generalInsertsStandAtTheirValue()
{
    for (std::size_t i = 0; i < std::size(generalInserts); ++i) {
        if (generalInserts[i].insert != static_cast<int>(i))
            return false;
    }
    return true;
}

static_assert(std::size(generalInserts) == G::INSERT_W + 1);
static_assert(generalInsertsStandAtTheirValue());

bool isGeneralHolder(const GeneralInsertRow &row, ToolGeometry::HolderType holder)
{
    if (holder == G::HOLDER_OFFSET_PROFILE || holder == G::HOLDER_CUSTOM)
        return true;
    const std::string_view style = holderTypeRow(holder).key;
    return style.size() == 1 && row.letters.find(style) != std::string_view::npos;
}

bool isBoringHolder(const GeneralInsertRow &row, ToolGeometry::HolderType holder)
{
    if (holder == G::HOLDER_CUSTOM)
        return true;
    if (holder < G::HOLDER_BORING_BAR_F || holder > G::HOLDER_BORING_BAR_Y)
        return false;
    const char bar = holderTypeRow(holder).key.back(); // "boring bar f"
    return row.boringBars.find(static_cast<char>(bar - 'a' + 'A')) != std::string_view::npos;
}

} // namespace

bool isHolderSupported(ToolGeometry::Type type, ToolGeometry::InsertType insert, ToolGeometry::HolderType holder)
{
    const bool isInsert = insert >= G::INSERT_CUSTOM && insert <= G::INSERT_THREAD_TRAPEZOID;
    if (!isInsert)
        return false;
    const InsertUse use = insertTypeRow(insert).use;
    switch (type) {
    case ToolGeometry::TYPE_TURNING_GENERAL:
        return use == InsertUse::General && isGeneralHolder(generalInserts[insert], holder);
    case ToolGeometry::TYPE_TURNING_BORING:
        return use == InsertUse::General && isBoringHolder(generalInserts[insert], holder);
    case ToolGeometry::TYPE_TURNING_THREADING:
        return use == InsertUse::Threading && contains(threadingHolders, holder);
    case ToolGeometry::TYPE_TURNING_GROOVING:
        return use == InsertUse::Grooving && contains(groovingHolders, holder) &&
               !(insert == G::INSERT_GROOVE_V && holder == G::HOLDER_PARTING_BLADE);
    default:
        return false;
    }
}

} // namespace Varn

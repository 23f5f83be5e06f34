#include "platform/nc/HolderTypeTable.h"

#include "platform/nc/KeywordTable.h"

#include <iterator>

namespace Varn {

namespace {

// Style letters and angles of ISO 5608, of ISO 6261 for boring bars. The angle is the leading angle.
// clang-format off
constexpr HolderTypeRow rows[] = {
    //  keyword            title
    { 0, "",                "No holder"},
    { 1, "A",               "A: 90°, side cutting, straight shank"},
    { 2, "B",               "B: 75°, side cutting, straight shank"},
    { 3, "C",               "C: 90°, end cutting, straight shank"},
    { 4, "D",               "D: 45°, side cutting, straight shank"},
    { 5, "E",               "E: 60°, side cutting, straight shank"},
    { 6, "F",               "F: 90°, end cutting, offset shank"},
    { 7, "G",               "G: 90°, side cutting, offset shank"},
    { 8, "H",               "H: 107.5°, side cutting, offset shank"},
    { 9, "J",               "J: 93°, side cutting, offset shank"},
    {10, "K",               "K: 75°, end cutting, offset shank"},
    {11, "L",               "L: 95°, side and end cutting, offset shank"},
    {12, "M",               "M: 50°, side cutting, straight shank"},
    {13, "N",               "N: 63°, side cutting, straight shank"},
    {14, "P",               "P: 117.5°, side cutting, offset shank"},
    {15, "Q",               "Q: 107.5°, end cutting, offset shank"},
    {16, "R",               "R: 75°, side cutting, offset shank"},
    {17, "S",               "S: 45°, side cutting, offset shank"},
    {18, "T",               "T: 60°, side cutting, offset shank"},
    {19, "U",               "U: 93°, end cutting, offset shank"},
    {20, "V",               "V: 72.5°, side cutting, straight shank"},
    {21, "W",               "W: 60°, end cutting, offset shank"},
    {22, "Y",               "Y: 85°, end cutting, offset shank"},
    {23, "offset profile",  "Profiling, offset shank"},
    {24, "thread straight", "Threading, straight shank"},
    {25, "thread offset",   "Threading, offset shank"},
    {26, "groove external", "Grooving, external"},
    {27, "parting blade",   "Parting blade"},
    {28, "groove face",     "Grooving, face"},
    {29, "groove internal", "Grooving, internal"},
    {30, "thread internal", "Threading, internal"},
    {31, "boring bar f",    "Boring bar F: 90°, end cutting"},
    {32, "boring bar g",    "Boring bar G: 90°, side cutting"},
    {33, "boring bar j",    "Boring bar J: 93°, side cutting"},
    {34, "boring bar k",    "Boring bar K: 75°, end cutting"},
    {35, "boring bar l",    "Boring bar L: 95°, side and end cutting"},
    {36, "boring bar p",    "Boring bar P: 117.5°, side cutting"},
    {37, "boring bar q",    "Boring bar Q: 107.5°, end cutting"},
    {38, "boring bar s",    "Boring bar S: 45°, side cutting"},
    {39, "boring bar t",    "Boring bar T: 60°, side cutting"},
    {40, "boring bar u",    "Boring bar U: 93°, end cutting"},
    {41, "boring bar w",    "Boring bar W: 60°, end cutting"},
    {42, "boring bar y",    "Boring bar Y: 85°, end cutting"},
    {43, "custom",          "Custom"},
};
// clang-format on

constexpr KeywordTable table(rows);

static_assert(std::size(rows) == ToolGeometry::HOLDER_CUSTOM + 1);
static_assert(table.isComplete());

} // namespace

std::span<const HolderTypeRow> holderTypeRows()
{
    return table.rows();
}

const HolderTypeRow &holderTypeRow(ToolGeometry::HolderType type)
{
    return table.row(type);
}

const HolderTypeRow *findHolderTypeRow(std::string_view keyword)
{
    return table.find(keyword);
}

const HolderTypeRow *findHolderTypeRow(std::wstring_view keyword)
{
    return table.find(keyword);
}

} // namespace Varn

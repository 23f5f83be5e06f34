#include "platform/nc/InsertTypeTable.h"

#include "platform/nc/KeywordTable.h"

#include <iterator>

namespace Varn {

namespace {

constexpr auto general = InsertUse::General;
constexpr auto grooving = InsertUse::Grooving;
constexpr auto threading = InsertUse::Threading;

// Letters and angles of ISO 1832. Edge over circle follows from the polygon around the circle:
//   C D E M V       rhombus of angle a    1 / sin(a)
//   H O P S T       regular n-gon         tan(180 / n)
//   W               trigon 80/160         (cot(40) + cot(80)) / 2
//   A B K           parallelogram         16.15 / 9.525: the long edge is no function of the circle, so size 16 sets it
//   L               rectangle             2: the inch code counts width in eighths and length in quarters
//   R               round                 1: both are the diameter
// clang-format off
constexpr InsertTypeRow rows[] = {
    //  keyword              title                               letter for       edge / circle
    { 0, "custom",            "Custom",                           0,    general,   1.0},
    { 1, "A",                 "A: parallelogram 85°",             L'A', general,   1.6955380577427819},
    { 2, "B",                 "B: parallelogram 82°",             L'B', general,   1.6955380577427819},
    { 3, "C",                 "C: rhombus 80°",                   L'C', general,   1.0154266118857451},
    { 4, "D",                 "D: rhombus 55°",                   L'D', general,   1.220774588761456},
    { 5, "E",                 "E: rhombus 75°",                   L'E', general,   1.035276180410083},
    { 6, "H",                 "H: hexagon 120°",                  L'H', general,   0.5773502691896257},
    { 7, "K",                 "K: parallelogram 55°",             L'K', general,   1.6955380577427819},
    { 8, "L",                 "L: rectangle 90°",                 L'L', general,   2.0},
    { 9, "M",                 "M: rhombus 86°",                   L'M', general,   1.0024418980811722},
    {10, "O",                 "O: octagon 135°",                  L'O', general,   0.41421356237309503},
    {11, "P",                 "P: pentagon 108°",                 L'P', general,   0.7265425280053609},
    {12, "R",                 "R: round",                         L'R', general,   1.0},
    {13, "S",                 "S: square 90°",                    L'S', general,   1.0},
    {14, "T",                 "T: triangle 60°",                  L'T', general,   1.7320508075688767},
    {15, "V",                 "V: rhombus 35°",                   L'V', general,   1.7434467956210982},
    {16, "W",                 "W: trigon 80°",                    L'W', general,   0.6840402866513375},
    {17, "groove square",     "Grooving, square",                 0,    grooving,  1.0},
    {18, "groove round",      "Grooving, full radius",            0,    grooving,  1.0},
    {19, "groove v",          "Grooving, V shape",                0,    grooving,  1.0},
    {20, "thread iso double", "Threading, two edges",             0,    threading, 1.0},
    {21, "thread iso triple", "Threading, three edges laid flat", 0,    threading, 1.0},
    {22, "thread trapezoid",  "Threading, trapezoid",             0,    threading, 1.0},
};
// clang-format on

constexpr KeywordTable table(rows);

static_assert(std::size(rows) == ToolGeometry::INSERT_THREAD_TRAPEZOID + 1);
static_assert(table.isComplete());

} // namespace

std::span<const InsertTypeRow> insertTypeRows()
{
    return table.rows();
}

const InsertTypeRow &insertTypeRow(ToolGeometry::InsertType type)
{
    return table.row(type);
}

const InsertTypeRow *findInsertTypeRow(std::string_view keyword)
{
    return table.find(keyword);
}

const InsertTypeRow *findInsertTypeRow(std::wstring_view keyword)
{
    return table.find(keyword);
}

} // namespace Varn

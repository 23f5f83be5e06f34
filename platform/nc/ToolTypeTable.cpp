#include "platform/nc/ToolTypeTable.h"

#include "platform/nc/KeywordTable.h"

#include <bit>
#include <iterator>

namespace Varn {

namespace {

using namespace ToolTypeFlag;

constexpr auto none = ToolTypeCategory::None;
constexpr auto adaptive = ToolTypeCategory::Adaptive;
constexpr auto jet = ToolTypeCategory::Jet;
constexpr auto holeMaking = ToolTypeCategory::HoleMaking;
constexpr auto milling = ToolTypeCategory::Milling;
constexpr auto probe = ToolTypeCategory::Probe;
constexpr auto turning = ToolTypeCategory::Turning;
constexpr auto depositing = ToolTypeCategory::Depositing;

// Shapes of rotating tools after ISO 13399-3. The keywords are part of the file format and never change.
// clang-format off
constexpr ToolTypeRow rows[] = {
    //   keyword                    title                      flags                           category    strategy
    { 0, "unspecified",             "Unspecified",             0,                              none,        97},
    { 1, "drill",                   "Drill",                   Drill | GeneralHole | TipAngle, holeMaking, 198},
    { 2, "center drill",            "Center drill",            Drill | GeneralHole | TipAngle, holeMaking, 198},
    { 3, "spot drill",              "Spot drill",              Drill | GeneralHole | TipAngle, holeMaking, 198},
    { 4, "multi-spindle drill",     "Multi-spindle drill",     Drill | BoringHole | TipAngle,  holeMaking, 198},
    { 5, "flat end mill",           "Flat end mill",           Mill,                           milling,    198},
    { 6, "ball end mill",           "Ball end mill",           Mill,                           milling,    198},
    { 7, "bull nose end mill",      "Bull nose end mill",      Mill,                           milling,    198},
    { 8, "chamfer mill",            "Chamfer mill",            Mill,                           milling,    198},
    { 9, "face mill",               "Face mill",               Mill,                           milling,    198},
    {10, "slot mill",               "Slot mill",               Mill,                           milling,    198},
    {11, "radius mill",             "Radius mill",             Mill,                           milling,    198},
    {12, "dovetail mill",           "Dovetail mill",           Mill,                           milling,    198},
    {13, "tapered mill",            "Tapered mill",            Mill,                           milling,    198},
    {14, "lollipop mill",           "Lollipop mill",           Mill,                           milling,    198},
    {15, "right hand tap",          "Right hand tap",          Drill | TipAngle,               holeMaking, 198},
    {16, "left hand tap",           "Left hand tap",           Drill | TipAngle,               holeMaking, 198},
    {17, "reamer",                  "Reamer",                  Drill | GeneralHole | TipAngle, holeMaking, 198},
    {18, "boring head",             "Boring head",             Drill | BoringHole | TipAngle,  holeMaking, 198},
    {19, "counterbore",             "Counterbore",             Drill | GeneralHole | TipAngle, holeMaking, 198},
    {20, "countersink",             "Countersink",             Drill | BoringHole | TipAngle,  holeMaking, 198},
    {21, "holder",                  "Holder",                  HolderOnly,                     adaptive,   198},
    {22, "turning general",         "Turning general",         Turning | Solid,                turning,    212},
    {23, "turning threading",       "Turning threading",       Turning | Solid,                turning,    212},
    {24, "turning grooving",        "Turning grooving",        Turning | Solid,                turning,    212},
    {25, "turning boring",          "Turning boring",          Turning | Solid,                turning,    212},
    {26, "probe",                   "Probe",                   Probe,                          probe,      198},
    {27, "engraving tool",          "Engraving tool",          Mill,                           milling,    198},
    {28, "roughing end mill",       "Roughing end mill",       Mill,                           milling,    198},
    {29, "waterjet",                "Waterjet",                JetCutter,                      jet,        213},
    {30, "laser cutter",            "Laser cutter",            JetCutter,                      jet,        213},
    {31, "slitting saw",            "Slitting saw",            Mill,                           milling,    198},
    {32, "woodruff cutter",         "Woodruff cutter",         Mill,                           milling,    198},
    {33, "form mill",               "Form mill",               Mill | FormMill,                milling,    198},
    {34, "back chamfer mill",       "Back chamfer mill",       Mill,                           milling,    198},
    {35, "deburring tool",          "Deburring tool",          Mill,                           milling,    198},
    {36, "plasma cutter",           "Plasma cutter",           JetCutter,                      jet,        213},
    {37, "gear cutter",             "Gear cutter",             Mill,                           milling,    198},
    {38, "thread mill",             "Thread mill",             Mill,                           milling,    198},
    {39, "laser powder",            "Laser powder",            Depositing,                     depositing, 214},
    {40, "laser wire",              "Laser wire",              Depositing,                     depositing, 214},
    {41, "electric arc wire",       "Electric arc wire",       Depositing,                     depositing, 214},
    {42, "circle segment barrel",   "Circle segment barrel",   Mill | CircleSegment,           milling,    198},
    {43, "circle segment lens",     "Circle segment lens",     Mill | CircleSegment,           milling,    198},
    {44, "circle segment oval",     "Circle segment oval",     Mill | CircleSegment,           milling,    198},
    {45, "circle segment taper",    "Circle segment taper",    Mill | CircleSegment,           milling,    198},
    {46, "corner chamfer end mill", "Corner chamfer end mill", Mill | CornerChamfer,           milling,    198},
    {47, "tool block",              "Tool block",              ToolBlockOnly | Solid,          adaptive,   198},
    {48, "plunge mill",             "Plunge mill",             Mill,                           milling,    198},
};
// clang-format on

constexpr bool eachTypeIsOfOneFamily()
{
    for (const ToolTypeRow &row : rows) {
        const int families = std::popcount(row.flags & Families);
        if (families != (row.value == ToolGeometry::TYPE_NONE ? 0 : 1))
            return false;
    }
    return true;
}

/// A flag of a member is only on types of its family.
constexpr bool membersAreInTheirFamily()
{
    for (const ToolTypeRow &row : rows) {
        if ((row.flags & (FormMill | CircleSegment | CornerChamfer)) && !(row.flags & Mill))
            return false;
        if ((row.flags & (GeneralHole | BoringHole)) && !(row.flags & Drill))
            return false;
        if ((row.flags & GeneralHole) && (row.flags & BoringHole))
            return false;
    }
    return true;
}

constexpr KeywordTable table(rows);

static_assert(std::size(rows) == ToolGeometry::TYPE_PLUNGE_MILL + 1);
static_assert(table.isComplete());
static_assert(eachTypeIsOfOneFamily());
static_assert(membersAreInTheirFamily());

} // namespace

std::span<const ToolTypeRow> toolTypeRows()
{
    return table.rows();
}

const ToolTypeRow &toolTypeRow(ToolGeometry::Type type)
{
    return table.row(type);
}

const ToolTypeRow *findToolTypeRow(std::string_view keyword)
{
    return table.find(keyword);
}

const ToolTypeRow *findToolTypeRow(std::wstring_view keyword)
{
    return table.find(keyword);
}

} // namespace Varn

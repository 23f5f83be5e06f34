#include "platform/nc/ToolGeometry.h"

#include "platform/nc/HolderSupportTable.h"
#include "platform/nc/InsertTypeTable.h"
#include "platform/nc/KeywordTable.h"
#include "platform/nc/ToolTypeTable.h"
#include "platform/tool/Exception.h"
#include "platform/utils/Messages.h"

#include <cmath>
#include <numbers>

namespace Varn {

namespace {

struct ThreadTipTypeRow {
    ToolGeometry::ThreadTipType value;
    std::string_view key;
};

// clang-format off
constexpr ThreadTipTypeRow threadTipTypes[] = {
    {ToolGeometry::THREAD_TIP_FLAT,  "flat"},
    {ToolGeometry::THREAD_TIP_ROUND, "round"},
    {ToolGeometry::THREAD_TIP_POINT, "point"},
};
// clang-format on

constexpr KeywordTable threadTipTypeTable(threadTipTypes);
static_assert(threadTipTypeTable.isComplete());

bool hasFlag(ToolGeometry::Type type, unsigned flag)
{
    return (toolTypeRow(type).flags & flag) != 0;
}

template <typename Text>
ToolGeometry::Type typeOrNone(Text keyword)
{
    const ToolTypeRow *row = findToolTypeRow(keyword);
    return row ? ToolGeometry::Type(row->value) : ToolGeometry::TYPE_NONE;
}

} // namespace

bool ToolGeometry::isMill(Type type)
{
    return hasFlag(type, ToolTypeFlag::Mill);
}

bool ToolGeometry::isDrill(Type type)
{
    return hasFlag(type, ToolTypeFlag::Drill);
}

bool ToolGeometry::isProbe(Type type)
{
    return hasFlag(type, ToolTypeFlag::Probe);
}

bool ToolGeometry::isJetCutter(Type type)
{
    return hasFlag(type, ToolTypeFlag::JetCutter);
}

bool ToolGeometry::isTurning(Type type)
{
    return hasFlag(type, ToolTypeFlag::Turning);
}

bool ToolGeometry::isDepositing(Type type)
{
    return hasFlag(type, ToolTypeFlag::Depositing);
}

bool ToolGeometry::isHolderOnly(Type type)
{
    return hasFlag(type, ToolTypeFlag::HolderOnly);
}

bool ToolGeometry::isToolBlockOnly(Type type)
{
    return hasFlag(type, ToolTypeFlag::ToolBlockOnly);
}

bool ToolGeometry::isFormMill(Type type)
{
    return hasFlag(type, ToolTypeFlag::FormMill);
}

bool ToolGeometry::isCircleSegmentTool(Type type)
{
    return hasFlag(type, ToolTypeFlag::CircleSegment);
}

bool ToolGeometry::isCornerChamferEndMill(Type type)
{
    return hasFlag(type, ToolTypeFlag::CornerChamfer);
}

bool ToolGeometry::isGeneralHoleMaking(Type type)
{
    return hasFlag(type, ToolTypeFlag::GeneralHole);
}

bool ToolGeometry::isBoringHoleMaking(Type type)
{
    return hasFlag(type, ToolTypeFlag::BoringHole);
}

bool ToolGeometry::hasTipAngle(Type type)
{
    return hasFlag(type, ToolTypeFlag::TipAngle);
}

bool ToolGeometry::supports3DGeometry(Type type)
{
    return hasFlag(type, ToolTypeFlag::Solid);
}

ToolGeometry::Type ToolGeometry::getToolTypeFromString(std::string_view keyword)
{
    const ToolTypeRow *row = findToolTypeRow(keyword);
    if (!row)
        throw ToolLibraries::InvalidInput("Unknown tool type: \"" + std::string(keyword) + "\"");
    return Type(row->value);
}

ToolGeometry::Type ToolGeometry::getToolTypeFromString(std::wstring_view keyword)
{
    return getToolTypeFromString(Messages::fromWideUnicodeToUTF8(keyword));
}

ToolGeometry::Type ToolGeometry::getToolTypeFromStringNoThrow(std::string_view keyword)
{
    return typeOrNone(keyword);
}

ToolGeometry::Type ToolGeometry::getToolTypeFromStringNoThrow(std::wstring_view keyword)
{
    return typeOrNone(keyword);
}

std::string ToolGeometry::getToolTypeAsString(Type type)
{
    return std::string(toolTypeRow(type).key);
}

std::string ToolGeometry::getThreadTipTypeAsString(ThreadTipType type)
{
    return std::string(threadTipTypeTable.row(type).key);
}

bool ToolGeometry::isCustomInsert(InsertType type)
{
    return insertTypeRow(type).value == INSERT_CUSTOM;
}

wchar_t ToolGeometry::insertTypeChar(InsertType type)
{
    return insertTypeRow(type).letter;
}

std::optional<ToolGeometry::InsertType> ToolGeometry::insertTypeFromChar(wchar_t letter)
{
    for (const InsertTypeRow &row : insertTypeRows()) {
        if (row.letter != 0 && row.letter == letter)
            return InsertType(row.value);
    }
    return std::nullopt;
}

double ToolGeometry::insertTypeCuttingLengthToICFactor(InsertType type)
{
    return insertTypeRow(type).lengthPerCircle;
}

double ToolGeometry::insertDiamondInsertCuttingLengthToICFactor(double degrees)
{
    const bool isRhombus = degrees > 0 && degrees < 180; // false for NaN
    return isRhombus ? 1.0 / std::sin(degrees * std::numbers::pi / 180.0) : 1.0;
}

bool ToolGeometry::doesSupportHolder(Type type, InsertType insert, HolderType holder)
{
    return isHolderSupported(type, insert, holder);
}

} // namespace Varn

#include "platform/core/ToolSpecification.h"

#include "platform/nc/HolderTypeTable.h"
#include "platform/nc/InsertTypeTable.h"
#include "platform/nc/KeywordTable.h"
#include "platform/nc/ToolTypeTable.h"
#include "platform/utils/LocaleRegistry.h"
#include "platform/utils/Messages.h"

#include <cmath>
#include <span>

namespace Varn {

namespace {

template <typename Value>
struct KeywordRow {
    Value value;
    std::string_view key;
};

// clang-format off
constexpr KeywordRow<ToolGeometry::CompensationMode> compensationModes[] = {
    {ToolGeometry::COMPENSATION_CENTER,  "center" },
    {ToolGeometry::COMPENSATION_TIP,     "tip"    },
    {ToolGeometry::COMPENSATION_CORNER,  "corner" },
    {ToolGeometry::COMPENSATION_TANGENT, "tangent"},
};

constexpr KeywordRow<ToolGeometry::TaperedType> taperedTypes[] = {
    {ToolGeometry::TAPERED_BALL,      "tapered_ball"     },
    {ToolGeometry::TAPERED_BULL_NOSE, "tapered_bull_nose"},
};

constexpr KeywordRow<ToolSpecification::PresetMaterialCategory> materialCategories[] = {
    {ToolSpecification::MATERIAL_ALL,        "all"       },
    {ToolSpecification::MATERIAL_STEEL,      "steel"     },
    {ToolSpecification::MATERIAL_STAINLESS,  "stainless" },
    {ToolSpecification::MATERIAL_CAST_IRON,  "cast iron" },
    {ToolSpecification::MATERIAL_ALUMINIUM,  "aluminium" },
    {ToolSpecification::MATERIAL_COPPER,     "copper"    },
    {ToolSpecification::MATERIAL_TITANIUM,   "titanium"  },
    {ToolSpecification::MATERIAL_SUPERALLOY, "superalloy"},
    {ToolSpecification::MATERIAL_HARDENED,   "hardened"  },
    {ToolSpecification::MATERIAL_PLASTIC,    "plastic"   },
    {ToolSpecification::MATERIAL_COMPOSITE,  "composite" },
    {ToolSpecification::MATERIAL_WOOD,       "wood"      },
};
// clang-format on

constexpr KeywordTable compensationModeTable(compensationModes);
constexpr KeywordTable taperedTypeTable(taperedTypes);
constexpr KeywordTable materialCategoryTable(materialCategories);

static_assert(compensationModeTable.isComplete());
static_assert(taperedTypeTable.isComplete());
static_assert(materialCategoryTable.isComplete());

template <typename Value, typename Row>
Validified<Value> valueOf(const Row *row)
{
    return row ? Validified<Value>(Value(row->value)) : Validified<Value>();
}

template <typename Value, typename Row>
std::optional<Value> optionalValueOf(const Row *row)
{
    return row ? std::optional<Value>(row->value) : std::nullopt;
}

/// The titles of a table at the places of its rows.
template <typename Row>
std::vector<LocalizedMessage> registeredTitles(std::span<const Row> rows)
{
    std::vector<LocalizedMessage> titles;
    for (const Row &row : rows)
        titles.push_back(LocaleRegistry::registerMessage(row.title));
    return titles;
}

/// The values of a table from \a first on.
template <typename Value, typename Row>
std::vector<Value> valuesFrom(std::span<const Row> rows, Value first)
{
    std::vector<Value> values;
    for (const Row &row : rows.subspan(static_cast<std::size_t>(first)))
        values.push_back(Value(row.value));
    return values;
}

} // namespace

std::wstring ToolSpecification::getToolTypeAsWideString(Type type)
{
    return Messages::getAsWideString(toolTypeRow(type).key);
}

Validified<ToolGeometry::Type> ToolSpecification::getToolTypeByString(std::string_view keyword)
{
    return valueOf<Type>(findToolTypeRow(keyword));
}

Validified<ToolGeometry::Type> ToolSpecification::getToolTypeByString(std::wstring_view keyword)
{
    return valueOf<Type>(findToolTypeRow(keyword));
}

LocalizedMessage ToolSpecification::getToolTypeAsLocalizedString(Type type)
{
    static const std::vector<LocalizedMessage> titles = registeredTitles(toolTypeRows());
    return titles[static_cast<std::size_t>(toolTypeRow(type).value)];
}

std::wstring ToolSpecification::getInsertTypeAsWideString(InsertType type)
{
    return Messages::getAsWideString(insertTypeRow(type).key);
}

Validified<ToolGeometry::InsertType> ToolSpecification::getInsertTypeByString(std::string_view keyword)
{
    return valueOf<InsertType>(findInsertTypeRow(keyword));
}

Validified<ToolGeometry::InsertType> ToolSpecification::getInsertTypeByString(std::wstring_view keyword)
{
    return valueOf<InsertType>(findInsertTypeRow(keyword));
}

LocalizedMessage ToolSpecification::getInsertTypeTitle(InsertType type)
{
    static const std::vector<LocalizedMessage> titles = registeredTitles(insertTypeRows());
    return titles[static_cast<std::size_t>(insertTypeRow(type).value)];
}

std::wstring ToolSpecification::getHolderTypeAsWideString(HolderType type)
{
    return Messages::getAsWideString(holderTypeRow(type).key);
}

Validified<ToolGeometry::HolderType> ToolSpecification::getHolderTypeByString(std::string_view keyword)
{
    return valueOf<HolderType>(findHolderTypeRow(keyword));
}

Validified<ToolGeometry::HolderType> ToolSpecification::getHolderTypeByString(std::wstring_view keyword)
{
    return valueOf<HolderType>(findHolderTypeRow(keyword));
}

LocalizedMessage ToolSpecification::getHolderTypeTitle(HolderType type)
{
    static const std::vector<LocalizedMessage> titles = registeredTitles(holderTypeRows());
    return titles[static_cast<std::size_t>(holderTypeRow(type).value)];
}

std::string ToolSpecification::getCompensationModeAsString(CompensationMode mode)
{
    return std::string(compensationModeTable.row(mode).key);
}

std::wstring ToolSpecification::getCompensationModeAsWideString(CompensationMode mode)
{
    return Messages::getAsWideString(compensationModeTable.row(mode).key);
}

Validified<ToolGeometry::CompensationMode> ToolSpecification::getCompensationModeByString(std::string_view keyword)
{
    return valueOf<CompensationMode>(compensationModeTable.find(keyword));
}

Validified<ToolGeometry::CompensationMode> ToolSpecification::getCompensationModeByString(std::wstring_view keyword)
{
    return valueOf<CompensationMode>(compensationModeTable.find(keyword));
}

std::string ToolSpecification::getTaperedTypeAsString(TaperedType type)
{
    return std::string(taperedTypeTable.row(type).key);
}

std::string ToolSpecification::getPresetMaterialCategoryAsString(PresetMaterialCategory category)
{
    return std::string(materialCategoryTable.row(category).key);
}

std::optional<ToolSpecification::PresetMaterialCategory>
ToolSpecification::getAsPresetMaterialCategory(std::string_view keyword)
{
    return optionalValueOf<PresetMaterialCategory>(materialCategoryTable.find(keyword));
}

std::optional<ToolSpecification::PresetMaterialCategory>
ToolSpecification::getAsPresetMaterialCategory(std::wstring_view keyword)
{
    return optionalValueOf<PresetMaterialCategory>(materialCategoryTable.find(keyword));
}

const std::vector<ToolGeometry::Type> &ToolSpecification::getSupportedTypes()
{
    static const std::vector<Type> types = valuesFrom(toolTypeRows(), TYPE_DRILL);
    return types;
}

const std::vector<ToolGeometry::InsertType> &ToolSpecification::getSupportedInsertTypes()
{
    static const std::vector<InsertType> types = valuesFrom(insertTypeRows(), INSERT_CUSTOM);
    return types;
}

const std::vector<ToolGeometry::HolderType> &ToolSpecification::getSupportedHolderTypes()
{
    static const std::vector<HolderType> types = valuesFrom(holderTypeRows(), HOLDER_A);
    return types;
}

bool ToolSpecification::isInsertValidForType(InsertType insert, Type type)
{
    switch (insertTypeRow(insert).use) {
    case InsertUse::General:
        return type == TYPE_TURNING_GENERAL || type == TYPE_TURNING_BORING;
    case InsertUse::Grooving:
        return type == TYPE_TURNING_GROOVING;
    case InsertUse::Threading:
        return type == TYPE_TURNING_THREADING;
    }
    return false;
}

Strategy::Type ToolSpecification::getStrategyType(Type type)
{
    return Strategy::Type(toolTypeRow(type).strategy);
}

std::optional<std::wstring> ToolSpecification::getFractionalString(double inches)
{
    constexpr double tolerance = 1e-5;
    constexpr double tooLarge = 1000;
    if (!(inches >= 0 && inches < tooLarge)) // false for a NaN
        return std::nullopt;
    const auto numeratorOver = [inches](int denominator) -> std::optional<int> {
        const double nearest = std::round(inches * denominator);
        if (std::abs(inches - nearest / denominator) > tolerance)
            return std::nullopt;
        return static_cast<int>(nearest);
    };
    if (numeratorOver(1))
        return std::nullopt;
    for (const int denominator : {2, 4, 8, 16, 32, 64}) {
        const std::optional<int> numerator = numeratorOver(denominator);
        if (!numerator)
            continue;
        const int whole = *numerator / denominator;
        const std::wstring rest = std::to_wstring(*numerator % denominator) + L"/" + std::to_wstring(denominator);
        return whole == 0 ? rest : std::to_wstring(whole) + L"-" + rest;
    }
    return std::nullopt;
}

} // namespace Varn

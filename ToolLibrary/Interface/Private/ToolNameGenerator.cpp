#include "ToolLibrary/Interface/Private/ToolNameGenerator.h"

#include "ToolLibrary/Interface/Private/IndexedToolLookup.h"
#include "ToolLibrary/Interface/Private/NumberText.h"
#include "ToolLibrary/Interface/Private/TurningToolDesignation.h"
#include "platform/core/ToolSpecification.h"
#include "platform/nc/ToolTypeCategory.h"
#include "platform/utils/LocaleRegistry.h"
#include "platform/utils/Messages.h"

#include <algorithm>
#include <iterator>

namespace Varn::ToolLibraries {

namespace {

struct Dimension {
    const char *key;
    bool isShownWhenZero;
    bool isAngle;
    const wchar_t *prefix;
};

constexpr Dimension spinningDimensions[] = {
    // key                zero   angle  prefix
    {"tool_diameter", true, false, L"∅"},
    {"tool_cornerRadius", false, false, L"R"},
    {"tool_pointAngle", false, true, L""},
    {"tool_taperAngle", false, true, L""},
};

constexpr int anglePrecision = 1;

std::optional<std::wstring> dimensionText(const Dimension &dimension, const IndexedTool &tool)
{
    const std::optional<double> value = IndexedToolLookup::getRoundedDouble(tool, dimension.key);
    if (!value || (!dimension.isShownWhenZero && !(*value > 0)))
        return std::nullopt;
    if (dimension.isAngle)
        return dimension.prefix + NumberText::withPrecision(*value, anglePrecision) + L"°";
    const bool isInch = tool.getUnit() == NCUnit::inches;
    return dimension.prefix + NumberText::length(*value, isInch) + (isInch ? L"\"" : L"mm");
}

bool hasDesignation(ToolGeometry::Type type)
{
    return type == ToolGeometry::TYPE_TURNING_GENERAL || type == ToolGeometry::TYPE_TURNING_BORING;
}

bool isSpinning(ToolTypeCategory category)
{
    return category == ToolTypeCategory::HoleMaking || category == ToolTypeCategory::Milling ||
           category == ToolTypeCategory::Probe;
}

} // namespace

std::wstring ToolNameGenerator::generateName(const IndexedTool &tool)
{
    return generateLocalizedName(tool, LocaleRegistry::get()->getCurrentCountryCode());
}

std::wstring ToolNameGenerator::generateLocalizedName(const IndexedTool &tool, std::wstring_view countryCode)
{
    std::wstring name;
    for (const Component &component : getComponents(tool, countryCode)) {
        if (!component)
            continue;
        name += *component;
        name += L' ';
    }
    name.pop_back(); // there is always one component
    return name;
}

ToolNameGenerator::Components ToolNameGenerator::getComponents(const IndexedTool &tool, std::wstring_view countryCode)
{
    Components components;
    components.reserve(6); // number, four dimensions, description
    if (const int number = tool.getTool().getInt("tool_number").value_or(0))
        components.emplace_back(std::to_wstring(number) + L" -");
    const ToolGeometry::Type type = tool.getType();
    const ToolTypeCategory category = getToolTypeCategory(type);
    Components dimensions;
    if (isSpinning(category))
        dimensions = getSpinningComponents(tool);
    else if (category == ToolTypeCategory::Turning && hasDesignation(type))
        dimensions = getTurningComponents(tool, countryCode);
    const bool isBracketed =
        std::ranges::any_of(dimensions, [](const Component &component) { return component.has_value(); });
    std::ranges::move(dimensions, std::back_inserter(components));
    std::wstring description = Messages::fromUTF8ToWideUnicode(tool.getTool().getDescription());
    if (description.empty())
        description =
            LocaleRegistry::getLocalizedMessage(ToolSpecification::getToolTypeAsLocalizedString(type), countryCode);
    components.emplace_back(isBracketed ? L"(" + description + L")" : description);
    return components;
}

ToolNameGenerator::Components ToolNameGenerator::getSpinningComponents(const IndexedTool &tool)
{
    Components components;
    components.reserve(std::size(spinningDimensions));
    for (const Dimension &dimension : spinningDimensions)
        components.push_back(dimensionText(dimension, tool));
    return components;
}

ToolNameGenerator::Components ToolNameGenerator::getTurningComponents(const IndexedTool &tool,
                                                                      std::wstring_view countryCode)
{
    Component insert = TurningToolDesignation::insert(tool);
    Component holder = TurningToolDesignation::holder(tool, countryCode);
    if (insert && holder)
        return {std::move(insert), L"-", std::move(holder)};
    return {std::move(insert), std::move(holder)};
}

} // namespace Varn::ToolLibraries

#include "ToolLibrary/Interface/Private/TurningToolDesignation.h"

#include "ToolLibrary/Interface/Private/IndexedToolLookup.h"
#include "ToolLibrary/Interface/Private/NumberText.h"
#include "platform/core/ToolSpecification.h"
#include "platform/nc/ToolInsert.h"
#include "platform/utils/LocaleRegistry.h"
#include "platform/utils/Messages.h"

namespace Varn::ToolLibraries {

namespace {

constexpr double sizeTolerance = 0.0001; // in the unit of the tool
constexpr int anglePrecision = 1;
constexpr int insertPrecision = 2;
constexpr std::wstring_view boringBar = L"boring bar";

bool isMetric(const IndexedTool &tool)
{
    return tool.getUnit() == NCUnit::millimeters;
}

std::wstring wide(const std::optional<std::string> &text)
{
    return text ? Messages::fromUTF8ToWideUnicode(*text) : std::wstring();
}

/// Nothing for a tool that says nothing of its insert; an unknown insert is a custom one.
std::optional<ToolGeometry::InsertType> insertTypeOf(const IndexedTool &tool)
{
    if (!tool.getTool().getString("tool_insertType"))
        return std::nullopt;
    return IndexedToolLookup::getInsertType(tool, "tool_insertType");
}

std::optional<double> reliefAngleOf(const IndexedTool &tool)
{
    return IndexedToolLookup::getRoundedDouble(tool, "tool_reliefAngle");
}

std::wstring customInsert(const IndexedTool &indexed)
{
    const Tool &tool = indexed.getTool();
    const bool isInch = !isMetric(indexed);
    const std::wstring unit = isInch ? L"\"" : L"mm";
    const wchar_t *sizePrefix = tool.getInsertSizeSpecificationMode() == "IC" ? L"∅" : L"L";
    return NumberText::withPrecision(tool.getInsertAngle().value_or(0), insertPrecision) + L"° " +
           NumberText::ofInsert(tool.getCornerRadiusIndexed().value_or(0), isInch) + unit + L" - " + sizePrefix +
           NumberText::ofInsert(tool.getInsertSize().value_or(0), isInch) + unit;
}

std::wstring code(const ToolInsert::Designation &designation, bool metric)
{
    const std::wstring &text = metric ? designation.metric : designation.inch;
    return text == L"?" ? L"??" : text;
}

/// The code of the holder's style in a designation.
std::wstring holderLetter(const std::wstring &style)
{
    const auto type = ToolSpecification::getHolderTypeByString(style).valueOr(ToolGeometry::HOLDER_CUSTOM);
    const std::wstring text = ToolSpecification::getHolderTypeAsWideString(type);
    if (text.size() == 1)
        return text;
    return text.starts_with(boringBar) ? Messages::getUpperCase(text.substr(text.size() - 1)) : L"-";
}

std::wstring angle(const LocalizedMessage &label, double degrees, std::wstring_view countryCode)
{
    return LocaleRegistry::getLocalizedMessage(label, countryCode) + L": " +
           NumberText::withPrecision(degrees, anglePrecision) + L"°";
}

std::wstring customHolder(const Tool &tool, const std::wstring &hand, std::wstring_view countryCode)
{
    static const LocalizedMessage leading = LocaleRegistry::registerMessage("Leading angle");
    static const LocalizedMessage trailing = LocaleRegistry::registerMessage("Trailing angle");
    std::wstring text = angle(leading, tool.getLeadingAngle().value_or(0), countryCode);
    if (const double degrees = tool.getTrailingAngle().value_or(0); degrees != 0)
        text += L", " + angle(trailing, degrees, countryCode);
    return text + L" - " + hand;
}

} // namespace

std::optional<std::wstring> TurningToolDesignation::insert(const IndexedTool &tool)
{
    const auto type = insertTypeOf(tool);
    if (!type)
        return std::nullopt;
    if (*type == ToolGeometry::INSERT_CUSTOM)
        return customInsert(tool);
    const std::optional<double> relief = reliefAngleOf(tool);
    const wchar_t shape = ToolGeometry::insertTypeChar(*type);
    if (!relief || shape == 0)
        return std::nullopt;
    const Tool &values = tool.getTool();
    const bool metric = isMetric(tool);
    double size = values.getInsertSize().value_or(0);
    if (values.getInsertSizeSpecificationMode() == "CE") // the length of the cutting edge
        size /= ToolGeometry::insertTypeCuttingLengthToICFactor(*type);
    return shape + ToolInsert::getReliefAngleChar(*relief) + wide(values.getTolerance()) +
           wide(values.getCrossSection()) +
           code(ToolInsert::getClosestSize(size, sizeTolerance, *type, metric), metric) +
           code(ToolInsert::getClosestThickness(values.getThickness().value_or(0), sizeTolerance, metric), metric) +
           code(ToolInsert::getClosestCornerRadius(values.getCornerRadiusIndexed().value_or(0), sizeTolerance, *type,
                                                   metric),
                metric);
}

std::optional<std::wstring> TurningToolDesignation::holder(const IndexedTool &tool, std::wstring_view countryCode)
{
    const Tool &values = tool.getTool();
    const std::string handText = values.getHandString().value_or("");
    const auto handValue =
        ToolGeometry::TurningToolParameterization::getHandFromChar(handText.empty() ? '\0' : handText.front());
    if (!handValue)
        return std::nullopt;
    const std::wstring hand(1,
                            static_cast<wchar_t>(ToolGeometry::TurningToolParameterization::getHandAsChar(*handValue)));
    const std::wstring style = wide(values.getHolderTypeString());
    if (style == L"custom")
        return customHolder(values, hand, countryCode);
    const auto insert = insertTypeOf(tool);
    const wchar_t shape = insert ? ToolGeometry::insertTypeChar(*insert) : 0;
    const std::optional<double> relief = reliefAngleOf(tool);
    return wide(values.getClamping()) + (shape ? std::wstring(1, shape) : std::wstring()) + holderLetter(style) +
           (relief ? ToolInsert::getReliefAngleChar(*relief) : std::wstring()) + L"-" + hand;
}

} // namespace Varn::ToolLibraries

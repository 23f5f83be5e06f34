// The way between a tool record and a table of parameters.
#include "platform/core/ParameterExpression.h"
#include "platform/core/ParameterTable.h"
#include "platform/core/RecordParameters.h"
#include "platform/core/ToolRecordParts.h"
#include "platform/core/ToolSpecification.h"
#include "platform/core/VarnParameters.h"
#include "platform/utils/Format.h"
#include "platform/utils/Messages.h"

namespace Varn {

namespace {

std::wstring parameterName(std::string_view stem, std::string_view name)
{
    std::wstring whole(stem.begin(), stem.end());
    return whole.append(name.begin(), name.end());
}

/// Calls \a visit(access, field, name) with each field that can be a parameter of a tool of \a type.
template <typename Visit>
void forEachParameter(ToolGeometry::Type type, Visit &&visit)
{
    const std::optional<ToolPresetKind> kind = getToolPresetKind(type);
    const unsigned kinds = kind ? presetKindBit(*kind) : 0;
    forEachRecordField([&](const ToolRecordPart &part, const auto &access, const auto &field) {
        const bool isOfKind = field.kinds == everyKind || (field.kinds & kinds) != 0;
        if (field.isParameter && isOfKind)
            visit(access, field, parameterName(ToolGeometry::isTurning(type) ? part.turning : part.stem, field.name));
    });
}

/// Whether the expression speaks of other parameters, so that it says more than its value.
bool isOverNames(const std::wstring &expression)
{
    if (Format::tryDouble(Messages::fromWideUnicodeToUTF8(expression)))
        return false; // also what is not finite: "nan" is no name
    const auto parsed = ParameterExpression::parse(expression);
    return parsed && !parsed->names().empty();
}

/// The cones of a holder as the numbered parameters that expressions speak of: "segment_1_height".
void writeSegments(const ToolGeometry &tool, ParameterTable &table)
{
    const Units::Unit unit = tool.getUnit() == NCUnit::inches ? Units::UNIT_INCHES : Units::UNIT_MILLIMETERS;
    double lower = tool.getHolderDiameter();
    int number = 0;
    for (const ToolSection &section : tool.getHolder()) {
        if (section.offset > 0) {
            const std::wstring stem = L"segment_" + std::to_wstring(++number);
            table.setParameter(stem + L"_height", section.offset, unit);
            table.setParameter(stem + L"_lower_diameter", lower, unit);
            table.setParameter(stem + L"_upper_diameter", section.diameter, unit);
        }
        lower = section.diameter;
    }
}

} // namespace

ParameterTable ToolSpecification::createParameterTable(bool withExpressions) const
{
    ParameterTable table(getStrategyType(getType()), getUnit() != NCUnit::inches);
    syncToParameters(table, withExpressions);
    return table;
}

void ToolSpecification::syncFromParameters(const ParameterTable &table, bool withExpressions)
{
    if (table.hasParameter(L"tool_type"))
        setType(getToolTypeFromStringNoThrow(table.getWideMessage(L"tool_type")));
    setUnit(table.isMetric() ? NCUnit::millimeters : NCUnit::inches);
    if (table.hasParameter(L"tool_unit"))
        setUnit(NCUnit::getAsUnit(table.getWideMessage(L"tool_unit")).valueOr(NCUnit::millimeters));

    forEachParameter(getType(), [&](const auto &access, const auto &field, const std::wstring &name) {
        RecordParameters::read(table, name, parameterName({}, field.switchName), getUnit(),
                               access(*this).*field.member);
    });
    if (isHolder() || isBlock())
        holder().attached = false;
    else if (table.hasParameter(L"holder_attached") && !hasHolder())
        removeHolder();
    if (table.hasParameter(L"tool_block_attached") && !hasAttachedToolBlock())
        removeToolBlock();

    if (!withExpressions)
        return;
    ParameterTable copy = table; // parameters are listed of a table that may change
    for (const auto &parameter : copy.getParameters()) {
        const std::wstring name = parameter->getName();
        const std::wstring expression = parameter->isDefault() ? std::wstring() : parameter->getExpression();
        const auto known = m_expressions.find(name);
        if (isOverNames(expression))
            m_expressions[name] = expression;
        else if (known != m_expressions.end() && known->second != expression)
            m_expressions.erase(known);
    }
}

void ToolSpecification::syncToParameters(ParameterTable &table, bool withExpressions) const
{
    if (const auto type = table.getParameterNoThrow(L"tool_type"))
        type->set(getToolTypeAsWideString());
    if (const auto unit = table.getParameterNoThrow(L"tool_unit"))
        unit->set(NCUnit::getUnitAsString(getUnit()));
    forEachParameter(getType(), [&](const auto &access, const auto &field, const std::wstring &name) {
        RecordParameters::write(access(*this).*field.member, getUnit(), name, parameterName({}, field.switchName),
                                table);
    });
    if (!withExpressions || table.getStrategy() == Strategy::INVALID)
        return;
    writeSegments(*this, table);
    for (const auto &[name, expression] : m_expressions) {
        const auto parameter = table.getParameterNoThrow(name);
        if (parameter)
            parameter->setExpression(expression, RecordParameters::unitOf(*parameter, getUnit()), true);
    }
}

} // namespace Varn

#include "ToolLibrary/Interface/Private/IndexedTool.h"

#include "ToolLibrary/Interface/Private/ToolNameGenerator.h"
#include "platform/core/ParameterTable.h"
#include "platform/core/ToolSpecification.h"
#include "platform/core/VarnParameters.h"
#include "platform/utils/Messages.h"

#include <cmath>
#include <exception>
#include <utility>

namespace Varn::ToolLibraries {

namespace {

constexpr std::string_view normValueSuffix = ".normValue";

/// Half away from zero, on a grid of \a precision steps.
double rounded(double value, int precision)
{
    const double steps = precision * value;
    return (steps >= 0 ? std::floor(steps + 0.5) : std::ceil(steps - 0.5)) / precision;
}

} // namespace

IndexedTool::IndexedTool(std::unique_ptr<const Tool> tool) : m_tool(std::move(tool))
{
    if (!m_tool)
        std::terminate();
}

IndexedTool::IndexedTool(std::unique_ptr<const Tool> tool, std::wstring name) : IndexedTool(std::move(tool))
{
    m_name = std::move(name);
}

const ToolId &IndexedTool::getToolId() const
{
    if (!m_id)
        m_id = m_tool->getToolId();
    return *m_id;
}

std::wstring IndexedTool::getComment() const
{
    return m_tool->getWString("tool_comment").value_or(std::wstring());
}

std::wstring IndexedTool::getProductId() const
{
    return m_tool->getWString("tool_productId").value_or(std::wstring());
}

std::wstring IndexedTool::getVendor() const
{
    return m_tool->getWString("tool_vendor").value_or(std::wstring());
}

const std::wstring &IndexedTool::getName() const
{
    if (!m_name)
        m_name = ToolNameGenerator::generateName(*this);
    return *m_name;
}

ToolGeometry::Type IndexedTool::getType() const
{
    return getType("tool_type").value_or(ToolGeometry::Type{});
}

NCUnit::Unit IndexedTool::getUnit() const
{
    return getUnit("tool_unit").value_or(NCUnit::millimeters);
}

std::optional<Tool::Property> IndexedTool::getRawProperty(std::string_view key) const
{
    return m_tool->getRawProperty(key);
}

std::optional<double> IndexedTool::getRoundedDouble(std::string_view key) const
{
    const NCUnit::Unit unit = getUnit();
    const bool normalise = key.ends_with(normValueSuffix);
    if (normalise)
        key.remove_suffix(normValueSuffix.size());
    std::optional<double> value = m_tool->getDouble(key);
    if (!value)
        return std::nullopt;
    if (normalise && unit != NCUnit::millimeters)
        *value *= NCUnit::getUnitConversionFactor(unit, NCUnit::millimeters);
    // The grid is that of the tool's own unit, also for a value that has just been brought to millimeters.
    return rounded(*value, getPrecisionForParameterType(key, getType(), unit));
}

std::optional<ToolGeometry::InsertType> IndexedTool::getInsertType(std::string_view key) const
{
    if (key != "tool_insertType")
        return std::nullopt;
    if (!m_insertType) {
        const std::string text = m_tool->getString(key).value_or(std::string());
        m_insertType = ToolSpecification::getInsertTypeByString(text).valueOr(ToolGeometry::InsertType{});
    }
    return m_insertType;
}

std::optional<ToolGeometry::Type> IndexedTool::getType(std::string_view key) const
{
    if (key != "tool_type")
        return std::nullopt;
    if (!m_type)
        m_type = ToolGeometry::getToolTypeFromStringNoThrow(m_tool->getString(key).value_or(std::string()));
    return m_type;
}

std::optional<NCUnit::Unit> IndexedTool::getUnit(std::string_view key) const
{
    if (key != "tool_unit")
        return std::nullopt;
    if (!m_unit)
        m_unit = NCUnit::getAsUnit(m_tool->getWString(key).value_or(std::wstring())).valueOr(NCUnit::millimeters);
    return m_unit;
}

int IndexedTool::getPrecisionForParameterType(std::string_view key, ToolGeometry::Type toolType, NCUnit::Unit unit)
{
    const auto strategy = ToolSpecification::getStrategyType(toolType);
    switch (VarnParameters::getParameterKind(Messages::fromUTF8ToWideUnicode(key), strategy)) {
    case ParameterTable::KIND_VELOCITY:
        return unit == NCUnit::millimeters ? 100 : 1000;
    case ParameterTable::KIND_ROTATIONAL_SPEED:
        return 1;
    default:
        return 100000;
    }
}

} // namespace Varn::ToolLibraries

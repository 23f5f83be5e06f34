// RecordParameters.h -- one value of a record to its parameter and back. Stateless; the table is for one thread at a
// time.
#pragma once

#include "platform/core/ParameterTable.h"
#include "platform/core/ToolFieldText.h"
#include "platform/nc/NCUnit.h"

#include <optional>
#include <string>
#include <type_traits>

namespace Varn::RecordParameters {

/// The unit of a parameter's number in a record of \a unit.
inline Units::Unit unitOf(const ParameterTable::Parameter &parameter, NCUnit::Unit unit)
{
    return ParameterTable::Parameter::getDefaultKindUnit(parameter.getKind(), unit != NCUnit::inches);
}

/// The value of \a parameter. An enumeration value that the record has no word for leaves \a value.
template <typename Value>
void readValue(const ParameterTable::Parameter &parameter, NCUnit::Unit unit, Value &value)
{
    if constexpr (std::is_same_v<Value, bool>)
        value = parameter.getAsBoolean();
    else if constexpr (std::is_same_v<Value, ToolFeedMode>)
        value = parameter.getAsBoolean() ? FEED_PER_REVOLUTION : FEED_PER_MINUTE;
    else if constexpr (std::is_same_v<Value, int>)
        value = parameter.getAsInt();
    else if constexpr (std::is_same_v<Value, double>)
        value = parameter.getAsDouble(unitOf(parameter, unit));
    else if constexpr (std::is_same_v<Value, std::wstring>)
        value = parameter.getAsWideMessage();
    else
        ToolFieldText::read(parameter.getAsMessage(), value);
}

template <typename Value>
void writeValue(const Value &value, NCUnit::Unit unit, ParameterTable::Parameter &parameter)
{
    if constexpr (std::is_same_v<Value, ToolFeedMode>)
        parameter.set(value == FEED_PER_REVOLUTION);
    else if constexpr (std::is_same_v<Value, double>)
        parameter.set(value, unitOf(parameter, unit));
    else if constexpr (std::is_same_v<Value, bool> || std::is_same_v<Value, int> || std::is_same_v<Value, std::wstring>)
        parameter.set(value);
    else if (const std::string text = ToolFieldText::write(value);
             !std::is_same_v<Value, NCTool::Coolant> || text != "unset")
        parameter.set(std::wstring(text.begin(), text.end())); // keywords are ASCII
}

/// Reads \a value from the parameter \a name, if \a table has it. An optional value with a switch is there when the
/// parameter of that name is true; one without is there when the parameter has a value.
template <typename Value>
void read(const ParameterTable &table, const std::wstring &name, const std::wstring &switchName, NCUnit::Unit unit,
          Value &value)
{
    const auto parameter = table.getParameterNoThrow(name);
    if (!parameter)
        return;
    if constexpr (ToolFieldText::isOptional<Value>) {
        const auto isThere = switchName.empty() ? nullptr : table.getParameterNoThrow(switchName);
        value.reset();
        if (isThere ? isThere->getAsBoolean() : parameter->hasValue())
            readValue(*parameter, unit, value.emplace());
    } else {
        readValue(*parameter, unit, value);
    }
}

/// Sets the parameter \a name, if \a table has it. An optional value that is not there turns its switch off.
template <typename Value>
void write(const Value &value, NCUnit::Unit unit, const std::wstring &name, const std::wstring &switchName,
           ParameterTable &table)
{
    const auto parameter = table.getParameterNoThrow(name);
    if (!parameter)
        return;
    if constexpr (ToolFieldText::isOptional<Value>) {
        if (const auto isThere = switchName.empty() ? nullptr : table.getParameterNoThrow(switchName))
            isThere->set(value.has_value());
        if (value)
            writeValue(*value, unit, *parameter);
    } else {
        writeValue(value, unit, *parameter);
    }
}

} // namespace Varn::RecordParameters

#include "platform/core/ParameterProblems.h"
#include "platform/core/ParameterTable.h"
#include "platform/core/ParameterValues.h"
#include "platform/utils/Messages.h"

#include <charconv>
#include <iterator>

namespace Varn {

namespace {

std::wstring plainText(double number)
{
    char text[32];
    const auto [end, error] = std::to_chars(std::begin(text), std::end(text), number);
    return {std::begin(text), end};
}

} // namespace

ParameterTable::Parameter::Parameter(std::shared_ptr<ParameterValues> values, std::size_t slot)
    : m_values(std::move(values)), m_slot(slot)
{
}

std::wstring ParameterTable::Parameter::getName() const
{
    return m_values->name(m_slot);
}

const ParameterTable::ParameterDef &ParameterTable::Parameter::getDefinition() const
{
    return m_values->definition(m_slot);
}

Units::Unit ParameterTable::Parameter::getDefaultKindUnit(Kind kind, bool metric)
{
    return ParameterDefinitions::get().defaultUnit(kind, metric);
}

Units::Unit ParameterTable::Parameter::getDisplayUnit() const
{
    return m_values->displayUnit(m_slot);
}

void ParameterTable::Parameter::setExpression(std::wstring_view expression, Units::Unit unit, bool isOwn)
{
    m_values->set(m_slot, ParameterSetting::make(expression, unit, isOwn));
}

void ParameterTable::Parameter::set(bool value)
{
    m_values->set(m_slot, ParameterSetting::ofBoolean(value));
}

void ParameterTable::Parameter::set(int value)
{
    m_values->set(m_slot, ParameterSetting::ofNumber(value, Units::UNIT_NONE, true));
}

void ParameterTable::Parameter::set(double value, Units::Unit unit)
{
    m_values->set(m_slot, ParameterSetting::ofNumber(value, unit, true));
}

void ParameterTable::Parameter::set(std::wstring_view text)
{
    m_values->set(m_slot, ParameterSetting::ofText(text));
}

void ParameterTable::Parameter::reset(bool keepOwn)
{
    if (!(keepOwn && isOwn()))
        m_values->set(m_slot, nullptr);
}

std::wstring ParameterTable::Parameter::getExpression() const
{
    const ParameterSetting *const setting = m_values->setting(m_slot);
    return setting ? setting->expression : getSystemDefaultExpression();
}

Units::Unit ParameterTable::Parameter::getUnit() const
{
    const ParameterSetting *const setting = m_values->setting(m_slot);
    return setting && setting->unit != Units::UNIT_NONE ? setting->unit : getDisplayUnit();
}

bool ParameterTable::Parameter::isDefault() const
{
    return !m_values->setting(m_slot);
}

bool ParameterTable::Parameter::isOwn() const
{
    const ParameterSetting *const setting = m_values->setting(m_slot);
    return setting && setting->isOwn;
}

bool ParameterTable::Parameter::isEnabled() const
{
    return m_values->isEnabled(m_slot);
}

bool ParameterTable::Parameter::hasValue() const
{
    return m_values->value(m_slot).value.has_value();
}

std::optional<ExpressionError> ParameterTable::Parameter::getError() const
{
    const auto &error = m_values->value(m_slot).error;
    return error ? std::optional(*error) : std::nullopt;
}

Variant ParameterTable::Parameter::getValue() const
{
    const ParameterValues::Outcome &outcome = m_values->value(m_slot);
    if (!outcome.value)
        return {};
    if (const bool *boolean = std::get_if<bool>(&*outcome.value))
        return Variant(*boolean);
    if (const auto *text = std::get_if<std::wstring_view>(&*outcome.value))
        return Variant(std::wstring(*text));
    const Variant number(getAsDouble(Units::UNIT_NONE));
    return getType() == TYPE_INTEGER ? Variant(number.getAsInt()) : number;
}

bool ParameterTable::Parameter::getAsBoolean() const
{
    return getValue().getAsBool();
}

int ParameterTable::Parameter::getAsInt() const
{
    return getValue().getAsInt();
}

double ParameterTable::Parameter::getAsDouble(Units::Unit unit) const
{
    const ParameterValues::Outcome &outcome = m_values->value(m_slot);
    if (!outcome.value)
        return 0;
    const double *const number = std::get_if<double>(&*outcome.value);
    if (!number)
        return getValue().getAsDouble();
    if (Units::getQuantity(unit) != Units::getQuantity(outcome.unit) || unit == Units::UNIT_NONE)
        unit = getDisplayUnit();
    return Units::convert(*number, outcome.unit, unit);
}

std::wstring ParameterTable::Parameter::getAsWideMessage() const
{
    const ParameterValues::Outcome &outcome = m_values->value(m_slot);
    if (outcome.value && std::holds_alternative<double>(*outcome.value))
        return plainText(getAsDouble(Units::UNIT_NONE));
    return getValue().getAsWideString();
}

std::string ParameterTable::Parameter::getAsMessage() const
{
    return Messages::fromWideUnicodeToUTF8(getAsWideMessage());
}

std::wstring ParameterTable::Parameter::getAsText() const
{
    return ParameterProblems(*m_values).textOf(m_slot);
}

bool ParameterTable::Parameter::isValidEnumValue(std::wstring_view expression) const
{
    const auto setting = ParameterSetting::make(expression, Units::UNIT_NONE, true);
    ParameterProblems problems(*m_values);
    if (const auto *text = std::get_if<std::wstring>(&setting->meaning))
        return problems.isOffered(m_slot, *text);
    const auto *read = std::get_if<ParameterExpression>(&setting->meaning);
    if (!read)
        return false;
    const ParameterValues::Detached outcome = m_values->evaluate(*read);
    const auto *text = outcome.result ? std::get_if<std::wstring_view>(&*outcome.result) : nullptr;
    return text && problems.isOffered(m_slot, *text);
}

std::vector<std::wstring> ParameterTable::Parameter::getErrorMessages() const
{
    return ParameterProblems(*m_values).errorMessages(m_slot);
}

std::vector<std::wstring> ParameterTable::Parameter::getWarningMessages() const
{
    return ParameterProblems(*m_values).warningMessages(m_slot);
}

std::wstring ParameterTable::Parameter::message(const Constraint &constraint) const
{
    return ParameterProblems(*m_values).message(m_slot, constraint);
}

} // namespace Varn

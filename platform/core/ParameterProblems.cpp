#include "platform/core/ParameterProblems.h"

#include "platform/utils/LocaleRegistry.h"
#include "platform/utils/Messages.h"

#include <QString>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <optional>
#include <tuple>

namespace Varn {

namespace {

std::wstring filled(const LocalizedMessage &message, std::initializer_list<std::wstring> parts)
{
    QStringList texts;
    for (const std::wstring &part : parts)
        texts.append(QString::fromStdWString(part));
    QString text = message.asQString();
    // All at once: a part may itself read "%1".
    switch (texts.size()) {
    case 1:
        return text.arg(texts[0]).toStdWString();
    case 2:
        return text.arg(texts[0], texts[1]).toStdWString();
    case 3:
        return text.arg(texts[0], texts[1], texts[2]).toStdWString();
    default:
        return text.arg(texts[0], texts[1], texts[2], texts[3]).toStdWString();
    }
}

/// At most five decimals, none that are 0.
std::wstring numberText(double number)
{
    QString text = QString::number(number, 'f', 5);
    if (std::abs(number) >= 1e15 || (number != 0 && std::abs(number) < 1e-5))
        return QString::number(number, 'g', 6).toStdWString();
    while (text.endsWith(u'0'))
        text.chop(1);
    if (text.endsWith(u'.'))
        text.chop(1);
    return text.toStdWString();
}

std::wstring withUnit(double number, Units::Unit unit)
{
    const std::wstring symbol = Messages::fromUTF8ToWideUnicode(Units::getSymbol(unit));
    const bool isSpaced = !symbol.empty() && unit != Units::UNIT_DEGREES; // 12.5 mm, but 45\u00B0 (ISO 80000-1)
    return numberText(number) + (isSpaced ? L" " : L"") + symbol;
}

/// What was read of a constraint of the row; null for any other.
const ParameterCheck *checkOf(const ParameterPrototype::Row &row, const ParameterTable::Constraint &constraint)
{
    for (const auto &[constraints, checks] :
         {std::tie(row.definition.errors, row.errors), std::tie(row.definition.warnings, row.warnings)})
        for (std::size_t i = 0; i < constraints.size(); ++i)
            if (constraints[i].expression == constraint.expression)
                return &checks[i];
    return nullptr;
}

} // namespace

/// A constraint that cannot be evaluated is broken, unless the fault is that of a parameter, which has it then.
bool ParameterProblems::isBroken(const ParameterFormula &formula)
{
    const ParameterValues::Detached outcome = m_values.evaluate(formula);
    return !outcome.failedAtName && outcome.result != ExpressionValue(true);
}

/// Whether the enable expression itself is at fault, rather than a parameter that it names. A cycle that takes the
/// value along is a fault here too: which of its members is blamed depends on where evaluation began.
bool ParameterProblems::isUnfitEnabled(std::size_t slot)
{
    const ParameterPrototype::Row *const row = m_values.row(slot);
    if (!row || !row->enable)
        return false;
    const ParameterValues::Outcome &enabled = m_values.enabled(slot);
    return enabled.isOwnFault ||
           (row->disabledValue && enabled.error && enabled.error->code == ExpressionError::Code::Cycle);
}

bool ParameterProblems::isWhole(std::size_t slot)
{
    const ParameterValues::Outcome &outcome = m_values.value(slot);
    if (m_values.definition(slot).type != ParameterTable::TYPE_INTEGER || !outcome.value)
        return true;
    const double number = std::get<double>(*outcome.value);
    return number == std::floor(number);
}

bool ParameterProblems::isOffered(std::size_t slot, std::wstring_view key)
{
    const ParameterPrototype::Row *const row = m_values.row(slot);
    if (!row || row->definition.type != ParameterTable::TYPE_ENUM)
        return false;
    const std::vector<ParameterEnum> &values = m_values.prototype().valuesOf(row->definition);
    for (std::size_t i = 0; i < values.size(); ++i)
        if (values[i].key == key)
            return !row->valueEnables[i] || !isBroken(*row->valueEnables[i]);
    return false;
}

bool ParameterProblems::hasUnknownKey(std::size_t slot)
{
    const ParameterValues::Outcome &outcome = m_values.value(slot);
    if (m_values.definition(slot).type != ParameterTable::TYPE_ENUM || !outcome.value)
        return false;
    return !isOffered(slot, std::get<std::wstring_view>(*outcome.value));
}

bool ParameterProblems::hasErrors(std::size_t slot)
{
    if (!m_values.isEnabled(slot))
        return isUnfitEnabled(slot);
    const ParameterValues::Outcome &outcome = m_values.value(slot);
    if (!outcome.value)
        return outcome.error != nullptr;
    if (!isWhole(slot) || hasUnknownKey(slot))
        return true;
    const ParameterPrototype::Row *const row = m_values.row(slot);
    return row && std::any_of(row->errors.begin(), row->errors.end(),
                              [this](const auto &check) { return isBroken(check.formula); });
}

bool ParameterProblems::hasWarnings(std::size_t slot)
{
    const ParameterPrototype::Row *const row = m_values.row(slot);
    if (!row || !m_values.isEnabled(slot) || !m_values.value(slot).value)
        return false;
    return std::any_of(row->warnings.begin(), row->warnings.end(),
                       [this](const auto &check) { return isBroken(check.formula); });
}

std::vector<std::wstring> ParameterProblems::errorMessages(std::size_t slot)
{
    static const LocalizedMessage noValue = LocaleRegistry::registerMessage("%1 has no value: %2");
    static const LocalizedMessage notWhole = LocaleRegistry::registerMessage("%1 is %2, but must be a whole number.");
    static const LocalizedMessage notOffered = LocaleRegistry::registerMessage("%1 cannot be \"%2\" here.");
    std::vector<std::wstring> messages;
    if (!hasErrors(slot))
        return messages;
    const ParameterValues::Outcome &outcome = m_values.value(slot);
    if (!m_values.isEnabled(slot) || !outcome.value) {
        const auto &error = outcome.error ? outcome.error : m_values.enabled(slot).error;
        return {filled(noValue, {titleOf(slot), error->message})};
    }
    if (!isWhole(slot))
        messages.push_back(filled(notWhole, {titleOf(slot), textOf(slot)}));
    if (hasUnknownKey(slot))
        messages.push_back(filled(notOffered, {titleOf(slot), textOf(slot)}));
    if (const ParameterPrototype::Row *const row = m_values.row(slot))
        for (std::size_t i = 0; i < row->errors.size(); ++i)
            if (isBroken(row->errors[i].formula))
                messages.push_back(message(slot, row->definition.errors[i]));
    return messages;
}

std::vector<std::wstring> ParameterProblems::warningMessages(std::size_t slot)
{
    std::vector<std::wstring> messages;
    const ParameterPrototype::Row *const row = m_values.row(slot);
    if (!row || !m_values.isEnabled(slot) || !m_values.value(slot).value)
        return messages;
    for (std::size_t i = 0; i < row->warnings.size(); ++i)
        if (isBroken(row->warnings[i].formula))
            messages.push_back(message(slot, row->definition.warnings[i]));
    return messages;
}

std::wstring ParameterProblems::message(std::size_t slot, const ParameterTable::Constraint &constraint)
{
    static const LocalizedMessage plain = LocaleRegistry::registerMessage("%1 is %2. %3");
    static const LocalizedMessage limited = LocaleRegistry::registerMessage("%1 is %2 (limit: %3). %4");
    const std::wstring limit = limitOf(slot, constraint);
    const std::wstring rule = constraint.message.asWideString();
    return limit.empty() ? filled(plain, {titleOf(slot), textOf(slot), rule})
                         : filled(limited, {titleOf(slot), textOf(slot), limit, rule});
}

std::wstring ParameterProblems::textOf(std::size_t slot)
{
    static const LocalizedMessage yes = LocaleRegistry::registerMessage("Yes");
    static const LocalizedMessage no = LocaleRegistry::registerMessage("No");
    const ParameterValues::Outcome &outcome = m_values.value(slot);
    if (!outcome.value)
        return {};
    if (const bool *boolean = std::get_if<bool>(&*outcome.value))
        return (*boolean ? yes : no).asWideString();
    if (const double *number = std::get_if<double>(&*outcome.value)) {
        const Units::Unit unit = m_values.displayUnit(slot);
        return withUnit(Units::convert(*number, outcome.unit, unit), unit);
    }
    const std::wstring_view text = std::get<std::wstring_view>(*outcome.value);
    for (const ParameterEnum &entry : m_values.prototype().valuesOf(m_values.definition(slot)))
        if (entry.key == text)
            return entry.description.asWideString();
    return std::wstring(text);
}

std::wstring ParameterProblems::titleOf(std::size_t slot) const
{
    const std::wstring title = m_values.definition(slot).fullTitle.asWideString();
    return title.empty() ? m_values.name(slot) : title;
}

/// The limit that the value breaks, or else the first that the constraint sets it.
std::wstring ParameterProblems::limitOf(std::size_t slot, const ParameterTable::Constraint &constraint)
{
    const ParameterPrototype::Row *const row = m_values.row(slot);
    const ParameterCheck *const check = row ? checkOf(*row, constraint) : nullptr;
    if (!check)
        return {};
    std::optional<double> first;
    for (const ParameterCheck::Limit &limit : check->limits) {
        const ParameterValues::Detached bound = m_values.evaluate(limit.bound);
        if (!bound.result || !std::holds_alternative<double>(*bound.result))
            continue;
        const double number = std::get<double>(*bound.result);
        if (m_values.evaluate(limit.comparison).result == ExpressionValue(false))
            return withUnit(number, m_values.displayUnit(slot));
        if (!first)
            first = number;
    }
    return first ? withUnit(*first, m_values.displayUnit(slot)) : std::wstring();
}

} // namespace Varn

#include "platform/core/ParameterTable.h"

#include "platform/core/ParameterProblems.h"
#include "platform/core/ParameterValues.h"
#include "platform/tool/Exception.h"
#include "platform/utils/Messages.h"

#include <algorithm>
#include <utility>

namespace Varn {

namespace {

std::shared_ptr<ParameterValues> valuesOf(Strategy::Type strategy, bool metric)
{
    return std::make_shared<ParameterValues>(ParameterPrototype::get(strategy, metric));
}

[[noreturn]] void failUnknown(std::wstring_view name)
{
    throw ToolLibraries::InvalidInput("Unknown parameter: " + Messages::fromWideUnicodeToUTF8(name));
}

/// A numbered one is made.
ParameterTable::Parameter parameterToSet(const std::shared_ptr<ParameterValues> &values, std::wstring_view name)
{
    const auto slot = values->findOrAdd(name);
    if (!slot)
        failUnknown(name);
    return {values, *slot};
}

/// Those that are there and for which the predicate holds, in the order of their slots.
template <typename Parameter, typename Predicate>
std::vector<std::shared_ptr<Parameter>> parametersThat(const std::shared_ptr<ParameterValues> &values,
                                                       Predicate predicate)
{
    std::vector<std::shared_ptr<Parameter>> parameters;
    for (std::size_t slot = 0; slot < values->size(); ++slot)
        if (values->isThere(slot) && predicate(slot))
            parameters.push_back(std::make_shared<Parameter>(values, slot));
    return parameters;
}

} // namespace

bool ParameterTable::ParameterDef::hasFlag(int flag) const
{
    return std::find(flags.begin(), flags.end(), flag) != flags.end();
}

std::wstring ParameterTable::getStringAsExpression(std::wstring_view text)
{
    return ParameterExpression::quoted(text);
}

ParameterTable::ParameterTable() : ParameterTable(Strategy::INVALID) {}

ParameterTable::ParameterTable(Strategy::Type strategy, bool metric) : m_values(valuesOf(strategy, metric)) {}

ParameterTable::ParameterTable(const ParameterTable &other)
    : SafePointerTarget(other), m_values(std::make_shared<ParameterValues>(*other.m_values))
{
}

ParameterTable::ParameterTable(ParameterTable &&other)
    : m_values(std::exchange(other.m_values, valuesOf(Strategy::INVALID, true)))
{
}

ParameterTable &ParameterTable::operator=(const ParameterTable &other)
{
    if (this != &other)
        m_values = std::make_shared<ParameterValues>(*other.m_values);
    return *this;
}

ParameterTable &ParameterTable::operator=(ParameterTable &&other)
{
    std::swap(m_values, other.m_values);
    return *this;
}

ParameterTable::~ParameterTable() = default;

Strategy::Type ParameterTable::getStrategy() const
{
    return m_values->prototype().strategy();
}

bool ParameterTable::isMetric() const
{
    return m_values->isMetric();
}

void ParameterTable::setMetric(bool metric)
{
    m_values->setMetric(metric);
}

void ParameterTable::initializeParser()
{
    m_values->forget();
}

bool ParameterTable::hasParameter(std::wstring_view name) const
{
    return m_values->find(name).has_value();
}

std::shared_ptr<ParameterTable::Parameter> ParameterTable::getParameterNoThrow(std::wstring_view name)
{
    const auto slot = m_values->find(name);
    return slot ? std::make_shared<Parameter>(m_values, *slot) : nullptr;
}

std::shared_ptr<const ParameterTable::Parameter> ParameterTable::getParameterNoThrow(std::wstring_view name) const
{
    const auto slot = m_values->find(name);
    return slot ? std::make_shared<const Parameter>(m_values, *slot) : nullptr;
}

std::shared_ptr<ParameterTable::Parameter> ParameterTable::getParameter(std::wstring_view name)
{
    auto parameter = getParameterNoThrow(name);
    if (!parameter)
        failUnknown(name);
    return parameter;
}

std::shared_ptr<const ParameterTable::Parameter> ParameterTable::getParameter(std::wstring_view name) const
{
    auto parameter = getParameterNoThrow(name);
    if (!parameter)
        failUnknown(name);
    return parameter;
}

std::vector<std::shared_ptr<ParameterTable::Parameter>> ParameterTable::getParameters()
{
    return parametersThat<Parameter>(m_values, [](std::size_t) { return true; });
}

std::vector<std::shared_ptr<const ParameterTable::Parameter>> ParameterTable::getParameters() const
{
    return parametersThat<const Parameter>(m_values, [](std::size_t) { return true; });
}

bool ParameterTable::getBoolean(std::wstring_view name) const
{
    return getParameter(name)->getAsBoolean();
}

int ParameterTable::getInt(std::wstring_view name) const
{
    return getParameter(name)->getAsInt();
}

double ParameterTable::getDouble(std::wstring_view name, Units::Unit unit) const
{
    return getParameter(name)->getAsDouble(unit);
}

std::wstring ParameterTable::getWideMessage(std::wstring_view name) const
{
    return getParameter(name)->getAsWideMessage();
}

void ParameterTable::setParameter(std::wstring_view name, bool value)
{
    parameterToSet(m_values, name).set(value);
}

void ParameterTable::setParameter(std::wstring_view name, int value)
{
    parameterToSet(m_values, name).set(value);
}

void ParameterTable::setParameter(std::wstring_view name, double value, Units::Unit unit)
{
    parameterToSet(m_values, name).set(value, unit);
}

void ParameterTable::setParameter(std::wstring_view name, std::wstring_view text)
{
    parameterToSet(m_values, name).set(text);
}

void ParameterTable::setParameter(std::wstring_view name, const wchar_t *text)
{
    setParameter(name, std::wstring_view(text));
}

void ParameterTable::setParameter(std::wstring_view name, const std::wstring &text)
{
    setParameter(name, std::wstring_view(text));
}

void ParameterTable::setParameterExpression(std::wstring_view name, std::wstring_view expression, Units::Unit unit)
{
    parameterToSet(m_values, name).setExpression(expression, unit, true);
}

std::vector<std::shared_ptr<ParameterTable::Parameter>> ParameterTable::getParametersWithErrors()
{
    ParameterProblems problems(*m_values);
    return parametersThat<Parameter>(m_values, [&](std::size_t slot) { return problems.hasErrors(slot); });
}

std::vector<std::shared_ptr<ParameterTable::Parameter>> ParameterTable::getParametersWithWarnings()
{
    ParameterProblems problems(*m_values);
    return parametersThat<Parameter>(m_values, [&](std::size_t slot) { return problems.hasWarnings(slot); });
}

std::vector<std::shared_ptr<const ParameterTable::Parameter>> ParameterTable::getParametersWithErrors() const
{
    ParameterProblems problems(*m_values);
    return parametersThat<const Parameter>(m_values, [&](std::size_t slot) { return problems.hasErrors(slot); });
}

std::vector<std::shared_ptr<const ParameterTable::Parameter>> ParameterTable::getParametersWithWarnings() const
{
    ParameterProblems problems(*m_values);
    return parametersThat<const Parameter>(m_values, [&](std::size_t slot) { return problems.hasWarnings(slot); });
}

ExpressionResult ParameterTable::evaluate(const ParameterExpression &expression) const
{
    return m_values->evaluate(expression).result;
}

} // namespace Varn

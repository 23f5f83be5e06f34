#include "platform/core/ParameterPrototype.h"

#include "platform/core/ParameterLimit.h"
#include "platform/utils/Messages.h"

#include <array>
#include <mutex>
#include <stdexcept>
#include <string>

namespace Varn {

namespace {

/// The same texts stand in many rows and strategies; each is read once.
ParameterExpression expressionOf(const std::wstring &text)
{
    static std::mutex mutex;
    static std::unordered_map<std::wstring, ParameterExpression> expressions; // guarded by mutex
    const std::lock_guard lock(mutex);
    const auto known = expressions.find(text);
    if (known != expressions.end())
        return known->second;
    const auto expression = ParameterExpression::parse(text);
    if (!expression)
        throw std::runtime_error("Parameter definitions: " +
                                 Messages::fromWideUnicodeToUTF8(text + L": " + expression.error().message));
    return expressions.emplace(text, *expression).first->second;
}

constexpr std::size_t strategyCount = Strategy::getToolStrategies().size();

std::size_t placeOf(Strategy::Type strategy)
{
    std::size_t place = 0;
    while (place < strategyCount && Strategy::getToolStrategies()[place] != strategy)
        ++place;
    return place; // strategyCount for what is none
}

} // namespace

std::shared_ptr<const ParameterPrototype> ParameterPrototype::get(Strategy::Type strategy, bool metric)
{
    struct Entry {
        std::once_flag once;
        std::shared_ptr<const ParameterPrototype> prototype;
    };
    static std::array<Entry, 2 * (strategyCount + 1)> entries;
    const std::size_t place = placeOf(strategy);
    Entry &entry = entries[2 * place + (metric ? 1 : 0)];
    std::call_once(entry.once, [&] {
        const Strategy::Type known = place < strategyCount ? strategy : Strategy::INVALID;
        entry.prototype = std::make_shared<ParameterPrototype>(ParameterDefinitions::get(), known, metric);
    });
    return entry.prototype;
}

ParameterPrototype::ParameterPrototype(const ParameterDefinitions &definitions, Strategy::Type strategy, bool metric)
    : m_definitions(definitions), m_strategy(strategy), m_metric(metric)
{
    for (ParameterTable::ParameterDef &definition : definitions.definitionsOf(strategy, metric))
        m_rows.push_back({std::move(definition), {}, {}, {}, {}, {}, {}});
    for (std::size_t slot = 0; slot < m_rows.size(); ++slot)
        m_slots.emplace(m_rows[slot].definition.id, slot);
    for (Row &row : m_rows)
        readRow(row);
    readLinks();
}

void ParameterPrototype::readRow(Row &row) const
{
    const ParameterTable::ParameterDef &definition = row.definition;
    row.defaultValue = read(definition.defaultExpression);
    row.enable = read(definition.enableExpression);
    row.disabledValue = read(definition.disabledExpression);
    row.errors = readChecks(definition.id, definition.errors);
    row.warnings = readChecks(definition.id, definition.warnings);
    for (const ParameterEnum &value : valuesOf(definition))
        row.valueEnables.push_back(read(value.enableExpression));
}

std::vector<ParameterCheck>
ParameterPrototype::readChecks(const std::wstring &parameter,
                               const std::vector<ParameterTable::Constraint> &constraints) const
{
    std::vector<ParameterCheck> checks;
    for (const ParameterTable::Constraint &constraint : constraints) {
        ParameterCheck &check = checks.emplace_back(ParameterCheck{readOne(constraint.expression), {}});
        for (const ParameterLimit &limit : ParameterLimit::of(parameter, constraint.expression))
            check.limits.push_back({readOne(limit.comparison), readOne(limit.bound)});
    }
    return checks;
}

void ParameterPrototype::readLinks()
{
    m_links.resize(m_rows.size());
    for (const ParameterDefinitions::Link &link : m_definitions.linksOf(m_strategy)) {
        const auto set = find(link.set);
        const auto updates = find(link.updates);
        if (!set || !updates)
            throw std::runtime_error("Parameter definitions: a link of what the strategy does not hold: " +
                                     Messages::fromWideUnicodeToUTF8(link.set));
        m_links[*set].push_back({*updates, readOne(link.formula), read(link.when)});
    }
}

std::optional<ParameterFormula> ParameterPrototype::read(const std::wstring &expression) const
{
    return expression.empty() ? std::nullopt : std::optional(readOne(expression));
}

ParameterFormula ParameterPrototype::readOne(const std::wstring &expression) const
{
    ParameterFormula formula{expressionOf(expression), {}};
    for (const std::wstring &name : formula.expression.names())
        formula.slots.push_back(find(name));
    return formula;
}

std::optional<std::size_t> ParameterPrototype::find(std::wstring_view name) const
{
    const auto slot = m_slots.find(name);
    return slot == m_slots.end() ? std::nullopt : std::optional(slot->second);
}

const ParameterTable::ParameterDef *ParameterPrototype::findNumbered(std::wstring_view name) const
{
    if (m_strategy == Strategy::INVALID)
        return nullptr;
    const ParameterDefinitions::Pattern *pattern = m_definitions.findPattern(name);
    return pattern ? &pattern->definition : nullptr;
}

const std::vector<ParameterEnum> &ParameterPrototype::valuesOf(const ParameterTable::ParameterDef &definition) const
{
    return m_definitions.enumeration(definition.enumeration, m_strategy);
}

} // namespace Varn

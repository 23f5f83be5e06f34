#include "platform/core/ParameterValues.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Varn {

namespace {

using Code = ExpressionError::Code;

/// The default units of the kinds, asked for at every number that is read.
Units::Unit defaultUnit(ParameterTable::Kind kind, bool metric)
{
    constexpr std::size_t kinds = ParameterTable::KIND_HARDNESS + 1;
    static const auto units = [] {
        std::array<std::array<Units::Unit, 2>, kinds> table;
        for (std::size_t k = 0; k < kinds; ++k)
            for (const bool isMetric : {false, true})
                table[k][isMetric ? 1 : 0] =
                    ParameterDefinitions::get().defaultUnit(ParameterTable::Kind(static_cast<int>(k)), isMetric);
        return table;
    }();
    const bool isKind = kind >= ParameterTable::KIND_NONE && kind <= ParameterTable::KIND_HARDNESS;
    return isKind ? units[static_cast<std::size_t>(kind)][metric ? 1 : 0] : Units::UNIT_NONE;
}

const wchar_t *wantedBy(ParameterTable::Type type)
{
    switch (type) {
    case ParameterTable::TYPE_BOOLEAN:
        return L"a boolean";
    case ParameterTable::TYPE_INTEGER:
    case ParameterTable::TYPE_FLOAT:
        return L"a number";
    default:
        return L"a text";
    }
}

bool isOfType(const ExpressionValue &value, ParameterTable::Type type)
{
    switch (type) {
    case ParameterTable::TYPE_BOOLEAN:
        return std::holds_alternative<bool>(value);
    case ParameterTable::TYPE_INTEGER:
    case ParameterTable::TYPE_FLOAT:
        return std::holds_alternative<double>(value);
    default:
        return std::holds_alternative<std::wstring_view>(value);
    }
}

} // namespace

/// Gives an expression the values of the parameters that it names.
class ParameterValues::Names : public ParameterResolver
{
public:
    /// For the evaluation of \a reader; for one that belongs to no parameter without it.
    Names(ParameterValues &values, std::optional<NodeId> reader, unsigned depth, bool metric,
          const std::vector<std::optional<std::size_t>> *slots)
        : m_values(values), m_reader(reader), m_depth(depth), m_metric(metric), m_slots(slots)
    {
    }

    ExpressionResult resolve(std::wstring_view name, std::size_t index) override
    {
        const auto slot = m_slots ? (*m_slots)[index] : m_reader ? m_values.findOrAdd(name) : m_values.find(name);
        if (!slot)
            return failed(Code::UnknownName, L"Unknown parameter " + std::wstring(name));
        const NodeId id = valueNode(*slot);
        if (!m_reader) {
            m_values.bring(id);
        } else {
            m_values.addReader(id, *m_reader);
            const Progress progress = m_values.require(id, m_depth + 1);
            if (progress == Progress::Cycle)
                return failed(Code::Cycle, L"Its value depends on itself, by way of " + std::wstring(name));
            if (progress == Progress::Blocked) {
                isBlocked = true;
                return failed(Code::NoValue, std::wstring());
            }
        }
        return valueOf(*slot, name);
    }

    bool isBlocked = false;                        ///< another parameter has to be evaluated first
    bool hasFailed = false;                        ///< for want of a name's value
    std::shared_ptr<const ExpressionError> origin; ///< the fault of a named parameter

private:
    ExpressionResult valueOf(std::size_t slot, std::wstring_view name)
    {
        const Outcome &outcome = m_values.nodeAt(valueNode(slot)).outcome;
        if (outcome.error) {
            origin = outcome.error;
            return failed(outcome.error->code, outcome.error->message);
        }
        if (!outcome.value)
            return failed(Code::NoValue, std::wstring(name) + L" has no value");
        const double *number = std::get_if<double>(&*outcome.value);
        if (!number)
            return *outcome.value;
        const Units::Unit unit = defaultUnit(m_values.definition(slot).kind, m_metric);
        return Units::convert(*number, outcome.unit, unit);
    }

    ExpressionResult failed(Code code, std::wstring message)
    {
        hasFailed = true;
        return Ox::unexpected<ExpressionError>({code, 1, std::move(message)});
    }

    ParameterValues &m_values;
    const std::optional<NodeId> m_reader;
    const unsigned m_depth;
    const bool m_metric;
    const std::vector<std::optional<std::size_t>> *const m_slots;
};

ParameterValues::Numbered::Numbered(const Numbered &other) : names(other.names), definitions(other.definitions)
{
    for (std::size_t place = 0; place < names.size(); ++place)
        places.emplace(names[place], place);
}

ParameterValues::ParameterValues(std::shared_ptr<const ParameterPrototype> prototype)
    : m_prototype(std::move(prototype)), m_numbered(std::make_shared<Numbered>()), m_slots(m_prototype->rows().size())
{
}

ParameterValues::ParameterValues(const ParameterValues &other)
    : m_prototype(other.m_prototype),
      m_numbered(other.m_numbered),
      m_sharesNumbered(true),
      m_slots(other.m_slots.size())
{
    other.m_sharesNumbered.store(true, std::memory_order_relaxed);
    for (std::size_t slot = 0; slot < m_slots.size(); ++slot)
        if (other.m_slots[slot] && other.m_slots[slot]->setting)
            slotAt(slot).setting = other.m_slots[slot]->setting;
}

void ParameterValues::setMetric(bool metric)
{
    if (metric == isMetric())
        return;
    m_prototype = ParameterPrototype::get(m_prototype->strategy(), metric);
    forget();
}

bool ParameterValues::isThere(std::size_t slot) const
{
    return slot < m_prototype->rows().size() || setting(slot) != nullptr;
}

std::optional<std::size_t> ParameterValues::find(std::wstring_view name) const
{
    if (const auto slot = m_prototype->find(name))
        return slot;
    const auto place = m_numbered->places.find(name);
    if (place == m_numbered->places.end())
        return std::nullopt;
    const std::size_t slot = m_prototype->rows().size() + place->second;
    return setting(slot) ? std::optional(slot) : std::nullopt;
}

std::optional<std::size_t> ParameterValues::findOrAdd(std::wstring_view name)
{
    if (const auto slot = m_prototype->find(name))
        return slot;
    const std::size_t first = m_prototype->rows().size();
    const auto place = m_numbered->places.find(name);
    if (place != m_numbered->places.end())
        return first + place->second;
    const ParameterTable::ParameterDef *const definition = m_prototype->findNumbered(name);
    if (!definition)
        return std::nullopt;
    if (m_sharesNumbered.exchange(false, std::memory_order_relaxed))
        m_numbered = std::make_shared<Numbered>(*m_numbered);
    const std::size_t added = m_numbered->names.size();
    m_numbered->places.emplace(m_numbered->names.emplace_back(name), added);
    m_numbered->definitions.push_back(definition);
    return first + added;
}

const std::wstring &ParameterValues::name(std::size_t slot) const
{
    const ParameterPrototype::Row *const known = row(slot);
    return known ? known->definition.id : m_numbered->names[slot - m_prototype->rows().size()];
}

const ParameterTable::ParameterDef &ParameterValues::definition(std::size_t slot) const
{
    const ParameterPrototype::Row *const known = row(slot);
    return known ? known->definition : *m_numbered->definitions[slot - m_prototype->rows().size()];
}

const ParameterPrototype::Row *ParameterValues::row(std::size_t slot) const
{
    return slot < m_prototype->rows().size() ? &m_prototype->rows()[slot] : nullptr;
}

Units::Unit ParameterValues::displayUnit(std::size_t slot) const
{
    return defaultUnit(definition(slot).kind, isMetric());
}

const ParameterSetting *ParameterValues::setting(std::size_t slot) const
{
    return slot < m_slots.size() && m_slots[slot] ? m_slots[slot]->setting.get() : nullptr;
}

void ParameterValues::set(std::size_t slot, std::shared_ptr<const ParameterSetting> setting)
{
    drop(valueNode(slot)); // what it gave may be texts of the old setting
    slotAt(slot).setting = std::move(setting);
}

void ParameterValues::forget()
{
    for (Slot &slot : m_touched)
        for (Node &node : slot.nodes) {
            node.state = Node::State::Unknown;
            node.outcome = {};
            node.readers.clear();
        }
}

const ParameterValues::Outcome &ParameterValues::value(std::size_t slot)
{
    bring(valueNode(slot));
    return nodeAt(valueNode(slot)).outcome;
}

const ParameterValues::Outcome &ParameterValues::enabled(std::size_t slot)
{
    bring(enabledNode(slot));
    return nodeAt(enabledNode(slot)).outcome;
}

bool ParameterValues::isEnabled(std::size_t slot)
{
    const ParameterPrototype::Row *const known = row(slot);
    return !known || !known->enable || enabled(slot).value == ExpressionValue(true);
}

ParameterValues::Detached ParameterValues::evaluate(const ParameterFormula &formula)
{
    Names names(*this, std::nullopt, 0, isMetric(), &formula.slots);
    ExpressionResult result = formula.expression.evaluate(names);
    return {std::move(result), names.hasFailed};
}

ParameterValues::Detached ParameterValues::evaluate(const ParameterExpression &expression)
{
    Names names(*this, std::nullopt, 0, isMetric(), nullptr);
    ExpressionResult result = expression.evaluate(names);
    return {std::move(result), names.hasFailed};
}

ParameterValues::Slot &ParameterValues::slotAt(std::size_t slot)
{
    if (slot >= m_slots.size())
        m_slots.resize(size());
    Slot *&touched = m_slots[slot];
    if (!touched)
        touched = &m_touched.emplace_back();
    return *touched;
}

bool ParameterValues::isLive(const Reader &reader)
{
    const Node &node = nodeAt(reader.node);
    return node.state != Node::State::Unknown && node.stamp == reader.stamp;
}

/// Room for more readers is made only once those that have been dropped since are out.
void ParameterValues::addReader(NodeId id, NodeId reader)
{
    std::vector<Reader> &readers = nodeAt(id).readers;
    if (readers.size() == readers.capacity() && !readers.empty()) {
        std::erase_if(readers, [this](const Reader &old) { return !isLive(old); });
        if (readers.size() > readers.capacity() / 2)
            readers.reserve(2 * readers.capacity());
    }
    readers.push_back({reader, nodeAt(reader).stamp});
}

/// Forgets what a node gave, and all that has read it.
void ParameterValues::drop(NodeId id)
{
    std::vector<NodeId> stale{id};
    while (!stale.empty()) {
        Node &node = nodeAt(stale.back());
        stale.pop_back();
        node.state = Node::State::Unknown;
        node.outcome = {};
        for (const Reader &reader : node.readers)
            if (isLive(reader))
                stale.push_back(reader.node);
        node.readers.clear();
    }
}

/// Sees to it that a node is known. No node is being evaluated when this is called.
void ParameterValues::bring(NodeId id)
{
    if (nodeAt(id).state == Node::State::Known)
        return;
    std::vector<NodeId> waiting{id};
    while (!waiting.empty()) {
        if (evaluateNode(waiting.back(), 0)) {
            waiting.pop_back();
        } else {
            waiting.insert(waiting.end(), m_blocked.rbegin(), m_blocked.rend());
            m_blocked.clear();
        }
    }
}

ParameterValues::Progress ParameterValues::require(NodeId id, unsigned depth)
{
    switch (nodeAt(id).state) {
    case Node::State::Known:
        return Progress::Known;
    case Node::State::Running:
        return Progress::Cycle;
    default:
        break;
    }
    if (depth > maximumDepth) {
        m_blocked = {id};
        return Progress::Blocked;
    }
    return evaluateNode(id, depth) ? Progress::Known : Progress::Blocked;
}

/// False when those of m_blocked have to be evaluated first. A node that waits for them stays running, so that a way
/// back to it is seen as a cycle.
bool ParameterValues::evaluateNode(NodeId id, unsigned depth)
{
    Node &node = nodeAt(id);
    node.state = Node::State::Running;
    node.stamp = ++m_stamp;
    Outcome outcome;
    const bool isValue = id == valueNode(slotOf(id));
    if (!(isValue ? evaluateValue(id, depth, outcome) : evaluateEnabled(id, depth, outcome))) {
        if (depth > 0)
            m_blocked.push_back(id);
        return false;
    }
    node.outcome = std::move(outcome);
    node.state = Node::State::Known;
    return true;
}

bool ParameterValues::evaluateEnabled(NodeId id, unsigned depth, Outcome &outcome)
{
    const ParameterPrototype::Row *const known = row(slotOf(id));
    if (!known || !known->enable) {
        outcome.value = true;
        return true;
    }
    if (!evaluateFormula(id, depth, *known->enable, outcome))
        return false;
    if (outcome.value && !std::holds_alternative<bool>(*outcome.value))
        fail(slotOf(id), {Code::KindClash, 1, L"Whether it is enabled needs a boolean"}, outcome);
    return true;
}

bool ParameterValues::evaluateValue(NodeId id, unsigned depth, Outcome &outcome)
{
    const std::size_t slot = slotOf(id);
    const ParameterPrototype::Row *const known = row(slot);
    const ParameterFormula *formula = known && known->defaultValue ? &*known->defaultValue : nullptr;
    const ParameterSetting *own = setting(slot);
    outcome.unit = displayUnit(slot);
    if (known && known->disabledValue) {
        const NodeId enabledId = enabledNode(slot);
        addReader(enabledId, id);
        const Progress progress = require(enabledId, depth + 1);
        if (progress == Progress::Blocked)
            return false;
        if (progress == Progress::Cycle) {
            fail(slot, {Code::Cycle, 1, L"Whether it is enabled depends on its own value"}, outcome);
            return true;
        }
        const Outcome &enabled = nodeAt(enabledId).outcome;
        if (enabled.error && enabled.error->code == Code::Cycle) {
            outcome.error = enabled.error; // from another side it is the value that closes the cycle
            return true;
        }
        if (enabled.value == ExpressionValue(false)) {
            own = nullptr;
            formula = &*known->disabledValue;
        }
    }
    if (own) {
        if (!evaluateSetting(id, depth, *own, outcome))
            return false;
    } else if (formula) {
        if (!evaluateFormula(id, depth, *formula, outcome))
            return false;
    } else if (!known) {
        fail(slot, {Code::UnknownName, 1, L"Nothing has been set"}, outcome);
    }
    checkType(slot, outcome);
    return true;
}

bool ParameterValues::evaluateSetting(NodeId id, unsigned depth, const ParameterSetting &setting, Outcome &outcome)
{
    if (Units::getQuantity(setting.unit) == Units::getQuantity(outcome.unit))
        outcome.unit = setting.unit;
    if (const bool *boolean = std::get_if<bool>(&setting.meaning)) {
        outcome.value = *boolean;
    } else if (const double *number = std::get_if<double>(&setting.meaning)) {
        const bool isBoolean = definition(slotOf(id)).type == ParameterTable::TYPE_BOOLEAN;
        if (isBoolean && (*number == 0 || *number == 1))
            outcome.value = *number == 1; // as it comes out of data that has numbers only
        else
            outcome.value = *number;
    } else if (const std::wstring *text = std::get_if<std::wstring>(&setting.meaning)) {
        outcome.value = std::wstring_view(*text);
    } else if (const ExpressionError *error = std::get_if<ExpressionError>(&setting.meaning)) {
        fail(slotOf(id), *error, outcome);
    } else if (const auto *expression = std::get_if<ParameterExpression>(&setting.meaning)) {
        Names names(*this, id, depth, isMetricFor(setting.unit), nullptr);
        return run(id, *expression, names, outcome);
    }
    return true;
}

bool ParameterValues::evaluateFormula(NodeId id, unsigned depth, const ParameterFormula &formula, Outcome &outcome)
{
    Names names(*this, id, depth, isMetric(), &formula.slots);
    return run(id, formula.expression, names, outcome);
}

bool ParameterValues::run(NodeId id, const ParameterExpression &expression, Names &names, Outcome &outcome)
{
    ExpressionResult result = expression.evaluate(names);
    if (names.isBlocked)
        return false;
    if (result)
        outcome.value = *result;
    else if (names.origin)
        outcome.error = names.origin;
    else
        fail(slotOf(id), std::move(result).error(), outcome);
    return true;
}

void ParameterValues::checkType(std::size_t slot, Outcome &outcome) const
{
    const ParameterTable::Type type = definition(slot).type;
    if (outcome.value && !isOfType(*outcome.value, type))
        fail(slot,
             {Code::KindClash, 1,
              std::wstring(L"The value needs to be ") + wantedBy(type) + L", not " + kindOf(*outcome.value)},
             outcome);
}

void ParameterValues::fail(std::size_t slot, ExpressionError error, Outcome &outcome) const
{
    error.message = name(slot) + L": " + error.message;
    outcome.error = std::make_shared<const ExpressionError>(std::move(error));
    outcome.isOwnFault = true;
    outcome.value.reset();
}

/// The system in which the names of an expression of that unit are read.
bool ParameterValues::isMetricFor(Units::Unit unit) const
{
    switch (Units::getSystem(unit)) {
    case Units::System::Metric:
        return true;
    case Units::System::Inch:
        return false;
    default:
        return isMetric();
    }
}

} // namespace Varn

// ParameterValues.h -- the values of a table: what was set, and what has been evaluated of it. For one thread at a
// time.
//
// Each parameter has two things to evaluate, its value and whether it is enabled. What asks for another one while it is
// evaluated is noted there as its reader; a change then drops what has read it, what has read that, and so on. Each
// drop pays for an evaluation that has taken place, so changes cost no more than reading does.
//
//     tool_diameter  <- reads -  tool_cornerRadius  <- reads -  tool_stepdown      set tool_diameter: both are dropped
//
// Evaluation goes into the depth by recursion up to a limit; beyond it all that is under way is given up and waits in a
// list, and the deepest comes first. Each of those starts over at the limit's full depth. So the stack is bounded, and
// a chain is walked about twice.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/core/ExpressionValue.h"
#include "platform/core/ParameterPrototype.h"
#include "platform/core/ParameterSetting.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Varn {

class VARN_PLATFORM_EXPORT ParameterValues
{
public:
    struct Outcome {
        /// Texts belong to settings and definitions, which stay as long as the outcome is not dropped.
        std::optional<ExpressionValue> value;
        Units::Unit unit = Units::UNIT_NONE; ///< of a number
        /// Why there is no value; null too when the expression is empty. Its message begins with the parameter.
        std::shared_ptr<const ExpressionError> error;
        bool isOwnFault = false; ///< the error arose here, not at a parameter that is named
    };

    explicit ParameterValues(std::shared_ptr<const ParameterPrototype> prototype);

    /// Takes what was set, not what has been evaluated.
    ParameterValues(const ParameterValues &other);
    ParameterValues &operator=(const ParameterValues &) = delete;

    const ParameterPrototype &prototype() const { return *m_prototype; }
    bool isMetric() const { return m_prototype->isMetric(); }

    /// Exchanges it for that of the same strategy and another system of units.
    void setMetric(bool metric);

    /// Slots are those of the prototype, followed by the numbered parameters that anybody has named.
    std::size_t size() const { return m_prototype->rows().size() + m_numbered->names.size(); }
    bool isThere(std::size_t slot) const;                          ///< a numbered one has to be set
    std::optional<std::size_t> find(std::wstring_view name) const; ///< one that is there
    std::optional<std::size_t> findOrAdd(std::wstring_view name);  ///< a numbered one is added

    const std::wstring &name(std::size_t slot) const;
    const ParameterTable::ParameterDef &definition(std::size_t slot) const;
    const ParameterPrototype::Row *row(std::size_t slot) const; ///< null for a numbered one
    Units::Unit displayUnit(std::size_t slot) const;

    const ParameterSetting *setting(std::size_t slot) const; ///< null at the default
    void set(std::size_t slot, std::shared_ptr<const ParameterSetting> setting);

    /// Drops all that has been evaluated.
    void forget();

    const Outcome &value(std::size_t slot);

    /// Without a value when the enable expression has none.
    const Outcome &enabled(std::size_t slot);
    bool isEnabled(std::size_t slot);

    /// What an expression gives that belongs to no parameter, numbers in the default units of the table.
    struct Detached {
        ExpressionResult result;
        bool failedAtName; ///< the fault is that of a parameter
    };
    Detached evaluate(const ParameterFormula &formula);
    Detached evaluate(const ParameterExpression &expression);

private:
    using NodeId = std::uint32_t; // twice the slot, and 1 more for whether it is enabled
    struct Reader {
        NodeId node;
        std::uint32_t stamp;
    };
    struct Node {
        enum class State : std::uint8_t { Unknown, Running, Known };
        State state = State::Unknown;
        std::uint32_t stamp = 0; ///< of its latest evaluation; readers of older ones have been dropped since
        Outcome outcome;
        std::vector<Reader> readers;
    };
    struct Slot {
        std::shared_ptr<const ParameterSetting> setting;
        Node nodes[2]; ///< value, enabled
    };
    struct Numbered {
        std::deque<std::wstring> names;
        std::vector<const ParameterTable::ParameterDef *> definitions;
        std::unordered_map<std::wstring_view, std::size_t> places; ///< keys are texts of names
        Numbered() = default;
        Numbered(const Numbered &other);
    };
    enum class Progress { Known, Cycle, Blocked };
    class Names;

    static constexpr unsigned maximumDepth = 48;

    static NodeId valueNode(std::size_t slot) { return static_cast<NodeId>(2 * slot); }
    static NodeId enabledNode(std::size_t slot) { return static_cast<NodeId>(2 * slot + 1); }
    static std::size_t slotOf(NodeId id) { return id / 2; }

    Slot &slotAt(std::size_t slot);
    Node &nodeAt(NodeId id) { return slotAt(slotOf(id)).nodes[id % 2]; }
    bool isLive(const Reader &reader);
    void addReader(NodeId id, NodeId reader);
    void drop(NodeId id);

    void bring(NodeId id);
    Progress require(NodeId id, unsigned depth);
    bool evaluateNode(NodeId id, unsigned depth);
    bool evaluateEnabled(NodeId id, unsigned depth, Outcome &outcome);
    bool evaluateValue(NodeId id, unsigned depth, Outcome &outcome);
    bool evaluateSetting(NodeId id, unsigned depth, const ParameterSetting &setting, Outcome &outcome);
    bool evaluateFormula(NodeId id, unsigned depth, const ParameterFormula &formula, Outcome &outcome);
    bool run(NodeId id, const ParameterExpression &expression, Names &names, Outcome &outcome);
    void checkType(std::size_t slot, Outcome &outcome) const;
    void fail(std::size_t slot, ExpressionError error, Outcome &outcome) const;
    bool isMetricFor(Units::Unit unit) const;

    std::shared_ptr<const ParameterPrototype> m_prototype;
    std::shared_ptr<Numbered> m_numbered; ///< shared with copies until one adds to it
    /// Whether a copy may hold m_numbered too. Its use count does not tell: a copy that has just died in another thread
    /// may have been reading.
    mutable std::atomic<bool> m_sharesNumbered = false;
    std::vector<Slot *> m_slots; ///< null for one that nobody has touched
    std::deque<Slot> m_touched;  ///< never moved
    std::uint32_t m_stamp = 0;
    std::vector<NodeId> m_blocked; ///< what lay too deep, and those that wait for it, the outermost last
};

} // namespace Varn

// ParameterPrototype.h -- what the tables of one strategy and one system of units have in common: the definitions, with
// their expressions read. Immutable once made, shared, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/core/ParameterDefinitions.h"
#include "platform/core/ParameterExpression.h"
#include "platform/core/ParameterTable.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Varn {

/// An expression of a definition.
struct ParameterFormula {
    ParameterExpression expression;
    std::vector<std::optional<std::size_t>> slots; ///< of its names; nothing for one that the strategy does not hold
};

/// A constraint of a definition, with what it compares the parameter to.
struct ParameterCheck {
    struct Limit {
        ParameterFormula comparison;
        ParameterFormula bound;
    };
    ParameterFormula formula;
    std::vector<Limit> limits;
};

class VARN_PLATFORM_EXPORT ParameterPrototype
{
public:
    /// A parameter of the strategy. Its slot is its place among them, the same in metric and in inch tables.
    struct Row {
        ParameterTable::ParameterDef definition;
        std::optional<ParameterFormula> defaultValue;
        std::optional<ParameterFormula> enable;
        std::optional<ParameterFormula> disabledValue;
        std::vector<ParameterCheck> errors; ///< of definition.errors, in their order
        std::vector<ParameterCheck> warnings;
        std::vector<std::optional<ParameterFormula>> valueEnables; ///< of the values of the enumeration
    };

    /// The one of a strategy, made at the first call; one without parameters for what is no strategy. Throws
    /// std::runtime_error for a definition that is no expression.
    static std::shared_ptr<const ParameterPrototype> get(Strategy::Type strategy, bool metric);

    /// Of definitions of one's own, which must outlive it. ParameterValues over it keep their system of units.
    ParameterPrototype(const ParameterDefinitions &definitions, Strategy::Type strategy, bool metric);

    Strategy::Type strategy() const { return m_strategy; }
    bool isMetric() const { return m_metric; }
    const std::vector<Row> &rows() const { return m_rows; }
    std::optional<std::size_t> find(std::wstring_view name) const;

    /// The definition of a numbered parameter, or null for another name and where there are no parameters.
    const ParameterTable::ParameterDef *findNumbered(std::wstring_view name) const;

    const std::vector<ParameterEnum> &valuesOf(const ParameterTable::ParameterDef &definition) const;

    /// The links that begin with an edit of the parameter, in their order.
    struct Link {
        std::size_t updates;
        ParameterFormula formula;
        std::optional<ParameterFormula> when;
    };
    const std::vector<Link> &linksOf(std::size_t slot) const { return m_links[slot]; }

private:
    std::optional<ParameterFormula> read(const std::wstring &expression) const;
    ParameterFormula readOne(const std::wstring &expression) const;
    std::vector<ParameterCheck> readChecks(const std::wstring &parameter,
                                           const std::vector<ParameterTable::Constraint> &constraints) const;
    void readRow(Row &row) const;
    void readLinks();

    const ParameterDefinitions &m_definitions;
    const Strategy::Type m_strategy;
    const bool m_metric;
    std::vector<Row> m_rows;
    std::unordered_map<std::wstring_view, std::size_t> m_slots; ///< keys are the ids of m_rows
    std::vector<std::vector<Link>> m_links;
};

} // namespace Varn

// ParameterDefinitions.h -- the rows that define the tool parameters, as read from JSON. Immutable once made, any
// thread.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/core/ParameterTable.h"
#include "platform/core/Strategy.h"

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Varn {

class VARN_PLATFORM_EXPORT ParameterDefinitions
{
public:
    using Definition = ParameterTable::ParameterDef;

    /// An edit of \a set changes \a updates to the value of \a formula, where \a when is true or empty.
    struct Link {
        std::wstring set;
        std::wstring updates;
        std::wstring formula;
        std::wstring when;
        unsigned strategies; ///< one bit for each
    };

    /// The parameters of a name with a number in it, such as "segment_<n>_height".
    struct Pattern {
        std::wstring prefix; // before the number
        std::wstring suffix; // behind it
        Definition definition;
    };

    /// Reads {"parameters": [...], "enumerations": [...], "kinds": [...], "links": [...], "dynamicParameters": [...]}
    /// in UTF-8; a row of parameters needs "id", "kind" and "strategies", one of dynamicParameters "pattern" with "<n>"
    /// in it and "kind". Throws std::runtime_error that names the faulty row for a text that is no such document.
    explicit ParameterDefinitions(std::string_view json);
    ParameterDefinitions(const ParameterDefinitions &) = delete;
    ParameterDefinitions &operator=(const ParameterDefinitions &) = delete;

    /// The definitions that are built into this library, read at the first call.
    static const ParameterDefinitions &get();

    /// The quantity of a parameter; KIND_NONE for one that the strategy does not hold. The parameters of
    /// Strategy::SHARED belong to every strategy, as do the numbered ones of the patterns, counted from 1.
    ParameterTable::Kind findKind(std::wstring_view name, Strategy::Type strategy) const;

    /// How many parameters are defined, those of the patterns not counted.
    std::size_t size() const { return m_rows.size(); }

    /// The parameters of a strategy with its overrides, in the order of their rows; none for what is no strategy.
    std::vector<Definition> definitionsOf(Strategy::Type strategy, bool metric) const;

    /// The row of a number or a name as it is without overrides, or null.
    const Definition *findByNumber(int number) const;
    const Definition *findByName(std::wstring_view name) const;

    const std::vector<Pattern> &patterns() const { return m_patterns; }

    /// The pattern that a name follows, or null.
    const Pattern *findPattern(std::wstring_view name) const;

    /// The values of an enumeration, for \a strategy alone when one is given; none for a name that is none.
    const std::vector<ParameterEnum> &enumeration(const std::wstring &name,
                                                  std::optional<Strategy::Type> strategy) const;

    /// The links of a strategy, in their order.
    std::vector<Link> linksOf(Strategy::Type strategy) const;

    Units::Unit defaultUnit(ParameterTable::Kind kind, bool metric) const;

    static bool isStrategy(int strategy);

private:
    /// What one strategy has otherwise than the row.
    struct Override {
        int strategy;
        std::optional<std::wstring> defaultMetric;
        std::optional<std::wstring> defaultInch;
        std::optional<std::wstring> enableExpression;
        std::optional<std::wstring> disabledExpression;
        std::optional<std::wstring> description;
        std::optional<LocalizedMessage> title;
        std::optional<LocalizedMessage> fullTitle;
        std::optional<LocalizedMessage> inlineTitle;
        std::optional<std::vector<ParameterTable::Constraint>> errors;
        std::optional<std::vector<ParameterTable::Constraint>> warnings;
    };
    struct Row {
        Definition definition; ///< for metric tables
        std::wstring defaultInch;
        unsigned strategies; ///< one bit for each
        std::vector<Override> overrides;
    };
    struct KindUnits {
        Units::Unit metric = Units::UNIT_NONE;
        Units::Unit inch = Units::UNIT_NONE;
    };
    class Reader;

    std::deque<Row> m_rows; ///< never moved: m_byName holds views of their names
    std::unordered_map<std::wstring_view, const Row *> m_byName;
    std::unordered_map<int, const Row *> m_byNumber;
    std::vector<Pattern> m_patterns;
    std::vector<Link> m_links;
    std::map<int, KindUnits> m_kinds;
    /// By name and strategy; -1 is the whole.
    std::map<std::pair<std::wstring, int>, std::vector<ParameterEnum>> m_enumerations;
};

} // namespace Varn

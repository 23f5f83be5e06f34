// ToolSorter.h -- makes of a list of sort keys an order of tools. Stateless, any thread; so are the orders.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <compare>
#include <functional>
#include <locale>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Varn::ToolLibraries {

class IndexedTool;

/// Sort keys are {"key","order"}, the most significant first; "asc" is ascending, anything else descending. Keys:
///
///     "components.info.name"                                  the name, in natural order: T9 before T10
///     "components.indexedProperties." + property              its value; a tool without it is last
///     "components.indexedProperties." + property + ".normValue"   its number in millimeters; a tool without it is
///     first "components.indexedProperties.tool_type", ".tool_unit"  the type's name in the language of the moment, the
///     unit
///
/// A key of any other form counts for nothing.
class TOOL_LIBRARY_EXPORT ToolSorter
{
public:
    using Comparison = std::function<std::partial_ordering(const IndexedTool &, const IndexedTool &)>;

    class Order
    {
    public:
        Order(std::vector<Comparison> comparisons, bool looksAtNames);

        /// Whether the first comes before the second.
        bool operator()(const std::unique_ptr<IndexedTool> &a, const std::unique_ptr<IndexedTool> &b) const;

        bool looksAtNames() const { return m_looksAtNames; }

    private:
        std::vector<Comparison> m_comparisons;
        bool m_looksAtNames;
    };

    /// Tools that are equal in all keys are in the order of their GUIDs, whatever the direction; so are all tools for a
    /// text that asks for nothing. Throws Json::Exception for an element that is no object, or whose members are no
    /// texts; the order itself throws std::runtime_error "Type mismatch for key: " and the key where one property is a
    /// text in one tool and a number in another.
    ///
    /// The order of names is not transitive where equal numbers are written differently (T2, T02b, T2a): who sorts must
    /// do with that.
    static Order createSortFunction(std::string_view sortState);

    /// Whether the natural order of these names is transitive, so that some of them stand in the same order as they do
    /// among all. It is not where a name goes on as another one does, but writes a number differently: T2, T02b, T2a.
    static bool isConsistent(std::vector<const std::wstring *> names);

    /// Runs of digits compare as numbers, everything else character by character with the locale's collation, until one
    /// of the texts is used up.
    static std::partial_ordering compareNaturalOrdering(std::wstring_view a, std::wstring_view b,
                                                        const std::locale &locale);

    /// Whole texts with the locale's collation.
    static std::partial_ordering compareStrings(std::wstring_view a, std::wstring_view b, const std::locale &locale);

private:
    static std::optional<Comparison> createSortFunction(const std::string &key, const std::string &order);
    static std::optional<Comparison> createSortAscFunction(const std::string &key);
    static Comparison createNameSortAscFunction();
};

} // namespace Varn::ToolLibraries

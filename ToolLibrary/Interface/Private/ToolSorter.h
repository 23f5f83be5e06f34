// ToolSorter.h -- makes of a list of sort keys an order of tools. Stateless, any thread; so are the orders.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <compare>
#include <functional>
#include <locale>
#include <memory>
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

    /// One key of a request that counts for something.
    struct Key {
        enum class Kind { Name, Number, Type, Unit, Property };
        Kind kind;
        std::string text; ///< as the request has it
        bool isDescending;
    };

    class Order
    {
    public:
        explicit Order(std::vector<Comparison> comparisons);

        /// Whether the first comes before the second.
        bool operator()(const std::unique_ptr<IndexedTool> &a, const std::unique_ptr<IndexedTool> &b) const;

    private:
        std::vector<Comparison> m_comparisons;
    };

    /// Tools that are equal in all keys are in the order of their GUIDs, whatever the direction; so are all tools for a
    /// text that asks for nothing. Throws what keysOf() throws; the order itself throws std::runtime_error "Type
    /// mismatch for key: " and the key where one property is a text in one tool and a number in another.
    ///
    /// The order of names is not transitive where equal numbers are written differently (T2, T02b, T2a): who sorts must
    /// do with that.
    static Order createSortFunction(std::string_view sortState);

    /// The keys of a request, each once. Throws Json::Exception for an element that is no object, or whose members are
    /// no texts.
    static std::vector<Key> keysOf(std::string_view sortState);

    static std::partial_ordering compareNaturalOrdering(std::wstring_view a, std::wstring_view b,
                                                        const std::locale &locale); ///< see NaturalOrder

    /// Whole texts with the locale's collation.
    static std::partial_ordering compareStrings(std::wstring_view a, std::wstring_view b, const std::locale &locale);

private:
    static Comparison createSortFunction(const Key &key);
    static Comparison createSortAscFunction(const Key &key);
    static Comparison createNameSortAscFunction();
};

} // namespace Varn::ToolLibraries

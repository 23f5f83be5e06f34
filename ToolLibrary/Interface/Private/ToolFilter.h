// ToolFilter.h -- makes of a search text and a list of filters one predicate over tools. Stateless, any thread; so are
// the predicates, which own all that they need.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/tool/ToolLibraryLocator.h"

#include <json/value.h>

#include <compare>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Varn::ToolLibraries {

class IndexedTool;
class PageColumns;
class ToolFilterTerm;

/// Filters are {"key","values"}; the form of the values tells what is meant:
///
///     [{"op","value","negated"}]      a comparison with a number; op is ":", "<", ">", "<=" or ">="
///     [{"lowerBound","upperBound"}]   a range with both ends in it
///     [text ...]                      one of the texts, exactly; of none no tool is
///     [{"guid","libraryUrl"} ...]     under the key "toolIdentifier": these tools of these libraries
///
/// Keys are "components.info.name" and "components.indexedProperties." + property. A tool without the property passes
/// no comparison, a negated one neither. A filter of any other form restricts nothing.
class TOOL_LIBRARY_EXPORT ToolFilter
{
public:
    using Term = std::shared_ptr<const ToolFilterTerm>;

    /// All terms together, asked in their order until one says no.
    class Predicate
    {
    public:
        explicit Predicate(std::vector<Term> terms);

        /// \a library is the one that the tool comes from.
        bool operator()(const IndexedTool &tool, const ToolLibraryLocator &library) const;

        /// The marks of the tools of a library that pass.
        std::vector<std::uint8_t> marksOf(PageColumns &columns, const ToolLibraryLocator &library) const;

    private:
        std::vector<Term> m_terms;
    };

    /// A tool passes that \a searchQuery is found in, and every filter. The query is looked for in comment, product id,
    /// vendor and name, without regard to case and blanks. Throws Json::Exception for a filter that is no object, or
    /// whose key is none.
    static Predicate createFilterFunction(std::string_view filtersState, std::string_view searchQuery);

private:
    using Ordering = std::function<bool(std::partial_ordering)>;

    // Null for what restricts nothing.
    static Term createOneFilterFunction(const std::string &key, const Json::Value &values);
    static Term createCustomFilterFunction(const std::string &key, const Json::Value &values);
    static Term createObjectFilterFunction(const std::string &key, const Json::Value &object);
    static Term createEnumFilterFunction(const std::string &key, std::set<std::string> texts);
    static Term createNumberFilterFunction(const std::string &key, Ordering ordering, double number);
    static Term createRangeFilterFunction(const std::string &key, double lower, double upper);
    static std::optional<Ordering> createComparisonFunction(const std::string &op, bool negated);
    static Term createSearchFilterFunction(std::string_view searchQuery);
};

} // namespace Varn::ToolLibraries

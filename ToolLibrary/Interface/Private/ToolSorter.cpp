#include "ToolLibrary/Interface/Private/ToolSorter.h"

#include "ToolLibrary/Interface/Private/NaturalOrder.h"
#include "ToolLibrary/Interface/Private/ToolKeys.h"
#include "platform/core/ToolSpecification.h"
#include "platform/utils/Guid.h"

#include <cmath>
#include <optional>
#include <set>
#include <stdexcept>
#include <utility>

namespace Varn::ToolLibraries {

namespace {

constexpr std::string_view normValueSuffix = ".normValue";
constexpr const char *ascending = "asc";

std::partial_ordering reversed(std::partial_ordering order)
{
    if (order < 0)
        return std::partial_ordering::greater;
    return order > 0 ? std::partial_ordering::less : order;
}

std::partial_ordering compareDoubles(double a, double b)
{
    if (std::isnan(a) && std::isnan(b))
        return std::partial_ordering::equivalent;
    return a <=> b;
}

std::partial_ordering compareProperties(const Tool::Property &a, const Tool::Property &b, const std::string &key)
{
    if (a.index() != b.index())
        throw std::runtime_error("Type mismatch for key: " + key);
    if (const auto *text = std::get_if<std::string>(&a))
        return *text <=> std::get<std::string>(b);
    if (const auto *number = std::get_if<double>(&a))
        return compareDoubles(*number, std::get<double>(b));
    if (const auto *number = std::get_if<int>(&a))
        return *number <=> std::get<int>(b);
    if (const auto *flag = std::get_if<bool>(&a))
        return *flag <=> std::get<bool>(b);
    throw std::runtime_error("Unsupported type for key: " + key);
}

std::partial_ordering compareNormValues(const IndexedTool &a, const IndexedTool &b, const std::string &key)
{
    const std::optional<double> first = ToolKeys::numberOf(a, key);
    const std::optional<double> second = ToolKeys::numberOf(b, key);
    return first && second ? *first <=> *second : first.has_value() <=> second.has_value(); // none is first
}

std::partial_ordering compareRawProperties(const IndexedTool &a, const IndexedTool &b, const std::string &property,
                                           const std::string &key)
{
    const std::optional<Tool::Property> first = a.getRawProperty(property);
    const std::optional<Tool::Property> second = b.getRawProperty(property);
    return first && second ? compareProperties(*first, *second, key)
                           : second.has_value() <=> first.has_value(); // none is last
}

/// Nothing for a key that counts for nothing. The suffix is looked at first.
std::optional<ToolSorter::Key::Kind> kindOf(std::string_view key)
{
    using Kind = ToolSorter::Key::Kind;
    if (key == ToolKeys::name)
        return Kind::Name;
    if (!ToolKeys::propertyOf(key))
        return std::nullopt;
    if (key.ends_with(normValueSuffix))
        return Kind::Number;
    if (key == ToolKeys::type)
        return Kind::Type;
    return key == ToolKeys::unit ? Kind::Unit : Kind::Property;
}

std::wstring typeName(const IndexedTool &tool)
{
    return ToolSpecification::getToolTypeAsLocalizedString(tool.getType()).asWideString();
}

} // namespace

ToolSorter::Order ToolSorter::createSortFunction(std::string_view sortState)
{
    std::vector<Comparison> comparisons;
    for (const Key &key : keysOf(sortState))
        comparisons.push_back(createSortFunction(key));
    comparisons.emplace_back([](const IndexedTool &a, const IndexedTool &b) -> std::partial_ordering {
        return Guid::compare(a.getToolId().guid(), b.getToolId().guid()) <=> 0;
    });
    return Order(std::move(comparisons));
}

std::vector<ToolSorter::Key> ToolSorter::keysOf(std::string_view sortState)
{
    std::vector<Key> keys;
    std::set<std::string> known; // what a key leaves open, its repetition does not decide
    const Json::Value elements = ToolKeys::parseState(sortState);
    for (const Json::Value &element : elements) {
        std::string key = element["key"].asString();
        const bool isDescending = element["order"].asString() != ascending;
        if (const std::optional<Key::Kind> kind = kindOf(key); kind && known.insert(key).second)
            keys.push_back({*kind, std::move(key), isDescending});
    }
    return keys;
}

ToolSorter::Order::Order(std::vector<Comparison> comparisons) : m_comparisons(std::move(comparisons)) {}

bool ToolSorter::Order::operator()(const std::unique_ptr<IndexedTool> &a, const std::unique_ptr<IndexedTool> &b) const
{
    for (const Comparison &comparison : m_comparisons) {
        const std::partial_ordering order = comparison(*a, *b);
        if (order < 0 || order > 0)
            return order < 0;
    }
    return false;
}

ToolSorter::Comparison ToolSorter::createSortFunction(const Key &key)
{
    Comparison comparison = createSortAscFunction(key);
    if (!key.isDescending)
        return comparison;
    return [comparison = std::move(comparison)](const IndexedTool &a, const IndexedTool &b) {
        return reversed(comparison(a, b));
    };
}

ToolSorter::Comparison ToolSorter::createSortAscFunction(const Key &key)
{
    switch (key.kind) {
    case Key::Kind::Name:
        break;
    case Key::Kind::Number:
        return [text = key.text](const IndexedTool &a, const IndexedTool &b) { return compareNormValues(a, b, text); };
    case Key::Kind::Type:
        return [](const IndexedTool &a, const IndexedTool &b) { return typeName(a) <=> typeName(b); };
    case Key::Kind::Unit:
        return [](const IndexedTool &a, const IndexedTool &b) {
            return NCUnit::getUnitAsString(a.getUnit()) <=> NCUnit::getUnitAsString(b.getUnit());
        };
    case Key::Kind::Property:
        return [text = key.text, property = std::string(ToolKeys::propertyOf(key.text).value_or(""))](
                   const IndexedTool &a, const IndexedTool &b) { return compareRawProperties(a, b, property, text); };
    }
    return createNameSortAscFunction();
}

ToolSorter::Comparison ToolSorter::createNameSortAscFunction()
{
    return
        [](const IndexedTool &a, const IndexedTool &b) { return NaturalOrder::compareNames(a.getName(), b.getName()); };
}

std::partial_ordering ToolSorter::compareNaturalOrdering(std::wstring_view a, std::wstring_view b,
                                                         const std::locale &locale)
{
    return NaturalOrder::compare(std::wstring(a), std::wstring(b), locale);
}

std::partial_ordering ToolSorter::compareStrings(std::wstring_view a, std::wstring_view b, const std::locale &locale)
{
    const auto &collation = std::use_facet<std::collate<wchar_t>>(locale);
    return collation.compare(a.data(), a.data() + a.size(), b.data(), b.data() + b.size()) <=> 0;
}

} // namespace Varn::ToolLibraries

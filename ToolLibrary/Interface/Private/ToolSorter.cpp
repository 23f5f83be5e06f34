#include "ToolLibrary/Interface/Private/ToolSorter.h"

#include "ToolLibrary/Interface/Private/ToolKeys.h"
#include "platform/core/ToolSpecification.h"
#include "platform/utils/Guid.h"

#include <cmath>
#include <cwchar>
#include <cwctype>
#include <stdexcept>
#include <utility>
#include <vector>

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

std::partial_ordering orderOf(int sign)
{
    return sign <=> 0;
}

/// Characters by which a number goes on.
bool isNumberCharacter(wchar_t c)
{
    return std::iswdigit(static_cast<std::wint_t>(c)) || c == L'.';
}

std::size_t endOfNumber(std::wstring_view text, std::size_t at)
{
    while (at < text.size() && isNumberCharacter(text[at]))
        ++at;
    return at;
}

/// The number at a place, as far as the C library reads it.
double numberAt(std::wstring_view text, std::size_t at)
{
    return std::wcstod(std::wstring(text.substr(at)).c_str(), nullptr);
}

int collate(std::wstring_view a, std::wstring_view b, const std::locale &locale)
{
    const auto &collation = std::use_facet<std::collate<wchar_t>>(locale);
    return collation.compare(a.data(), a.data() + a.size(), b.data(), b.data() + b.size());
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

std::wstring typeName(const IndexedTool &tool)
{
    return ToolSpecification::getToolTypeAsLocalizedString(tool.getType()).asWideString();
}

} // namespace

ToolSorter::Order ToolSorter::createSortFunction(std::string_view sortState)
{
    std::vector<Comparison> comparisons;
    const Json::Value keys = ToolKeys::parseState(sortState);
    for (const Json::Value &key : keys)
        if (auto comparison = createSortFunction(key["key"].asString(), key["order"].asString()))
            comparisons.push_back(std::move(*comparison));
    comparisons.emplace_back([](const IndexedTool &a, const IndexedTool &b) {
        return orderOf(Guid::compare(a.getTool().getToolId().guid(), b.getTool().getToolId().guid()));
    });
    return [comparisons = std::move(comparisons)](const std::unique_ptr<IndexedTool> &a,
                                                  const std::unique_ptr<IndexedTool> &b) {
        for (const Comparison &comparison : comparisons) {
            const std::partial_ordering order = comparison(*a, *b);
            if (order < 0 || order > 0)
                return order < 0;
        }
        return false;
    };
}

std::optional<ToolSorter::Comparison> ToolSorter::createSortFunction(const std::string &key, const std::string &order)
{
    std::optional<Comparison> comparison = createSortAscFunction(key);
    if (!comparison || order == ascending)
        return comparison;
    return [comparison = std::move(*comparison)](const IndexedTool &a, const IndexedTool &b) {
        return reversed(comparison(a, b));
    };
}

std::optional<ToolSorter::Comparison> ToolSorter::createSortAscFunction(const std::string &key)
{
    if (key == ToolKeys::name)
        return createNameSortAscFunction();
    const std::optional<std::string_view> property = ToolKeys::propertyOf(key);
    if (!property)
        return std::nullopt;
    if (key.ends_with(normValueSuffix))
        return [key](const IndexedTool &a, const IndexedTool &b) { return compareNormValues(a, b, key); };
    if (key == ToolKeys::type)
        return [](const IndexedTool &a, const IndexedTool &b) { return typeName(a) <=> typeName(b); };
    if (key == ToolKeys::unit)
        return [](const IndexedTool &a, const IndexedTool &b) {
            return NCUnit::getUnitAsString(a.getUnit()) <=> NCUnit::getUnitAsString(b.getUnit());
        };
    return [key, property = std::string(*property)](const IndexedTool &a, const IndexedTool &b) {
        return compareRawProperties(a, b, property, key);
    };
}

ToolSorter::Comparison ToolSorter::createNameSortAscFunction()
{
    return [](const IndexedTool &a, const IndexedTool &b) {
        const std::locale locale("C");
        const std::wstring first = a.getName();
        const std::wstring second = b.getName();
        const std::partial_ordering order = compareNaturalOrdering(first, second, locale);
        return order == 0 ? compareStrings(first, second, locale) : order;
    };
}

std::partial_ordering ToolSorter::compareNaturalOrdering(std::wstring_view a, std::wstring_view b,
                                                         const std::locale &locale)
{
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() && j < b.size()) {
        if (std::iswdigit(static_cast<std::wint_t>(a[i])) && std::iswdigit(static_cast<std::wint_t>(b[j]))) {
            const std::partial_ordering order = numberAt(a, i) <=> numberAt(b, j);
            if (order != 0)
                return order;
            i = endOfNumber(a, i);
            j = endOfNumber(b, j);
        } else {
            if (const int sign = collate(a.substr(i, 1), b.substr(j, 1), locale))
                return orderOf(sign);
            ++i;
            ++j;
        }
    }
    return std::partial_ordering::equivalent;
}

std::partial_ordering ToolSorter::compareStrings(std::wstring_view a, std::wstring_view b, const std::locale &locale)
{
    return orderOf(collate(a, b, locale));
}

} // namespace Varn::ToolLibraries

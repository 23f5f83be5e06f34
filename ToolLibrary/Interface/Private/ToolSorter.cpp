#include "ToolLibrary/Interface/Private/ToolSorter.h"

#include "ToolLibrary/Interface/Private/ToolKeys.h"
#include "platform/core/ToolSpecification.h"
#include "platform/utils/Guid.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cwchar>
#include <cwctype>
#include <stdexcept>
#include <utility>
#include <vector>

namespace Varn::ToolLibraries {

namespace {

constexpr std::string_view normValueSuffix = ".normValue";
constexpr const char *ascending = "asc";
constexpr std::size_t exactDigits = 15; // that a double always holds

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

/// Whether the C library reads on behind the digits: an exponent, or what follows the x of a hexadecimal number.
bool goesOnAsNumber(std::wstring_view text, std::size_t begin, std::size_t end)
{
    const auto at = [text](std::size_t i) { return i < text.size() ? text[i] : L'\0'; };
    const auto isDigit = [&](std::size_t i) { return std::iswdigit(static_cast<std::wint_t>(at(i))) != 0; };
    if (at(end) == L'x' || at(end) == L'X')
        return end - begin == 1 && at(begin) == L'0';
    const bool isSigned = at(end + 1) == L'+' || at(end + 1) == L'-';
    return (at(end) == L'e' || at(end) == L'E') && isDigit(end + (isSigned ? 2 : 1));
}

/// The number at a place, as far as the C library reads it.
double numberAt(const std::wstring &text, std::size_t at, std::size_t end)
{
    const std::wstring_view run = std::wstring_view(text).substr(at, end - at);
    if (run.size() > exactDigits || run.find(L'.') != std::wstring_view::npos || goesOnAsNumber(text, at, end))
        return std::wcstod(text.c_str() + at, nullptr);
    std::int64_t number = 0;
    for (const wchar_t digit : run)
        number = 10 * number + (digit - L'0');
    return static_cast<double>(number);
}

/// The collation of a locale. That of "C" is the order of the characters, for which there is a short way.
class Collation
{
public:
    explicit Collation(const std::locale &locale)
        : m_facet(locale == std::locale::classic() ? nullptr : &std::use_facet<std::collate<wchar_t>>(locale))
    {
    }
    int operator()(std::wstring_view a, std::wstring_view b) const
    {
        return m_facet ? m_facet->compare(a.data(), a.data() + a.size(), b.data(), b.data() + b.size()) : a.compare(b);
    }

private:
    const std::collate<wchar_t> *m_facet; // null for "C"
};

struct NaturalComparison {
    std::partial_ordering order;
    bool restOfA; ///< whether, for an equal order, the text has not been used up
    bool restOfB;
};

NaturalComparison compareNaturally(const std::wstring &a, const std::wstring &b, const Collation &collate)
{
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() && j < b.size()) {
        if (std::iswdigit(static_cast<std::wint_t>(a[i])) && std::iswdigit(static_cast<std::wint_t>(b[j]))) {
            const std::size_t endOfA = endOfNumber(a, i);
            const std::size_t endOfB = endOfNumber(b, j);
            const std::partial_ordering order = numberAt(a, i, endOfA) <=> numberAt(b, j, endOfB);
            if (order != 0)
                return {order, true, true};
            i = endOfA;
            j = endOfB;
        } else {
            if (a[i] != b[j])
                if (const int sign = collate({&a[i], 1}, {&b[j], 1}))
                    return {orderOf(sign), true, true};
            ++i;
            ++j;
        }
    }
    return {std::partial_ordering::equivalent, i < a.size(), j < b.size()};
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
    bool looksAtNames = false;
    for (const Json::Value &key : keys) {
        if (auto comparison = createSortFunction(key["key"].asString(), key["order"].asString()))
            comparisons.push_back(std::move(*comparison));
        looksAtNames = looksAtNames || key["key"].asString() == ToolKeys::name;
    }
    comparisons.emplace_back([](const IndexedTool &a, const IndexedTool &b) {
        return orderOf(Guid::compare(a.getToolId().guid(), b.getToolId().guid()));
    });
    return Order(std::move(comparisons), looksAtNames);
}

ToolSorter::Order::Order(std::vector<Comparison> comparisons, bool looksAtNames)
    : m_comparisons(std::move(comparisons)), m_looksAtNames(looksAtNames)
{
}

bool ToolSorter::Order::operator()(const std::unique_ptr<IndexedTool> &a, const std::unique_ptr<IndexedTool> &b) const
{
    for (const Comparison &comparison : m_comparisons) {
        const std::partial_ordering order = comparison(*a, *b);
        if (order < 0 || order > 0)
            return order < 0;
    }
    return false;
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
        static const Collation collate(std::locale::classic());
        const std::wstring &first = a.getName();
        const std::wstring &second = b.getName();
        const std::partial_ordering order = compareNaturally(first, second, collate).order;
        return order == 0 ? orderOf(collate(first, second)) : order;
    };
}

std::partial_ordering ToolSorter::compareNaturalOrdering(std::wstring_view a, std::wstring_view b,
                                                         const std::locale &locale)
{
    return compareNaturally(std::wstring(a), std::wstring(b), Collation(locale)).order;
}

// Where the natural order decides within both names, it is that of their numbers and characters, which is transitive.
// Where one of them ends first, the whole names decide; that fits in as long as the longer one begins with the shorter.
bool ToolSorter::isConsistent(std::vector<const std::wstring *> names)
{
    const Collation collate(std::locale::classic());
    const auto comesBefore = [&](const std::wstring *a, const std::wstring *b) {
        const NaturalComparison comparison = compareNaturally(*a, *b, collate);
        if (comparison.order != 0)
            return comparison.order < 0;
        return comparison.restOfA != comparison.restOfB ? comparison.restOfA < comparison.restOfB : *a < *b;
    };
    std::ranges::sort(names, comesBefore);
    std::vector<const std::wstring *> beginnings; // of the name at hand, each a beginning of the next
    for (const std::wstring *name : names) {
        while (!beginnings.empty() && compareNaturally(*beginnings.back(), *name, collate).order != 0)
            beginnings.pop_back();
        if (!beginnings.empty() && !name->starts_with(*beginnings.back()))
            return false;
        beginnings.push_back(name);
    }
    return true;
}

std::partial_ordering ToolSorter::compareStrings(std::wstring_view a, std::wstring_view b, const std::locale &locale)
{
    return orderOf(Collation(locale)(a, b));
}

} // namespace Varn::ToolLibraries

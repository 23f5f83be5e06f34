#include "ToolLibrary/Interface/Private/NaturalOrder.h"

#include "ToolLibrary/Interface/Private/Columns/Ordinal.h"
#include "platform/utils/Messages.h"

#include <QtEndian>

#include <algorithm>
#include <cstdint>
#include <cwchar>

namespace Varn::ToolLibraries {

namespace {

constexpr std::size_t exactDigits = 15; // that a double always holds

bool isDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9';
}

/// Characters by which a number goes on.
bool isNumberCharacter(wchar_t c)
{
    return isDigit(c) || c == L'.';
}

std::size_t endOfNumber(const std::wstring &text, std::size_t at)
{
    while (at < text.size() && isNumberCharacter(text[at]))
        ++at;
    return at;
}

/// Decimal points of other locales than "C": the C library reads numbers in that of the host.
bool isForeignPoint(wchar_t c)
{
    return c == L',' || c == L'\x066B'; // Arabic
}

/// Whether the C library may read on behind the digits: a decimal point, an exponent, or what follows the x of a
/// hexadecimal number.
bool goesOnAsNumber(const std::wstring &text, std::size_t begin, std::size_t end)
{
    const auto at = [&text](std::size_t i) { return i < text.size() ? text[i] : L'\0'; };
    if (isForeignPoint(at(end)))
        return true;
    if (at(end) == L'x' || at(end) == L'X')
        return end - begin == 1 && at(begin) == L'0';
    const bool isSigned = at(end + 1) == L'+' || at(end + 1) == L'-';
    return (at(end) == L'e' || at(end) == L'E') && isDigit(at(end + (isSigned ? 2 : 1)));
}

/// The number at a place, as far as the C library reads it.
double numberAt(const std::wstring &text, std::size_t at, std::size_t end)
{
    if (end - at > exactDigits || goesOnAsNumber(text, at, end))
        return std::wcstod(text.c_str() + at, nullptr);
    std::int64_t number = 0;
    for (std::size_t i = at; i < end; ++i) {
        if (text[i] == L'.')
            return std::wcstod(text.c_str() + at, nullptr);
        number = 10 * number + (text[i] - L'0');
    }
    return static_cast<double>(number);
}

/// Whether the character can be in the middle of what the C library reads as one number, in any locale.
bool continuesNumber(wchar_t c)
{
    return isNumberCharacter(c) || (c >= L'a' && c <= L'f') || (c >= L'A' && c <= L'F') || c == L'x' || c == L'X' ||
           c == L'p' || c == L'P' || c == L'+' || c == L'-' || isForeignPoint(c);
}

/// A place up to which both texts are the same, and at which no number is under way.
std::size_t commonBeginning(const std::wstring &a, const std::wstring &b)
{
    const std::size_t shorter = std::min(a.size(), b.size());
    std::size_t at = 0;
    while (at < shorter && a[at] == b[at])
        ++at;
    while (at > 0 && continuesNumber(a[at - 1]))
        --at;
    return at;
}

/// The collation of a locale. That of "C" is the order of the characters, for which there is a short way.
class Collation
{
public:
    explicit Collation(const std::locale &locale)
        : m_facet(locale == std::locale::classic() ? nullptr : &std::use_facet<std::collate<wchar_t>>(locale))
    {
    }
    int operator()(wchar_t a, wchar_t b) const
    {
        if (m_facet)
            return m_facet->compare(&a, &a + 1, &b, &b + 1);
        return (a > b) - (a < b);
    }

private:
    const std::collate<wchar_t> *m_facet; // null for "C"
};

struct Comparison {
    std::partial_ordering order;
    bool restOfA = true; ///< for an equal order: whether the text has not been used up
    bool restOfB = true;
    bool isRespelt = false; ///< whether the texts differ before the place that decides
};

Comparison compareFrom(std::size_t start, const std::wstring &a, const std::wstring &b, const Collation &collate)
{
    std::size_t i = start;
    std::size_t j = start;
    bool isRespelt = false;
    while (i < a.size() && j < b.size()) {
        if (isDigit(a[i]) && isDigit(b[j])) {
            const std::size_t endOfA = endOfNumber(a, i);
            const std::size_t endOfB = endOfNumber(b, j);
            const std::partial_ordering order = numberAt(a, i, endOfA) <=> numberAt(b, j, endOfB);
            if (order != 0)
                return {order, true, true, isRespelt};
            isRespelt = isRespelt || a.compare(i, endOfA - i, b, j, endOfB - j) != 0;
            i = endOfA;
            j = endOfB;
        } else {
            if (a[i] != b[j]) {
                if (const int sign = collate(a[i], b[j]))
                    return {sign <=> 0, true, true, isRespelt};
                isRespelt = true;
            }
            ++i;
            ++j;
        }
    }
    return {std::partial_ordering::equivalent, i < a.size(), j < b.size(), isRespelt};
}

Comparison compareInC(const std::wstring &a, const std::wstring &b)
{
    static const Collation collate(std::locale::classic());
    return compareFrom(commonBeginning(a, b), a, b, collate);
}

} // namespace

std::partial_ordering NaturalOrder::compare(const std::wstring &a, const std::wstring &b, const std::locale &locale)
{
    return compareFrom(commonBeginning(a, b), a, b, Collation(locale)).order;
}

std::partial_ordering NaturalOrder::compareNames(const std::wstring &a, const std::wstring &b)
{
    const std::partial_ordering order = compareInC(a, b).order;
    return order == 0 ? a <=> b : order;
}

bool NaturalOrder::comesBefore(const std::wstring &a, const std::wstring &b)
{
    const Comparison comparison = compareInC(a, b);
    if (comparison.order != 0)
        return comparison.order < 0;
    return comparison.restOfA != comparison.restOfB ? comparison.restOfA < comparison.restOfB : a < b;
}

// The bytes of a character are those of its UTF-8, which is in the order of the characters. A number is a digit, by
// which it stands among them, and the eight bytes of its value.
NaturalOrder::Key NaturalOrder::keyOf(const std::wstring &name)
{
    constexpr std::size_t size = sizeof(Key);
    std::string bytes;
    bytes.reserve(2 * size);
    for (std::size_t at = 0; at < name.size() && bytes.size() < size;) {
        if (!isDigit(name[at])) {
            bytes += Messages::fromWideUnicodeToUTF8(std::wstring_view(name).substr(at++, 1));
            continue;
        }
        const std::size_t end = endOfNumber(name, at);
        const std::uint64_t value = qToBigEndian(Ordinal::of(numberAt(name, at, end)));
        bytes += '0';
        bytes.append(reinterpret_cast<const char *>(&value), sizeof value);
        at = end;
    }
    bytes.resize(size);
    return {qFromBigEndian<std::uint64_t>(bytes.data()), qFromBigEndian<std::uint64_t>(bytes.data() + size / 2)};
}

// Where the natural order decides within both names, it is that of their numbers and characters, which is transitive.
// Where one of them ends first, the whole names decide; that fits in as long as the longer one begins with the shorter.
bool NaturalOrder::isConsistent(const std::vector<const std::wstring *> &names)
{
    std::vector<const std::wstring *> beginnings; // of the name at hand, each a beginning of the next
    for (const std::wstring *name : names) {
        for (; !beginnings.empty(); beginnings.pop_back()) {
            const Step step = stepBetween(*beginnings.back(), *name);
            if (step == Step::Broken)
                return false;
            if (step == Step::GoesOn)
                break;
        }
        beginnings.push_back(name);
    }
    return true;
}

NaturalOrder::Step NaturalOrder::stepBetween(const std::wstring &first, const std::wstring &second)
{
    const Comparison comparison = compareInC(first, second);
    if (comparison.order == 0)
        return second.starts_with(first) ? Step::GoesOn : Step::Broken;
    return comparison.isRespelt ? Step::Respelt : Step::Apart;
}

} // namespace Varn::ToolLibraries

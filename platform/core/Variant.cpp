#include "platform/core/Variant.h"

#include "platform/utils/Messages.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

namespace Varn {

namespace {

/// The number that a text is as a whole, 0 if it is none. Reads no locale.
double numberOf(const std::wstring &text)
{
    const std::string narrow = Messages::fromWideUnicodeToUTF8(text);
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
    const auto first = std::find_if_not(narrow.begin(), narrow.end(), isBlank);
    const auto last = std::find_if_not(narrow.rbegin(), std::make_reverse_iterator(first), isBlank).base();
    const char *begin = narrow.data() + (first - narrow.begin());
    const char *end = narrow.data() + (last - narrow.begin());
    if (end - begin > 1 && *begin == '+' && begin[1] != '-')
        ++begin; // from_chars knows no plus sign
    double number = 0;
    const auto [stop, error] = std::from_chars(begin, end, number);
    const bool isNumber = error == std::errc() && stop == end && std::isfinite(number); // "inf" is a word, not a number
    return isNumber ? number : 0;
}

std::wstring textOf(double number)
{
    char text[32];
    const auto [end, error] = std::to_chars(std::begin(text), std::end(text), number);
    return {std::begin(text), end};
}

bool isTrue(double number)
{
    return number != 0 && !std::isnan(number);
}

} // namespace

bool Variant::getAsBool() const
{
    if (const auto *text = std::get_if<std::wstring>(&m_value))
        return *text == L"true" || isTrue(numberOf(*text));
    return isTrue(getAsDouble());
}

int Variant::getAsInt() const
{
    if (const int *value = std::get_if<int>(&m_value))
        return *value;
    const double number = std::round(getAsDouble());
    if (std::isnan(number))
        return 0;
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(number, lowest, highest));
}

double Variant::getAsDouble() const
{
    if (const bool *value = std::get_if<bool>(&m_value))
        return *value ? 1 : 0;
    if (const int *value = std::get_if<int>(&m_value))
        return *value;
    if (const double *value = std::get_if<double>(&m_value))
        return *value;
    if (const auto *text = std::get_if<std::wstring>(&m_value))
        return numberOf(*text);
    return 0;
}

std::wstring Variant::getAsWideString() const
{
    if (const bool *value = std::get_if<bool>(&m_value))
        return *value ? L"true" : L"false";
    if (const int *value = std::get_if<int>(&m_value))
        return std::to_wstring(*value);
    if (const double *value = std::get_if<double>(&m_value))
        return textOf(*value);
    if (const auto *text = std::get_if<std::wstring>(&m_value))
        return *text;
    return {};
}

std::string Variant::getAsString() const
{
    return Messages::fromWideUnicodeToUTF8(getAsWideString());
}

std::wstring Variant::getSubstitution(std::wstring_view message, const Variant &value)
{
    constexpr std::wstring_view place = L"%1";
    const auto isDigit = [](wchar_t c) { return c >= L'0' && c <= L'9'; };
    const std::wstring text = value.getAsWideString();
    std::wstring result;
    while (!message.empty()) {
        const bool isPlace = message.starts_with(place) && (message.size() == place.size() || !isDigit(message[2]));
        if (isPlace)
            result += text;
        else
            result += message.front();
        message.remove_prefix(isPlace ? place.size() : 1);
    }
    return result;
}

bool operator==(const Variant &a, const Variant &b)
{
    const auto isNumber = [](const Variant &value) { return value.isInt() || value.isDouble(); };
    if (isNumber(a) && isNumber(b))
        return a.getAsDouble() == b.getAsDouble();
    return a.m_value == b.m_value;
}

} // namespace Varn

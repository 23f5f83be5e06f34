#include "platform/core/ExpressionTokens.h"

#include <algorithm>
#include <charconv>
#include <locale>
#include <optional>
#include <sstream>

namespace Varn {

namespace {

constexpr wchar_t quote = L'\'';

// Not those of the C library, which ask the locale.
bool isBlank(wchar_t c)
{
    return c == L' ' || c == L'\t' || c == L'\n' || c == L'\r';
}

bool isDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9';
}

bool beginsName(wchar_t c)
{
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || c == L'_';
}

bool continuesName(wchar_t c)
{
    return beginsName(c) || isDigit(c) || c == L'.';
}

/// The number that \a digits write, which is 0 for one too small; nothing for one too large.
std::optional<double> numberOf(std::wstring_view digits)
{
    const std::string text(digits.begin(), digits.end());
    double number = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), number).ec == std::errc())
        return number;
    // Out of range on either side; from_chars does not say on which, and a stream of the classic locale does.
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    if (stream >> number)
        return number;
    return std::nullopt;
}

constexpr std::wstring_view longSymbols[] = {L"==", L"!=", L"<=", L">=", L"&&", L"||"};

} // namespace

ExpressionToken ExpressionTokens::next()
{
    using Kind = ExpressionToken::Kind;
    m_place = endOf(m_place, isBlank);
    if (m_place == m_text.size())
        return take(Kind::End, m_place);
    const wchar_t first = m_text[m_place];
    if (beginsName(first))
        return take(Kind::Name, endOf(m_place, continuesName));
    if (isDigit(first) || (first == L'.' && isDigit(at(m_place + 1))))
        return takeNumber();
    if (first == quote) {
        const std::size_t end = endOfText();
        return end == std::wstring_view::npos ? take(Kind::OpenText, m_text.size()) : take(Kind::Text, end);
    }
    const bool isLong = std::ranges::find(longSymbols, m_text.substr(m_place, 2)) != std::end(longSymbols);
    return take(Kind::Symbol, m_place + (isLong ? 2 : 1));
}

std::wstring ExpressionTokens::unquoted(std::wstring_view token)
{
    const std::wstring_view inside = token.substr(1, token.size() - 2);
    std::wstring text;
    text.reserve(inside.size());
    for (std::size_t i = 0; i < inside.size(); ++i) {
        text += inside[i];
        if (inside[i] == quote)
            ++i; // the second of a pair
    }
    return text;
}

/// Behind the closing quote, or npos if there is none.
std::size_t ExpressionTokens::endOfText() const
{
    for (std::size_t place = m_place + 1; place < m_text.size(); ++place) {
        if (m_text[place] != quote)
            continue;
        if (at(place + 1) != quote)
            return place + 1;
        ++place;
    }
    return std::wstring_view::npos;
}

std::size_t ExpressionTokens::endOfNumber() const
{
    std::size_t end = endOf(m_place, isDigit);
    if (at(end) == L'.')
        end = endOf(end + 1, isDigit);
    if (at(end) != L'e' && at(end) != L'E')
        return end;
    const bool isSigned = at(end + 1) == L'+' || at(end + 1) == L'-';
    const std::size_t exponent = end + (isSigned ? 2 : 1);
    return isDigit(at(exponent)) ? endOf(exponent, isDigit) : end;
}

template <typename Predicate>
std::size_t ExpressionTokens::endOf(std::size_t from, Predicate belongs) const
{
    while (from < m_text.size() && belongs(m_text[from]))
        ++from;
    return from;
}

ExpressionToken ExpressionTokens::take(ExpressionToken::Kind kind, std::size_t end)
{
    const ExpressionToken token{kind, m_text.substr(m_place, end - m_place), m_place + 1};
    m_place = end;
    return token;
}

ExpressionToken ExpressionTokens::takeNumber()
{
    ExpressionToken token = take(ExpressionToken::Kind::Number, endOfNumber());
    const auto number = numberOf(token.text);
    if (!number)
        token.kind = ExpressionToken::Kind::NumberTooLarge;
    token.number = number.value_or(0);
    return token;
}

} // namespace Varn

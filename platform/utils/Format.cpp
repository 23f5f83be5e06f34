#include "platform/utils/Format.h"

#include <charconv>
#include <limits>

namespace Varn {

namespace {

template <typename Number>
std::optional<Number> readWhole(std::string_view text)
{
    Number number{};
    const char *end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || behind != end || text.empty())
        return std::nullopt;
    return number;
}

} // namespace

unsigned int Format::getUnsignedInt(std::wstring_view text)
{
    constexpr unsigned long long most = std::numeric_limits<unsigned int>::max();
    if (text.empty())
        return 0;
    unsigned long long number = 0;
    for (const wchar_t digit : text) {
        if (digit < L'0' || digit > L'9')
            return 0;
        number = number * 10 + static_cast<unsigned>(digit - L'0');
        if (number > most)
            return 0;
    }
    return static_cast<unsigned int>(number);
}

std::string Format::getDouble(double value)
{
    char text[32]; // the longest such text has 24 characters
    const auto [end, error] = std::to_chars(text, text + sizeof text, value);
    return {text, end};
}

std::optional<double> Format::tryDouble(std::string_view text)
{
    return readWhole<double>(text);
}

std::optional<int> Format::tryInt(std::string_view text)
{
    return readWhole<int>(text);
}

} // namespace Varn

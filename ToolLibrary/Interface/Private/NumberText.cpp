#include "ToolLibrary/Interface/Private/NumberText.h"

#include "platform/core/ToolSpecification.h"

#include <QString>

#include <charconv>
#include <cmath>
#include <iterator>
#include <string_view>

namespace Varn::ToolLibraries::NumberText {

namespace {

constexpr double largestPlain = 1e9;
constexpr std::size_t longestPlain = 32;
constexpr int lengthPrecision = 5;
constexpr int insertPrecision = 2;

/// Whether the standard library prints the value as Qt does: not where half a step is to be rounded, nor with a sign.
bool isPlain(double value, int precision)
{
    if (!(value > 0 && value < largestPlain))
        return value == 0 && !std::signbit(value);
    const double steps = value * std::pow(10.0, precision);
    return std::abs(steps - std::floor(steps) - 0.5) > 0.001;
}

std::wstring fractionOr(double value, bool asFraction, int precision)
{
    if (asFraction)
        if (const std::optional<std::wstring> fraction = ToolSpecification::getFractionalString(value))
            return *fraction;
    return withPrecision(value, precision);
}

} // namespace

std::wstring withPrecision(double value, int precision)
{
    char buffer[longestPlain];
    std::string printed;
    std::string_view text;
    if (isPlain(value, precision)) {
        const auto [end, error] = std::to_chars(buffer, std::end(buffer), value, std::chars_format::fixed, precision);
        text = std::string_view(buffer, static_cast<std::size_t>(end - buffer));
    } else {
        printed = QString::number(value, 'f', precision).toStdString();
        text = printed;
    }
    const std::size_t last = text.find_last_not_of('0');
    if (last == std::string_view::npos)
        return {};
    if (last + 1 != text.size())
        text = text.substr(0, text[last] == '.' ? last : last + 1);
    return {text.begin(), text.end()};
}

std::wstring length(double value, bool isInch)
{
    return fractionOr(value, isInch, lengthPrecision);
}

std::wstring ofInsert(double value, bool asFraction)
{
    return fractionOr(value, asFraction, insertPrecision);
}

} // namespace Varn::ToolLibraries::NumberText

#include "platform/core/ParameterSetting.h"

#include "platform/core/ExpressionTokens.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <optional>

namespace Varn {

namespace {

constexpr std::wstring_view blanks = L" \t\r\n";

/// The number of a text that is nothing else, as the language of expressions reads it. Most values are such, and need
/// no expression.
std::optional<double> plainNumber(std::wstring_view text)
{
    char narrow[64];
    if (text.empty() || text.size() > std::size(narrow))
        return std::nullopt;
    const auto belongs = [](wchar_t c) { return (c >= L'0' && c <= L'9') || c == L'.' || c == L'e' || c == L'-'; };
    if (!std::all_of(text.begin(), text.end(), belongs))
        return std::nullopt;
    std::transform(text.begin(), text.end(), narrow, [](wchar_t c) { return static_cast<char>(c); });
    double number = 0;
    const char *const end = narrow + text.size();
    const auto [stop, error] = std::from_chars(narrow, end, number);
    return error == std::errc() && stop == end && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

/// The text of an expression that is nothing but one in quotes, of whatever length.
std::optional<std::wstring> plainText(std::wstring_view text)
{
    if (text.front() != L'\'')
        return std::nullopt;
    ExpressionTokens tokens(text);
    const ExpressionToken token = tokens.next();
    if (token.kind != ExpressionToken::Kind::Text || tokens.next().kind != ExpressionToken::Kind::End)
        return std::nullopt;
    return ExpressionTokens::unquoted(token.text);
}

} // namespace

std::shared_ptr<const ParameterSetting> ParameterSetting::make(std::wstring_view expression, Units::Unit unit,
                                                               bool isOwn)
{
    const auto setting =
        std::make_shared<ParameterSetting>(ParameterSetting{std::wstring(expression), unit, isOwn, {}});
    if (expression.find_first_not_of(blanks) == std::wstring_view::npos)
        return setting;
    if (const auto number = plainNumber(expression))
        setting->meaning = *number;
    else if (auto text = plainText(expression))
        setting->meaning = std::move(*text);
    else if (auto read = ParameterExpression::parse(expression))
        setting->meaning = std::move(*read);
    else
        setting->meaning = std::move(read).error();
    if (expression.size() > ParameterExpression::maximumLength &&
        std::holds_alternative<ExpressionError>(setting->meaning))
        setting->expression.resize(ParameterExpression::maximumLength + 1); // what is too long anyway is not kept
    return setting;
}

std::shared_ptr<const ParameterSetting> ParameterSetting::ofBoolean(bool value)
{
    return std::make_shared<ParameterSetting>(
        ParameterSetting{value ? L"true" : L"false", Units::UNIT_NONE, true, value});
}

std::shared_ptr<const ParameterSetting> ParameterSetting::ofNumber(double value, Units::Unit unit, bool isOwn)
{
    char text[32];
    const auto [end, error] = std::to_chars(std::begin(text), std::end(text), value);
    const auto setting =
        std::make_shared<ParameterSetting>(ParameterSetting{std::wstring(std::begin(text), end), unit, isOwn, value});
    if (!std::isfinite(value))
        setting->meaning = ExpressionError{ExpressionError::Code::NotFinite, 1, L"Not a finite number"};
    return setting;
}

std::shared_ptr<const ParameterSetting> ParameterSetting::ofText(std::wstring_view text)
{
    return std::make_shared<ParameterSetting>(
        ParameterSetting{ParameterExpression::quoted(text), Units::UNIT_NONE, true, std::wstring(text)});
}

} // namespace Varn

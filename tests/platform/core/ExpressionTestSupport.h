// ExpressionTestSupport.h -- parameters to evaluate over, and results as text.
#pragma once

#include "platform/core/ParameterExpression.h"
#include "platform/utils/Messages.h"

#include <array>
#include <charconv>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace ExpressionTest {

using Varn::ExpressionError;
using Varn::ExpressionResult;
using Varn::ExpressionValue;
using Varn::ParameterExpression;

inline std::string narrow(std::wstring_view text)
{
    return Varn::Messages::fromWideUnicodeToUTF8(text);
}

/// Knows what is in its map, and keeps in mind what it was asked.
class Parameters : public Varn::ParameterResolver
{
public:
    using Entry = std::variant<ExpressionValue, ExpressionError::Code>;

    Parameters() = default;
    explicit Parameters(std::map<std::wstring, Entry, std::less<>> entries) : m_entries(std::move(entries)) {}

    ExpressionResult resolve(std::wstring_view name, std::size_t index) override
    {
        asked.push_back(narrow(name));
        indices.push_back(index);
        const auto found = m_entries.find(name);
        if (found == m_entries.end())
            return fail(ExpressionError::Code::UnknownName, L"Unknown parameter ", name);
        if (const auto *code = std::get_if<ExpressionError::Code>(&found->second))
            return fail(*code, L"No value of ", name);
        return std::get<ExpressionValue>(found->second);
    }

    std::vector<std::string> asked;
    std::vector<std::size_t> indices;

private:
    static ExpressionResult fail(ExpressionError::Code code, std::wstring what, std::wstring_view name)
    {
        return Ox::unexpected<ExpressionError>({code, 0, what.append(name)});
    }

    std::map<std::wstring, Entry, std::less<>> m_entries;
};

inline std::string describe(ExpressionError::Code code)
{
    constexpr std::array names = {
        "Syntax", "UnknownFunction", "WrongArgumentCount", "TooDeep",        "TooLong",       "UnknownName",
        "Cycle",  "NoValue",         "KindClash",          "DivisionByZero", "OutsideDomain", "NotFinite"};
    return names.at(static_cast<std::size_t>(code));
}

/// "KindClash 3: message"
inline std::string describe(const ExpressionError &error)
{
    return describe(error.code) + " " + std::to_string(error.column) + ": " + narrow(error.message);
}

/// "true", "2.5" or "'abc'"
inline std::string describe(const ExpressionValue &value)
{
    if (const bool *condition = std::get_if<bool>(&value))
        return *condition ? "true" : "false";
    if (const auto *text = std::get_if<std::wstring_view>(&value))
        return "'" + narrow(*text) + "'";
    char digits[32];
    return {digits, std::to_chars(std::begin(digits), std::end(digits), std::get<double>(value)).ptr};
}

inline std::string describe(const ExpressionResult &result)
{
    return result ? describe(*result) : describe(result.error());
}

/// The value of \a text as describe() tells it, or the error of reading it.
inline std::string valueOf(std::wstring_view text, Parameters &parameters)
{
    const auto expression = ParameterExpression::parse(text);
    return expression ? describe(expression->evaluate(parameters)) : describe(expression.error());
}

inline std::string valueOf(std::wstring_view text)
{
    Parameters parameters;
    return valueOf(text, parameters);
}

/// Throws when \a text is no expression.
inline ParameterExpression parsed(std::wstring_view text)
{
    auto expression = ParameterExpression::parse(text);
    if (!expression)
        throw std::runtime_error(narrow(text) + ": " + describe(expression.error()));
    return *expression;
}

/// \a part as often as \a count says.
inline std::wstring repeated(std::wstring_view part, std::size_t count)
{
    std::wstring text;
    text.reserve(part.size() * count);
    for (std::size_t i = 0; i < count; ++i)
        text += part;
    return text;
}

} // namespace ExpressionTest

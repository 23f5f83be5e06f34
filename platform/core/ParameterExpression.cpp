#include "platform/core/ParameterExpression.h"

#include "platform/core/ExpressionCode.h"
#include "platform/core/ExpressionEvaluation.h"
#include "platform/core/ExpressionParser.h"

namespace Varn {

ParameterResolver::~ParameterResolver() = default;

ParameterExpression::ParameterExpression(std::shared_ptr<const ExpressionCode> code) : m_code(std::move(code)) {}

Ox::expected<ParameterExpression, ExpressionError> ParameterExpression::parse(std::wstring_view text)
{
    if (text.size() > maximumLength) {
        const std::wstring message = L"Longer than " + std::to_wstring(maximumLength) + L" characters";
        return Ox::unexpected<ExpressionError>({ExpressionError::Code::TooLong, maximumLength + 1, message});
    }
    const auto code = std::make_shared<ExpressionCode>();
    code->text = text;
    if (auto error = ExpressionParser::parse(*code, maximumDepth))
        return Ox::unexpected<ExpressionError>(std::move(*error));
    return ParameterExpression(code);
}

std::wstring ParameterExpression::quoted(std::wstring_view text)
{
    std::wstring expression = L"'";
    for (const wchar_t c : text)
        expression.append(c == L'\'' ? 2 : 1, c);
    return expression += L'\'';
}

const std::wstring &ParameterExpression::text() const
{
    return m_code->text;
}

const std::vector<std::wstring> &ParameterExpression::names() const
{
    return m_code->names;
}

ExpressionResult ParameterExpression::evaluate(ParameterResolver &resolver) const
{
    return ExpressionEvaluation(*m_code, resolver).run();
}

} // namespace Varn

// ExpressionFuzz.cpp -- any text as an expression: it is read or refused at a place within it, and has the same value
// in parentheses.
#include "platform/core/ParameterExpression.h"
#include "platform/utils/Messages.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

using Varn::ExpressionError;
using Varn::ExpressionResult;
using Varn::ExpressionValue;
using Varn::ParameterExpression;

namespace {

/// Values of every kind, by the last letter of the name.
class Resolver : public Varn::ParameterResolver
{
public:
    ExpressionResult resolve(std::wstring_view name, std::size_t) override
    {
        switch (name.back()) {
        case L'b':
            return name.size() % 2 == 0;
        case L't':
            return name;
        case L'u':
            return Ox::unexpected<ExpressionError>({ExpressionError::Code::UnknownName, 0, L"Unknown"});
        case L'i':
            return HUGE_VAL;
        default:
            return static_cast<double>(name.size()) - 2;
        }
    }
};

void require(bool condition)
{
    if (!condition)
        std::abort();
}

bool isSame(const ExpressionResult &a, const ExpressionResult &b)
{
    return a && b ? *a == *b : !a && !b && a.error().code == b.error().code && a.error().message == b.error().message;
}

void checkPlace(const ExpressionError &error, const std::wstring &text)
{
    require(error.column >= 1 && error.column <= text.size() + 1 && !error.message.empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string bytes(reinterpret_cast<const char *>(data), size);
    const std::wstring text = Varn::Messages::fromUTF8ToWideUnicode(bytes);
    Resolver resolver;

    const auto quoted = ParameterExpression::parse(ParameterExpression::quoted(text));
    require(quoted && quoted->evaluate(resolver) == ExpressionValue(text));

    const auto expression = ParameterExpression::parse(text);
    const auto inParentheses = ParameterExpression::parse(L"(" + text + L"\n)");
    if (!expression) {
        checkPlace(expression.error(), text);
        return 0;
    }
    require(expression->text() == text);
    const ExpressionResult result = expression->evaluate(resolver);
    if (!result)
        checkPlace(result.error(), text);
    else if (const double *number = std::get_if<double>(&*result))
        require(std::isfinite(*number));
    if (inParentheses)
        require(inParentheses->names() == expression->names() && isSame(inParentheses->evaluate(resolver), result));
    else
        require(inParentheses.error().code == ExpressionError::Code::TooDeep);
    return 0;
}

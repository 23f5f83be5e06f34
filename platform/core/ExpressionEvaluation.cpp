#include "platform/core/ExpressionEvaluation.h"

#include "platform/core/ExpressionTokens.h"
#include "platform/core/ParameterExpression.h"

#include <charconv>
#include <cmath>

namespace Varn {

namespace {

using Code = ExpressionError::Code;
using Op = ExpressionOp;

std::wstring textOf(double number)
{
    char text[32];
    const auto [end, error] = std::to_chars(std::begin(text), std::end(text), number);
    return {std::begin(text), end};
}

} // namespace

ExpressionEvaluation::ExpressionEvaluation(const ExpressionCode &code, ParameterResolver &resolver)
    : m_code(code), m_resolver(resolver), m_values(code.names.size(), &m_arena)
{
    m_stack.reserve(code.stackSize);
}

ExpressionResult ExpressionEvaluation::run()
{
    while (m_next < m_code.steps.size()) {
        if (!take(m_code.steps[m_next++]))
            return Ox::unexpected<ExpressionError>(std::move(m_error));
    }
    return m_stack.back();
}

bool ExpressionEvaluation::take(const ExpressionStep &step)
{
    switch (step.op) {
    case Op::Constant:
        m_stack.push_back(m_code.constants[step.operand]);
        return true;
    case Op::Name:
        return takeName(step);
    case Op::Plus:
    case Op::Negate:
    case Op::Not:
        return takeUnary(step);
    case Op::And:
    case Op::Or:
        return takeDecision(step);
    case Op::AndEnd:
    case Op::OrEnd:
        return takeRightCondition(step);
    case Op::Choose:
        return takeChoice(step);
    case Op::Jump:
        m_next = step.operand;
        return true;
    case Op::Call:
        return takeCall(step);
    default:
        return takeBinary(step);
    }
}

bool ExpressionEvaluation::takeName(const ExpressionStep &step)
{
    std::optional<ExpressionValue> &value = m_values[step.operand];
    if (!value) {
        ExpressionResult result = m_resolver.resolve(m_code.names[step.operand], step.operand);
        if (!result) {
            m_error = std::move(result).error();
            m_error.column = step.column;
            return false;
        }
        const double *number = std::get_if<double>(&*result);
        if (number && !std::isfinite(*number))
            return fail(Code::NotFinite, step, m_code.names[step.operand] + L" is no finite number");
        value = *result;
    }
    m_stack.push_back(*value);
    return true;
}

bool ExpressionEvaluation::takeUnary(const ExpressionStep &step)
{
    ExpressionValue &top = m_stack.back();
    if (step.op == Op::Not) {
        bool *condition = std::get_if<bool>(&top);
        if (!condition)
            return clash(step, L"a boolean", top);
        *condition = !*condition;
        return true;
    }
    double *number = std::get_if<double>(&top);
    if (!number)
        return clash(step, L"a number", top);
    if (step.op == Op::Negate)
        *number = -*number;
    return true;
}

bool ExpressionEvaluation::takeBinary(const ExpressionStep &step)
{
    const ExpressionValue right = pop();
    if (step.op == Op::Equal || step.op == Op::NotEqual)
        return takeEquality(step, right);
    ExpressionValue &top = m_stack.back();
    const double *a = std::get_if<double>(&top);
    const double *b = std::get_if<double>(&right);
    if (!a || !b)
        return clash(step, L"two numbers", top, right);
    switch (step.op) {
    case Op::Multiply:
        return putResult(step, *a * *b);
    case Op::Divide:
        if (*b == 0)
            return fail(Code::DivisionByZero, step, L"Division by zero");
        return putResult(step, *a / *b);
    case Op::Add:
        return putResult(step, *a + *b);
    case Op::Subtract:
        return putResult(step, *a - *b);
    case Op::Less:
        top = *a < *b;
        return true;
    case Op::LessOrEqual:
        top = *a <= *b;
        return true;
    case Op::Greater:
        top = *a > *b;
        return true;
    default:
        top = *a >= *b;
        return true;
    }
}

bool ExpressionEvaluation::takeEquality(const ExpressionStep &step, const ExpressionValue &right)
{
    ExpressionValue &top = m_stack.back();
    if (top.index() != right.index())
        return clash(step, L"two values of one kind", top, right);
    top = (top == right) == (step.op == Op::Equal);
    return true;
}

/// Whether the left operand decides.
bool ExpressionEvaluation::takeDecision(const ExpressionStep &step)
{
    const bool *condition = std::get_if<bool>(&m_stack.back());
    if (!condition)
        return clash(step, L"two booleans", m_stack.back());
    if (*condition == (step.op == Op::Or))
        m_next = step.operand;
    else
        pop();
    return true;
}

/// The right operand is the value, once the left one has not decided.
bool ExpressionEvaluation::takeRightCondition(const ExpressionStep &step)
{
    const ExpressionValue left = step.op == Op::AndEnd;
    return std::holds_alternative<bool>(m_stack.back()) || clash(step, L"two booleans", left, m_stack.back());
}

bool ExpressionEvaluation::takeChoice(const ExpressionStep &step)
{
    const ExpressionValue condition = pop();
    if (!std::holds_alternative<bool>(condition))
        return clash(step, L"a boolean", condition);
    if (!std::get<bool>(condition))
        m_next = step.operand;
    return true;
}

bool ExpressionEvaluation::takeCall(const ExpressionStep &step)
{
    const auto callIt = [&](auto apply) { return call(step, apply); };
    return std::visit(callIt, expressionFunctions()[step.operand].apply);
}

bool ExpressionEvaluation::call(const ExpressionStep &step, ExpressionFunction::OfNumber apply)
{
    ExpressionValue &top = m_stack.back();
    if (!std::holds_alternative<double>(top))
        return clash(step, L"a number", top);
    const double x = std::get<double>(top);
    const double result = apply(x);
    if (!std::isfinite(result))
        return failCall(step, result, textOf(x));
    top = result;
    return true;
}

bool ExpressionEvaluation::call(const ExpressionStep &step, ExpressionFunction::OfNumbers apply)
{
    const ExpressionValue second = pop();
    ExpressionValue &top = m_stack.back();
    if (!std::holds_alternative<double>(top) || !std::holds_alternative<double>(second))
        return clash(step, L"numbers", top, second);
    const double x = std::get<double>(top);
    const double y = std::get<double>(second);
    const double result = apply(x, y);
    if (!std::isfinite(result))
        return failCall(step, result, textOf(x) + L", " + textOf(y));
    top = result;
    return true;
}

bool ExpressionEvaluation::call(const ExpressionStep &step, ExpressionFunction::OfText apply)
{
    ExpressionValue &top = m_stack.back();
    if (!std::holds_alternative<std::wstring_view>(top))
        return clash(step, L"a text", top);
    top = apply(std::get<std::wstring_view>(top));
    return true;
}

ExpressionValue ExpressionEvaluation::pop()
{
    const ExpressionValue value = m_stack.back();
    m_stack.pop_back();
    return value;
}

/// Of finite operands, so what is not finite is too large.
bool ExpressionEvaluation::putResult(const ExpressionStep &step, double number)
{
    if (!std::isfinite(number))
        return fail(Code::NotFinite, step, nameOf(step) + L" gives a number that is too large");
    m_stack.back() = number;
    return true;
}

bool ExpressionEvaluation::fail(ExpressionError::Code code, const ExpressionStep &step, std::wstring message)
{
    m_error = {code, step.column, std::move(message)};
    return false;
}

bool ExpressionEvaluation::failCall(const ExpressionStep &step, double result, const std::wstring &arguments)
{
    if (std::isnan(result))
        return fail(Code::OutsideDomain, step, nameOf(step) + L" has no value at " + arguments);
    return fail(Code::NotFinite, step, nameOf(step) + L" is too large at " + arguments);
}

bool ExpressionEvaluation::clash(const ExpressionStep &step, const wchar_t *needs, const ExpressionValue &value)
{
    return fail(Code::KindClash, step, nameOf(step) + L" needs " + needs + L", not " + kindOf(value));
}

bool ExpressionEvaluation::clash(const ExpressionStep &step, const wchar_t *needs, const ExpressionValue &left,
                                 const ExpressionValue &right)
{
    return fail(Code::KindClash, step,
                nameOf(step) + L" needs " + needs + L", not " + kindOf(left) + L" and " + kindOf(right));
}

/// The operator, in quotation marks, or the function, as the text of the expression has it.
std::wstring ExpressionEvaluation::nameOf(const ExpressionStep &step) const
{
    const ExpressionToken token = ExpressionTokens(std::wstring_view(m_code.text).substr(step.column - 1)).next();
    const std::wstring written(token.text);
    return token.kind == ExpressionToken::Kind::Symbol ? L'"' + written + L'"' : written;
}

} // namespace Varn

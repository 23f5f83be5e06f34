// ExpressionEvaluation.h -- runs the steps of an expression once. For one thread.
#pragma once

#include "platform/core/ExpressionCode.h"
#include "platform/core/ExpressionFunctions.h"
#include "platform/core/ExpressionValue.h"

#include <cstddef>
#include <memory_resource>
#include <optional>
#include <string>
#include <vector>

namespace Varn {

class ParameterResolver;

/// The members that do a step are false when it has no value; the first error stands.
class ExpressionEvaluation
{
public:
    /// Both must outlive this.
    ExpressionEvaluation(const ExpressionCode &code, ParameterResolver &resolver);

    ExpressionResult run();

private:
    bool take(const ExpressionStep &step);
    bool takeName(const ExpressionStep &step);
    bool takeUnary(const ExpressionStep &step);
    bool takeBinary(const ExpressionStep &step);
    bool takeEquality(const ExpressionStep &step, const ExpressionValue &right);
    bool takeDecision(const ExpressionStep &step);
    bool takeRightCondition(const ExpressionStep &step);
    bool takeChoice(const ExpressionStep &step);
    bool takeCall(const ExpressionStep &step);

    bool call(const ExpressionStep &step, ExpressionFunction::OfNumber apply);
    bool call(const ExpressionStep &step, ExpressionFunction::OfNumbers apply);
    bool call(const ExpressionStep &step, ExpressionFunction::OfText apply);

    ExpressionValue pop();
    bool putResult(const ExpressionStep &step, double number);

    bool fail(ExpressionError::Code code, const ExpressionStep &step, std::wstring message);
    bool failCall(const ExpressionStep &step, double result, const std::wstring &arguments);
    bool clash(const ExpressionStep &step, const wchar_t *needs, const ExpressionValue &value);
    bool clash(const ExpressionStep &step, const wchar_t *needs, const ExpressionValue &left,
               const ExpressionValue &right);
    std::wstring nameOf(const ExpressionStep &step) const;

    const ExpressionCode &m_code;
    ParameterResolver &m_resolver;
    std::byte m_memory[1024]; ///< enough for the stack and the values of a small expression
    std::pmr::monotonic_buffer_resource m_arena{m_memory, sizeof m_memory};
    std::pmr::vector<ExpressionValue> m_stack{&m_arena};
    std::pmr::vector<std::optional<ExpressionValue>> m_values; ///< of the names, as far as they were asked for
    std::size_t m_next = 0;                                    ///< the step to take
    ExpressionError m_error;
};

} // namespace Varn

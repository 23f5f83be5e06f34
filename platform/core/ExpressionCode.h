// ExpressionCode.h -- what an expression becomes when it is read: steps for a machine with a stack. Operands come
// before their operator, so running them needs no recursion. Immutable once made, any thread.
#pragma once

#include "platform/core/ExpressionValue.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace Varn {

enum class ExpressionOp : std::uint8_t {
    Constant, ///< pushes constants[operand]
    Name,     ///< pushes the value of names[operand]
    // Replace the top of the stack.
    Plus,
    Negate,
    Not,
    // Replace the upper two, the right operand on top.
    Multiply,
    Divide,
    Add,
    Subtract,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    Equal,
    NotEqual,
    // Between the operands: go to the step of the operand and keep the value if it decides, otherwise drop it.
    And,
    Or,
    // Behind the right operand, which is the value then.
    AndEnd,
    OrEnd,
    Choose, ///< drops the condition, and goes to the step of the operand unless it is true
    Jump,   ///< goes to the step of the operand
    Call,   ///< the function of that place in the table replaces its arguments by its value
};

struct ExpressionStep {
    ExpressionOp op;
    std::uint32_t operand;
    std::uint32_t column; ///< of the operator, name or function, counted from 1
};

struct ExpressionCode {
    std::wstring text;
    std::vector<ExpressionStep> steps;
    std::vector<ExpressionValue> constants; ///< texts are views into texts
    std::deque<std::wstring> texts;
    std::vector<std::wstring> names;
    std::size_t stackSize = 0; ///< what running needs at most
};

} // namespace Varn

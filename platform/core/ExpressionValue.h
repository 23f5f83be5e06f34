// ExpressionValue.h -- what an expression over parameters gives: a value, or the reason why there is none. Any thread.
#pragma once

#include "platform/ox/expected.h"

#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <variant>

namespace Varn {

/// A boolean, a number, which is finite, or a text. The text belongs to whoever gave the value.
using ExpressionValue = std::variant<bool, double, std::wstring_view>;

/// What people read of the kind of a value.
inline const wchar_t *kindOf(const ExpressionValue &value)
{
    constexpr const wchar_t *names[] = {L"a boolean", L"a number", L"a text"}; // in the order of the variant
    static_assert(std::size(names) == std::variant_size_v<ExpressionValue>);
    return names[value.index()];
}

/// Why an expression cannot be read, or has no value.
struct ExpressionError {
    enum class Code {
        // Of reading: the text is no expression.
        Syntax,
        UnknownFunction,
        WrongArgumentCount,
        TooDeep,
        TooLong,
        // Of a resolver: a name has no value.
        UnknownName,
        Cycle,
        NoValue,
        // Of evaluating.
        KindClash,      ///< an operator or a function met a kind that it does not take
        DivisionByZero, ///< also of 0 by 0
        OutsideDomain,  ///< a function has no value at that place, such as the root of -1
        NotFinite,      ///< a result, or a number that a resolver gave, is no finite number
    };

    Code code = Code::Syntax;
    std::size_t column = 0; ///< in the text of the expression, counted from 1
    std::wstring message;   ///< English, one line: "Expected a value, found \")\""
};

using ExpressionResult = Ox::expected<ExpressionValue, ExpressionError>;

} // namespace Varn

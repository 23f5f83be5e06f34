// ExpressionFunctions.h -- the functions and named numbers of the expression language. Stateless, any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <variant>

namespace Varn {

struct ExpressionFunction {
    using OfNumber = double (*)(double);
    using OfNumbers = double (*)(double, double);
    using OfText = bool (*)(std::wstring_view);

    std::wstring_view name;
    std::variant<OfNumber, OfNumbers, OfText> apply; ///< a NaN for what lies outside the domain
    bool takesMore = false;                          ///< of two numbers, and then of the result and the next, and so on

    /// How many arguments it takes, at least.
    std::size_t argumentCount() const { return std::holds_alternative<OfNumbers>(apply) ? 2 : 1; }
};

/// All functions.
std::span<const ExpressionFunction> expressionFunctions();

/// The place of a function in expressionFunctions(); nothing for an unknown name.
std::optional<std::size_t> findExpressionFunction(std::wstring_view name);

/// The number behind a name such as Math.PI; nothing for an unknown name.
std::optional<double> findExpressionNumber(std::wstring_view name);

} // namespace Varn

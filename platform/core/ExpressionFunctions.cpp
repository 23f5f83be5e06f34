#include "platform/core/ExpressionFunctions.h"

#include "platform/core/FeatureFlag.h"
#include "platform/utils/Messages.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Varn {

namespace {

/// Halves go up, also below 0: the web dialog rounds so.
double roundHalfUp(double x)
{
    const double below = std::floor(x);
    return x - below >= 0.5 ? below + 1 : below;
}

/// A flag that nobody has set counts as on.
bool featureFlagEnabled(std::wstring_view name)
{
    return FeatureFlag::enabled(Messages::fromWideUnicodeToUTF8(name), true);
}

using Function = ExpressionFunction;

// clang-format off
constexpr ExpressionFunction functions[] = {
    { L"Math.abs",                Function::OfNumber{[](double x) { return std::fabs(x); }} },
    { L"Math.acos",               Function::OfNumber{[](double x) { return std::acos(x); }} },
    { L"Math.asin",               Function::OfNumber{[](double x) { return std::asin(x); }} },
    { L"Math.atan",               Function::OfNumber{[](double x) { return std::atan(x); }} },
    { L"Math.atan2",              Function::OfNumbers{[](double y, double x) { return std::atan2(y, x); }} },
    { L"Math.ceil",               Function::OfNumber{[](double x) { return std::ceil(x); }} },
    { L"Math.cos",                Function::OfNumber{[](double x) { return std::cos(x); }} },
    { L"Math.floor",              Function::OfNumber{[](double x) { return std::floor(x); }} },
    { L"Math.max",                Function::OfNumbers{[](double a, double b) { return std::fmax(a, b); }}, true },
    { L"Math.min",                Function::OfNumbers{[](double a, double b) { return std::fmin(a, b); }}, true },
    { L"Math.pow",                Function::OfNumbers{[](double x, double y) { return std::pow(x, y); }} },
    { L"Math.round",              Function::OfNumber{roundHalfUp} },
    { L"Math.sin",                Function::OfNumber{[](double x) { return std::sin(x); }} },
    { L"Math.sqrt",               Function::OfNumber{[](double x) { return std::sqrt(x); }} },
    { L"Math.tan",                Function::OfNumber{[](double x) { return std::tan(x); }} },
    { L"Util.featureFlagEnabled", Function::OfText{featureFlagEnabled} },
};
// clang-format on
static_assert(std::ranges::is_sorted(functions, {}, &ExpressionFunction::name));

struct NamedNumber {
    std::wstring_view name;
    double value;
};

constexpr NamedNumber numbers[] = {
    {L"Math.PI", std::numbers::pi},
};

} // namespace

std::span<const ExpressionFunction> expressionFunctions()
{
    return functions;
}

std::optional<std::size_t> findExpressionFunction(std::wstring_view name)
{
    const auto *found = std::ranges::lower_bound(functions, name, {}, &ExpressionFunction::name);
    if (found == std::end(functions) || found->name != name)
        return std::nullopt;
    return static_cast<std::size_t>(found - std::begin(functions));
}

std::optional<double> findExpressionNumber(std::wstring_view name)
{
    const auto *found = std::ranges::find(numbers, name, &NamedNumber::name);
    if (found == std::end(numbers))
        return std::nullopt;
    return found->value;
}

} // namespace Varn

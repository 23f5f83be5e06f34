// ParameterExpression.h -- an expression over the parameters of a tool, such as "tool_type == 'probe' ? 0 :
// tool_diameter / 2". docs/expressions.md tells the language.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/core/ExpressionValue.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Varn {

struct ExpressionCode;

/// Knows the values of the names that an expression uses.
class VARN_PLATFORM_EXPORT ParameterResolver
{
public:
    virtual ~ParameterResolver();

    /// The value of \a name, which is names()[index] of the expression that is evaluated, or an error: UnknownName,
    /// Cycle, NoValue, or that of the parameter's own expression. A text must live as long as the result of the
    /// evaluation is used. Whoever evaluates another expression in here sees to it that such calls come to an end.
    virtual ExpressionResult resolve(std::wstring_view name, std::size_t index) = 0;
};

/// A value: read once, never changed, cheap to copy since copies share what was read. Any thread may evaluate it, also
/// several at once.
class VARN_PLATFORM_EXPORT ParameterExpression
{
public:
    /// Characters of the longest text that is read.
    static constexpr std::size_t maximumLength = 1'048'576;
    /// How deep parentheses, calls, signs, negations and the middle parts of choices may be nested.
    static constexpr std::size_t maximumDepth = 256;

    /// Reads \a text in time and memory proportional to its length. Errors: Syntax (also for a text of blanks alone),
    /// UnknownFunction, WrongArgumentCount, TooDeep, TooLong.
    static Ox::expected<ParameterExpression, ExpressionError> parse(std::wstring_view text);

    /// The expression whose value is \a text: in single quotes, those within doubled.
    static std::wstring quoted(std::wstring_view text);

    /// The text that was read.
    const std::wstring &text() const;

    /// The names that it uses, each once, in the order of their first use, whether or not an evaluation gets to them.
    const std::vector<std::wstring> &names() const;

    /// The value over what \a resolver gives, which is asked for a name at most once, and only when its value counts:
    /// not for the untaken part of a choice, nor behind an && or || that is decided. The error of a name comes out as
    /// it is, with the column of the name. Does not recurse, and allocates nothing for a small expression, except when
    /// it asks for a feature flag. A text in the result is a view of what the resolver gave or of this expression, and
    /// lives as long as these.
    ExpressionResult evaluate(ParameterResolver &resolver) const;

private:
    explicit ParameterExpression(std::shared_ptr<const ExpressionCode> code);

    std::shared_ptr<const ExpressionCode> m_code;
};

} // namespace Varn

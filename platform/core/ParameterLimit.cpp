#include "platform/core/ParameterLimit.h"

#include "platform/core/ExpressionTokens.h"

#include <optional>

namespace Varn {

namespace {

bool isOrder(const ExpressionToken &token)
{
    return token.is(L"<") || token.is(L"<=") || token.is(L">") || token.is(L">=") || token.is(L"==");
}

bool endsTerm(const ExpressionToken &token)
{
    return token.kind == ExpressionToken::Kind::End || token.is(L"&&") || token.is(L"||");
}

/// The tokens of one term.
using Term = std::vector<ExpressionToken>;

std::wstring textBetween(std::wstring_view text, const ExpressionToken &first, const ExpressionToken &last)
{
    const std::size_t begin = first.column - 1;
    return std::wstring(text.substr(begin, last.column - 1 + last.text.size() - begin));
}

/// Whether three tokens are the parameter times a number.
bool isMultiple(const ExpressionToken *tokens, std::wstring_view parameter)
{
    return tokens[0].text == parameter && tokens[1].is(L"*") && tokens[2].kind == ExpressionToken::Kind::Number;
}

std::wstring quotient(const std::wstring &dividend, const ExpressionToken &divisor)
{
    return L'(' + dividend + L") / " + std::wstring(divisor.text);
}

std::optional<ParameterLimit> limitIn(const Term &term, std::wstring_view parameter, std::wstring_view text)
{
    if (term.size() < 3)
        return std::nullopt;
    const std::wstring whole = textBetween(text, term.front(), term.back());
    const std::size_t last = term.size() - 1;
    if (term[0].text == parameter && isOrder(term[1]))
        return ParameterLimit{whole, textBetween(text, term[2], term[last])};
    if (term[last].text == parameter && isOrder(term[last - 1]))
        return ParameterLimit{whole, textBetween(text, term[0], term[last - 2])};
    if (term.size() < 5)
        return std::nullopt;
    if (isMultiple(&term[0], parameter) && isOrder(term[3]))
        return ParameterLimit{whole, quotient(textBetween(text, term[4], term[last]), term[2])};
    if (isMultiple(&term[last - 2], parameter) && isOrder(term[last - 3]))
        return ParameterLimit{whole, quotient(textBetween(text, term[0], term[last - 4]), term[last])};
    return std::nullopt;
}

} // namespace

std::vector<ParameterLimit> ParameterLimit::of(std::wstring_view parameter, std::wstring_view constraint)
{
    std::vector<ParameterLimit> limits;
    ExpressionTokens tokens(constraint);
    Term term;
    int depth = 0;
    for (;;) {
        const ExpressionToken token = tokens.next();
        if (token.kind == ExpressionToken::Kind::End || (depth == 0 && endsTerm(token))) {
            if (const auto limit = limitIn(term, parameter, constraint))
                limits.push_back(*limit);
            term.clear();
            if (token.kind == ExpressionToken::Kind::End)
                return limits;
            continue;
        }
        if (depth == 0 && token.is(L"?"))
            return {}; // what stands beside it belongs to the choice
        depth += token.is(L"(") ? 1 : token.is(L")") ? -1 : 0;
        term.push_back(token);
    }
}

} // namespace Varn

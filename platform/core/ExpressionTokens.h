// ExpressionTokens.h -- cuts the text of an expression into its words. For one thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Varn {

struct ExpressionToken {
    enum class Kind {
        End,
        Number,
        Text,   ///< in quotes
        Name,   ///< letters, digits, '_' and '.'; a letter or '_' first
        Symbol, ///< an operator, a parenthesis, a comma, or any other character
        OpenText,
        NumberTooLarge,
    };

    Kind kind = Kind::End;
    std::wstring_view text; ///< as it is written
    std::size_t column = 1; ///< of its first character, counted from 1
    double number = 0;      ///< of a Number

    bool is(std::wstring_view symbol) const { return kind == Kind::Symbol && text == symbol; }
};

class ExpressionTokens
{
public:
    /// \a text must outlive this and its tokens.
    explicit ExpressionTokens(std::wstring_view text) : m_text(text) {}

    /// The next one; End for ever behind the last.
    ExpressionToken next();

    /// What a Text says: without its quotes, those within halved.
    static std::wstring unquoted(std::wstring_view token);

private:
    std::size_t endOfText() const;
    std::size_t endOfNumber() const;
    template <typename Predicate>
    std::size_t endOf(std::size_t from, Predicate belongs) const;
    ExpressionToken take(ExpressionToken::Kind kind, std::size_t end);
    ExpressionToken takeNumber();

    wchar_t at(std::size_t place) const { return place < m_text.size() ? m_text[place] : L'\0'; }

    std::wstring_view m_text;
    std::size_t m_place = 0;
};

} // namespace Varn

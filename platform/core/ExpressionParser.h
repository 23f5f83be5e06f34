// ExpressionParser.h -- reads the text of an expression into steps. For one thread.
#pragma once

#include "platform/core/ExpressionCode.h"
#include "platform/core/ExpressionTokens.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace Varn {

/// For one text. The members that read a part of the grammar are false when it is wrong; the first error stands.
class ExpressionParser
{
public:
    /// Reads into \a code, whose text it is; nothing, or what is wrong with it. Nesting deeper than \a maximumDepth is
    /// refused before it can use up the stack.
    static std::optional<ExpressionError> parse(ExpressionCode &code, std::size_t maximumDepth);

private:
    ExpressionParser(ExpressionCode &code, std::size_t maximumDepth);

    bool readAll();
    bool readChoice();
    bool readBinary(int lowestPrecedence);
    bool readUnary();
    bool readOperand();
    bool readNested();
    bool readName();
    bool readCall(const ExpressionToken &name);
    bool readParameter(const ExpressionToken &name);

    bool enter();
    void leave() { --m_depth; }

    void advance() { m_token = m_tokens.next(); }
    bool accept(std::wstring_view symbol);
    bool expect(std::wstring_view symbol);

    bool fail(ExpressionError::Code code, std::size_t column, std::wstring message);
    bool failAtToken(std::wstring_view expected);

    void emitConstant(const ExpressionToken &token, ExpressionValue value);
    std::size_t emit(ExpressionOp op, std::size_t operand, std::size_t column);
    void land(std::size_t jump);

    ExpressionCode &m_code;
    const std::size_t m_maximumDepth;
    ExpressionTokens m_tokens;
    ExpressionToken m_token; ///< the next one
    std::size_t m_depth = 0;
    std::ptrdiff_t m_stackSize = 0; ///< behind the last step
    std::unordered_map<std::wstring_view, std::size_t> m_names;
    std::optional<ExpressionError> m_error;
};

} // namespace Varn

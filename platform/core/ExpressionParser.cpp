#include "platform/core/ExpressionParser.h"

#include "platform/core/ExpressionFunctions.h"

#include <algorithm>

namespace Varn {

namespace {

using Code = ExpressionError::Code;
using Kind = ExpressionToken::Kind;
using Op = ExpressionOp;

struct BinaryOperator {
    std::wstring_view symbol;
    int precedence;
    Op op;
    std::optional<Op> jump = std::nullopt; ///< between the operands, when the left one may decide
};

// clang-format off
constexpr BinaryOperator binaryOperators[] = {
    { L"||", 1, Op::OrEnd,  Op::Or },
    { L"&&", 2, Op::AndEnd, Op::And },
    { L"==", 3, Op::Equal },
    { L"!=", 3, Op::NotEqual },
    { L"<",  4, Op::Less },
    { L"<=", 4, Op::LessOrEqual },
    { L">",  4, Op::Greater },
    { L">=", 4, Op::GreaterOrEqual },
    { L"+",  5, Op::Add },
    { L"-",  5, Op::Subtract },
    { L"*",  6, Op::Multiply },
    { L"/",  6, Op::Divide },
};
// clang-format on
constexpr int lowestPrecedence = 1;

struct UnaryOperator {
    std::wstring_view symbol;
    Op op;
};

constexpr UnaryOperator unaryOperators[] = {{L"!", Op::Not}, {L"-", Op::Negate}, {L"+", Op::Plus}};

template <typename Operators>
const auto *findOperator(const Operators &operators, const ExpressionToken &token)
{
    const auto *found = std::ranges::find_if(operators, [&](const auto &row) { return token.is(row.symbol); });
    return found == std::end(operators) ? nullptr : found;
}

/// \a text in quotation marks, cut to what fits into a message.
std::wstring inQuotes(std::wstring_view text)
{
    constexpr std::size_t most = 40;
    const bool fits = text.size() <= most;
    return L'"' + std::wstring(text.substr(0, most)) + (fits ? L"\"" : L"...\"");
}

bool takes(const ExpressionFunction &function, std::size_t count)
{
    return count == function.argumentCount() || (function.takesMore && count > function.argumentCount());
}

std::wstring wrongCount(const ExpressionFunction &function, std::size_t count)
{
    const std::size_t wanted = function.argumentCount();
    return std::wstring(function.name) + L" takes " + std::to_wstring(wanted) +
           (function.takesMore ? L" or more" : L"") + (wanted == 1 ? L" argument, not " : L" arguments, not ") +
           std::to_wstring(count);
}

/// By how much a step changes the size of the stack.
int stackChange(Op op, std::size_t operand)
{
    switch (op) {
    case Op::Constant:
    case Op::Name:
        return 1;
    case Op::Plus:
    case Op::Negate:
    case Op::Not:
    case Op::AndEnd:
    case Op::OrEnd:
    case Op::Jump:
        return 0;
    case Op::Call:
        return expressionFunctions()[operand].argumentCount() == 1 ? 0 : -1;
    default:
        return -1;
    }
}

} // namespace

ExpressionParser::ExpressionParser(ExpressionCode &code, std::size_t maximumDepth)
    : m_code(code), m_maximumDepth(maximumDepth), m_tokens(code.text), m_token(m_tokens.next())
{
}

std::optional<ExpressionError> ExpressionParser::parse(ExpressionCode &code, std::size_t maximumDepth)
{
    ExpressionParser parser(code, maximumDepth);
    parser.readAll();
    return std::move(parser.m_error);
}

bool ExpressionParser::readAll()
{
    if (!readChoice())
        return false;
    return m_token.kind == Kind::End || failAtToken(L"an operator or the end");
}

/// binary ["?" choice ":" choice], where the last choice is the next round of the loop: a chain of any length is flat.
bool ExpressionParser::readChoice()
{
    std::vector<std::size_t> jumpsToEnd;
    for (;;) {
        if (!readBinary(lowestPrecedence))
            return false;
        if (!m_token.is(L"?"))
            break;
        const std::size_t choose = emit(Op::Choose, 0, m_token.column);
        advance();
        if (!readNested() || !expect(L":"))
            return false;
        jumpsToEnd.push_back(emit(Op::Jump, 0, 0));
        --m_stackSize; // the value of the other part takes its place
        land(choose);
    }
    std::ranges::for_each(jumpsToEnd, [this](std::size_t jump) { land(jump); });
    return true;
}

bool ExpressionParser::readBinary(int lowest)
{
    if (!readUnary())
        return false;
    const BinaryOperator *row = findOperator(binaryOperators, m_token);
    for (; row && row->precedence >= lowest; row = findOperator(binaryOperators, m_token)) {
        const std::size_t column = m_token.column;
        advance();
        std::optional<std::size_t> jump;
        if (row->jump)
            jump = emit(*row->jump, 0, column);
        if (!readBinary(row->precedence + 1))
            return false;
        emit(row->op, 0, column);
        if (jump)
            land(*jump);
    }
    return true;
}

bool ExpressionParser::readUnary()
{
    const UnaryOperator *row = findOperator(unaryOperators, m_token);
    if (!row)
        return readOperand();
    const std::size_t column = m_token.column;
    if (!enter())
        return false;
    advance();
    if (!readUnary())
        return false;
    leave();
    emit(row->op, 0, column);
    return true;
}

bool ExpressionParser::readOperand()
{
    switch (m_token.kind) {
    case Kind::Number:
        emitConstant(m_token, m_token.number);
        return true;
    case Kind::Text:
        m_code.texts.push_back(ExpressionTokens::unquoted(m_token.text));
        emitConstant(m_token, std::wstring_view(m_code.texts.back()));
        return true;
    case Kind::Name:
        return readName();
    default:
        break;
    }
    if (!m_token.is(L"("))
        return failAtToken(L"a value");
    if (!enter())
        return false;
    advance();
    if (!readChoice() || !expect(L")"))
        return false;
    leave();
    return true;
}

/// A choice that stands within another.
bool ExpressionParser::readNested()
{
    if (!enter() || !readChoice())
        return false;
    leave();
    return true;
}

bool ExpressionParser::readName()
{
    const ExpressionToken name = m_token;
    if (name.text == L"true" || name.text == L"false") {
        emitConstant(name, name.text == L"true");
        return true;
    }
    if (const auto number = findExpressionNumber(name.text)) {
        emitConstant(name, *number);
        return true;
    }
    advance();
    if (m_token.is(L"(") || name.text.find(L'.') != std::wstring_view::npos)
        return readCall(name);
    return readParameter(name);
}

bool ExpressionParser::readCall(const ExpressionToken &name)
{
    const auto place = findExpressionFunction(name.text);
    if (!place)
        return fail(Code::UnknownFunction, name.column, L"Unknown function " + inQuotes(name.text));
    if (!expect(L"("))
        return false;
    const ExpressionFunction &function = expressionFunctions()[*place];
    std::size_t count = 0;
    if (!m_token.is(L")")) {
        do {
            if (!readNested())
                return false;
            if (takes(function, ++count))
                emit(Op::Call, *place, name.column);
        } while (accept(L","));
    }
    if (!expect(L")"))
        return false;
    return takes(function, count) || fail(Code::WrongArgumentCount, name.column, wrongCount(function, count));
}

bool ExpressionParser::readParameter(const ExpressionToken &name)
{
    const auto [known, isNew] = m_names.emplace(name.text, m_code.names.size());
    if (isNew)
        m_code.names.emplace_back(name.text);
    emit(Op::Name, known->second, name.column);
    return true;
}

bool ExpressionParser::enter()
{
    if (++m_depth <= m_maximumDepth)
        return true;
    return fail(Code::TooDeep, m_token.column, L"Nested deeper than " + std::to_wstring(m_maximumDepth) + L" levels");
}

bool ExpressionParser::accept(std::wstring_view symbol)
{
    if (!m_token.is(symbol))
        return false;
    advance();
    return true;
}

bool ExpressionParser::expect(std::wstring_view symbol)
{
    return accept(symbol) || failAtToken(L'"' + std::wstring(symbol) + L'"');
}

bool ExpressionParser::fail(Code code, std::size_t column, std::wstring message)
{
    m_error = ExpressionError{code, column, std::move(message)};
    return false;
}

bool ExpressionParser::failAtToken(std::wstring_view expected)
{
    if (m_token.kind == Kind::OpenText)
        return fail(Code::Syntax, m_token.column, L"The text is not closed: " + inQuotes(m_token.text));
    if (m_token.kind == Kind::NumberTooLarge)
        return fail(Code::Syntax, m_token.column, L"The number is too large: " + inQuotes(m_token.text));
    const std::wstring found = m_token.kind == Kind::End ? std::wstring(L"the end") : inQuotes(m_token.text);
    return fail(Code::Syntax, m_token.column, L"Expected " + std::wstring(expected) + L", found " + found);
}

void ExpressionParser::emitConstant(const ExpressionToken &token, ExpressionValue value)
{
    m_code.constants.push_back(value);
    emit(Op::Constant, m_code.constants.size() - 1, token.column);
    advance();
}

/// The place of the new step.
std::size_t ExpressionParser::emit(ExpressionOp op, std::size_t operand, std::size_t column)
{
    m_code.steps.push_back({op, static_cast<std::uint32_t>(operand), static_cast<std::uint32_t>(column)});
    m_stackSize += stackChange(op, operand);
    m_code.stackSize = std::max(m_code.stackSize, static_cast<std::size_t>(m_stackSize));
    return m_code.steps.size() - 1;
}

/// Lets the step at \a jump go to the next one that comes.
void ExpressionParser::land(std::size_t jump)
{
    m_code.steps[jump].operand = static_cast<std::uint32_t>(m_code.steps.size());
}

} // namespace Varn

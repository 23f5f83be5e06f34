// Random expressions, written from trees with as few parentheses as they can do with, against a second evaluator that
// walks the trees.
#include "ExpressionTestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>
#include <set>

using namespace ExpressionTest;
using Code = ExpressionError::Code;

namespace {

struct Node {
    enum class Kind { Value, Name, Unary, Binary, Choice, Call };

    Kind kind = Kind::Value;
    std::string word; ///< the literal, name, operator or function
    std::vector<std::unique_ptr<Node>> parts;
};

/// A value, or nothing with the code.
struct Outcome {
    std::variant<bool, double, std::string, Code> value;

    bool failed() const { return std::holds_alternative<Code>(value); }
    friend bool operator==(const Outcome &, const Outcome &) = default;
};

const std::vector<std::pair<std::string, Parameters::Entry>> parameters = {
    {"a", 2.0},
    {"b", -0.25},
    {"zero", 0.0},
    {"large", 1e308},
    {"yes", true},
    {"no", false},
    {"word", ExpressionValue(std::wstring_view(L"x"))},
    {"none", Code::NoValue},
};

class Trees
{
public:
    explicit Trees(unsigned seed) : m_random(seed) {}

    /// Of a kind, most of the time: 'n'umber, 'b'oolean or 't'ext.
    std::unique_ptr<Node> make(int depth, char kind)
    {
        if (below(12) == 0)
            kind = "nbt"[below(3)];
        if (depth == 0 || below(6) == 0)
            return leaf(kind);
        if (below(6) == 0)
            return node(Node::Kind::Choice, "?", depth, {'b', kind, kind});
        if (kind == 'n')
            return numeric(depth);
        return kind == 'b' ? logical(depth) : leaf(kind);
    }

    std::size_t below(std::size_t end) { return std::uniform_int_distribution<std::size_t>(0, end - 1)(m_random); }

private:
    template <typename Words>
    const auto &oneOf(const Words &words)
    {
        return words[below(words.size())];
    }

    std::unique_ptr<Node> leaf(char kind)
    {
        static const std::vector<std::string> numbers = {"0", "1", "2.5", "3", ".125", "1e2", "7e-1", "Math.PI"};
        static const std::vector<std::string> numberNames = {"a", "b", "zero", "large", "none", "unknown"};
        static const std::vector<std::string> booleans = {"true", "false"};
        static const std::vector<std::string> booleanNames = {"yes", "no"};
        static const std::vector<std::string> texts = {"''", "'x'", "'y z'", "'it''s'", "'+'"};
        static const std::vector<std::string> textNames = {"word"};
        const bool isName = below(3) == 0;
        auto made = std::make_unique<Node>();
        made->kind = isName ? Node::Kind::Name : Node::Kind::Value;
        if (kind == 'n')
            made->word = oneOf(isName ? numberNames : numbers);
        else if (kind == 'b')
            made->word = oneOf(isName ? booleanNames : booleans);
        else
            made->word = oneOf(isName ? textNames : texts);
        return made;
    }

    std::unique_ptr<Node> numeric(int depth)
    {
        static const std::vector<std::string> ofOne = {"Math.abs",   "Math.sqrt", "Math.floor", "Math.ceil",
                                                       "Math.round", "Math.sin",  "Math.asin"};
        static const std::vector<std::string> ofTwo = {"Math.pow", "Math.atan2"};
        static const std::vector<std::string> ofMore = {"Math.min", "Math.max"};
        static const std::vector<std::string> binary = {"+", "-", "*", "/"};
        static const std::vector<std::string> unary = {"+", "-"};
        switch (below(8)) {
        case 0:
            return node(Node::Kind::Call, oneOf(ofOne), depth, {'n'});
        case 1:
            return node(Node::Kind::Call, oneOf(ofTwo), depth, {'n', 'n'});
        case 2:
            return node(Node::Kind::Call, oneOf(ofMore), depth, std::vector<char>(2 + below(3), 'n'));
        case 3:
            return node(Node::Kind::Unary, oneOf(unary), depth, {'n'});
        default:
            return node(Node::Kind::Binary, oneOf(binary), depth, {'n', 'n'});
        }
    }

    std::unique_ptr<Node> logical(int depth)
    {
        static const std::vector<std::string> logic = {"&&", "||"};
        static const std::vector<std::string> order = {"<", "<=", ">", ">="};
        static const std::vector<std::string> equality = {"==", "!="};
        switch (below(5)) {
        case 0:
            return node(Node::Kind::Unary, "!", depth, {'b'});
        case 1:
            return node(Node::Kind::Binary, oneOf(order), depth, {'n', 'n'});
        case 2: {
            const char kind = "nbt"[below(3)];
            return node(Node::Kind::Binary, oneOf(equality), depth, {kind, kind});
        }
        default:
            return node(Node::Kind::Binary, oneOf(logic), depth, {'b', 'b'});
        }
    }

    std::unique_ptr<Node> node(Node::Kind kind, std::string word, int depth, const std::vector<char> &kinds)
    {
        auto made = std::make_unique<Node>();
        made->kind = kind;
        made->word = std::move(word);
        for (const char part : kinds)
            made->parts.push_back(make(depth - 1, part));
        return made;
    }

    std::mt19937 m_random;
};

int precedenceOf(const Node &node)
{
    static const std::map<std::string, int> binary = {{"||", 1}, {"&&", 2}, {"==", 3}, {"!=", 3}, {"<", 4}, {"<=", 4},
                                                      {">", 4},  {">=", 4}, {"+", 5},  {"-", 5},  {"*", 6}, {"/", 6}};
    switch (node.kind) {
    case Node::Kind::Choice:
        return 0;
    case Node::Kind::Binary:
        return binary.at(node.word);
    case Node::Kind::Unary:
        return 7;
    default:
        return 8;
    }
}

/// The expression of \a node, in parentheses where it binds less tightly than \a least.
std::string written(const Node &node, int least, Trees &random)
{
    const std::string blank = random.below(4) == 0 ? "" : " ";
    const auto part = [&](std::size_t place, int precedence) {
        return written(*node.parts[place], precedence, random);
    };
    const int precedence = precedenceOf(node);
    std::string text = node.word;
    if (node.kind == Node::Kind::Choice) {
        text = part(0, 1) + blank + '?' + blank + part(1, 0) + blank + ':' + blank + part(2, 0);
    } else if (node.kind == Node::Kind::Binary) {
        text = part(0, precedence) + blank + node.word + blank + part(1, precedence + 1);
    } else if (node.kind == Node::Kind::Unary) {
        text += part(0, precedence);
    } else if (node.kind == Node::Kind::Call) {
        for (std::size_t i = 0; i < node.parts.size(); ++i)
            text += (i == 0 ? "(" : "," + blank) + part(i, 0);
        text += ')';
    }
    return precedence < least || random.below(16) == 0 ? '(' + text + ')' : text;
}

Outcome literal(const std::string &word)
{
    if (word == "true" || word == "false")
        return {word == "true"};
    if (word == "Math.PI")
        return {std::acos(-1.0)};
    if (word.front() != '\'')
        return {std::stod(word)};
    return {word == "'it''s'" ? "it's" : word.substr(1, word.size() - 2)};
}

Outcome named(const std::string &name)
{
    for (const auto &[known, entry] : parameters) {
        if (known != name)
            continue;
        if (const auto *code = std::get_if<Code>(&entry))
            return {*code};
        const ExpressionValue &value = std::get<ExpressionValue>(entry);
        if (const auto *text = std::get_if<std::wstring_view>(&value))
            return {narrow(*text)};
        if (const auto *number = std::get_if<double>(&value))
            return {*number};
        return {std::get<bool>(value)};
    }
    return {Code::UnknownName};
}

Outcome finite(double number)
{
    if (std::isnan(number))
        return {Code::OutsideDomain};
    if (std::isinf(number))
        return {Code::NotFinite};
    return {number};
}

double applied(const std::string &function, double x)
{
    if (function == "Math.abs")
        return x < 0 ? -x : x;
    if (function == "Math.sqrt")
        return std::sqrt(x);
    if (function == "Math.floor")
        return std::floor(x);
    if (function == "Math.ceil")
        return std::ceil(x);
    if (function == "Math.round")
        return double(std::floor(static_cast<long double>(x) + 0.5L));
    return function == "Math.sin" ? std::sin(x) : std::asin(x);
}

double applied(const std::string &function, double x, double y)
{
    if (function == "Math.pow")
        return std::pow(x, y);
    if (function == "Math.atan2")
        return std::atan2(x, y);
    if (function == "Math.min")
        return y < x ? y : x;
    return y > x ? y : x;
}

Outcome calculated(const std::string &word, double x, double y)
{
    if (word == "<")
        return {x < y};
    if (word == "<=")
        return {x <= y};
    if (word == ">")
        return {x > y};
    if (word == ">=")
        return {x >= y};
    if (word == "+")
        return finite(x + y);
    if (word == "-")
        return finite(x - y);
    if (word == "*")
        return finite(x * y);
    if (y == 0)
        return {Code::DivisionByZero};
    return finite(x / y);
}

Outcome walk(const Node &node);

Outcome walkBinary(const Node &node)
{
    const Outcome left = walk(*node.parts[0]);
    if (left.failed())
        return left;
    if (node.word == "&&" || node.word == "||") {
        const bool *decided = std::get_if<bool>(&left.value);
        if (!decided)
            return {Code::KindClash};
        if (*decided == (node.word == "||"))
            return left;
    }
    const Outcome right = walk(*node.parts[1]);
    if (right.failed())
        return right;
    if (node.word == "&&" || node.word == "||")
        return std::holds_alternative<bool>(right.value) ? right : Outcome{Code::KindClash};
    if (node.word == "==" || node.word == "!=") {
        if (left.value.index() != right.value.index())
            return {Code::KindClash};
        return {(left == right) == (node.word == "==")};
    }
    const double *x = std::get_if<double>(&left.value);
    const double *y = std::get_if<double>(&right.value);
    return x && y ? calculated(node.word, *x, *y) : Outcome{Code::KindClash};
}

Outcome walkUnary(const Node &node)
{
    Outcome operand = walk(*node.parts[0]);
    if (operand.failed())
        return operand;
    if (node.word == "!") {
        const bool *condition = std::get_if<bool>(&operand.value);
        return condition ? Outcome{!*condition} : Outcome{Code::KindClash};
    }
    const double *number = std::get_if<double>(&operand.value);
    if (!number)
        return {Code::KindClash};
    return {node.word == "-" ? -*number : *number};
}

Outcome walkCall(const Node &node)
{
    Outcome result = walk(*node.parts[0]);
    if (node.parts.size() == 1) {
        if (result.failed())
            return result;
        const double *x = std::get_if<double>(&result.value);
        return x ? finite(applied(node.word, *x)) : Outcome{Code::KindClash};
    }
    for (std::size_t i = 1; i < node.parts.size() && !result.failed(); ++i) {
        const Outcome next = walk(*node.parts[i]);
        if (next.failed())
            return next;
        const double *x = std::get_if<double>(&result.value);
        const double *y = std::get_if<double>(&next.value);
        result = x && y ? finite(applied(node.word, *x, *y)) : Outcome{Code::KindClash};
    }
    return result;
}

Outcome walk(const Node &node)
{
    switch (node.kind) {
    case Node::Kind::Value:
        return literal(node.word);
    case Node::Kind::Name:
        return named(node.word);
    case Node::Kind::Unary:
        return walkUnary(node);
    case Node::Kind::Binary:
        return walkBinary(node);
    case Node::Kind::Call:
        return walkCall(node);
    case Node::Kind::Choice:
        break;
    }
    const Outcome condition = walk(*node.parts[0]);
    if (condition.failed())
        return condition;
    const bool *taken = std::get_if<bool>(&condition.value);
    if (!taken)
        return {Code::KindClash};
    return walk(*node.parts[*taken ? 1 : 2]);
}

Outcome outcomeOf(const ExpressionResult &result)
{
    if (!result)
        return {result.error().code};
    if (const auto *text = std::get_if<std::wstring_view>(&*result))
        return {narrow(*text)};
    if (const auto *number = std::get_if<double>(&*result))
        return {*number};
    return {std::get<bool>(*result)};
}

} // namespace

TEST(ParameterExpressionRandom, TwoEvaluatorsAgree)
{
    std::map<std::wstring, Parameters::Entry, std::less<>> entries;
    for (const auto &[name, entry] : parameters)
        entries[std::wstring(name.begin(), name.end())] = entry;
    Parameters resolver(entries);
    Trees trees(20'240'229);
    std::map<std::size_t, int> kinds; // how often each alternative of Outcome came
    std::set<std::string> codes;
    for (int round = 0; round < 20'000; ++round) {
        const auto tree = trees.make(int(1 + trees.below(6)), "nbt"[trees.below(3)]);
        const std::string text = written(*tree, 0, trees);
        const auto expression = ParameterExpression::parse(std::wstring(text.begin(), text.end()));
        ASSERT_TRUE(expression) << text << '\n' << describe(expression.error());
        const ExpressionResult result = expression->evaluate(resolver);
        const Outcome expected = walk(*tree);
        ASSERT_EQ(outcomeOf(result), expected) << text << '\n' << describe(result);
        ++kinds[expected.value.index()];
        if (expected.failed())
            codes.insert(describe(std::get<Code>(expected.value)));
    }
    for (std::size_t kind = 0; kind < 4; ++kind)
        EXPECT_GT(kinds[kind], 1000) << kind;
    EXPECT_EQ(codes, (std::set<std::string>{"DivisionByZero", "KindClash", "NoValue", "NotFinite", "OutsideDomain",
                                            "UnknownName"}));
}

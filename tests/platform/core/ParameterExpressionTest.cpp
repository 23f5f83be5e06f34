#include "platform/core/ParameterExpression.h"

#include "ExpressionTestSupport.h"
#include "platform/core/FeatureFlag.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <thread>

using namespace ExpressionTest;
using testing::ElementsAre;
using testing::IsEmpty;
using Code = ExpressionError::Code;

namespace {

struct Row {
    std::wstring text;
    std::string value;
};

void expectRows(const std::vector<Row> &rows)
{
    for (const auto &[text, value] : rows)
        EXPECT_EQ(valueOf(text), value) << narrow(text);
}

std::vector<std::string> namesOf(std::wstring_view text)
{
    const ParameterExpression expression = parsed(text);
    std::vector<std::string> names;
    for (const std::wstring &name : expression.names())
        names.push_back(narrow(name));
    return names;
}

} // namespace

TEST(ParameterExpression, ValuesAsTheyAreWritten)
{
    expectRows({
        {L"true", "true"},
        {L"false", "false"},
        {L"0", "0"},
        {L"007", "7"},
        {L"12.7", "12.7"},
        {L".5", "0.5"},
        {L"5.", "5"},
        {L"1e3", "1000"},
        {L"1E+3", "1000"},
        {L"1e-05", "1e-05"},
        {L"1.5e+06", "1500000"},
        {L"0.1", "0.1"},
        {L"1e-400", "0"},
        {L"4.9e-324", "5e-324"},
        {L"1.7976931348623157e308", "1.7976931348623157e+308"},
        {L" \t\r\n1\n", "1"},
        {L"'flat end mill'", "'flat end mill'"},
        {L"''", "''"},
        {L"' '", "' '"},
        {L"'true'", "'true'"},
        {L"'(1 + '", "'(1 + '"},
        {L"'\u00FC \u4E2D \U0001F600'", "'\u00FC \u4E2D \U0001F600'"},
        {L"'a\nb'", "'a\nb'"},
        {L"Math.PI", "3.141592653589793"},
    });
}

TEST(ParameterExpression, AQuoteWithinATextIsDoubled)
{
    expectRows({
        {L"'it''s'", "'it's'"},
        {L"''''", "'''"},
        {L"''''''", "''''"},
        {L"'a''' == 'a'", "false"},
        {L"'C:\\tools\\'", "'C:\\tools\\'"},
        {L"'say \"no\"'", "'say \"no\"'"},
    });
    const std::vector<std::wstring> texts = {L"",
                                             L"'",
                                             L"''",
                                             L"it's",
                                             L"'quoted'",
                                             L"C:\\",
                                             L"\"",
                                             L"a\nb",
                                             std::wstring(L"a\0b", 3),
                                             L"\u00FC'\U0001F600"};
    for (const std::wstring &text : texts) {
        Parameters none;
        const ParameterExpression expression = parsed(ParameterExpression::quoted(text));
        EXPECT_EQ(expression.evaluate(none), ExpressionValue(text)) << narrow(text);
    }
    EXPECT_EQ(ParameterExpression::quoted(L"it's"), L"'it''s'");
}

TEST(ParameterExpression, OperatorsByKind)
{
    expectRows({
        {L"2 + 3", "5"},
        {L"2 - 3", "-1"},
        {L"2 * 3", "6"},
        {L"3 / 2", "1.5"},
        {L"-3", "-3"},
        {L"+3", "3"},
        {L"--3", "3"},
        {L"2 - -3", "5"},
        {L"2*-3", "-6"},
        {L"!true", "false"},
        {L"!!true", "true"},
        {L"1 < 2", "true"},
        {L"2 < 2", "false"},
        {L"2 <= 2", "true"},
        {L"2 > 2", "false"},
        {L"3 > 2", "true"},
        {L"2 >= 2", "true"},
        {L"1 >= 2", "false"},
        {L"2 == 2.0", "true"},
        {L"0.1 + 0.2 == 0.3", "false"},
        {L"0 == -0", "true"},
        {L"2 != 2", "false"},
        {L"'a' == 'a'", "true"},
        {L"'a' == 'A'", "false"},
        {L"'a' != 'a '", "true"},
        {L"true == true", "true"},
        {L"true != false", "true"},
        {L"true && true", "true"},
        {L"true && false", "false"},
        {L"false && true", "false"},
        {L"false || true", "true"},
        {L"false || false", "false"},
        {L"true ? 1 : 2", "1"},
        {L"false ? 1 : 'two'", "'two'"},
    });
}

TEST(ParameterExpression, PrecedenceAndAssociativity)
{
    expectRows({
        {L"2 + 3 * 4", "14"},
        {L"2 * 3 + 4", "10"},
        {L"(2 + 3) * 4", "20"},
        {L"10 - 4 - 3", "3"},
        {L"10 - (4 - 3)", "9"},
        {L"24 / 4 / 2", "3"},
        {L"24 / 4 * 2", "12"},
        {L"2 - 6 / 3 + 1", "1"},
        {L"-2 + 5", "3"},
        {L"-2 * -3", "6"},
        {L"1 + 2 < 4", "true"},
        {L"1 < 2 == true", "true"},
        {L"2 > 1 != 1 > 2", "true"},
        {L"true == 1 < 2", "true"},
        {L"!false == true", "true"},
        {L"!(1 > 2) && true", "true"},
        {L"true || false && false", "true"},
        {L"(true || false) && false", "false"},
        {L"false && false || true", "true"},
        {L"1 == 2 || 3 == 3 && 'a' != 'b'", "true"},
        {L"true || false ? 1 : 2", "1"},
        {L"false ? 1 : true ? 2 : 3", "2"},
        {L"false ? 1 : false ? 2 : 3", "3"},
        {L"true ? false ? 1 : 2 : 3", "2"},
        {L"true ? true ? 1 : 2 : 3", "1"},
        {L"(true ? 2 : 3) * 4", "8"},
        {L"true ? 2 : 3 * 4", "2"},
        {L"1 + (false ? 2 : 3) + 4", "8"},
        {L"true ? 1 : 2 == 2 ? 5 : 6", "1"},
        {L"false ? 1 : 2 == 2 ? 5 : 6", "5"},
        {L"((((7))))", "7"},
        {L"Math.max(1, 2) + Math.min(3, 4) * 2", "8"},
        {L"2/Math.max(false ? 1 : 2, 1 + 1 * 3)", "0.5"},
    });
}

TEST(ParameterExpression, Functions)
{
    expectRows({
        {L"Math.sin(Math.PI / 2)", "1"},
        {L"Math.cos(0)", "1"},
        {L"Math.tan(0)", "0"},
        {L"Math.asin(1) * 2 == Math.PI", "true"},
        {L"Math.acos(-1) == Math.PI", "true"},
        {L"Math.atan(1) * 4 == Math.PI", "true"},
        {L"Math.atan2(1, -1) / Math.PI", "0.75"},
        {L"Math.atan2(0, 0)", "0"},
        {L"Math.sqrt(2.25)", "1.5"},
        {L"Math.abs(-2.5)", "2.5"},
        {L"Math.abs(2.5)", "2.5"},
        {L"Math.min(3, 2)", "2"},
        {L"Math.max(3, 2)", "3"},
        {L"Math.min(3, 2, 1, 5)", "1"},
        {L"Math.max(3, 2, 7, 5, -1)", "7"},
        {L"Math.pow(2, 10)", "1024"},
        {L"Math.pow(4, 0.5)", "2"},
        {L"Math.pow(0, 0)", "1"},
        {L"Math.pow(-2, 3)", "-8"},
        {L"Math.floor(-1.5)", "-2"},
        {L"Math.floor(1.5)", "1"},
        {L"Math.ceil(1.5)", "2"},
        {L"Math.ceil(-1.5)", "-1"},
        {L"Math.round(2.5)", "3"},
        {L"Math.round(2.4)", "2"},
        {L"Math.round(-2.5)", "-2"},
        {L"Math.round(-2.6)", "-3"},
        {L"Math.round(0.49999999999999994)", "0"},
        {L"Math.round(4503599627370497)", "4503599627370497"},
        {L"Math.sqrt(Math.pow(3, 2) + Math.pow(4, 2))", "5"},
        {L"Math.abs ( -1 )", "1"},
    });
}

TEST(ParameterExpression, AFunctionOutsideItsDomainIsAnError)
{
    expectRows({
        {L"1 + Math.sqrt(-1)", "OutsideDomain 5: Math.sqrt has no value at -1"},
        {L"Math.asin(1.5)", "OutsideDomain 1: Math.asin has no value at 1.5"},
        {L"Math.acos(-2)", "OutsideDomain 1: Math.acos has no value at -2"},
        {L"Math.pow(-8, 0.5)", "OutsideDomain 1: Math.pow has no value at -8, 0.5"},
        {L"Math.pow(10, 400)", "NotFinite 1: Math.pow is too large at 10, 400"},
        {L"Math.pow(0, -1)", "NotFinite 1: Math.pow is too large at 0, -1"},
        {L"1 / 0", "DivisionByZero 3: Division by zero"},
        {L"1 / (2 - 2)", "DivisionByZero 3: Division by zero"},
        {L"0 / 0", "DivisionByZero 3: Division by zero"},
        {L"1 / -0", "DivisionByZero 3: Division by zero"},
        {L"1e308 * 10", "NotFinite 7: \"*\" gives a number that is too large"},
        {L"1e308 + 1e308", "NotFinite 7: \"+\" gives a number that is too large"},
        {L"-1e308 - 1e308", "NotFinite 8: \"-\" gives a number that is too large"},
        {L"1e308/1e-10", "NotFinite 6: \"/\" gives a number that is too large"},
    });
}

TEST(ParameterExpression, AClashOfKindsNamesThemAndTheOperator)
{
    expectRows({
        {L"1 + 'a'", "KindClash 3: \"+\" needs two numbers, not a number and a text"},
        {L"'a' + 'b'", "KindClash 5: \"+\" needs two numbers, not a text and a text"},
        {L"true - 1", "KindClash 6: \"-\" needs two numbers, not a boolean and a number"},
        {L"'a' * true", "KindClash 5: \"*\" needs two numbers, not a text and a boolean"},
        {L"'a' / 2", "KindClash 5: \"/\" needs two numbers, not a text and a number"},
        {L"'a' < 'b'", "KindClash 5: \"<\" needs two numbers, not a text and a text"},
        {L"1 <= true", "KindClash 3: \"<=\" needs two numbers, not a number and a boolean"},
        {L"1 < 2 < 3", "KindClash 7: \"<\" needs two numbers, not a boolean and a number"},
        {L"'' > 1", "KindClash 4: \">\" needs two numbers, not a text and a number"},
        {L"true >= false", "KindClash 6: \">=\" needs two numbers, not a boolean and a boolean"},
        {L"1 == '1'", "KindClash 3: \"==\" needs two values of one kind, not a number and a text"},
        {L"1 == true", "KindClash 3: \"==\" needs two values of one kind, not a number and a boolean"},
        {L"'true' != true", "KindClash 8: \"!=\" needs two values of one kind, not a text and a boolean"},
        {L"1 && true", "KindClash 3: \"&&\" needs two booleans, not a number"},
        {L"true && 1", "KindClash 6: \"&&\" needs two booleans, not a boolean and a number"},
        {L"'a' || true", "KindClash 5: \"||\" needs two booleans, not a text"},
        {L"false || 'a'", "KindClash 7: \"||\" needs two booleans, not a boolean and a text"},
        {L"!1", "KindClash 1: \"!\" needs a boolean, not a number"},
        {L"1 + -'a'", "KindClash 5: \"-\" needs a number, not a text"},
        {L"+true", "KindClash 1: \"+\" needs a number, not a boolean"},
        {L"1 ? 2 : 3", "KindClash 3: \"?\" needs a boolean, not a number"},
        {L"'' ? 2 : 3", "KindClash 4: \"?\" needs a boolean, not a text"},
        {L"Math.sqrt('4')", "KindClash 1: Math.sqrt needs a number, not a text"},
        {L"Math.max(1, true)", "KindClash 1: Math.max needs numbers, not a number and a boolean"},
        {L"Math.max('a', 1)", "KindClash 1: Math.max needs numbers, not a text and a number"},
        {L"Util.featureFlagEnabled(1)", "KindClash 1: Util.featureFlagEnabled needs a text, not a number"},
    });
}

TEST(ParameterExpression, WhatIsNoExpression)
{
    expectRows({
        {L"", "Syntax 1: Expected a value, found the end"},
        {L"  ", "Syntax 3: Expected a value, found the end"},
        {L"1 +", "Syntax 4: Expected a value, found the end"},
        {L"+", "Syntax 2: Expected a value, found the end"},
        {L"1 + )", "Syntax 5: Expected a value, found \")\""},
        {L"* 2", "Syntax 1: Expected a value, found \"*\""},
        {L"()", "Syntax 2: Expected a value, found \")\""},
        {L"(1", "Syntax 3: Expected \")\", found the end"},
        {L"(1 2)", "Syntax 4: Expected \")\", found \"2\""},
        {L"1)", "Syntax 2: Expected an operator or the end, found \")\""},
        {L"1 2", "Syntax 3: Expected an operator or the end, found \"2\""},
        {L"10 mm", "Syntax 4: Expected an operator or the end, found \"mm\""},
        {L"10mm", "Syntax 3: Expected an operator or the end, found \"mm\""},
        {L"1e", "Syntax 2: Expected an operator or the end, found \"e\""},
        {L"1e+", "Syntax 2: Expected an operator or the end, found \"e\""},
        {L"1.2.3", "Syntax 4: Expected an operator or the end, found \".3\""},
        {L"1,5", "Syntax 2: Expected an operator or the end, found \",\""},
        {L".", "Syntax 1: Expected a value, found \".\""},
        {L"a = 1", "Syntax 3: Expected an operator or the end, found \"=\""},
        {L"a === 1", "Syntax 5: Expected a value, found \"=\""},
        {L"a & b", "Syntax 3: Expected an operator or the end, found \"&\""},
        {L"a ! b", "Syntax 3: Expected an operator or the end, found \"!\""},
        {L"2 % 2", "Syntax 3: Expected an operator or the end, found \"%\""},
        {L"\u00FC", "Syntax 1: Expected a value, found \"\u00FC\""},
        {L"\"a\"", "Syntax 1: Expected a value, found \"\"\""},
        {L"'a", "Syntax 1: The text is not closed: \"'a\""},
        {L"1 + '", "Syntax 5: The text is not closed: \"'\""},
        {L"'it's'", "Syntax 5: Expected an operator or the end, found \"s\""},
        {L"a ? b", "Syntax 6: Expected \":\", found the end"},
        {L"a ? : b", "Syntax 5: Expected a value, found \":\""},
        {L"a : b", "Syntax 3: Expected an operator or the end, found \":\""},
        {L"a ? b : ", "Syntax 9: Expected a value, found the end"},
        {L"true false", "Syntax 6: Expected an operator or the end, found \"false\""},
        {L"true(1)", "Syntax 5: Expected an operator or the end, found \"(\""},
        {L"Math.PI()", "Syntax 8: Expected an operator or the end, found \"(\""},
        {L"Math.sin", "Syntax 9: Expected \"(\", found the end"},
        {L"Math.sin + 1", "Syntax 10: Expected \"(\", found \"+\""},
        {L"Math.sin(1", "Syntax 11: Expected \")\", found the end"},
        {L"Math.max(1,)", "Syntax 12: Expected a value, found \")\""},
        {L"Math.max(,1)", "Syntax 10: Expected a value, found \",\""},
        {L"1e309", "Syntax 1: The number is too large: \"1e309\""},
        {L"2 * 1e99999999999999999999", "Syntax 5: The number is too large: \"1e99999999999999999999\""},
        {std::wstring(L"1\0", 2), "Syntax 2: Expected an operator or the end, found \"" + std::string(1, '\0') + "\""},
    });
}

TEST(ParameterExpression, WhatIsNoFunctionOrIsCalledWrongly)
{
    expectRows({
        {L"1 + sin(1)", "UnknownFunction 5: Unknown function \"sin\""},
        {L"Math.log(1)", "UnknownFunction 1: Unknown function \"Math.log\""},
        {L"Math.pi", "UnknownFunction 1: Unknown function \"Math.pi\""},
        {L"math.PI", "UnknownFunction 1: Unknown function \"math.PI\""},
        {L"tool_diameter.value", "UnknownFunction 1: Unknown function \"tool_diameter.value\""},
        {L"a.", "UnknownFunction 1: Unknown function \"a.\""},
        {L"Util.system('ls')", "UnknownFunction 1: Unknown function \"Util.system\""},
        {L"Math.sin()", "WrongArgumentCount 1: Math.sin takes 1 argument, not 0"},
        {L"2 + Math.sin(1, 2)", "WrongArgumentCount 5: Math.sin takes 1 argument, not 2"},
        {L"Math.atan2(1)", "WrongArgumentCount 1: Math.atan2 takes 2 arguments, not 1"},
        {L"Math.pow(1, 2, 3)", "WrongArgumentCount 1: Math.pow takes 2 arguments, not 3"},
        {L"Math.max()", "WrongArgumentCount 1: Math.max takes 2 or more arguments, not 0"},
        {L"Math.min(1)", "WrongArgumentCount 1: Math.min takes 2 or more arguments, not 1"},
        {L"Util.featureFlagEnabled()", "WrongArgumentCount 1: Util.featureFlagEnabled takes 1 argument, not 0"},
    });
}

TEST(ParameterExpression, AMessageStaysShort)
{
    const std::string start(40, 'x');
    EXPECT_EQ(valueOf(L"1 " + std::wstring(100'000, L'x')),
              "Syntax 3: Expected an operator or the end, found \"" + start + "...\"");
    EXPECT_EQ(valueOf(std::wstring(41, L'x') + L"()"), "UnknownFunction 1: Unknown function \"" + start + "...\"");
    EXPECT_EQ(valueOf(std::wstring(40, L'x') + L"()"), "UnknownFunction 1: Unknown function \"" + start + "\"");
}

TEST(ParameterExpression, ParametersByTheirNames)
{
    const std::wstring mill = L"flat end mill";
    Parameters parameters({{L"tool_type", ExpressionValue(mill)},
                           {L"tool_diameter", 12.5},
                           {L"tool_live", true},
                           {L"segment_1_height", 3.0},
                           {L"_x", 1.0},
                           {L"e5", 7.0},
                           {L"trueish", false}});
    const std::vector<Row> rows = {
        {L"tool_type", "'flat end mill'"},
        {L"tool_type == 'flat end mill' && tool_live ? tool_diameter / 2 : 0", "6.25"},
        {L"segment_1_height+segment_1_height", "6"},
        {L"_x", "1"},
        {L"e5", "7"},
        {L"trueish", "false"},
        {L"-tool_diameter", "-12.5"},
        {L"1 + tool_length", "UnknownName 5: Unknown parameter tool_length"},
        {L"Tool_diameter", "UnknownName 1: Unknown parameter Tool_diameter"},
        {L"inf", "UnknownName 1: Unknown parameter inf"},
        {L"nan", "UnknownName 1: Unknown parameter nan"},
        {L"tool_type + 1", "KindClash 11: \"+\" needs two numbers, not a text and a number"},
    };
    for (const auto &[text, value] : rows)
        EXPECT_EQ(valueOf(text, parameters), value) << narrow(text);
}

TEST(ParameterExpression, TheErrorOfANameComesOutAtItsColumn)
{
    Parameters parameters({{L"cycle", Code::Cycle},
                           {L"none", Code::NoValue},
                           {L"bad", Code::DivisionByZero},
                           {L"infinite", std::numeric_limits<double>::infinity()},
                           {L"nothing", std::nan("")}});
    const std::vector<Row> rows = {
        {L"1 + cycle", "Cycle 5: No value of cycle"},
        {L"none == 'a'", "NoValue 1: No value of none"},
        {L"Math.sin(bad)", "DivisionByZero 10: No value of bad"},
        {L"2 * infinite", "NotFinite 5: infinite is no finite number"},
        {L"nothing == nothing", "NotFinite 1: nothing is no finite number"},
    };
    for (const auto &[text, value] : rows)
        EXPECT_EQ(valueOf(text, parameters), value) << narrow(text);
}

TEST(ParameterExpression, OnlyTheTakenPartIsEvaluated)
{
    struct Case {
        std::wstring text;
        std::string value;
        std::vector<std::string> asked;
    };
    const std::vector<Case> cases = {
        {L"yes ? a : unknown", "1", {"yes", "a"}},
        {L"no ? unknown : a", "1", {"no", "a"}},
        {L"no ? unknown : yes ? a : unknown", "1", {"no", "yes", "a"}},
        {L"no && unknown", "false", {"no"}},
        {L"yes || unknown", "true", {"yes"}},
        {L"no && unknown || yes", "true", {"no", "yes"}},
        {L"yes || unknown && unknown", "true", {"yes"}},
        {L"no && unknown && unknown", "false", {"no"}},
        {L"yes && no", "false", {"yes", "no"}},
        {L"true ? 1 : 1 / 0", "1", {}},
        {L"false && 'a'", "false", {}},
        {L"true || 1 / 0 > 1", "true", {}},
        {L"yes && unknown", "UnknownName 8: Unknown parameter unknown", {"yes", "unknown"}},
        {L"no || unknown", "UnknownName 7: Unknown parameter unknown", {"no", "unknown"}},
    };
    for (const auto &[text, value, asked] : cases) {
        Parameters parameters({{L"yes", true}, {L"no", false}, {L"a", 1.0}});
        EXPECT_EQ(valueOf(text, parameters), value) << narrow(text);
        EXPECT_EQ(parameters.asked, asked) << narrow(text);
    }
}

TEST(ParameterExpression, ANameIsAskedForOnceInAnEvaluation)
{
    Parameters parameters({{L"a", 2.0}, {L"b", 3.0}});
    const ParameterExpression expression = parsed(L"b * a + a * a - b");
    EXPECT_EQ(describe(expression.evaluate(parameters)), "7");
    EXPECT_THAT(parameters.asked, ElementsAre("b", "a"));
    EXPECT_THAT(parameters.indices, ElementsAre(0u, 1u));
    EXPECT_EQ(describe(expression.evaluate(parameters)), "7");
    EXPECT_EQ(parameters.asked.size(), 4u) << "each evaluation asks anew";
}

TEST(ParameterExpression, NamesInTheOrderOfTheirFirstUse)
{
    EXPECT_THAT(namesOf(L"c + a * (b ? c : a) + Math.max(d, a)"), ElementsAre("c", "a", "b", "d"));
    EXPECT_THAT(namesOf(L"false && hidden"), ElementsAre("hidden"));
    EXPECT_THAT(namesOf(L"'tool_type' == '' || true || Math.PI > 1 || Util.featureFlagEnabled('x')"), IsEmpty());
}

TEST(ParameterExpression, AFlagThatNobodySetCountsAsOn)
{
    struct Flags {
        Flags() { Varn::FeatureFlag::reset(); }
        ~Flags() { Varn::FeatureFlag::reset(); }
    } const flags;
    const ParameterExpression expression = parsed(L"Util.featureFlagEnabled('tool-\u00FC') && !false");
    Parameters none;
    EXPECT_EQ(describe(expression.evaluate(none)), "true");
    Varn::FeatureFlag::setEnabled("tool-\xC3\xBC", false);
    EXPECT_EQ(describe(expression.evaluate(none)), "false") << "asked at each evaluation";
}

TEST(ParameterExpression, CopiesShareWhatWasRead)
{
    const std::wstring text = L" 'a long enough text' ";
    auto original = std::make_unique<ParameterExpression>(parsed(text));
    const ParameterExpression copy = *original;
    EXPECT_EQ(&copy.names(), &original->names());
    EXPECT_EQ(&copy.text(), &original->text());
    Parameters none;
    const ExpressionResult result = original->evaluate(none);
    original.reset();
    EXPECT_EQ(describe(result), "'a long enough text'");
    EXPECT_EQ(copy.text(), text) << "as it was written, with its blanks";
}

TEST(ParameterExpression, ManyThreadsMayEvaluateAtOnce)
{
    const ParameterExpression expression =
        parsed(L"kind == 'ball' ? Math.sqrt(d * d - n) : Util.featureFlagEnabled('any') ? d + n : 0");
    const std::wstring ball = L"ball";
    const std::wstring flat = L"flat";
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 8; ++i) {
            threads.emplace_back([&, i] {
                const ParameterExpression own = expression;
                const bool isBall = i % 2 == 0;
                Parameters parameters({{L"kind", ExpressionValue(isBall ? ball : flat)},
                                       {L"d", 3.0 + i},
                                       {L"n", (3.0 + i) * (3.0 + i) - 4.0}});
                const double expected = isBall ? 2.0 : (3.0 + i) + (3.0 + i) * (3.0 + i) - 4.0;
                for (int round = 0; round < 500; ++round)
                    ASSERT_EQ(own.evaluate(parameters), ExpressionValue(expected));
            });
        }
    }
}

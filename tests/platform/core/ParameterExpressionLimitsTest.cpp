// Texts that are long or deeply nested: read in time and memory of their length, or refused.
#include "ExpressionTestSupport.h"

#include <gtest/gtest.h>

using namespace ExpressionTest;
using Code = ExpressionError::Code;

TEST(ParameterExpressionLimits, NestingHasALimit)
{
    constexpr std::size_t most = ParameterExpression::maximumDepth;
    struct Nest {
        std::wstring open;
        std::wstring inner;
        std::wstring close;
    };
    const std::vector<Nest> nests = {
        {L"(", L"1", L")"},
        {L"-", L"1", L""},
        {L"!", L"true", L""},
        {L"Math.abs(", L"1", L")"},
        {L"true ? ", L"1", L" : 2"},
        {L"1 + 2 * (", L"1", L")"},
        {L"false || true && true == 1 < 2 + 3 * (", L"1", L")"},
        {L"Math.max(1, ", L"1", L")"},
    };
    for (const auto &[open, inner, close] : nests) {
        const auto nested = [&](std::size_t depth) { return repeated(open, depth) + inner + repeated(close, depth); };
        EXPECT_TRUE(ParameterExpression::parse(nested(most))) << narrow(open);
        for (const std::size_t depth : {most + 1, std::size_t(10'000), std::size_t(100'000)}) {
            const auto expression = ParameterExpression::parse(nested(depth).substr(0, 1 << 20));
            ASSERT_FALSE(expression) << narrow(open) << depth;
            EXPECT_EQ(expression.error().code, Code::TooDeep) << narrow(open);
            EXPECT_EQ(narrow(expression.error().message), "Nested deeper than 256 levels");
        }
    }
    EXPECT_EQ(valueOf(repeated(L"-", most) + L"1"), "1");
    EXPECT_EQ(valueOf(repeated(L"(", most + 1)), "TooDeep 257: Nested deeper than 256 levels");
    EXPECT_EQ(valueOf(repeated(L"1 + (", most) + L"1" + repeated(L")", most)), "257");
    EXPECT_EQ(valueOf(repeated(L"Math.max(1, ", most) + L"7" + repeated(L")", most)), "7");
}

TEST(ParameterExpressionLimits, ALongChainIsNotNested)
{
    EXPECT_EQ(valueOf(L"0" + repeated(L" + 1", 123'456)), "123456");
    EXPECT_EQ(valueOf(L"false" + repeated(L" || false", 50'000) + L" || true"), "true");
    EXPECT_EQ(valueOf(repeated(L"false ? 1 : ", 50'000) + L"2"), "2");
    EXPECT_EQ(valueOf(repeated(L"(1)*", 100'000) + L"5"), "5");
    EXPECT_EQ(valueOf(L"Math.max(0" + repeated(L", 1", 100'000) + L", 3)"), "3");
}

TEST(ParameterExpressionLimits, TheLengthHasALimit)
{
    constexpr std::size_t most = ParameterExpression::maximumLength;
    EXPECT_EQ(valueOf(L"1" + std::wstring(most - 1, L' ')), "1");
    EXPECT_EQ(valueOf(L"1" + std::wstring(most, L' ')), "TooLong 1048577: Longer than 1048576 characters");
    EXPECT_EQ(valueOf(std::wstring(most, L'9')),
              "Syntax 1: The number is too large: \"" + std::string(40, '9') + "...\"");
    EXPECT_EQ(valueOf(L"0." + std::wstring(most - 2, L'0')), "0");
    EXPECT_EQ(valueOf(L'\'' + std::wstring(most - 2, L'x') + L'\'').size(), most);
    EXPECT_EQ(valueOf(L"'" + std::wstring(most - 1, L'\'')), "'" + std::string(most / 2 - 1, '\'') + "'");
}

TEST(ParameterExpressionLimits, ManyNamesAreReadInTimeOfTheirNumber)
{
    std::wstring text = L"0";
    for (int i = 1; text.size() < ParameterExpression::maximumLength - 30; ++i)
        text += L"+n" + std::to_wstring(i);
    const ParameterExpression expression = parsed(text);
    EXPECT_GT(expression.names().size(), 100'000u);

    struct Ones : Varn::ParameterResolver {
        ExpressionResult resolve(std::wstring_view, std::size_t) override { return 1.0; }
    } ones;
    EXPECT_EQ(expression.evaluate(ones), ExpressionValue(double(expression.names().size())));
}

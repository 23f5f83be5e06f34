// What definitions can say beyond those that the library carries: expressions of disabled parameters above all.
#include "platform/core/ParameterValues.h"

#include "platform/core/ParameterDefinitions.h"
#include "platform/core/ParameterPrototype.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Varn::ExpressionError;
using Varn::ParameterDefinitions;
using Varn::ParameterPrototype;
using Varn::ParameterSetting;
using Varn::ParameterTable;
using Varn::ParameterValues;
using Varn::Strategy;
using Varn::Units;

namespace {

constexpr auto mm = Units::UNIT_MILLIMETERS;
constexpr auto none = Units::UNIT_NONE;

/// on, length and other; the length is 0 while on is false, whether the third is enabled depends on its own value.
const ParameterDefinitions &definitions()
{
    static const ParameterDefinitions rows(R"({
        "parameters": [
            {"id": "on", "kind": 0, "valueType": 1, "strategies": [198], "defaultExp": {"metric": "true", "inch": "true"}},
            {"id": "length", "kind": 1, "strategies": [198], "defaultExp": {"metric": "10", "inch": "0.5"},
             "enableExp": "on", "disabledExp": "other / 4"},
            {"id": "other", "kind": 1, "strategies": [198], "defaultExp": {"metric": "8", "inch": "8"}},
            {"id": "own", "kind": 1, "strategies": [198], "defaultExp": {"metric": "1", "inch": "1"},
             "enableExp": "own > 0", "disabledExp": "2"},
            {"id": "by", "kind": 1, "strategies": [198], "defaultExp": {"metric": "1", "inch": "1"},
             "enableExp": "other > 0", "disabledExp": "2"}],
        "dynamicParameters": [{"pattern": "part_<n>", "kind": 1}]})");
    return rows;
}

class Table
{
public:
    ParameterTable::Parameter operator[](const wchar_t *name) { return {m_values, *m_values->findOrAdd(name)}; }

private:
    std::shared_ptr<ParameterValues> m_values = std::make_shared<ParameterValues>(
        std::make_shared<ParameterPrototype>(definitions(), Strategy::ROTATING, true));
};

bool isCycle(const ParameterTable::Parameter &parameter)
{
    const auto error = parameter.getError();
    return error && error->code == ExpressionError::Code::Cycle;
}

} // namespace

TEST(ParameterValues, ADisabledParameterHasItsDisabledValue)
{
    Table table;
    table[L"length"].set(7.0, mm);
    EXPECT_EQ(table[L"length"].getAsDouble(mm), 7);
    table[L"on"].set(false);
    EXPECT_FALSE(table[L"length"].isEnabled());
    EXPECT_EQ(table[L"length"].getAsDouble(mm), 2) << "a quarter of the other";
    EXPECT_EQ(table[L"length"].getExpression(), L"7") << "what was set waits";
    table[L"other"].set(1.0, Units::UNIT_INCHES);
    EXPECT_EQ(table[L"length"].getAsDouble(mm), 25.4 / 4);
    table[L"other"].setExpression(L"", none, true);
    EXPECT_FALSE(table[L"length"].hasValue());
    EXPECT_THAT(table[L"length"].getErrorMessages(), IsEmpty()) << "nobody asks for what is disabled";
    table[L"on"].set(true);
    EXPECT_EQ(table[L"length"].getAsDouble(mm), 7);
    table[L"on"].setExpression(L"1 / 0", none, true);
    EXPECT_FALSE(table[L"length"].isEnabled());
    EXPECT_EQ(table[L"length"].getAsDouble(mm), 7) << "whether it is enabled cannot be told";
}

// The way in which a cycle is entered must not decide what comes out.
TEST(ParameterValues, ACycleOverWhetherAParameterIsEnabledIsTheSameFromEverySide)
{
    for (const bool valueFirst : {true, false}) {
        Table table;
        if (valueFirst) {
            EXPECT_FALSE(table[L"own"].hasValue());
        }
        EXPECT_FALSE(table[L"own"].isEnabled());
        EXPECT_TRUE(isCycle(table[L"own"]));
        EXPECT_THAT(table[L"own"].getErrorMessages(), SizeIs(1));
    }
    for (const auto &order : {std::vector{L"by", L"other"}, std::vector{L"other", L"by"}}) {
        Table table;
        table[L"other"].setExpression(L"by + 1", none, true);
        for (const wchar_t *const name : order)
            EXPECT_TRUE(isCycle(table[name])) << name << " of " << order.front();
        EXPECT_FALSE(table[L"by"].isEnabled());
        EXPECT_THAT(table[L"other"].getErrorMessages(), SizeIs(1));
        table[L"other"].set(-1.0, mm);
        EXPECT_EQ(table[L"by"].getAsDouble(mm), 2);
    }
}

TEST(ParameterValues, TextsOfAnyLengthAndQuotesAreKept)
{
    for (const std::wstring &text : {std::wstring(2'000'000, L'x'), std::wstring(2'000'000, L'\''), std::wstring()}) {
        const std::wstring expression = ParameterTable::getStringAsExpression(text);
        const auto setting = ParameterSetting::make(expression, none, true);
        ASSERT_TRUE(std::holds_alternative<std::wstring>(setting->meaning));
        EXPECT_EQ(std::get<std::wstring>(setting->meaning), text);
        EXPECT_EQ(setting->expression, expression);
    }
    EXPECT_LT(ParameterSetting::make(std::wstring(2'000'000, L'('), none, true)->expression.size(), 1'100'000u);
}

TEST(ParameterValues, AQuestionAddsNoParameters)
{
    const auto prototype = std::make_shared<ParameterPrototype>(definitions(), Strategy::ROTATING, true);
    ParameterValues values(prototype);
    const std::size_t size = values.size();
    const auto outcome = values.evaluate(*Varn::ParameterExpression::parse(L"part_1 + part_2"));
    ASSERT_FALSE(outcome.result);
    EXPECT_EQ(outcome.result.error().code, ExpressionError::Code::UnknownName);
    EXPECT_EQ(values.size(), size);
    values.set(*values.findOrAdd(L"part_1"), ParameterSetting::ofNumber(1, mm, true));
    EXPECT_EQ(values.evaluate(*Varn::ParameterExpression::parse(L"part_1")).result, Varn::ExpressionValue(1.0));
}

// Long chains, wide sums, and tables that change between readings, against a table that is read afresh.
#include "platform/core/ParameterTable.h"

#include <gtest/gtest.h>

#include <pthread.h>

#include <functional>
#include <random>
#include <string>
#include <vector>

using Varn::ExpressionError;
using Varn::ParameterTable;
using Varn::Strategy;
using Varn::Units;

namespace {

constexpr auto mm = Units::UNIT_MILLIMETERS;
constexpr int many = 10000;

std::wstring height(int n)
{
    return L"segment_" + std::to_wstring(n) + L"_height";
}

/// Runs on a thread whose stack is far smaller than a recursion of many parameters needs.
void runOnSmallStack(std::function<void()> work)
{
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, 512 * 1024);
    pthread_t thread;
    const auto start = [](void *job) -> void * {
        (*static_cast<std::function<void()> *>(job))();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, start, &work), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

/// segment_1 is 1, each further one 1 more than the one before.
ParameterTable chain(int length)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameterExpression(height(1), L"1");
    for (int n = 2; n <= length; ++n)
        table.setParameterExpression(height(n), height(n - 1) + L" + 1");
    return table;
}

} // namespace

TEST(ParameterTableLimits, AChainOfTenThousandIsReadFromEitherEnd)
{
    runOnSmallStack([] {
        ParameterTable table = chain(many);
        EXPECT_EQ(table.getDouble(height(many), mm), many);
        for (int n = 1; n <= many; n += 777)
            EXPECT_EQ(table.getDouble(height(n), mm), n);
        table.setParameter(height(1), 100.0, mm);
        EXPECT_EQ(table.getDouble(height(1), mm), 100);
        EXPECT_EQ(table.getDouble(height(many), mm), many + 99);
        table.setParameter(height(many / 2), 0.0, mm);
        EXPECT_EQ(table.getDouble(height(many), mm), many / 2);
        EXPECT_EQ(table.getDouble(height(many / 2 - 1), mm), many / 2 + 98);
    });
}

TEST(ParameterTableLimits, ARingOfTenThousandIsACycleOfAll)
{
    runOnSmallStack([] {
        ParameterTable table = chain(many);
        table.setParameterExpression(height(1), height(many));
        for (int n = 1; n <= many; ++n) {
            const auto error = table.getParameter(height(n))->getError();
            ASSERT_TRUE(error) << n;
            ASSERT_EQ(error->code, ExpressionError::Code::Cycle) << n;
            ASSERT_LT(error->message.size(), 200u);
        }
        EXPECT_EQ(table.getParametersWithErrors().size(), static_cast<std::size_t>(many));
        table.setParameter(height(3), 3.0, mm);
        EXPECT_EQ(table.getDouble(height(2), mm), many + 1);
    });
}

TEST(ParameterTableLimits, AFaultAtTheStartOfAChainReachesItsEnd)
{
    ParameterTable table = chain(many);
    table.setParameterExpression(height(1), L"1 / 0");
    const auto error = table.getParameter(height(many))->getError();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->message, L"segment_1_height: Division by zero");
}

TEST(ParameterTableLimits, ASumOfTenThousandFollowsEachOfThem)
{
    ParameterTable table(Strategy::ROTATING);
    std::wstring sum = L"0";
    for (int n = 1; n <= many; ++n) {
        table.setParameter(height(n), 1.0, mm);
        sum += L" + " + height(n);
    }
    table.setParameterExpression(L"tool_holderGaugeLength", sum);
    EXPECT_EQ(table.getDouble(L"tool_holderGaugeLength", mm), many);
    table.setParameter(height(many), 11.0, mm);
    EXPECT_EQ(table.getDouble(L"tool_holderGaugeLength", mm), many + 10);
    for (int n = 1; n <= many; ++n)
        table.setParameter(height(n), 2.0, mm);
    EXPECT_EQ(table.getDouble(L"tool_holderGaugeLength", mm), 2 * many);
}

// What every reading had to walk would take an hour.
TEST(ParameterTableLimits, AChangeElsewhereCostsALongChainNothing)
{
    ParameterTable table = chain(10 * many);
    EXPECT_EQ(table.getDouble(height(10 * many), mm), 10 * many);
    for (int round = 0; round < 5 * many; ++round) {
        table.setParameter(L"tool_diameter", round % 7 + 1.0, mm);
        ASSERT_EQ(table.getDouble(L"tool_fluteLength", mm), 2 * (round % 7 + 1.0));
        ASSERT_EQ(table.getDouble(height(10 * many), mm), 10 * many);
    }
}

// Readers that have been dropped must not pile up at what they have read.
TEST(ParameterTableLimits, ReadingAgainAndAgainKeepsNoTraces)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameterExpression(height(1), L"tool_diameter + tool_bodyLength * 0");
    for (int n = 2; n <= 50; ++n)
        table.setParameterExpression(height(n), height(1) + L" + tool_bodyLength * 0");
    for (int round = 0; round < 2000; ++round) {
        table.setParameter(L"tool_diameter", round + 1.0, mm);
        for (int n = 2; n <= 50; ++n)
            ASSERT_EQ(table.getDouble(height(n), mm), round + 1.0);
    }
    table.setParameter(L"tool_bodyLength", 1.0, mm);
    EXPECT_EQ(table.getDouble(height(50), mm), 2000);
}

TEST(ParameterTableLimits, HugeAndHostileTextsAreErrors)
{
    ParameterTable table(Strategy::ROTATING);
    const std::vector<std::wstring> texts = {std::wstring(2'000'000, L'1'), std::wstring(2'000'000, L'('),
                                             std::wstring(2'000'000, L'a'), std::wstring(1'000'000, L'-') + L"1",
                                             std::wstring(1, L'\0'),        L"'",
                                             std::wstring(3, L'\'')};
    for (const std::wstring &text : texts) {
        table.setParameterExpression(L"tool_diameter", text);
        EXPECT_FALSE(table.getParameter(L"tool_diameter")->hasValue());
        EXPECT_TRUE(table.getParameter(L"tool_diameter")->getError());
        EXPECT_FALSE(table.getParameter(L"tool_type")->isValidEnumValue(text));
    }
    table.setParameter(L"tool_description", std::wstring(2'000'000, L'\''));
    EXPECT_EQ(table.getWideMessage(L"tool_description"), std::wstring(2'000'000, L'\''));
}

// Whatever order a table is read and changed in, it gives what a fresh one with the same settings gives.
TEST(ParameterTableLimits, ARandomHistoryLeavesNothingBehind)
{
    std::mt19937 random(20260801);
    const auto pick = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    const auto formula = [&] {
        switch (pick(5)) {
        case 0:
            return std::to_wstring(pick(9));
        case 1:
            return height(pick(30) + 1) + L" / " + height(pick(30) + 1);
        case 2:
            return height(pick(30) + 1) + L" > 3 ? " + height(pick(30) + 1) + L" : " + height(pick(30) + 1);
        case 3:
            return L"tool_diameter - " + height(pick(30) + 1);
        default:
            return height(pick(30) + 1) + L" + 1";
        }
    };
    for (int history = 0; history < 30; ++history) {
        ParameterTable table(Strategy::ROTATING);
        for (int step = 0; step < 60; ++step) {
            table.setParameterExpression(height(pick(30) + 1), formula());
            for (int i = 0; i < 3; ++i) {
                const auto read = table.getParameterNoThrow(height(pick(30) + 1));
                if (read)
                    read->getAsDouble(mm);
            }
        }
        ParameterTable fresh = table;
        for (const auto &parameter : fresh.getParameters()) {
            const auto known = table.getParameter(parameter->getName());
            EXPECT_EQ(known->hasValue(), parameter->hasValue());
            EXPECT_EQ(known->getValue(), parameter->getValue());
            const auto error = parameter->getError();
            ASSERT_EQ(known->getError().has_value(), error.has_value());
            if (error && error->code != ExpressionError::Code::Cycle) {
                EXPECT_EQ(known->getError()->code, error->code);
            }
        }
    }
}

// A sum that is read at the end of the recursion, each of whose parts lies beyond it, must not start over for each
// part.
TEST(ParameterTableLimits, AWideSumAtTheEndOfAChainIsWalkedAFewTimes)
{
    constexpr int width = 2 * many;
    for (int depth = 46; depth <= 50; ++depth) {
        ParameterTable table(Strategy::ROTATING);
        std::wstring sum = L"0";
        for (int n = 1; n <= width; ++n) {
            const std::wstring part = L"segment_" + std::to_wstring(n) + L"_upper_diameter";
            table.setParameterExpression(part, L"segment_" + std::to_wstring(n) + L"_lower_diameter + 0");
            table.setParameterExpression(L"segment_" + std::to_wstring(n) + L"_lower_diameter", L"2 - 1");
            sum += L'+' + part;
        }
        table.setParameterExpression(height(1), sum);
        for (int n = 2; n <= depth; ++n)
            table.setParameterExpression(height(n), height(n - 1) + L" + 1");
        EXPECT_EQ(table.getDouble(height(depth), mm), width + depth - 1);
    }
}

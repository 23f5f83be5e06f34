#include "ToolLibrary/Interface/Private/NumberText.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace NumberText = Varn::ToolLibraries::NumberText;

TEST(NumberText, HasNoZerosAtItsEnd)
{
    const struct {
        double value;
        int precision;
        const wchar_t *text;
    } rows[] = {
        {10.5, 5, L"10.5"},
        {100, 5, L"100"},
        {0, 5, L"0"},
        {-0.0, 5, L"0"},
        {1000, 1, L"1000"},
        {0.000001, 5, L"0"},
        {0.123456, 5, L"0.12346"},
        {-2.50, 2, L"-2.5"},
        {93.25, 1, L"93.3"},
        {1e22, 1, L"10000000000000000000000"},
        {118.04, 1, L"118"},
        {20.002, 2, L"20"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(NumberText::withPrecision(row.value, row.precision), row.text) << row.value;
}

TEST(NumberText, RoundsAsQtDoes)
{
    static const QRegularExpression zerosAtTheEnd(QStringLiteral("\\.?0+$"));
    std::mt19937 random(3);
    std::uniform_int_distribution<int> steps(-2'000'000, 2'000'000);
    std::uniform_real_distribution<double> exponent(-8, 12);
    for (int round = 0; round < 50'000; ++round) {
        const int precision = 1 + round % 5;
        const double value = round % 2 ? steps(random) / 2048.0 : std::pow(10, exponent(random));
        const std::wstring expected = QString::number(value, 'f', precision).remove(zerosAtTheEnd).toStdWString();
        ASSERT_EQ(NumberText::withPrecision(value, precision), expected) << value << " " << precision;
    }
}

TEST(NumberText, InchesAreFractionsWhereTheyAre)
{
    EXPECT_EQ(NumberText::length(0.5, true), L"1/2");
    EXPECT_EQ(NumberText::length(1.25, true), L"1-1/4");
    EXPECT_EQ(NumberText::length(0.51, true), L"0.51");
    EXPECT_EQ(NumberText::length(2, true), L"2");
    EXPECT_EQ(NumberText::length(0.5, false), L"0.5");
    EXPECT_EQ(NumberText::ofInsert(0.03125, true), L"1/32");
    EXPECT_EQ(NumberText::ofInsert(0.03125, false), L"0.03");
}

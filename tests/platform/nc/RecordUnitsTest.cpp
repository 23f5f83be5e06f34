#include "platform/nc/RecordUnits.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

using Varn::FieldQuantity;
using Varn::inUnit;
using Varn::NCUnit;

TEST(RecordUnits, EachQuantityHasItsFactor)
{
    const struct {
        FieldQuantity quantity;
        double inch, metric;
    } rows[] = {
        {FieldQuantity::Plain, 3, 3},
        {FieldQuantity::Length, 0.5, 12.7},
        {FieldQuantity::Feed, 40, 1016},
        {FieldQuantity::Pressure, 50000, 3447.378646584}, // bar
        {FieldQuantity::GasFlow, 32, 15.1023181824},      // l/min
        {FieldQuantity::MassFlow, 10, 283.49523125},      // g/min
    };
    for (const auto &row : rows) {
        EXPECT_NEAR(inUnit(row.inch, row.quantity, NCUnit::inches, NCUnit::millimeters), row.metric, 1e-9 * row.metric);
        EXPECT_NEAR(inUnit(row.metric, row.quantity, NCUnit::millimeters, NCUnit::inches), row.inch, 1e-9 * row.inch);
        EXPECT_EQ(inUnit(row.inch, row.quantity, NCUnit::inches, NCUnit::inches), row.inch);
        EXPECT_EQ(inUnit(row.inch, row.quantity, NCUnit::millimeters, NCUnit::millimeters), row.inch);
    }
}

TEST(RecordUnits, SixtyFourthsOfAnInchComeBackExactly)
{
    for (int n = 0; n <= 64 * 12; ++n) {
        const double inches = n / 64.0;
        const double there = inUnit(inches, FieldQuantity::Length, NCUnit::inches, NCUnit::millimeters);
        EXPECT_EQ(inUnit(there, FieldQuantity::Length, NCUnit::millimeters, NCUnit::inches), inches);
    }
}

TEST(RecordUnits, DecimalsComeBackExactly)
{
    const auto thereAndBack = [](double value, NCUnit::Unit from, NCUnit::Unit to) {
        return inUnit(inUnit(value, FieldQuantity::Length, from, to), FieldQuantity::Length, to, from);
    };
    for (int n = -100; n <= 300000; ++n) {
        ASSERT_EQ(thereAndBack(n / 1000.0, NCUnit::millimeters, NCUnit::inches), n / 1000.0);
        ASSERT_EQ(thereAndBack(n / 10000.0, NCUnit::inches, NCUnit::millimeters), n / 10000.0);
    }
}

TEST(RecordUnits, NoNumberMovesByMoreThanItsRounding)
{
    std::mt19937_64 random(11);
    std::uniform_real_distribution<double> values(-1000, 1000);
    for (int i = 0; i < 10000; ++i) {
        const double value = values(random);
        const double metric = inUnit(value, FieldQuantity::Length, NCUnit::inches, NCUnit::millimeters);
        EXPECT_NEAR(metric, value * 25.4, 5e-16 * std::abs(metric));
    }
}

TEST(RecordUnits, WhatIsNoNumberStaysNone)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(std::isnan(inUnit(nan, FieldQuantity::Length, NCUnit::inches, NCUnit::millimeters)));
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(inUnit(infinity, FieldQuantity::Length, NCUnit::millimeters, NCUnit::inches), infinity);
}

TEST(RecordUnits, OutlinesAndMotionsAreConvertedWhole)
{
    EXPECT_EQ(inUnit(std::vector<Varn::ToolSection>{{1, 2}}, NCUnit::inches, NCUnit::millimeters),
              (std::vector<Varn::ToolSection>{{25.4, 50.8}}));
    EXPECT_EQ(inUnit(Varn::ToolProfile{{{1, 2}, true, false, {3, 4}}}, NCUnit::inches, NCUnit::millimeters),
              (Varn::ToolProfile{{{25.4, 50.8}, true, false, {76.2, 101.6}}}));
    const auto rotation = Varn::Matrix3x3::getEulerXYZRotation({0, 0, 90});
    EXPECT_EQ(inUnit(Varn::Matrix4x4(rotation, {25.4, 50.8, 0}), NCUnit::millimeters, NCUnit::inches),
              Varn::Matrix4x4(rotation, {1, 2, 0}));
}

#include "platform/nc/ToolInsert.h"

#include "platform/nc/InsertDesignationTables.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace Varn;

namespace {

constexpr double tolerance = 0.0001;

std::wstring metricSize(double circle, ToolGeometry::InsertType type)
{
    return ToolInsert::getClosestSize(circle, tolerance, type, true).metric;
}

} // namespace

// ISO 1832: the code of a size is the length of the edge in whole millimeters.
TEST(ToolInsert, ASizeIsCodedByShape)
{
    EXPECT_EQ(metricSize(12.7, ToolGeometry::INSERT_C), L"12");
    EXPECT_EQ(metricSize(12.7, ToolGeometry::INSERT_D), L"15");
    EXPECT_EQ(metricSize(12.7, ToolGeometry::INSERT_T), L"22");
    EXPECT_EQ(metricSize(12.7, ToolGeometry::INSERT_W), L"08");
    EXPECT_EQ(metricSize(9.525, ToolGeometry::INSERT_C), L"09");
    EXPECT_EQ(metricSize(9.52, ToolGeometry::INSERT_C), L"09") << "as catalogues round it";
    EXPECT_EQ(metricSize(9.6, ToolGeometry::INSERT_C), L"?");
    EXPECT_EQ(metricSize(12.7, ToolGeometry::INSERT_CUSTOM), L"?");
    EXPECT_EQ(metricSize(-1, ToolGeometry::INSERT_C), L"?");
}

// ANSI B212.4: the inscribed circle in eighths of an inch, whatever the shape.
TEST(ToolInsert, AnInchSizeCountsEighths)
{
    for (const auto type : {ToolGeometry::INSERT_C, ToolGeometry::INSERT_T}) {
        const auto designation = ToolInsert::getClosestSize(0.5, tolerance, type, false);
        EXPECT_EQ(designation.inch, L"4");
        EXPECT_EQ(designation.metric, L"?");
    }
}

TEST(ToolInsert, ThicknessHasACodeInEachUnit)
{
    EXPECT_EQ(ToolInsert::getClosestThickness(4.76, tolerance, true).metric, L"04");
    EXPECT_EQ(ToolInsert::getClosestThickness(4.7625, tolerance, true).inch, L"3");
    EXPECT_EQ(ToolInsert::getClosestThickness(0.1875, tolerance, false).inch, L"3");
    EXPECT_EQ(ToolInsert::getClosestThickness(3.97, tolerance, true).metric, L"T3");
    EXPECT_EQ(ToolInsert::getClosestThickness(2.58, tolerance, true).inch, L"?") << "in millimeters only";
    EXPECT_EQ(ToolInsert::getClosestThickness(0.10157480315, tolerance, false).metric, L"?");
    EXPECT_EQ(ToolInsert::getClosestThickness(0, tolerance, true).metric, L"?");
}

TEST(ToolInsert, ARadiusHasACodeAndARoundInsertOnlyOne)
{
    const auto c = ToolGeometry::INSERT_C;
    EXPECT_EQ(ToolInsert::getClosestCornerRadius(0.8, tolerance, c, true).metric, L"08");
    EXPECT_EQ(ToolInsert::getClosestCornerRadius(0.03125, tolerance, c, false).inch, L"2");
    EXPECT_EQ(ToolInsert::getClosestCornerRadius(0, tolerance, c, true).metric, L"00");
    EXPECT_EQ(ToolInsert::getClosestCornerRadius(0, tolerance, c, false).inch, L"0");
    EXPECT_EQ(ToolInsert::getClosestCornerRadius(0.9, tolerance, c, true).metric, L"?");
    for (const double radius : {0.0, 0.8, 6.35, 99.0}) {
        EXPECT_EQ(ToolInsert::getClosestCornerRadius(radius, tolerance, ToolGeometry::INSERT_R, true).metric, L"M0");
        EXPECT_EQ(ToolInsert::getClosestCornerRadius(radius, tolerance, ToolGeometry::INSERT_R, false).inch, L"00");
    }
}

TEST(ToolInsert, AClearanceAngleHasALetter)
{
    const std::pair<double, const wchar_t *> rows[] = {{0, L"N"},  {3, L"A"},  {5, L"B"},  {7, L"C"},
                                                       {11, L"P"}, {15, L"D"}, {20, L"E"}, {25, L"F"},
                                                       {30, L"G"}, {8, L"?"},  {-3, L"?"}};
    for (const auto &[angle, letter] : rows)
        EXPECT_EQ(ToolInsert::getReliefAngleChar(angle), letter) << angle;
}

TEST(ToolInsert, EveryRowIsFoundByItsOwnValues)
{
    const auto each = [](const NominalValues &nominal, double exact, const auto &check) {
        check(exact);
        for (const double value : nominal)
            if (value != 0)
                check(value);
    };
    for (const InsertThicknessRow &row : insertThicknessRows())
        each(row.metricNominal, row.inches * 25.4, [&](double value) {
            EXPECT_EQ(ToolInsert::getClosestThickness(value, tolerance, true).metric,
                      std::wstring(row.metricCode.begin(), row.metricCode.end()));
        });
    for (const InsertSizeRow &row : metricInsertSizeRows()) {
        if (row.letters.empty())
            continue;
        const auto type = ToolGeometry::insertTypeFromChar(static_cast<wchar_t>(row.letters.front())).value();
        each(row.nominal, row.circle, [&](double value) {
            EXPECT_EQ(metricSize(value, type), std::wstring(row.code.begin(), row.code.end())) << value;
        });
    }
    for (const InsertCornerRadiusRow &row : insertCornerRadiusRows().subspan(1))
        each(row.inchNominal, row.inches, [&](double value) {
            EXPECT_EQ(ToolInsert::getClosestCornerRadius(value, tolerance, ToolGeometry::INSERT_C, false).inch,
                      std::wstring(row.inchCode.begin(), row.inchCode.end()));
        });
}

TEST(ToolInsert, ChoicesAreWhatTheTablesHave)
{
    ToolInsert::init();
    ASSERT_EQ(ToolInsert::crossSections().size(), 15u);
    EXPECT_EQ(ToolInsert::crossSections().front().key, L"A");
    EXPECT_EQ(ToolInsert::crossSections().front().title.asWideString(), L"A: cylindrical hole, no chip breaker");
    EXPECT_EQ(ToolInsert::crossSections().back().key, L"X");
    EXPECT_EQ(std::wstring(ToolInsert::tolerances().begin(), ToolInsert::tolerances().end()), L"ABCDEFGHJKLMNU");
    ASSERT_EQ(ToolInsert::reliefAngles().size(), 10u);
    EXPECT_EQ(ToolInsert::reliefAngles()[3].code, L"C");
    EXPECT_EQ(ToolInsert::reliefAngles()[3].angle, 7);
    EXPECT_EQ(ToolInsert::reliefAngles()[3].title.asWideString(), L"C: 7°");
    EXPECT_EQ(ToolInsert::reliefAngles().back().code, L"?");
    EXPECT_EQ(ToolInsert::cornerRadiuses().size(), 13u);
    EXPECT_EQ(ToolInsert::cornerRadiuses().front().metricName, L"M0");
    EXPECT_EQ(ToolInsert::cornerRadiuses().front().inchName, L"00");
    EXPECT_EQ(ToolInsert::cornerRadiuses().back().metricName, L"?");
    EXPECT_EQ(ToolInsert::thicknesses().size(), 20u);
    EXPECT_EQ(ToolInsert::thicknesses().back().metricCode, L"?");
    EXPECT_EQ(ToolInsert::insertSizes().size(), 102u);
}

TEST(ToolInsert, WhatCanBeChosenHasItsOwnDesignation)
{
    for (const ToolInsert::CornerRadius &radius : ToolInsert::cornerRadiuses()) {
        if (radius.metricName == L"?" || radius.metricName == L"M0")
            continue;
        EXPECT_EQ(
            ToolInsert::getClosestCornerRadius(radius.metricValue, tolerance, ToolGeometry::INSERT_C, true).metric,
            radius.metricName);
        EXPECT_EQ(ToolInsert::getClosestCornerRadius(radius.inchValue, tolerance, ToolGeometry::INSERT_C, false).inch,
                  radius.inchName);
    }
    for (const ToolInsert::Thickness &thickness : ToolInsert::thicknesses()) {
        if (thickness.metricCode == L"?")
            continue;
        EXPECT_EQ(ToolInsert::getClosestThickness(thickness.value * 25.4, tolerance, true).metric,
                  thickness.metricCode);
        if (!thickness.inchCode.empty()) {
            EXPECT_EQ(ToolInsert::getClosestThickness(thickness.value, tolerance, false).inch, thickness.inchCode);
        }
    }
    for (const ToolInsert::ReliefAngle &relief : ToolInsert::reliefAngles())
        EXPECT_EQ(ToolInsert::getReliefAngleChar(relief.angle), relief.code);
    for (const ToolInsert::Size &size : ToolInsert::insertSizes()) {
        for (const wchar_t letter : size.insertTypes) {
            const auto designation = ToolInsert::getClosestSize(size.value, tolerance,
                                                                *ToolGeometry::insertTypeFromChar(letter), size.metric);
            EXPECT_EQ(size.metric ? designation.metric : designation.inch, size.name) << size.value;
        }
    }
}

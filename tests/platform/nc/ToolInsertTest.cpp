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

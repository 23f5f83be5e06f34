#include "ToolLibrary/Util/ParameterTableQVariantMapTransferUtil.h"
#include "support/Asserts.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

using namespace TestSupport;
using namespace Varn;
using testing::ElementsAre;
using testing::IsEmpty;
using Util = Varn::Tools::ParameterTableQVariantMapTransferUtil;

namespace {

const QString key = QStringLiteral("key");
const QString dependentKey = QStringLiteral("other");

std::wstring expressionOf(const ParameterTable &table, const std::wstring &name)
{
    return table.getParameter(name)->getExpression();
}

/// The expression that a number of a map becomes.
std::wstring diameterOf(double number, double factor = 1, int decimals = 6)
{
    ParameterTable table(Strategy::ROTATING);
    Util::transferDouble({{key, number}}, key, table, L"tool_diameter", true, factor, decimals);
    return expressionOf(table, L"tool_diameter");
}

} // namespace

TEST(ParameterTableQVariantMapTransferUtil, ANumberKeepsSixPlaces)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const struct {
        double number;
        const wchar_t *expression;
    } rows[] = {
        {1234.5678912, L"1234.567891"},
        {-0.5, L"-0.5"},
        {0, L"0"},
        {10, L"10"},
        {0.1 + 0.2, L"0.3"},
        {1.0 / 3, L"0.3333333"}, // the 0 in front counts as one of seven
        {-1.0 / 3, L"-0.33333333"},
        {999999.9999999, L"999999.9999999"}, // rounded, it has seven in front

        {123456789012.345678, L"123456789012.345673"},
        {1e-7, L"1e-07"},
        {infinity, L"inf"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(diameterOf(row.number), row.expression) << row.number;
    EXPECT_EQ(diameterOf(2.5, 1000), L"2500");
    EXPECT_EQ(diameterOf(12.3456, 1, 2), L"12.35");
}

TEST(ParameterTableQVariantMapTransferUtil, ANumberIsInTheUnitOfTheTool)
{
    ParameterTable table(Strategy::ROTATING, false);
    Util::transferDouble({{key, 0.5}}, key, table, L"tool_diameter", false, 1, 6);
    EXPECT_EQ(table.getDouble(L"tool_diameter", Units::UNIT_MILLIMETERS), 12.7);
    Util::transferDouble({{key, 0.5}}, key, table, L"tool_diameter", true, 1, 6);
    EXPECT_EQ(table.getDouble(L"tool_diameter", Units::UNIT_MILLIMETERS), 0.5);
    EXPECT_TRUE(table.getParameter(L"tool_diameter")->isOwn());
}

TEST(ParameterTableQVariantMapTransferUtil, AKeyThatIsNotThereChangesNothing)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameterExpression(L"tool_diameter", L"7 + 1", Units::UNIT_MILLIMETERS);
    table.setParameter(L"tool_description", L"mine");
    const Asserts asserts;
    Util::transferDouble({}, key, table, L"tool_diameter", true, 1, 6);
    Util::transferDoubleResetIfEqualToDependent({{dependentKey, 1}}, key, dependentKey, table, L"tool_diameter", true,
                                                1);
    Util::transferString({}, key, table, L"tool_description");
    Util::transferBoolean({}, key, table, L"tool_useFeedPerRevolution");
    EXPECT_EQ(expressionOf(table, L"tool_diameter"), L"7 + 1");
    EXPECT_EQ(table.getWideMessage(L"tool_description"), L"mine");
    EXPECT_TRUE(table.getParameter(L"tool_useFeedPerRevolution")->isDefault());
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(ParameterTableQVariantMapTransferUtil, AParameterThatIsNotThereIsAReportOfTests)
{
    ParameterTable table(Strategy::ROTATING);
    QVariantMap map{{key, 1}};
    const Asserts asserts;
    Util::transferDouble(map, key, table, L"nothing", true, 1, 6);
    Util::transferDoubleResetIfEqualToDependent(map, key, dependentKey, table, L"nothing", true, 1);
    Util::transferString(map, key, table, L"nothing");
    Util::transferBoolean(map, key, table, L"nothing");
    EXPECT_THAT(asserts.messages(), ElementsAre("parameter", "parameter", "parameter", "parameter"));
    Util::transferDouble(table, L"nothing", map, key, true, 1);
    Util::transferString(table, L"nothing", map, key);
    Util::transferBoolean(table, L"nothing", map, key);
    EXPECT_EQ(map, (QVariantMap{{key, 1}}));
    EXPECT_EQ(asserts.messages().size(), 4u) << "on the way out it is none";
}

TEST(ParameterTableQVariantMapTransferUtil, ANumberLikeItsDependentFollowsTheDefault)
{
    ParameterTable table(Strategy::ROTATING);
    const std::wstring name = L"tool_fluteLength";
    const auto transfer = [&](const QVariantMap &map) {
        Util::transferDoubleResetIfEqualToDependent(map, key, dependentKey, table, name, true, 1);
    };
    transfer({{key, 12.3456789}, {dependentKey, 12.345678}});
    EXPECT_EQ(expressionOf(table, name), L"12.3457") << "six significant digits";
    transfer({{key, 12.5}, {dependentKey, 12.5}});
    EXPECT_TRUE(table.getParameter(name)->isDefault());
    transfer({{key, 12.5}});
    EXPECT_EQ(expressionOf(table, name), L"12.5") << "there is nothing that it could be like";
}

TEST(ParameterTableQVariantMapTransferUtil, ABooleanMayTravelAsANumber)
{
    for (const bool on : {true, false}) {
        ParameterTable table(Strategy::ROTATING);
        Util::transferDouble({{key, on}}, key, table, L"use_tool_stepdown", true, 1, 6);
        EXPECT_TRUE(table.getParameter(L"use_tool_stepdown")->hasValue());
        EXPECT_EQ(table.getBoolean(L"use_tool_stepdown"), on);
        QVariantMap map;
        Util::transferDouble(table, L"use_tool_stepdown", map, key, true, 1);
        EXPECT_EQ(map[key].toBool(), on);
    }
}

TEST(ParameterTableQVariantMapTransferUtil, BooleansAndTextsBecomeExpressions)
{
    ParameterTable table(Strategy::ROTATING);
    Util::transferBoolean({{key, true}}, key, table, L"tool_useFeedPerRevolution");
    EXPECT_EQ(expressionOf(table, L"tool_useFeedPerRevolution"), L"true");
    Util::transferBoolean({{key, 0}}, key, table, L"tool_useFeedPerRevolution");
    EXPECT_EQ(expressionOf(table, L"tool_useFeedPerRevolution"), L"false");
    for (const char *text : {"plain", "", "it's 1/2\" \\ 'ok'", "∅10 – 🛠"}) {
        Util::transferString({{key, QString::fromUtf8(text)}}, key, table, L"tool_description");
        QVariantMap map;
        Util::transferString(table, L"tool_description", map, key);
        EXPECT_EQ(map[key].toString().toStdString(), text);
    }
}

TEST(ParameterTableQVariantMapTransferUtil, ValuesOfAnotherKindAreWhatQtMakesOfThem)
{
    ParameterTable table(Strategy::ROTATING);
    Util::transferDouble({{key, QStringLiteral("no number")}}, key, table, L"tool_diameter", true, 1, 6);
    EXPECT_EQ(expressionOf(table, L"tool_diameter"), L"0");
    Util::transferString({{key, 12.5}}, key, table, L"tool_description");
    EXPECT_EQ(table.getWideMessage(L"tool_description"), L"12.5");
    Util::transferString({{key, QVariantMap()}}, key, table, L"tool_description");
    EXPECT_EQ(table.getWideMessage(L"tool_description"), L"");
}

TEST(ParameterTableQVariantMapTransferUtil, ValuesGoIntoTheMapInTheUnitOfTheTool)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_diameter", 25.4, Units::UNIT_MILLIMETERS);
    table.setParameter(L"tool_useFeedPerRevolution", true);
    QVariantMap map;
    Util::transferDouble(table, L"tool_diameter", map, key, false, 2);
    EXPECT_EQ(map[key], QVariant(2.0));
    Util::transferDouble(table, L"tool_diameter", map, key, true, 1);
    EXPECT_EQ(map[key], QVariant(25.4));
    Util::transferBoolean(table, L"tool_useFeedPerRevolution", map, key);
    EXPECT_EQ(map[key], QVariant(true));
}

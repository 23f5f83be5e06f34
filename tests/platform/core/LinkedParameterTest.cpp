#include "platform/core/LinkedParameter.h"

#include "platform/core/ParameterExpression.h"
#include "platform/tool/Exception.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>

#include <cmath>
#include <map>
#include <string>
#include <vector>

using Varn::ExpressionValue;
using Varn::LinkedParameter;
using Varn::ParameterExpression;
using Varn::ParameterTable;
using Varn::Strategy;
using Varn::Units;

namespace {

constexpr auto rpm = Units::UNIT_TURNS_PER_MINUTE;
constexpr auto mm = Units::UNIT_MILLIMETERS;
constexpr auto none = Units::UNIT_NONE;
constexpr double pi = 3.14159265358979323846;

QJsonArray listOf(const char *name)
{
    QFile file(QStringLiteral(":/varn/core/tool-parameters.json"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QJsonDocument::fromJson(file.readAll())[QLatin1String(name)].toArray();
}

std::wstring textOf(const QJsonObject &row, const char *name)
{
    return row[QLatin1String(name)].toString().toStdWString();
}

/// The value of an expression over a table, as anybody may ask for it.
ExpressionValue valueOf(const ParameterTable &table, const std::wstring &text)
{
    const auto expression = ParameterExpression::parse(text);
    EXPECT_TRUE(expression) << text;
    const auto result = table.evaluate(*expression);
    EXPECT_TRUE(result) << text;
    return result.value_or(ExpressionValue(false));
}

/// A table in which all that the links speak of has a value that follows from no other.
ParameterTable plainTable(Strategy::Type strategy, bool metric, const wchar_t *type)
{
    ParameterTable table(strategy, metric);
    table.setParameter(L"tool_type", type);
    double value = 2;
    for (const auto &parameter : table.getParameters())
        if (parameter->getType() == ParameterTable::TYPE_FLOAT)
            parameter->set(value += 0.25, none);
    return table;
}

std::map<std::wstring, double> numbersOf(ParameterTable &table)
{
    std::map<std::wstring, double> numbers;
    for (const auto &parameter : table.getParameters())
        if (parameter->getType() == ParameterTable::TYPE_FLOAT)
            numbers[parameter->getName()] = parameter->getAsDouble(none);
    return numbers;
}

/// What the rows say that an edit gives, worked out row by row.
void applyByHand(ParameterTable &table, const std::wstring &edited, Strategy::Type strategy)
{
    for (const QJsonValue &value : listOf("links")) {
        const QJsonObject row = value.toObject();
        if (textOf(row, "set") != edited || !row["strategies"].toArray().contains(int(strategy)))
            continue;
        const std::wstring when = textOf(row, "when");
        if (!when.empty() && valueOf(table, when) != ExpressionValue(true))
            continue;
        const ExpressionValue number = valueOf(table, textOf(row, "formula"));
        table.setParameter(textOf(row, "updates"), std::get<double>(number), none);
    }
}

struct Case {
    Strategy::Type strategy;
    const wchar_t *type;
    bool feedPerRevolution;
};

const Case cases[] = {
    {Strategy::ROTATING, L"flat end mill", false},  {Strategy::ROTATING, L"drill", false},
    {Strategy::ROTATING, L"drill", true},           {Strategy::ROTATING, L"boring head", true},
    {Strategy::ROTATING, L"right hand tap", false}, {Strategy::ROTATING, L"left hand tap", false},
    {Strategy::UNSPECIFIED, L"unspecified", false}, {Strategy::TURNING, L"turning general", true},
    {Strategy::TURNING, L"turning general", false}, {Strategy::TURNING, L"turning threading", true},
};

} // namespace

TEST(LinkedParameter, TheSixCalculations)
{
    EXPECT_DOUBLE_EQ(LinkedParameter::calculateSpindleSpeed(pi * 10000, 10), 1000);
    EXPECT_DOUBLE_EQ(LinkedParameter::calculateSurfaceSpeed(1000, 10), pi * 10000);
    EXPECT_DOUBLE_EQ(LinkedParameter::calculateCuttingFeedrate(0.05, 4, 3000), 600);
    EXPECT_DOUBLE_EQ(LinkedParameter::calculateFeedPerTooth(600, 4, 3000), 0.05);
    EXPECT_DOUBLE_EQ(LinkedParameter::calculateFeedPerMinute(2000, 0.1), 200);
    EXPECT_DOUBLE_EQ(LinkedParameter::calculateFeedPerRevolution(200, 2000), 0.1);
}

TEST(LinkedParameter, NothingIsDividedByZero)
{
    EXPECT_EQ(LinkedParameter::calculateSpindleSpeed(100, 0), 0);
    EXPECT_EQ(LinkedParameter::calculateFeedPerTooth(600, 0, 3000), 0);
    EXPECT_EQ(LinkedParameter::calculateFeedPerTooth(600, 4, 0), 0);
    EXPECT_EQ(LinkedParameter::calculateFeedPerTooth(600, 0, 0), 0);
    EXPECT_EQ(LinkedParameter::calculateFeedPerRevolution(200, 0), 0);
}

TEST(LinkedParameter, EveryRowOfTheLinksIsAppliedInBothSystems)
{
    std::map<std::pair<std::wstring, std::wstring>, int> seen;
    for (const Case &c : cases)
        for (const bool metric : {true, false})
            for (const QJsonValue &value : listOf("links")) {
                const QJsonObject row = value.toObject();
                if (!row["strategies"].toArray().contains(int(c.strategy)))
                    continue;
                const std::wstring edited = textOf(row, "set");
                ParameterTable table = plainTable(c.strategy, metric, c.type);
                table.setParameter(L"tool_useFeedPerRevolution", c.feedPerRevolution);
                ParameterTable byHand = table;
                LinkedParameter::edit(table, edited, 7.0, none);
                byHand.setParameter(edited, 7.0, none);
                applyByHand(byHand, edited, c.strategy);
                EXPECT_EQ(numbersOf(table), numbersOf(byHand)) << edited << ' ' << c.type;

                const std::wstring when = textOf(row, "when");
                const auto updated = table.getParameter(textOf(row, "updates"));
                if (when.empty() || valueOf(table, when) == ExpressionValue(true)) {
                    ++seen[{edited, textOf(row, "updates") + when}];
                    EXPECT_FALSE(updated->isOwn()) << edited;
                }
            }
    EXPECT_EQ(seen.size(), static_cast<std::size_t>(listOf("links").size())) << "some row was never applied";
}

TEST(LinkedParameter, SpeedAndFeedGoBothWays)
{
    for (const bool metric : {true, false}) {
        ParameterTable table(Strategy::ROTATING, metric);
        LinkedParameter::edit(table, L"tool_diameter", metric ? 10 : 0.5, none);
        LinkedParameter::edit(table, L"tool_spindleSpeed", 1000, rpm);
        EXPECT_DOUBLE_EQ(table.getDouble(L"tool_surfaceSpeed", none), pi * (metric ? 10 : 0.5) * 1000);
        LinkedParameter::edit(table, L"tool_surfaceSpeed", table.getDouble(L"tool_surfaceSpeed", none) * 2, none);
        EXPECT_DOUBLE_EQ(table.getDouble(L"tool_spindleSpeed", rpm), 2000);
        LinkedParameter::edit(table, L"tool_feedPerTooth", 0.1, none);
        EXPECT_DOUBLE_EQ(table.getDouble(L"tool_feedCutting", none), 0.1 * 4 * 2000);
        LinkedParameter::edit(table, L"tool_feedCutting", 400, none);
        EXPECT_DOUBLE_EQ(table.getDouble(L"tool_feedPerTooth", none), 0.05);
    }
}

TEST(LinkedParameter, AnEditInOtherUnitsIsConverted)
{
    ParameterTable table(Strategy::ROTATING);
    LinkedParameter::edit(table, L"tool_diameter", 1, Units::UNIT_INCHES);
    LinkedParameter::edit(table, L"tool_spindleSpeed", 100, rpm);
    EXPECT_DOUBLE_EQ(table.getDouble(L"tool_surfaceSpeed", Units::UNIT_MILLIMETERS_PER_MINUTE), pi * 25.4 * 100);
    LinkedParameter::edit(table, L"tool_surfaceSpeed", 1, Units::UNIT_METERS_PER_MINUTE);
    EXPECT_DOUBLE_EQ(table.getDouble(L"tool_spindleSpeed", rpm), 1000 / (pi * 25.4));
}

TEST(LinkedParameter, ASpeedOfZeroGivesFeedsOfZero)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_feedCutting", 600.0, none);
    LinkedParameter::edit(table, L"tool_spindleSpeed", 0, rpm);
    EXPECT_EQ(table.getDouble(L"tool_feedPerTooth", none), 0);
    EXPECT_FALSE(table.getParameter(L"tool_feedPerTooth")->getError());
    LinkedParameter::edit(table, L"tool_diameter", 0, mm);
    LinkedParameter::edit(table, L"tool_surfaceSpeed", 100, none);
    EXPECT_EQ(table.getDouble(L"tool_spindleSpeed", rpm), 0);
}

TEST(LinkedParameter, ATapKeepsToItsPitch)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_type", L"right hand tap");
    LinkedParameter::edit(table, L"tool_threadPitch", 1.5, mm);
    LinkedParameter::edit(table, L"tool_spindleSpeed", 400, rpm);
    EXPECT_EQ(table.getDouble(L"tool_feedCutting", none), 600);
    EXPECT_EQ(table.getDouble(L"tool_feedPlunge", none), 600);
}

TEST(LinkedParameter, AFaultyEditChangesNothingElse)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_surfaceSpeed", 5.0, none);
    LinkedParameter::edit(table, L"tool_spindleSpeed", L"'fast'", rpm);
    EXPECT_TRUE(table.getParameter(L"tool_spindleSpeed")->getError());
    EXPECT_EQ(table.getDouble(L"tool_surfaceSpeed", none), 5);
    LinkedParameter::edit(table, L"tool_spindleSpeed", L"1 / 0", rpm);
    EXPECT_EQ(table.getDouble(L"tool_surfaceSpeed", none), 5) << "the fault is that of the speed";
    LinkedParameter::edit(table, L"tool_spindleSpeed", L"tool_numberOfFlutes * 100", rpm);
    EXPECT_DOUBLE_EQ(table.getDouble(L"tool_surfaceSpeed", none), pi * 10 * 400);
}

TEST(LinkedParameter, WhatHasNoLinksIsOnlySet)
{
    ParameterTable table(Strategy::JET);
    LinkedParameter::edit(table, L"tool_feedCutting", 100, none);
    EXPECT_EQ(table.getDouble(L"tool_feedCutting", none), 100);
    EXPECT_TRUE(table.getParameter(L"tool_feedEntry")->isDefault());
    EXPECT_THROW(LinkedParameter::edit(table, L"tool_spindleSpeed", 100, none), Varn::ToolLibraries::InvalidInput);
    EXPECT_NO_THROW(LinkedParameter::applyLinks(table, L"tool_spindleSpeed"));
    EXPECT_NO_THROW(LinkedParameter::edit(table, L"segment_1_height", 100, mm));
}

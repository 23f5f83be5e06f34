#include "platform/core/ParameterTable.h"

#include "platform/core/FeatureFlag.h"
#include "platform/core/ParameterExpression.h"
#include "platform/core/VarnParameters.h"
#include "platform/tool/Exception.h"

#include <gmock/gmock.h>

#include <limits>
#include <string>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;
using Varn::ExpressionError;
using Varn::ParameterTable;
using Varn::SafePointer;
using Varn::Strategy;
using Varn::Units;
using Varn::Variant;
using Varn::VarnParameters;

namespace {

constexpr auto mm = Units::UNIT_MILLIMETERS;
constexpr auto in = Units::UNIT_INCHES;
constexpr auto none = Units::UNIT_NONE;

using Code = ExpressionError::Code;

Code errorOf(ParameterTable &table, const wchar_t *name)
{
    const auto error = table.getParameter(name)->getError();
    EXPECT_TRUE(error) << "a value";
    return error ? error->code : Code::Syntax;
}

std::vector<std::wstring> namesOf(const std::vector<std::shared_ptr<ParameterTable::Parameter>> &parameters)
{
    std::vector<std::wstring> names;
    for (const auto &parameter : parameters)
        names.push_back(parameter->getName());
    return names;
}

} // namespace

TEST(ParameterTable, AFreshTableStandsAtItsDefaults)
{
    const ParameterTable metric(Strategy::ROTATING);
    EXPECT_TRUE(metric.isMetric());
    EXPECT_EQ(metric.getStrategy(), Strategy::ROTATING);
    EXPECT_EQ(metric.getWideMessage(L"tool_type"), L"flat end mill");
    EXPECT_EQ(metric.getDouble(L"tool_diameter", mm), 10);
    EXPECT_EQ(metric.getDouble(L"tool_fluteLength", mm), 20);
    EXPECT_EQ(metric.getInt(L"tool_numberOfFlutes"), 4);
    EXPECT_TRUE(metric.getBoolean(L"tool_clockwise"));
    EXPECT_EQ(metric.getWideMessage(L"tool_unit"), L"millimeters");

    const ParameterTable inch(Strategy::ROTATING, false);
    EXPECT_EQ(inch.getDouble(L"tool_diameter", in), 0.5);
    EXPECT_EQ(inch.getDouble(L"tool_diameter", mm), 12.7);
    EXPECT_EQ(inch.getWideMessage(L"tool_unit"), L"inches");
}

TEST(ParameterTable, ValuesFollowWhatTheyAreDefinedBy)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_type", L"ball end mill");
    table.setParameter(L"tool_diameter", 0.5, in);
    EXPECT_EQ(table.getDouble(L"tool_cornerRadius", mm), 6.35);
    table.setParameter(L"tool_diameter", 8.0, mm);
    EXPECT_EQ(table.getDouble(L"tool_cornerRadius", mm), 4);
    table.setParameterExpression(L"tool_diameter", L"2 * tool_fluteLength");
    table.setParameter(L"tool_fluteLength", 3.0, mm);
    EXPECT_EQ(table.getDouble(L"tool_cornerRadius", mm), 3);
    table.setParameter(L"tool_type", L"flat end mill");
    EXPECT_EQ(table.getDouble(L"tool_cornerRadius", mm), 0);
}

TEST(ParameterTable, ANumberIsExactInTheUnitThatItWasGivenIn)
{
    ParameterTable table(Strategy::ROTATING);
    for (const double value : {0.1, 0.125, 1.0 / 3, 2.7, 1e-9, 123456.789}) {
        table.setParameter(L"tool_diameter", value, in);
        EXPECT_EQ(table.getDouble(L"tool_diameter", in), value);
        EXPECT_DOUBLE_EQ(table.getDouble(L"tool_diameter", mm), value * 25.4);
        EXPECT_EQ(table.getParameter(L"tool_diameter")->getUnit(), in);
    }
    table.setParameter(L"tool_feedCutting", 1.0, Units::UNIT_METERS_PER_MINUTE);
    EXPECT_EQ(table.getDouble(L"tool_feedCutting", Units::UNIT_MILLIMETERS_PER_MINUTE), 1000);
    EXPECT_DOUBLE_EQ(table.getDouble(L"tool_feedCutting", Units::UNIT_INCHES_PER_MINUTE), 1000 / 25.4);
}

TEST(ParameterTable, ANumberWithoutAUnitIsInThatOfTheTable)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameterExpression(L"tool_diameter", L"2");
    EXPECT_EQ(table.getDouble(L"tool_diameter", mm), 2);
    EXPECT_EQ(table.getDouble(L"tool_diameter", none), 2);
    EXPECT_EQ(table.getDouble(L"tool_diameter", Units::UNIT_SECONDS), 2) << "no conversion to another quantity";
    table.setMetric(false);
    EXPECT_EQ(table.getDouble(L"tool_diameter", in), 2);
    EXPECT_EQ(table.getDouble(L"tool_diameter", none), 2);
    table.setParameter(L"tool_diameter", 3.0, Units::UNIT_SECONDS);
    EXPECT_EQ(table.getDouble(L"tool_diameter", in), 3) << "a unit of another quantity says nothing";
}

TEST(ParameterTable, NamesInAnExpressionAreInTheSystemOfItsUnit)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_diameter", 25.4, mm);
    table.getParameter(L"tool_fluteLength")->setExpression(L"tool_diameter + 1", in, true);
    EXPECT_EQ(table.getDouble(L"tool_fluteLength", in), 2);
    table.getParameter(L"tool_fluteLength")->setExpression(L"tool_diameter + 1", mm, true);
    EXPECT_EQ(table.getDouble(L"tool_fluteLength", mm), 26.4);
    EXPECT_EQ(table.getDouble(L"tool_shoulderLength", mm), 26.4) << "read by a metric default";
}

TEST(ParameterTable, TheMetricFlagChangesDefaultsAndKeepsWhatWasSet)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_bodyLength", 50.0, mm);
    EXPECT_EQ(table.getDouble(L"tool_diameter", mm), 10);
    table.setMetric(false);
    EXPECT_FALSE(table.isMetric());
    EXPECT_EQ(table.getDouble(L"tool_diameter", in), 0.5);
    EXPECT_EQ(table.getDouble(L"tool_bodyLength", mm), 50);
    EXPECT_EQ(table.getParameter(L"tool_bodyLength")->getDisplayUnit(), in);
}

TEST(ParameterTable, ACopyIsATableOfItsOwn)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_diameter", 8.0, mm);
    table.setParameter(L"segment_1_height", 5.0, mm);
    ParameterTable copy = table;
    copy.setParameter(L"tool_diameter", 6.0, mm);
    copy.setParameter(L"segment_2_height", 7.0, mm);
    table.setParameter(L"segment_3_height", 9.0, mm);
    EXPECT_EQ(table.getDouble(L"tool_fluteLength", mm), 16);
    EXPECT_EQ(copy.getDouble(L"tool_fluteLength", mm), 12);
    EXPECT_EQ(copy.getDouble(L"segment_1_height", mm), 5);
    EXPECT_FALSE(table.hasParameter(L"segment_2_height"));
    EXPECT_FALSE(copy.hasParameter(L"segment_3_height"));

    ParameterTable moved = std::move(copy);
    EXPECT_EQ(moved.getDouble(L"tool_diameter", mm), 6);
    copy = table;
    EXPECT_EQ(copy.getDouble(L"segment_3_height", mm), 9);
}

TEST(ParameterTable, AParameterReadsAndWritesItsTable)
{
    ParameterTable table(Strategy::ROTATING);
    const auto diameter = table.getParameter(L"tool_diameter");
    const auto length = table.getParameter(std::wstring(L"tool_fluteLength"));
    diameter->set(3.0, mm);
    EXPECT_EQ(length->getAsDouble(mm), 6);
    EXPECT_EQ(table.getDouble(L"tool_diameter", mm), 3);
    EXPECT_FALSE(diameter->isDefault());
    EXPECT_TRUE(diameter->isOwn());
    EXPECT_EQ(diameter->getExpression(), L"3");
    diameter->reset(true);
    EXPECT_EQ(diameter->getAsDouble(mm), 3) << "an own value is kept";
    diameter->setExpression(L"4", mm, false);
    diameter->reset(true);
    EXPECT_EQ(diameter->getAsDouble(mm), 10) << "a computed one is not";
    diameter->set(3.0, mm);
    diameter->reset(false);
    EXPECT_EQ(diameter->getAsDouble(mm), 10);
    EXPECT_TRUE(diameter->isDefault());
    EXPECT_EQ(length->getExpression(), length->getSystemDefaultExpression());
}

TEST(ParameterTable, AParameterOutlivesItsTable)
{
    std::shared_ptr<ParameterTable::Parameter> diameter;
    {
        ParameterTable table(Strategy::ROTATING);
        diameter = table.getParameter(L"tool_diameter");
        VarnParameters::initToolParameters(table, Strategy::JET);
        EXPECT_FALSE(table.hasParameter(L"tool_diameter"));
    }
    diameter->set(2.0, mm);
    EXPECT_EQ(diameter->getAsDouble(mm), 2);
}

TEST(ParameterTable, ASafePointerKnowsWhenItHasDied)
{
    auto table = std::make_unique<ParameterTable>(Strategy::ROTATING);
    const SafePointer<ParameterTable> pointer(table.get());
    EXPECT_TRUE(pointer);
    table.reset();
    EXPECT_FALSE(pointer);
}

TEST(ParameterTable, AnUnknownNameIsRefused)
{
    ParameterTable table(Strategy::ROTATING);
    const ParameterTable &constant = table;
    for (const wchar_t *name : {L"", L"tool_kerfWidth", L"tool_Diameter", L"segment_0_height", L"segment_1_width"}) {
        EXPECT_FALSE(table.hasParameter(name));
        EXPECT_EQ(table.getParameterNoThrow(name), nullptr);
        EXPECT_EQ(constant.getParameterNoThrow(name), nullptr);
        EXPECT_THROW(table.getParameter(name), Varn::ToolLibraries::InvalidInput);
        EXPECT_THROW(constant.getParameter(name), Varn::ToolLibraries::InvalidInput);
        EXPECT_THROW(table.getDouble(name, mm), Varn::ToolLibraries::InvalidInput);
        EXPECT_THROW(table.setParameter(name, true), Varn::ToolLibraries::InvalidInput);
        EXPECT_THROW(table.setParameterExpression(name, L"1"), Varn::ToolLibraries::InvalidInput);
    }
    try {
        table.getParameter(L"tool_k\u00E4se");
        ADD_FAILURE() << "found";
    } catch (const Varn::ToolLibraries::InvalidInput &error) {
        EXPECT_STREQ(error.what(), "Unknown parameter: tool_k\xC3\xA4se");
    }
}

TEST(ParameterTable, WithoutAStrategyItHoldsNothing)
{
    for (const int strategy : {-1, 0, 199, ~0}) {
        ParameterTable table{Strategy::Type(strategy)};
        EXPECT_EQ(table.getStrategy(), Strategy::INVALID);
        EXPECT_FALSE(table.hasParameter(L"tool_type"));
        EXPECT_THROW(table.setParameter(L"segment_1_height", 1.0, mm), Varn::ToolLibraries::InvalidInput);
        EXPECT_THAT(table.getParameters(), IsEmpty());
        EXPECT_THAT(table.getParametersWithErrors(), IsEmpty());
        VarnParameters::initToolParameters(table, Strategy::JET);
        EXPECT_TRUE(table.hasParameter(L"tool_kerfWidth"));
    }
}

TEST(ParameterTable, NumberedParametersComeWithTheirValues)
{
    ParameterTable table(Strategy::ROTATING);
    EXPECT_FALSE(table.hasParameter(L"segment_1_height"));
    table.setParameterExpression(L"tool_holderGaugeLength", L"segment_1_height + segment_2_height");
    EXPECT_EQ(errorOf(table, L"tool_holderGaugeLength"), Code::UnknownName);
    EXPECT_FALSE(table.hasParameter(L"segment_1_height")) << "naming it does not make it";
    table.setParameter(L"segment_1_height", 30.0, mm);
    table.setParameter(L"segment_2_height", 1.0, in);
    EXPECT_EQ(table.getDouble(L"tool_holderGaugeLength", mm), 55.4);
    EXPECT_EQ(table.getParameter(L"segment_2_height")->getKind(), ParameterTable::KIND_LENGTH);
    EXPECT_TRUE(table.getParameter(L"segment_2_height")->hasFlag(2));
    EXPECT_EQ(namesOf(table.getParameters()).back(), L"segment_2_height");
    table.getParameter(L"segment_2_height")->reset(false);
    EXPECT_FALSE(table.hasParameter(L"segment_2_height"));
    EXPECT_EQ(errorOf(table, L"tool_holderGaugeLength"), Code::UnknownName);
}

TEST(ParameterTable, EveryTypeReadsAsEveryOther)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_live", false);
    EXPECT_FALSE(table.getBoolean(L"tool_live"));
    EXPECT_EQ(table.getWideMessage(L"tool_live"), L"false");
    table.setParameter(L"tool_number", 17);
    EXPECT_EQ(table.getInt(L"tool_number"), 17);
    EXPECT_EQ(table.getParameter(L"tool_number")->getValue(), Variant(17));
    EXPECT_TRUE(table.getParameter(L"tool_number")->getValue().isInt());
    EXPECT_EQ(table.getWideMessage(L"tool_number"), L"17");
    EXPECT_EQ(table.getInt(L"tool_diameterOffset"), 17);
    table.setParameter(L"tool_description", L"It's 'quoted' \u00FC");
    EXPECT_EQ(table.getWideMessage(L"tool_description"), L"It's 'quoted' \u00FC");
    EXPECT_EQ(table.getParameter(L"tool_description")->getAsMessage(), "It's 'quoted' \xC3\xBC");
    EXPECT_EQ(table.getParameter(L"tool_description")->getExpression(), L"'It''s ''quoted'' \u00FC'");
    table.setParameter(L"tool_diameter", 12.5, mm);
    EXPECT_EQ(table.getWideMessage(L"tool_diameter"), L"12.5");
    EXPECT_EQ(table.getParameter(L"tool_diameter")->getValue(), Variant(12.5));
}

TEST(ParameterTable, ExpressionsOfPlainValuesAreThoseValues)
{
    ParameterTable table(Strategy::ROTATING);
    const std::vector<std::pair<std::wstring, double>> numbers = {
        {L"1", 1},      {L"-0.5", -0.5},     {L"1234.567891", 1234.567891},
        {L"1e3", 1000}, {L"1.5e-3", 0.0015}, {L" 2 ", 2},
        {L".5", 0.5},   {L"5.", 5},          {L"+3", 3},
        {L"(4)", 4},    {L"--1", 1},         {L"1 + 1", 2},
    };
    for (const auto &[text, number] : numbers) {
        table.setParameterExpression(L"tool_diameter", text);
        EXPECT_EQ(table.getDouble(L"tool_diameter", mm), number) << text;
        EXPECT_EQ(table.getParameter(L"tool_diameter")->getExpression(), text);
    }
    for (const wchar_t *text : {L"1-", L"1e", L"e1", L".", L"1..2", L"-", L"1e999", L"0x10", L"1,5"}) {
        table.setParameterExpression(L"tool_diameter", text);
        EXPECT_FALSE(table.getParameter(L"tool_diameter")->hasValue()) << text;
        EXPECT_EQ(table.getDouble(L"tool_diameter", mm), 0) << text;
    }
    table.setParameterExpression(L"tool_live", ParameterTable::FalseExpression);
    EXPECT_FALSE(table.getBoolean(L"tool_live"));
    table.setParameterExpression(L"tool_live", ParameterTable::TrueExpression);
    EXPECT_TRUE(table.getBoolean(L"tool_live"));
    table.setParameterExpression(L"tool_vendor", ParameterTable::getStringAsExpression(L"a'b"));
    EXPECT_EQ(table.getWideMessage(L"tool_vendor"), L"a'b");
    for (const auto &[text, value] : std::vector<std::pair<std::wstring, std::wstring>>{
             {L"''", L""}, {L"''''", L"'"}, {L"'a' ", L"a"}, {L"'a''b'", L"a'b"}, {L"'abc'", L"abc"}}) {
        table.setParameterExpression(L"tool_vendor", text);
        EXPECT_EQ(table.getWideMessage(L"tool_vendor"), value) << text;
    }
}

TEST(ParameterTable, AnEmptyExpressionIsNoValueAndNoError)
{
    ParameterTable table(Strategy::ROTATING);
    for (const wchar_t *text : {L"", L"  \t\n"}) {
        table.setParameterExpression(L"tool_diameter", text);
        const auto diameter = table.getParameter(L"tool_diameter");
        EXPECT_FALSE(diameter->hasValue());
        EXPECT_FALSE(diameter->getError());
        EXPECT_EQ(diameter->getAsDouble(mm), 0);
        EXPECT_EQ(diameter->getAsWideMessage(), L"");
        EXPECT_FALSE(diameter->getAsBoolean());
        EXPECT_TRUE(diameter->getValue().isEmpty());
        EXPECT_EQ(errorOf(table, L"tool_fluteLength"), Code::NoValue);
        EXPECT_EQ(table.getParameter(L"tool_fluteLength")->getError()->message,
                  L"tool_fluteLength: tool_diameter has no value");
    }
}

TEST(ParameterTable, AValueOfTheWrongKindIsAnErrorOfTheParameter)
{
    ParameterTable table(Strategy::ROTATING);
    struct Case {
        const wchar_t *name;
        const wchar_t *expression;
        const wchar_t *message;
    };
    const Case cases[] = {
        {L"tool_diameter", L"'10'", L"tool_diameter: The value needs to be a number, not a text"},
        {L"tool_diameter", L"true", L"tool_diameter: The value needs to be a number, not a boolean"},
        {L"tool_number", L"'1'", L"tool_number: The value needs to be a number, not a text"},
        {L"tool_live", L"2", L"tool_live: The value needs to be a boolean, not a number"},
        {L"tool_live", L"0 + 1", L"tool_live: The value needs to be a boolean, not a number"},
        {L"tool_live", L"'true'", L"tool_live: The value needs to be a boolean, not a text"},
        {L"tool_vendor", L"7", L"tool_vendor: The value needs to be a text, not a number"},
        {L"tool_material", L"false", L"tool_material: The value needs to be a text, not a boolean"},
    };
    for (const auto &[name, expression, message] : cases) {
        table.setParameterExpression(name, expression);
        EXPECT_EQ(errorOf(table, name), Code::KindClash);
        EXPECT_EQ(table.getParameter(name)->getError()->message, message);
        EXPECT_FALSE(table.getParameter(name)->hasValue());
        EXPECT_THAT(namesOf(table.getParametersWithErrors()), testing::Contains(name));
        table.getParameter(name)->reset(false);
        EXPECT_TRUE(table.getParameter(name)->hasValue());
    }
}

TEST(ParameterTable, FaultsSayWhereTheyAroseAndReachWhatFollows)
{
    ParameterTable table(Strategy::ROTATING);
    struct Case {
        const wchar_t *expression;
        Code code;
        const wchar_t *message;
    };
    const Case cases[] = {
        {L"1 / 0", Code::DivisionByZero, L"tool_diameter: Division by zero"},
        {L"1 / tool_axialDistance", Code::DivisionByZero, L"tool_diameter: Division by zero"},
        {L"nonsense", Code::UnknownName, L"tool_diameter: Unknown parameter nonsense"},
        {L"tool_kerfWidth", Code::UnknownName, L"tool_diameter: Unknown parameter tool_kerfWidth"},
        {L"1 +", Code::Syntax, L"tool_diameter: Expected a value, found the end"},
        {L"tool_type + 1", Code::KindClash, L"tool_diameter: \"+\" needs two numbers, not a text and a number"},
        {L"tool_diameter", Code::Cycle, L"tool_diameter: Its value depends on itself, by way of tool_diameter"},
        {L"Math.sqrt(-1)", Code::OutsideDomain, L"tool_diameter: Math.sqrt has no value at -1"},
        {L"1e308 * 10", Code::NotFinite, L"tool_diameter: \"*\" gives a number that is too large"},
    };
    for (const auto &[expression, code, message] : cases) {
        table.setParameterExpression(L"tool_diameter", expression);
        for (const wchar_t *name : {L"tool_fluteLength", L"tool_diameter", L"tool_stepdown"}) {
            EXPECT_EQ(errorOf(table, name), code) << expression;
            EXPECT_EQ(table.getParameter(name)->getError()->message, message);
            EXPECT_EQ(table.getDouble(name, mm), 0);
        }
    }
    table.setParameter(L"tool_diameter", 4.0, mm);
    EXPECT_EQ(table.getDouble(L"tool_fluteLength", mm), 8);
}

TEST(ParameterTable, ANumberThatIsNotFiniteIsAnError)
{
    ParameterTable table(Strategy::ROTATING);
    for (const double value : {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        table.setParameter(L"tool_diameter", value, mm);
        EXPECT_EQ(errorOf(table, L"tool_diameter"), Code::NotFinite);
    }
    table.setParameter(L"tool_diameter", std::numeric_limits<double>::max(), in);
    EXPECT_EQ(errorOf(table, L"tool_fluteLength"), Code::NotFinite) << "beyond a double in millimeters";
}

TEST(ParameterTable, EveryParameterOfACycleHasTheError)
{
    const wchar_t *const ring[] = {L"tool_diameter", L"tool_cornerRadius", L"tool_shaftDiameter", L"tool_bodyLength"};
    for (std::size_t first = 0; first < std::size(ring); ++first) {
        ParameterTable table(Strategy::ROTATING);
        for (std::size_t i = 0; i < std::size(ring); ++i)
            table.setParameterExpression(ring[i], std::wstring(ring[(i + 1) % std::size(ring)]) + L" + 1");
        table.setParameterExpression(L"tool_stepdown", L"tool_diameter");
        for (std::size_t i = 0; i < std::size(ring); ++i)
            EXPECT_EQ(errorOf(table, ring[(first + i) % std::size(ring)]), Code::Cycle);
        EXPECT_EQ(errorOf(table, L"tool_stepdown"), Code::Cycle);
        table.setParameter(ring[first], 1.0, mm);
        for (std::size_t i = 1; i < std::size(ring); ++i)
            EXPECT_EQ(table.getDouble(ring[(first + i) % std::size(ring)], mm),
                      static_cast<double>(std::size(ring) - i + 1));
        EXPECT_TRUE(table.getParameter(L"tool_stepdown")->hasValue());
    }
}

TEST(ParameterTable, OnlyWhatIsAskedForMakesACycle)
{
    // The diameter of a tapered ball mill follows its corner radius, the corner radius of a ball end mill its diameter.
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_type", L"tapered mill");
    table.setParameter(L"tool_taperedType", L"tapered_ball");
    table.setParameter(L"tool_cornerRadius", 2.0, mm);
    table.setParameter(L"tool_taperAngle", 0.0, Units::UNIT_DEGREES);
    EXPECT_DOUBLE_EQ(table.getDouble(L"tool_diameter", mm), 4);
    table.setParameter(L"tool_type", L"ball end mill");
    table.getParameter(L"tool_cornerRadius")->reset(false);
    EXPECT_EQ(table.getDouble(L"tool_diameter", mm), 10);
    EXPECT_EQ(table.getDouble(L"tool_cornerRadius", mm), 5);
}

TEST(ParameterTable, ADisabledParameterKeepsItsValue)
{
    ParameterTable table(Strategy::ROTATING);
    EXPECT_FALSE(table.getParameter(L"tool_cornerRadius")->isEnabled());
    table.setParameter(L"tool_cornerRadius", 1.0, mm);
    EXPECT_EQ(table.getDouble(L"tool_cornerRadius", mm), 1);
    EXPECT_TRUE(table.getParameter(L"tool_cornerRadius")->hasValue());
    table.setParameter(L"tool_type", L"bull nose end mill");
    EXPECT_TRUE(table.getParameter(L"tool_cornerRadius")->isEnabled());
    table.setParameterExpression(L"tool_type", L"7");
    EXPECT_FALSE(table.getParameter(L"tool_cornerRadius")->isEnabled()) << "whether it is enabled cannot be told";
}

TEST(ParameterTable, ErrorsAndWarningsCountWhileEnabled)
{
    ParameterTable table(Strategy::ROTATING);
    EXPECT_THAT(table.getParametersWithErrors(), IsEmpty());
    EXPECT_THAT(table.getParametersWithWarnings(), IsEmpty());
    table.setParameter(L"tool_diameter", -1.0, mm);
    EXPECT_THAT(namesOf(table.getParametersWithErrors()), testing::Contains(L"tool_diameter"));
    table.setParameter(L"tool_type", L"holder");
    EXPECT_THAT(namesOf(table.getParametersWithErrors()), testing::Not(testing::Contains(L"tool_diameter")));

    ParameterTable mill(Strategy::ROTATING);
    mill.setParameter(L"tool_spindleSpeed", 0.0, none);
    EXPECT_THAT(namesOf(mill.getParametersWithWarnings()), ElementsAre(L"tool_spindleSpeed", L"tool_feedCutting"));
}

TEST(ParameterTable, AnEnumerationTakesOnlyWhatIsOffered)
{
    ParameterTable table(Strategy::TURNING);
    const auto insert = table.getParameter(L"tool_insertType");
    EXPECT_TRUE(insert->isValidEnumValue(L"'C'"));
    EXPECT_FALSE(insert->isValidEnumValue(L"'groove round'")) << "for grooving alone";
    EXPECT_FALSE(insert->isValidEnumValue(L"C"));
    EXPECT_FALSE(insert->isValidEnumValue(L"'c'"));
    EXPECT_FALSE(insert->isValidEnumValue(L""));
    EXPECT_FALSE(insert->isValidEnumValue(L"'"));
    EXPECT_TRUE(insert->isValidEnumValue(L"true ? 'C' : ''"));
    EXPECT_FALSE(table.getParameter(L"tool_vendor")->isValidEnumValue(L"'C'"));
    EXPECT_TRUE(table.getParameter(L"tool_holderType")->isValidEnumValue(L"''"));
    EXPECT_TRUE(table.getParameter(L"tool_type")->isValidEnumValue(L"'turning boring'"));
    EXPECT_FALSE(table.getParameter(L"tool_type")->isValidEnumValue(L"'drill'")) << "of another strategy";

    insert->set(L"groove round");
    EXPECT_THAT(namesOf(table.getParametersWithErrors()), testing::Contains(L"tool_insertType"));
    EXPECT_EQ(insert->getAsWideMessage(), L"groove round") << "the value stays";
    table.setParameter(L"tool_type", L"turning grooving");
    EXPECT_THAT(namesOf(table.getParametersWithErrors()), testing::Not(testing::Contains(L"tool_insertType")));
}

TEST(ParameterTable, ACountMustBeWhole)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameterExpression(L"tool_numberOfFlutes", L"2.5");
    EXPECT_EQ(table.getInt(L"tool_numberOfFlutes"), 3);
    EXPECT_THAT(namesOf(table.getParametersWithErrors()), ElementsAre(L"tool_numberOfFlutes"));
}

TEST(ParameterTable, DefaultUnitsOfTheKinds)
{
    using Parameter = ParameterTable::Parameter;
    EXPECT_EQ(Parameter::getDefaultKindUnit(ParameterTable::KIND_LENGTH, true), mm);
    EXPECT_EQ(Parameter::getDefaultKindUnit(ParameterTable::KIND_LENGTH, false), in);
    EXPECT_EQ(Parameter::getDefaultKindUnit(ParameterTable::KIND_VELOCITY, true), Units::UNIT_MILLIMETERS_PER_MINUTE);
    EXPECT_EQ(Parameter::getDefaultKindUnit(ParameterTable::KIND_VELOCITY, false), Units::UNIT_INCHES_PER_MINUTE);
    EXPECT_EQ(Parameter::getDefaultKindUnit(ParameterTable::KIND_PRESSURE, false), Units::UNIT_POUNDS_PER_SQUARE_INCH);
    EXPECT_EQ(Parameter::getDefaultKindUnit(ParameterTable::KIND_ANGLE, false), Units::UNIT_DEGREES);
    EXPECT_EQ(Parameter::getDefaultKindUnit(ParameterTable::KIND_NONE, true), none);
    EXPECT_EQ(Parameter::getDefaultKindUnit(ParameterTable::Kind(99), true), none);
}

TEST(ParameterTable, AFeatureFlagIsAskedAgainWhenTheParserStartsOver)
{
    Varn::FeatureFlag::setEnabled("table-test", true);
    ParameterTable table(Strategy::ROTATING);
    table.setParameterExpression(L"tool_live", L"Util.featureFlagEnabled('table-test')");
    EXPECT_TRUE(table.getBoolean(L"tool_live"));
    Varn::FeatureFlag::setEnabled("table-test", false);
    EXPECT_TRUE(table.getBoolean(L"tool_live")) << "no parameter has changed";
    table.initializeParser();
    EXPECT_FALSE(table.getBoolean(L"tool_live"));
    Varn::FeatureFlag::reset();
}

TEST(ParameterTable, AnExpressionOfNobodyIsEvaluatedOverIt)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_diameter", 1.0, in);
    const auto evaluated = [&](const wchar_t *text) { return table.evaluate(*Varn::ParameterExpression::parse(text)); };
    EXPECT_EQ(evaluated(L"tool_diameter * 2"), Varn::ExpressionValue(50.8));
    EXPECT_EQ(evaluated(L"tool_type == 'flat end mill'"), Varn::ExpressionValue(true));
    EXPECT_EQ(evaluated(L"nonsense").error().code, Code::UnknownName);
}

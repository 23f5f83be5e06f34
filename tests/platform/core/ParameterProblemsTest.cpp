// What people read of a faulty value.
#include "platform/core/ParameterTable.h"
#include "platform/utils/LocaleRegistry.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using Varn::ParameterTable;
using Varn::Strategy;
using Varn::Units;

namespace {

constexpr auto mm = Units::UNIT_MILLIMETERS;
constexpr auto in = Units::UNIT_INCHES;

struct InLanguage {
    explicit InLanguage(const char *code) { Varn::LocaleRegistry::setCountry(code); }
    ~InLanguage() { Varn::LocaleRegistry::setCountry("en"); }
};

std::vector<std::wstring> errorsOf(ParameterTable &table, const wchar_t *name)
{
    return table.getParameter(name)->getErrorMessages();
}

} // namespace

TEST(ParameterProblems, AMessageNamesTheParameterItsValueAndTheLimit)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_type", L"bull nose end mill");
    table.setParameter(L"tool_cornerRadius", 6.0, mm);
    EXPECT_THAT(
        errorsOf(table, L"tool_cornerRadius"),
        ElementsAre(L"Corner radius is 6 mm (limit: 5.01 mm). The corner radius must not exceed half the cutting "
                    L"diameter."));
    table.setParameter(L"tool_diameter", -1.0, mm);
    EXPECT_THAT(errorsOf(table, L"tool_diameter"),
                ElementsAre(L"Cutting diameter is -1 mm (limit: 0 mm). The cutting diameter must be greater than 0."));

    ParameterTable ball(Strategy::ROTATING, false);
    ball.setParameter(L"tool_type", L"ball end mill");
    ball.setParameter(L"tool_cornerRadius", 0.51, in);
    EXPECT_THAT(errorsOf(ball, L"tool_diameter"),
                ElementsAre(L"Cutting diameter is 0.5 in (limit: 1 in). The corner radius must not exceed half the "
                            L"cutting diameter."));
}

// The person who reads it has to know how far to go.
TEST(ParameterProblems, EveryErrorOfADefinitionHasALimit)
{
    for (const Strategy::Type strategy : Strategy::getToolStrategies()) {
        const ParameterTable table(strategy);
        for (const auto &parameter : table.getParameters())
            for (const ParameterTable::Constraint &constraint : parameter->getDefinition().errors)
                EXPECT_NE(parameter->message(constraint).find(L"(limit: "), std::wstring::npos)
                    << parameter->message(constraint);
    }
}

TEST(ParameterProblems, ValuesAreShownInTheUnitOfTheTable)
{
    ParameterTable table(Strategy::ROTATING, false);
    table.setParameter(L"tool_bodyLength", 10.0, mm);
    EXPECT_THAT(errorsOf(table, L"tool_bodyLength"),
                ElementsAre(L"Body length is 0.3937 in (limit: 1 in). The body length must be at least the flute "
                            L"length."));
    EXPECT_THAT(table.getParameter(L"tool_bodyLength")->getWarningMessages(),
                ElementsAre(L"Body length is 0.3937 in (limit: 1 in). The shoulder reaches into the holder."));
    EXPECT_EQ(table.getParameter(L"tool_spindleSpeed")->getAsText(), L"3000 1/min");
    EXPECT_EQ(table.getParameter(L"tool_numberOfFlutes")->getAsText(), L"4");
    EXPECT_EQ(table.getParameter(L"tool_material")->getAsText(), L"Carbide");
    EXPECT_EQ(table.getParameter(L"tool_clockwise")->getAsText(), L"Yes");
    EXPECT_EQ(table.getParameter(L"tool_rampAngle")->getAsText(), L"2\u00B0");
}

TEST(ParameterProblems, OfTwoLimitsTheBrokenOneIsTold)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_type", L"drill");
    const auto limitAt = [&](double angle) {
        table.setParameter(L"tool_tipAngle", angle, Units::UNIT_DEGREES);
        return errorsOf(table, L"tool_tipAngle");
    };
    EXPECT_THAT(limitAt(200),
                ElementsAre(L"Point angle is 200\u00B0 (limit: 180\u00B0). The tip angle must lie between "
                            L"0\u00B0 and 180\u00B0."));
    EXPECT_THAT(limitAt(-5), ElementsAre(L"Point angle is -5\u00B0 (limit: 0\u00B0). The tip angle must lie between "
                                         L"0\u00B0 and 180\u00B0."));
    EXPECT_THAT(limitAt(90), IsEmpty());
}

TEST(ParameterProblems, AConstraintBetweenOthersHasNoLimit)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_cornerRadius", 1.0, mm);
    EXPECT_THAT(
        table.getParameter(L"tool_type")->getWarningMessages(),
        ElementsAre(L"Tool type is Flat end mill. A flat end mill has no corner radius; a bull nose end mill has "
                    L"one."));
}

TEST(ParameterProblems, FaultsThatNeedNoConstraint)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameterExpression(L"tool_diameter", L"1 / 0");
    EXPECT_THAT(errorsOf(table, L"tool_diameter"),
                ElementsAre(L"Cutting diameter has no value: tool_diameter: Division by zero"));
    EXPECT_THAT(errorsOf(table, L"tool_fluteLength"),
                ElementsAre(L"Flute length has no value: tool_diameter: Division by zero"));
    table.setParameterExpression(L"tool_numberOfFlutes", L"0.5");
    EXPECT_THAT(errorsOf(table, L"tool_numberOfFlutes"),
                ElementsAre(L"Number of flutes is 0.5, but must be a whole number.",
                            L"Number of flutes is 0.5 (limit: 1). The tool must have at least one flute."));
    table.setParameter(L"tool_material", L"%1 cheese %2");
    EXPECT_THAT(errorsOf(table, L"tool_material"), ElementsAre(L"Tool material cannot be \"%1 cheese %2\" here."));
}

TEST(ParameterProblems, WhatIsDisabledOrSoundHasNoMessages)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_tipAngle", 1000.0, Units::UNIT_DEGREES);
    EXPECT_THAT(errorsOf(table, L"tool_tipAngle"), IsEmpty()) << "a flat end mill has no such angle";
    for (const auto &parameter : table.getParameters()) {
        EXPECT_THAT(parameter->getErrorMessages(), IsEmpty());
        EXPECT_THAT(parameter->getWarningMessages(), IsEmpty());
    }
}

TEST(ParameterProblems, AConstraintOverAParameterWithoutValueIsNotCounted)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_type", L"bull nose end mill");
    table.setParameter(L"tool_cornerRadius", 1.0, mm);
    table.setParameterExpression(L"tool_diameter", L"");
    EXPECT_THAT(errorsOf(table, L"tool_cornerRadius"), IsEmpty());
    table.setParameter(L"tool_cornerRadius", -1.0, mm);
    EXPECT_EQ(errorsOf(table, L"tool_cornerRadius").size(), 2u) << "what names no other one counts";
}

TEST(ParameterProblems, MessagesFollowTheLanguage)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_diameter", -1.0, in);
    const InLanguage german("de");
    EXPECT_THAT(
        errorsOf(table, L"tool_diameter"),
        ElementsAre(L"Schneidendurchmesser ist -25.4 mm (Grenze: 0 mm). Der Schneidendurchmesser muss gr\u00F6\u00DF"
                    L"er als 0 sein."));
}

// The definitions at work: every type of tool is sound at its defaults, and every constraint finds what it is there
// for.
#include "platform/core/LinkedParameter.h"
#include "platform/core/ParameterExpression.h"
#include "platform/core/ParameterTable.h"
#include "platform/core/ToolSpecification.h"
#include "platform/core/VarnParameters.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <set>
#include <string>
#include <vector>

using testing::IsEmpty;
using Varn::ExpressionValue;
using Varn::LinkedParameter;
using Varn::ParameterExpression;
using Varn::ParameterTable;
using Varn::Strategy;
using Varn::ToolGeometry;
using Varn::ToolSpecification;
using Varn::Units;
using Varn::VarnParameters;

namespace {

using Parameters = std::vector<std::shared_ptr<ParameterTable::Parameter>>;
using Constraint = ParameterTable::Constraint;

std::string narrow(std::wstring_view text)
{
    return {text.begin(), text.end()};
}

/// "tool_diameter = -1 in flat end mill (inch)" for each.
std::vector<std::string> told(const Parameters &parameters, ParameterTable &table)
{
    std::vector<std::string> texts;
    for (const auto &parameter : parameters)
        texts.push_back(narrow(parameter->getName()) + " = " + parameter->getAsMessage() + " in " +
                        narrow(table.getWideMessage(L"tool_type")) + (table.isMetric() ? "" : " (inch)"));
    return texts;
}

std::vector<ToolGeometry::Type> types()
{
    std::vector<ToolGeometry::Type> all;
    for (int type = 1; type <= 48; ++type)
        all.push_back(ToolGeometry::Type(type));
    return all;
}

ParameterTable tableOf(ToolGeometry::Type type, bool metric)
{
    ParameterTable table(ToolSpecification::getStrategyType(type), metric);
    table.setParameter(L"tool_type", ToolSpecification::getToolTypeAsWideString(type));
    return table;
}

/// The names in an expression.
std::vector<std::wstring> namesIn(const std::wstring &expression)
{
    const auto read = ParameterExpression::parse(expression);
    EXPECT_TRUE(read) << narrow(expression);
    return read ? read->names() : std::vector<std::wstring>();
}

bool holds(const ParameterTable &table, const std::wstring &expression)
{
    return table.evaluate(*ParameterExpression::parse(expression)) == ExpressionValue(true);
}

/// Tables in which parameters that others depend on stand at their various values: every type of tool, with each of the
/// enumerations and switches that enable something.
std::vector<ParameterTable> variants(bool metric)
{
    const std::vector<std::function<void(ParameterTable &)>> changes = {
        [](ParameterTable &) {},
        [](ParameterTable &t) { t.setParameter(L"tool_useFeedPerRevolution", true); },
        [](ParameterTable &t) { t.setParameter(L"tool_useFeedPerRevolution", false); },
        [](ParameterTable &t) { t.setParameter(L"tool_taperedType", L"tapered_ball"); },
        [](ParameterTable &t) { t.setParameter(L"tool_threadTipType", L"flat"); },
        [](ParameterTable &t) { t.setParameter(L"tool_threadTipType", L"round"); },
        [](ParameterTable &t) { t.setParameter(L"holder_attached", true); },
        [](ParameterTable &t) {
            t.setParameter(L"tool_block_attached", true);
            t.setParameter(L"tool_block_live", true);
        },
        [](ParameterTable &t) { t.setParameter(L"tool_live", true); },
        [](ParameterTable &t) { t.setParameter(L"use_tool_stepdown", true); },
        [](ParameterTable &t) { t.setParameter(L"use_tool_stepover", true); },
        [](ParameterTable &t) { t.setParameter(L"use_tool_depthOfCut", true); },
        [](ParameterTable &t) { t.setParameter(L"use_tool_presetProgram", true); },
        [](ParameterTable &t) { t.setParameter(L"tool_presetMaterialUseHardness", true); },
        [](ParameterTable &t) { t.setParameter(L"tool_useConstantSurfaceSpeed", false); },
        [](ParameterTable &t) { t.setParameter(L"tool_insertType", L"custom"); },
        [](ParameterTable &t) { t.setParameter(L"tool_holderType", L"custom"); },
    };
    std::vector<ParameterTable> tables;
    for (const ToolGeometry::Type type : types())
        for (const auto &change : changes) {
            ParameterTable table = tableOf(type, metric);
            try {
                change(table);
            } catch (const std::exception &) {
                continue; // another strategy has that
            }
            tables.push_back(std::move(table));
        }
    return tables;
}

/// Changes one of the parameters that a constraint speaks of until it is broken. False when no change does it.
bool breakIt(ParameterTable &table, const Constraint &constraint)
{
    for (const std::wstring &name : namesIn(constraint.expression)) {
        const ParameterTable::Parameter &before = *table.getParameter(name);
        if (before.getType() == ParameterTable::TYPE_ENUM || before.getType() == ParameterTable::TYPE_BOOLEAN)
            continue;
        const double value = before.getAsDouble(Units::UNIT_NONE);
        for (const double other : {-1.0, 0.0, value * 0.4, value * 3 + 1, value * 1000 + 1000, -1e6}) {
            ParameterTable changed = table;
            changed.setParameter(name, other, Units::UNIT_NONE);
            if (!holds(changed, constraint.expression)) {
                table = changed;
                return true;
            }
        }
    }
    return false;
}

bool reports(const Parameters &parameters, const std::wstring &name)
{
    return std::any_of(parameters.begin(), parameters.end(), [&](const auto &p) { return p->getName() == name; });
}

using List = Parameters (ParameterTable::*)();
using Messages = std::vector<std::wstring> (ParameterTable::Parameter::*)() const;

/// Looks in all variants for one that takes the constraint, and breaks it there; what is wrong with that otherwise.
std::string tryOut(const std::vector<ParameterTable> &tables, Strategy::Type strategy, const std::wstring &name,
                   const Constraint &constraint, List list, Messages messages)
{
    std::string why = "never enabled";
    for (const ParameterTable &variant : tables) {
        ParameterTable table = variant;
        if (table.getStrategy() != strategy || !table.getParameter(name)->isEnabled())
            continue;
        if (!holds(table, constraint.expression) || reports((table.*list)(), name))
            return "does not hold at the defaults of " + narrow(table.getWideMessage(L"tool_type"));
        if (!breakIt(table, constraint)) {
            why = "never broken";
            continue;
        }
        const auto broken = table.getParameter(name);
        if (!broken->isEnabled()) {
            why = "disabled by what breaks it";
            continue;
        }
        if (!reports((table.*list)(), name))
            return "not reported";
        const std::wstring message = broken->message(constraint);
        const auto shown = (*broken.*messages)();
        if (std::find(shown.begin(), shown.end(), message) == shown.end())
            return "its message is not shown";
        if (message.find(broken->getDefinition().fullTitle.asWideString()) != 0 ||
            message.find(broken->getAsText()) == std::wstring::npos ||
            message.find(constraint.message.asWideString()) == std::wstring::npos)
            return "its message does not tell: " + narrow(message);
        return {};
    }
    return why;
}

} // namespace

TEST(ParameterConstraints, EveryTypeOfToolIsSoundAtItsDefaults)
{
    for (const bool metric : {true, false})
        for (const ToolGeometry::Type type : types()) {
            ParameterTable table = tableOf(type, metric);
            EXPECT_THAT(told(table.getParametersWithErrors(), table), IsEmpty());
            EXPECT_THAT(told(table.getParametersWithWarnings(), table), IsEmpty());
            for (const auto &parameter : table.getParameters())
                EXPECT_TRUE(parameter->hasValue()) << narrow(parameter->getError()->message) << ' ' << type;
        }
}

TEST(ParameterConstraints, EveryTypeOfToolFollowsItsDiameterAndItsSpeeds)
{
    int followed = 0;
    int linked = 0;
    for (const bool metric : {true, false})
        for (const ToolGeometry::Type type : types()) {
            ParameterTable table = tableOf(type, metric);
            const auto isEnabled = [&](const wchar_t *name) {
                return table.hasParameter(name) && table.getParameter(name)->isEnabled();
            };
            const auto of = [&](const wchar_t *name) { return table.getDouble(name, Units::UNIT_NONE); };
            if (isEnabled(L"tool_diameter") && isEnabled(L"tool_fluteLength")) {
                const double before = of(L"tool_fluteLength");
                LinkedParameter::edit(table, L"tool_diameter", of(L"tool_diameter") * 1.5, Units::UNIT_NONE);
                const auto flute = table.getParameter(L"tool_fluteLength");
                const auto byDefault = ParameterExpression::parse(flute->getSystemDefaultExpression());
                EXPECT_EQ(table.evaluate(*byDefault), ExpressionValue(of(L"tool_fluteLength"))) << type;
                followed += of(L"tool_fluteLength") != before;
            }
            if (isEnabled(L"tool_surfaceSpeed") && isEnabled(L"tool_spindleSpeed")) {
                LinkedParameter::edit(table, L"tool_surfaceSpeed", 700.0, Units::UNIT_NONE);
                EXPECT_DOUBLE_EQ(of(L"tool_spindleSpeed"),
                                 LinkedParameter::calculateSpindleSpeed(700, of(L"tool_diameter")))
                    << type;
                ++linked;
            }
            EXPECT_THAT(told(table.getParametersWithErrors(), table), IsEmpty());
        }
    EXPECT_EQ(followed, 2 * 35) << "the rotating tools that have flutes, in both units";
    EXPECT_EQ(linked, 2 * 35);
}

TEST(ParameterConstraints, EverySetOfParametersIsSoundAtItsDefaults)
{
    for (const bool metric : {true, false})
        for (const Strategy::Type strategy : Strategy::getToolStrategies()) {
            if (strategy == Strategy::SHARED) // no tool has that alone, so no type is of it
                continue;
            ParameterTable table(strategy, metric);
            EXPECT_THAT(told(table.getParametersWithErrors(), table), IsEmpty()) << strategy;
            EXPECT_THAT(told(table.getParametersWithWarnings(), table), IsEmpty()) << strategy;
        }
}

TEST(ParameterConstraints, SwitchesLeaveEveryTypeOfToolSound)
{
    for (const bool metric : {true, false})
        for (ParameterTable &table : variants(metric)) {
            const std::wstring insert =
                table.hasParameter(L"tool_insertType") ? table.getWideMessage(L"tool_insertType") : std::wstring();
            const Parameters errors = table.getParametersWithErrors();
            const std::wstring type = table.getWideMessage(L"tool_type");
            if (insert == L"custom" && (type == L"turning threading" || type == L"turning grooving"))
                EXPECT_TRUE(reports(errors, L"tool_insertType")) << "there is no custom insert for " << narrow(type);
            else
                EXPECT_THAT(told(errors, table), IsEmpty());
            EXPECT_THAT(told(table.getParametersWithWarnings(), table), IsEmpty());
        }
}

TEST(ParameterConstraints, EachIsMetAndBrokenAndThenTold)
{
    using Name = std::pair<std::wstring, std::wstring>;
    for (const bool metric : {true, false}) {
        const std::vector<ParameterTable> tables = variants(metric);
        std::set<Name> sound;
        std::set<Name> unused; // what all tools share need not be enabled in every strategy
        for (const Strategy::Type strategy :
             {Strategy::ROTATING, Strategy::TURNING, Strategy::JET, Strategy::DEPOSITING})
            for (const int number : VarnParameters::getParametersWithFlag(38, strategy)) {
                const auto &definition = VarnParameters::getDefinition(number, strategy, metric);
                const auto tryAll = [&](const std::vector<Constraint> &constraints, List list, Messages messages) {
                    for (const Constraint &constraint : constraints) {
                        const Name name(definition.id, constraint.expression);
                        const std::string fault = tryOut(tables, strategy, definition.id, constraint, list, messages);
                        (fault == "never enabled" ? unused : sound).insert(name);
                        if (fault != "never enabled") {
                            EXPECT_EQ(fault, "") << strategy << ' ' << narrow(definition.id + L": " + name.second);
                        }
                    }
                };
                tryAll(definition.errors, &ParameterTable::getParametersWithErrors,
                       &ParameterTable::Parameter::getErrorMessages);
                tryAll(definition.warnings, &ParameterTable::getParametersWithWarnings,
                       &ParameterTable::Parameter::getWarningMessages);
            }
        for (const Name &name : unused)
            EXPECT_TRUE(sound.contains(name)) << narrow(name.first + L": " + name.second) << " is enabled nowhere";
        EXPECT_GT(sound.size(), 135u);
    }
}

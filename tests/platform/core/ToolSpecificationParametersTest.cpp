#include "RandomToolRecord.h"
#include "platform/core/ParameterTable.h"
#include "platform/core/ToolSpecification.h"
#include "platform/core/VarnParameters.h"
#include "platform/nc/RecordUnits.h"
#include "platform/utils/Messages.h"

#include <gmock/gmock.h>

#include <limits>

using TestSupport::RandomToolRecord;
using Varn::NCUnit;
using Varn::ParameterTable;
using Varn::Strategy;
using Varn::ToolGeometry;
using Varn::ToolRecordPart;
using Varn::ToolSpecification;
using Varn::Units;
using Varn::VarnParameters;

namespace {

using Options = ToolSpecification::ComparisonOptions;

std::wstring nameOf(const ToolSpecification &tool, const ToolRecordPart &part, std::string_view name)
{
    const std::string_view stem = ToolGeometry::isTurning(tool.getType()) ? part.turning : part.stem;
    std::wstring whole(stem.begin(), stem.end());
    return whole.append(name.begin(), name.end());
}

bool isOfTheKind(const ToolSpecification &tool, unsigned kinds)
{
    const auto kind = Varn::getToolPresetKind(tool.getType());
    return kinds == Varn::everyKind || (kind && (kinds & Varn::presetKindBit(*kind)));
}

} // namespace

TEST(ToolSpecificationParameters, ARecordComesBackFromItsTable)
{
    RandomToolRecord random(31);
    for (int round = 0; round < 4; ++round) {
        for (int type = 1; type <= 48; ++type) {
            const auto unit = NCUnit::Unit((round + type) % 2);
            const ToolSpecification tool = random.record(ToolGeometry::Type(type), unit);
            const ParameterTable table = tool.createParameterTable();

            // A record that differs in everything that the table holds, and in nothing else.
            ToolSpecification other = tool;
            Varn::forEachRecordField([&](const ToolRecordPart &part, const auto &access, const auto &field) {
                const bool isHeld = field.isParameter && isOfTheKind(tool, field.kinds) &&
                                    table.hasParameter(nameOf(tool, part, field.name));
                if (isHeld && field.name != "holder_attached" && field.name != "attached")
                    random.change(access(other).*field.member);
            });
            other.setType(ToolGeometry::TYPE_NONE);
            other.setUnit(unit == NCUnit::inches ? NCUnit::millimeters : NCUnit::inches);
            EXPECT_FALSE(other.isSame(tool, Options())) << type;
            other.syncFromParameters(table);
            EXPECT_TRUE(other.isSame(tool, Options())) << type << ": " << round;
        }
    }
}

TEST(ToolSpecificationParameters, EveryParameterOfATypeIsHeldOrDerived)
{
    // What no record holds: sizes computed from others, choices within the preset that no file keeps, and the two that
    // a record has as type and unit.
    const std::set<std::wstring> notHeld{L"tool_type",
                                         L"tool_unit",
                                         L"tool_feedPerTooth",
                                         L"tool_rampType",
                                         L"tool_finishingStepdown",
                                         L"tool_finishingStepover",
                                         L"use_tool_stepdown",
                                         L"use_tool_stepover",
                                         L"use_tool_depthOfCut",
                                         L"use_tool_presetProgram",
                                         L"tool_surfaceSpeed",
                                         L"tool_feedPerRevolution"};
    RandomToolRecord random(5);
    for (int type = 1; type <= 48; ++type) {
        const ToolSpecification tool = random.record(ToolGeometry::Type(type), NCUnit::millimeters);
        ParameterTable table(ToolSpecification::getStrategyType(tool.getType()));
        table.setParameter(L"tool_type", tool.getToolTypeAsWideString());
        std::set<std::wstring> enabled;
        for (const auto &parameter : table.getParameters()) {
            if (parameter->isEnabled())
                enabled.insert(parameter->getName());
        }
        Varn::forEachRecordField([&](const ToolRecordPart &part, const auto &, const auto &field) {
            if (field.isParameter && isOfTheKind(tool, field.kinds))
                enabled.erase(nameOf(tool, part, field.name));
        });
        for (const std::wstring &name : notHeld)
            enabled.erase(name);
        EXPECT_THAT(enabled, testing::IsEmpty()) << tool.getToolTypeAsString(tool.getType());
    }
}

TEST(ToolSpecificationParameters, EveryNumberIsConvertedAsTheUnitsOfItsParameterAre)
{
    std::set<std::string_view> checked;
    for (const auto type :
         {ToolGeometry::TYPE_DRILL, ToolGeometry::TYPE_FLAT_END_MILL, ToolGeometry::TYPE_PROBE,
          ToolGeometry::TYPE_TURNING_GENERAL, ToolGeometry::TYPE_LASER_CUTTER, ToolGeometry::TYPE_LASER_POWDER}) {
        ToolSpecification tool;
        tool.setType(type);
        const ParameterTable table = tool.createParameterTable();
        Varn::forEachRecordField([&](const ToolRecordPart &part, const auto &access, const auto &field) {
            using Value = std::remove_cvref_t<decltype(access(tool).*field.member)>;
            const auto parameter = table.getParameterNoThrow(nameOf(tool, part, field.name));
            if (!parameter || !(std::is_same_v<Value, double> || std::is_same_v<Value, std::optional<double>>))
                return;
            const auto unit = [&](bool metric) {
                return ParameterTable::Parameter::getDefaultKindUnit(parameter->getKind(), metric);
            };
            const double factor = Units::getUnitConversionFactorNoThrow(unit(false), unit(true));
            EXPECT_NEAR(Varn::inUnit(1, field.quantity, NCUnit::inches, NCUnit::millimeters), factor, 1e-12 * factor)
                << field.name;
            checked.insert(field.name);
        });
    }
    EXPECT_GT(checked.size(), 90u);
}

TEST(ToolSpecificationParameters, NumbersAreInTheUnitOfTheTable)
{
    ParameterTable table(Strategy::ROTATING, false);
    table.setParameter(L"tool_type", L"ball end mill");
    table.setParameter(L"tool_diameter", 12.7, Units::UNIT_MILLIMETERS);
    table.setParameter(L"tool_feedCutting", 40.0, Units::UNIT_INCHES_PER_MINUTE);
    ToolSpecification tool;
    tool.syncFromParameters(table);
    EXPECT_EQ(tool.getUnit(), NCUnit::inches);
    EXPECT_EQ(tool.getType(), ToolGeometry::TYPE_BALL_END_MILL);
    EXPECT_DOUBLE_EQ(tool.cutting().diameter, 0.5);
    EXPECT_DOUBLE_EQ(tool.cutting().cornerRadius, 0.25);
    EXPECT_DOUBLE_EQ(tool.currentValues().feedCutting, 40);

    tool.convertToUnit(NCUnit::millimeters);
    const ParameterTable metric = tool.createParameterTable();
    EXPECT_TRUE(metric.isMetric());
    EXPECT_EQ(metric.getWideMessage(L"tool_unit"), L"millimeters");
    EXPECT_DOUBLE_EQ(metric.getDouble(L"tool_diameter", Units::UNIT_MILLIMETERS), 12.7);
    EXPECT_DOUBLE_EQ(metric.getDouble(L"tool_feedCutting", Units::UNIT_INCHES_PER_MINUTE), 40);
}

TEST(ToolSpecificationParameters, ATableWithoutParametersLeavesTheRecord)
{
    RandomToolRecord random(2);
    const ToolSpecification tool = random.record(ToolGeometry::TYPE_FORM_MILL, NCUnit::millimeters);
    ToolSpecification synced = tool;
    synced.syncFromParameters(ParameterTable());
    EXPECT_TRUE(synced.isSame(tool, Options()));
    ParameterTable table;
    tool.syncToParameters(table);
    EXPECT_TRUE(table.getParameters().empty());
}

TEST(ToolSpecificationParameters, WhatIsNoLongerAttachedGoes)
{
    ToolSpecification mill;
    mill.setType(ToolGeometry::TYPE_FLAT_END_MILL);
    mill.setHolder({{10, 20}});
    mill.setHolderGUID(L"holder");
    ParameterTable table = mill.createParameterTable();
    EXPECT_TRUE(table.getBoolean(L"holder_attached"));
    mill.syncFromParameters(table);
    EXPECT_EQ(mill.getHolder().size(), 1u);
    table.setParameter(L"holder_attached", false);
    mill.syncFromParameters(table);
    EXPECT_FALSE(mill.hasHolder());
    EXPECT_TRUE(mill.getHolder().empty());
    EXPECT_EQ(mill.getHolderGUID(), L"");

    ToolSpecification lathe;
    lathe.setType(ToolGeometry::TYPE_TURNING_GENERAL);
    lathe.attachToolBlock();
    lathe.setToolBlockGUID(L"block");
    ParameterTable turning = lathe.createParameterTable();
    lathe.syncFromParameters(turning);
    EXPECT_EQ(lathe.getToolBlockGUID(), L"block");
    turning.setParameter(L"tool_block_attached", false);
    lathe.syncFromParameters(turning);
    EXPECT_FALSE(lathe.hasAttachedToolBlock());
    EXPECT_EQ(lathe.getToolBlockGUID(), L"");
}

TEST(ToolSpecificationParameters, AHolderKeepsItsOutline)
{
    ToolSpecification holder;
    holder.setHolder({{10, 20}}); // its type is not known yet
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_type", L"holder");
    table.setParameter(L"holder_attached", holder.hasHolder());
    holder.syncFromParameters(table);
    EXPECT_EQ(holder.getType(), ToolGeometry::TYPE_HOLDER);
    EXPECT_EQ(holder.getHolder().size(), 1u);
    EXPECT_FALSE(holder.hasHolder());
}

TEST(ToolSpecificationParameters, AValueThatTheRecordHasNoWordForLeavesWhatItHas)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_type", L"drill");
    table.setParameter(L"tool_material", L"wood");
    table.setParameter(L"tool_coolant", L"beer");
    ToolSpecification tool;
    tool.nc().material = Varn::NCTool::MATERIAL_HSS;
    tool.currentValues().coolant = Varn::NCTool::COOLANT_AIR;
    tool.syncFromParameters(table);
    EXPECT_EQ(tool.nc().material, Varn::NCTool::MATERIAL_HSS);
    EXPECT_EQ(tool.currentValues().coolant, Varn::NCTool::COOLANT_AIR);

    table.setParameter(L"tool_type", L"no such type");
    tool.syncFromParameters(table);
    EXPECT_EQ(tool.getType(), ToolGeometry::TYPE_NONE);
}

TEST(ToolSpecificationParameters, ACoolantThatNobodyChoseLeavesTheDefault)
{
    ToolSpecification tool;
    tool.setType(ToolGeometry::TYPE_DRILL);
    EXPECT_EQ(tool.createParameterTable().getWideMessage(L"tool_coolant"), L"flood");
}

TEST(ToolSpecificationParameters, ASizeThatNobodyGaveLeavesTheDefault)
{
    ToolSpecification tool;
    tool.setType(ToolGeometry::TYPE_FLAT_END_MILL);
    tool.setCutterDiameter(8);
    tool.cutting().bodyLength = 30;
    tool.cutting().shaftDiameter = 10;
    ParameterTable table = tool.createParameterTable();
    EXPECT_TRUE(table.getParameter(L"tool_overallLength")->isDefault());
    EXPECT_DOUBLE_EQ(table.getDouble(L"tool_overallLength", Units::UNIT_MILLIMETERS), tool.getOverallLength());
    EXPECT_DOUBLE_EQ(table.getDouble(L"tool_shoulderDiameter", Units::UNIT_MILLIMETERS), tool.getShoulderDiameter());
}

TEST(ToolSpecificationParameters, ASizeWithoutAValueIsOneThatNobodyGave)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_type", L"flat end mill");
    table.setParameterExpression(L"tool_overallLength", L"");
    table.setParameterExpression(L"tool_diameter", L"");
    ToolSpecification tool;
    tool.syncFromParameters(table);
    EXPECT_FALSE(tool.cutting().overallLength.has_value());
    EXPECT_EQ(tool.cutting().diameter, 0);
}

TEST(ToolSpecificationParameters, AnOptionalValueFollowsItsSwitch)
{
    ToolSpecification tool;
    tool.setType(ToolGeometry::TYPE_FLAT_END_MILL);
    ParameterTable table = tool.createParameterTable();
    EXPECT_FALSE(table.getBoolean(L"use_tool_stepdown"));
    tool.currentValues().stepdown = 2;
    tool.syncToParameters(table);
    EXPECT_TRUE(table.getBoolean(L"use_tool_stepdown"));
    EXPECT_EQ(table.getDouble(L"tool_stepdown", Units::UNIT_MILLIMETERS), 2);
    table.setParameter(L"use_tool_stepdown", false);
    tool.syncFromParameters(table);
    EXPECT_FALSE(tool.currentValues().stepdown.has_value());
}

TEST(ToolSpecificationParameters, ExpressionsGoAlongWhenAskedFor)
{
    ToolSpecification tool;
    tool.setType(ToolGeometry::TYPE_BULL_NOSE_END_MILL);
    tool.setCutterDiameter(10);
    tool.setExpression(L"tool_cornerRadius", L"tool_diameter / 4");
    tool.setExpression(L"no_such_parameter", L"1");
    ParameterTable plain = tool.createParameterTable();
    EXPECT_EQ(plain.getDouble(L"tool_cornerRadius", Units::UNIT_MILLIMETERS), 0);
    ParameterTable table = tool.createParameterTable(true);
    EXPECT_DOUBLE_EQ(table.getDouble(L"tool_cornerRadius", Units::UNIT_MILLIMETERS), 2.5);

    ToolSpecification without;
    without.syncFromParameters(table);
    EXPECT_TRUE(without.getExpressions().empty());
    EXPECT_DOUBLE_EQ(without.cutting().cornerRadius, 2.5);
    ToolSpecification with;
    with.syncFromParameters(table, true);
    EXPECT_THAT(with.getExpressions(), testing::ElementsAre(testing::Pair(L"tool_cornerRadius", L"tool_diameter / 4")));
}

TEST(ToolSpecificationParameters, ExpressionsMaySpeakOfTheConesOfAHolder)
{
    ToolSpecification holder;
    holder.setType(ToolGeometry::TYPE_HOLDER);
    holder.setUnit(NCUnit::inches);
    holder.setHolder({{0, 1}, {2, 1.5}, {0, 3}, {4, 3}});
    holder.setExpression(L"tool_holderGaugeLength", L"segment_1_height + segment_2_height");
    const ParameterTable table = holder.createParameterTable(true);
    EXPECT_EQ(table.getDouble(L"tool_holderGaugeLength", Units::UNIT_INCHES), 6);
    EXPECT_EQ(table.getDouble(L"segment_1_lower_diameter", Units::UNIT_INCHES), 1);
    EXPECT_EQ(table.getDouble(L"segment_1_upper_diameter", Units::UNIT_INCHES), 1.5);
    EXPECT_DOUBLE_EQ(table.getDouble(L"segment_2_lower_diameter", Units::UNIT_MILLIMETERS), 76.2);
    EXPECT_FALSE(table.hasParameter(L"segment_3_height"));
    EXPECT_FALSE(holder.createParameterTable().hasParameter(L"segment_1_height"));
}

TEST(ToolSpecificationParameters, AnExpressionThatIsNoneIsAFaultOfItsParameter)
{
    ToolSpecification tool;
    tool.setType(ToolGeometry::TYPE_DRILL);
    tool.setExpression(L"tool_diameter", L"1 +");
    tool.setExpression(L"tool_fluteLength", L"tool_fluteLength");
    tool.setExpression(L"tool_bodyLength", std::wstring(100'000, L'('));
    ParameterTable table = tool.createParameterTable(true);
    ToolSpecification back;
    back.syncFromParameters(table, true);
    EXPECT_EQ(back.cutting().diameter, 0);
    EXPECT_EQ(back.cutting().fluteLength, 0);
    EXPECT_EQ(back.cutting().bodyLength, 0);
    EXPECT_FALSE(table.getParametersWithErrors().empty());
}

TEST(ToolSpecificationParameters, SizesThatFollowFromTheShapeAreTheDefaultsOfTheirParameters)
{
    const struct {
        const wchar_t *parameter;
        double (*get)(const ToolSpecification &);
    } rows[] = {
        {L"tool_overallLength", [](const auto &tool) { return tool.getOverallLength(); }},
        {L"tool_shoulderDiameter", [](const auto &tool) { return tool.getShoulderDiameter(); }},
        {L"tool_maximumCuttingDiameter", [](const auto &tool) { return tool.getMaximumCutterDiameter(); }},
        {L"tool_profileRadius", [](const auto &tool) { return tool.getProfileRadius(); }},
        {L"tool_upperRadius", [](const auto &tool) { return tool.getUpperRadius(); }},
        {L"tool_lowerRadius", [](const auto &tool) { return tool.getLowerRadius(); }},
        {L"tool_chamferWidth", [](const auto &tool) { return tool.getChamferWidth(); }},
        {L"tool_chamferAngle", [](const auto &tool) { return tool.getChamferAngle().getDegrees(); }},
        {L"tool_assemblyGaugeLength", [](const auto &tool) { return tool.getAssemblyGaugeLength(); }},
    };
    RandomToolRecord random(77);
    for (int type = 1; type <= 48; ++type) {
        ToolSpecification tool = random.record(ToolGeometry::Type(type), NCUnit::Unit(type % 2));
        if (ToolGeometry::isTurning(tool.getType()))
            continue; // no parameter of these is theirs, but for the overall length, which is a size of the insert
        Varn::forEachRecordField([&](const ToolRecordPart &part, const auto &access, const auto &field) {
            auto &member = access(tool).*field.member;
            if constexpr (std::is_same_v<std::remove_cvref_t<decltype(member)>, std::optional<double>>) {
                if (part.element == "cutting")
                    member.reset();
            }
        });
        tool.cutting().taperAngle = 7;
        tool.cutting().threadProfileAngle = 55;
        tool.removeShaft();
        const ParameterTable table = tool.createParameterTable();
        for (const auto &row : rows) {
            const auto parameter = table.getParameterNoThrow(row.parameter);
            if (!parameter || !parameter->isEnabled())
                continue;
            const auto unit = ParameterTable::Parameter::getDefaultKindUnit(parameter->getKind(), table.isMetric());
            EXPECT_NEAR(row.get(tool), parameter->getAsDouble(unit), 1e-9)
                << type << " " << Varn::Messages::fromWideUnicodeToUTF8(row.parameter);
        }
    }
}

TEST(ToolSpecificationParameters, AnExpressionThatIsNoLongerInTheTableGoes)
{
    ToolSpecification tool;
    tool.setType(ToolGeometry::TYPE_BULL_NOSE_END_MILL);
    tool.setExpression(L"tool_cornerRadius", L"tool_diameter / 4");
    tool.setExpression(L"tool_fluteLength", L"3 * tool_diameter");
    tool.setExpression(L"tool_bodyLength", L"40 + 2");
    tool.setExpression(L"of_another_program", L"1");
    ParameterTable table = tool.createParameterTable(true);
    table.setParameter(L"tool_cornerRadius", 1.0, Units::UNIT_MILLIMETERS);
    table.getParameter(L"tool_fluteLength")->reset(false);
    tool.syncFromParameters(table, true);
    EXPECT_THAT(tool.getExpressions(), testing::ElementsAre(testing::Pair(L"of_another_program", L"1"),
                                                            testing::Pair(L"tool_bodyLength", L"40 + 2")));
    EXPECT_EQ(tool.cutting().cornerRadius, 1);
    EXPECT_EQ(tool.createParameterTable(true).getDouble(L"tool_cornerRadius", Units::UNIT_MILLIMETERS), 1);
}

TEST(ToolSpecificationParameters, ANumberThatIsNoneIsAFaultAndNoExpression)
{
    for (const double none : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                              -std::numeric_limits<double>::infinity()}) {
        ToolSpecification tool;
        tool.setType(ToolGeometry::TYPE_DRILL);
        tool.setUnit(NCUnit::inches);
        tool.cutting().diameter = none;
        tool.cutting().overallLength = none;
        tool.setHolder({{none, none}});
        ParameterTable table = tool.createParameterTable(true);
        EXPECT_FALSE(table.getParametersWithErrors().empty());
        ToolSpecification back;
        back.syncFromParameters(table, true);
        EXPECT_THAT(back.getExpressions(), testing::IsEmpty());
        EXPECT_EQ(back.cutting().diameter, 0);
        EXPECT_FALSE(back.cutting().overallLength.has_value());
    }
}

TEST(ToolSpecificationParameters, ATableTakesEveryValueOfEveryEnumeration)
{
    RandomToolRecord random(90);
    for (const auto type : {ToolGeometry::TYPE_TAPERED_MILL, ToolGeometry::TYPE_THREAD_MILL,
                            ToolGeometry::TYPE_TURNING_GENERAL, ToolGeometry::TYPE_TOOL_BLOCK}) {
        for (int value = -2; value < 60; ++value) {
            ToolSpecification tool = random.record(type, NCUnit::millimeters);
            tool.cutting().taperedType = ToolGeometry::TaperedType(value);
            tool.cutting().threadTipType = ToolGeometry::ThreadTipType(value);
            tool.cutting().coolantSupport = ToolGeometry::CoolantSupport(value);
            tool.nc().material = Varn::NCTool::Material(value);
            tool.toolBlock().orientationType = Varn::ToolBlock::OrientationType(value);
            auto &turning = tool.getTurningParameterization();
            turning.insertType = ToolGeometry::InsertType(value);
            turning.holderType = ToolGeometry::HolderType(value);
            turning.hand = ToolGeometry::Hand(value);
            turning.compensation = ToolGeometry::CompensationMode(value);
            ToolSpecification back = tool;
            back.syncFromParameters(tool.createParameterTable());
            const bool isKnown = value >= 0;
            EXPECT_EQ(back.nc().material, isKnown && value < 10 ? value : 0);
            if (type != ToolGeometry::TYPE_TURNING_GENERAL)
                continue;
            EXPECT_EQ(back.getTurningParameterization().insertType, isKnown && value < 23 ? value : 0);
            EXPECT_EQ(back.getTurningParameterization().holderType, isKnown && value < 44 ? value : 0);
            EXPECT_EQ(back.getTurningParameterization().compensation, isKnown && value < 4 ? value : 0);
            EXPECT_EQ(back.getTurningParameterization().hand, ToolGeometry::HAND_RIGHT);
        }
    }
}

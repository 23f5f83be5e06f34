#include "platform/core/ToolFeedsAndSpeedsPreset.h"

#include "RandomToolRecord.h"
#include "platform/core/ParameterTable.h"
#include "platform/core/ToolSpecification.h"
#include "platform/core/VarnParameters.h"
#include "platform/tool/Exception.h"

#include <gmock/gmock.h>

#include <map>
#include <set>

using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using TestSupport::RandomToolRecord;
using Varn::NCUnit;
using Varn::ParameterTable;
using Varn::Strategy;
using Varn::ToolFeedsAndSpeedsPreset;
using Varn::ToolFeedsAndSpeedsPresetId;
using Varn::ToolGeometry;
using Varn::ToolPresetKind;
using Varn::ToolSpecification;
using Varn::Units;

namespace {

using Metadata = ToolFeedsAndSpeedsPreset::Metadata;

const ToolGeometry::Type typeOfKind[] = {
    ToolGeometry::TYPE_FLAT_END_MILL,     ToolGeometry::TYPE_BORING_HEAD, ToolGeometry::TYPE_DRILL,
    ToolGeometry::TYPE_TURNING_GENERAL,   ToolGeometry::TYPE_PROBE,       ToolGeometry::TYPE_LASER_CUTTER,
    ToolGeometry::TYPE_ELECTRIC_ARC_WIRE,
};

ToolSpecification toolOf(ToolGeometry::Type type, unsigned seed = 1)
{
    return RandomToolRecord(seed).record(type, NCUnit::millimeters);
}

Metadata named(const wchar_t *name)
{
    return {ToolFeedsAndSpeedsPresetId(std::wstring(L"id of ") + name), name, L""};
}

} // namespace

TEST(ToolFeedsAndSpeedsPreset, EachTypeHasTheKindOfItsProcess)
{
    const std::map<int, ToolPresetKind> others{
        {4, ToolPresetKind::BoringHoleMaking},
        {18, ToolPresetKind::BoringHoleMaking},
        {20, ToolPresetKind::BoringHoleMaking},
        {1, ToolPresetKind::GeneralHoleMaking},
        {2, ToolPresetKind::GeneralHoleMaking},
        {3, ToolPresetKind::GeneralHoleMaking},
        {17, ToolPresetKind::GeneralHoleMaking},
        {19, ToolPresetKind::GeneralHoleMaking},
        {22, ToolPresetKind::Turning},
        {23, ToolPresetKind::Turning},
        {24, ToolPresetKind::Turning},
        {25, ToolPresetKind::Turning},
        {26, ToolPresetKind::Probe},
        {29, ToolPresetKind::Cutting},
        {30, ToolPresetKind::Cutting},
        {36, ToolPresetKind::Cutting},
        {39, ToolPresetKind::Depositing},
        {40, ToolPresetKind::Depositing},
        {41, ToolPresetKind::Depositing},
    };
    for (int type = 0; type <= 48; ++type) {
        const auto kind = Varn::getToolPresetKind(ToolGeometry::Type(type));
        if (type == ToolGeometry::TYPE_HOLDER || type == ToolGeometry::TYPE_TOOL_BLOCK)
            EXPECT_FALSE(kind.has_value());
        else
            EXPECT_EQ(kind, others.contains(type) ? others.at(type) : ToolPresetKind::Milling) << type;
        EXPECT_EQ(ToolFeedsAndSpeedsPreset::fromCurrentValues(named(L"x"), toolOf(ToolGeometry::Type(type))) != nullptr,
                  kind.has_value());
    }
}

TEST(ToolFeedsAndSpeedsPreset, EveryFieldIsAFeedOrSpeedParameterOfItsStrategies)
{
    std::set<std::string_view> names;
    const auto check = [&names](const auto &field) {
        EXPECT_TRUE(names.insert(field.name).second) << field.name;
        EXPECT_TRUE(Varn::VarnParameters::isFeedSpeedParameter(std::wstring(field.name.begin(), field.name.end())))
            << field.name;
        for (int kind = 0; kind < 7; ++kind) {
            if (!(field.kinds & Varn::presetKindBit(ToolPresetKind(kind))))
                continue;
            const ParameterTable table(ToolSpecification::getStrategyType(typeOfKind[kind]));
            EXPECT_TRUE(table.hasParameter(std::wstring(field.name.begin(), field.name.end())))
                << field.name << " of kind " << kind;
            EXPECT_TRUE(field.switchName.empty() ||
                        table.hasParameter(std::wstring(field.switchName.begin(), field.switchName.end())));
        }
    };
    std::apply([&](const auto &...field) { (check(field), ...); }, Varn::toolFeedsAndSpeedsFields);
    EXPECT_EQ(names.size(), 50u);
}

TEST(ToolFeedsAndSpeedsPreset, TheDetailsAreThoseOfTheKind)
{
    const auto preset = ToolFeedsAndSpeedsPreset::fromCurrentValues(named(L"x"), toolOf(ToolGeometry::TYPE_DRILL));
    const auto *drilling = dynamic_cast<const Varn::GeneralHoleMakingToolFeedsAndSpeedsPreset *>(preset.get());
    ASSERT_NE(drilling, nullptr);
    EXPECT_EQ(dynamic_cast<const Varn::MillingToolFeedsAndSpeedsPreset *>(preset.get()), nullptr);
    EXPECT_EQ(&drilling->details(), &preset->details());
    EXPECT_EQ(drilling->details().stepdown, std::nullopt); // of milling
}

TEST(ToolFeedsAndSpeedsPreset, MakesTheCurrentValuesOfAToolAndTakesThem)
{
    for (const ToolGeometry::Type type : typeOfKind) {
        const ToolSpecification tool = toolOf(type, 3);
        const auto preset = ToolFeedsAndSpeedsPreset::fromCurrentValues(named(L"x"), tool);
        ToolSpecification other = toolOf(type, 3);
        other.currentValues() = {};
        preset->writeToToolCurrentValues(other);
        const auto again = ToolFeedsAndSpeedsPreset::fromCurrentValues(named(L"x"), other);
        EXPECT_TRUE(preset->isEqual(*again)) << type;

        const ToolSpecification applied = preset->toolWithPresetApplied(toolOf(type, 4));
        EXPECT_TRUE(preset->isEqual(*ToolFeedsAndSpeedsPreset::fromCurrentValues(named(L"x"), applied))) << type;
        EXPECT_EQ(applied.cutting().diameter, toolOf(type, 4).cutting().diameter);
    }
}

TEST(ToolFeedsAndSpeedsPreset, ValuesReachAToolInItsUnit)
{
    ToolSpecification tool;
    tool.setType(ToolGeometry::TYPE_WATERJET);
    tool.currentValues().feedCutting = 254;
    tool.currentValues().cutHeight = 2.54;
    tool.currentValues().pierceTime = 1.5;
    tool.currentValues().pressure = 3447.378646584;
    const auto preset = ToolFeedsAndSpeedsPreset::fromCurrentValues(named(L"x"), tool);
    ToolSpecification inches;
    inches.setType(ToolGeometry::TYPE_WATERJET);
    inches.setUnit(NCUnit::inches);
    preset->writeToToolCurrentValues(inches);
    EXPECT_EQ(inches.currentValues().feedCutting, 10);
    EXPECT_EQ(inches.currentValues().cutHeight, 0.1);
    EXPECT_EQ(inches.currentValues().pierceTime, 1.5);
    EXPECT_NEAR(inches.currentValues().pressure, 50000, 1e-6);
    EXPECT_EQ(preset->inUnit(NCUnit::inches)->inUnit(NCUnit::millimeters)->details().feedCutting, 254);
}

TEST(ToolFeedsAndSpeedsPreset, ComesBackFromATable)
{
    for (const ToolGeometry::Type type : typeOfKind) {
        for (const NCUnit::Unit unit : {NCUnit::millimeters, NCUnit::inches}) {
            ToolSpecification tool = toolOf(type, 6);
            tool.setUnit(unit);
            const auto preset = ToolFeedsAndSpeedsPreset::fromCurrentValues(named(L"x"), tool);
            ToolSpecification other = toolOf(type, 7);
            other.setUnit(unit);
            ParameterTable table = other.createParameterTable();
            preset->writeToParameters(table);
            const auto back = ToolFeedsAndSpeedsPreset::fromParameterTable(named(L"x"), table, unit);
            ASSERT_NE(back, nullptr);
            EXPECT_TRUE(back->isEqual(*preset, true, 1e-9)) << type;
        }
    }
}

TEST(ToolFeedsAndSpeedsPreset, ATableOfAHolderHasNone)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_type", L"holder");
    EXPECT_EQ(ToolFeedsAndSpeedsPreset::fromParameterTable(named(L"x"), table, NCUnit::millimeters), nullptr);
    table.setParameter(L"tool_type", L"drill");
    EXPECT_NE(ToolFeedsAndSpeedsPreset::fromParameterTable(named(L"x"), table, NCUnit::millimeters), nullptr);
}

TEST(ToolFeedsAndSpeedsPreset, DetailsOfATableAreInTheGivenUnit)
{
    ParameterTable table(Strategy::ROTATING);
    table.setParameter(L"tool_type", L"flat end mill");
    table.setParameter(L"tool_feedCutting", 254.0, Units::UNIT_MILLIMETERS_PER_MINUTE);
    using Details = Varn::MillingToolFeedsAndSpeedsPreset::Details;
    EXPECT_DOUBLE_EQ(Details(table, NCUnit::millimeters).feedCutting, 254);
    EXPECT_DOUBLE_EQ(Details(table, NCUnit::inches).feedCutting, 10);
    EXPECT_EQ(Details().feedCutting, 0);
}

TEST(ToolFeedsAndSpeedsPreset, KeysAreThoseThatApply)
{
    ToolSpecification tool = toolOf(ToolGeometry::TYPE_FLAT_END_MILL);
    tool.currentValues().stepdown = 1;
    tool.currentValues().stepover.reset();
    const auto preset = ToolFeedsAndSpeedsPreset::fromCurrentValues(named(L"x"), tool);
    ParameterTable table = tool.createParameterTable();
    const auto keys = preset->parameterKeys(table);
    EXPECT_THAT(keys, Contains(L"tool_stepdown"));
    EXPECT_THAT(keys, Not(Contains(L"tool_stepover")));
    EXPECT_THAT(keys, Contains(L"tool_feedCutting"));
    EXPECT_THAT(keys, Not(Contains(L"tool_surfaceSpeed"))); // follows from the spindle speed

    Varn::MillingToolFeedsAndSpeedsPreset::Details details;
    EXPECT_TRUE(details.getEnabledKeys().empty());
    details.updateEnabledKeys(table);
    EXPECT_EQ(details.getEnabledKeys(), keys);
    details.updateEnabledKeys(ParameterTable());
    EXPECT_TRUE(details.getEnabledKeys().empty());
}

TEST(ToolFeedsAndSpeedsPreset, EveryValueOfTheKindCountsInAComparison)
{
    for (const ToolGeometry::Type type : typeOfKind) {
        RandomToolRecord random(13);
        const ToolSpecification tool = toolOf(type);
        const auto preset = ToolFeedsAndSpeedsPreset::fromCurrentValues(named(L"x"), tool);
        const auto check = [&](const auto &field) {
            ToolSpecification changed = tool;
            random.change(changed.currentValues().*field.member);
            const auto other = ToolFeedsAndSpeedsPreset::fromCurrentValues(named(L"x"), changed);
            const bool counts = (field.kinds & Varn::presetKindBit(preset->kind())) != 0;
            EXPECT_EQ(preset->isEqual(*other), !counts) << type << ": " << field.name;
        };
        std::apply([&](const auto &...field) { (check(field), ...); }, Varn::toolFeedsAndSpeedsFields);
    }
}

TEST(ToolFeedsAndSpeedsPreset, KindUnitWordsAndExpressionsCountToo)
{
    const ToolSpecification tool = toolOf(ToolGeometry::TYPE_DRILL);
    const auto preset =
        ToolFeedsAndSpeedsPreset::fromCurrentValues({ToolFeedsAndSpeedsPresetId(L"i"), L"n", L"d"}, tool);
    EXPECT_TRUE(preset->isEqual(*preset->clone()));
    const Metadata others[] = {{ToolFeedsAndSpeedsPresetId(L"?"), L"n", L"d"},
                               {ToolFeedsAndSpeedsPresetId(L"i"), L"?", L"d"},
                               {ToolFeedsAndSpeedsPresetId(L"i"), L"n", L"?"}};
    for (const Metadata &metadata : others) {
        EXPECT_FALSE(preset->isEqual(*preset->withMetadata(metadata)));
        EXPECT_TRUE(preset->isEqual(*preset->withMetadata(metadata), false));
    }
    EXPECT_FALSE(preset->isEqual(*preset->withExpressions({{L"tool_feedCutting", L"1"}}), false));
    EXPECT_FALSE(preset->isEqual(*preset->inUnit(NCUnit::inches), false));
    ToolSpecification mill = tool;
    mill.setType(ToolGeometry::TYPE_FLAT_END_MILL);
    EXPECT_FALSE(preset->isEqual(*ToolFeedsAndSpeedsPreset::fromCurrentValues(preset->metadata(), mill)));

    ToolSpecification faster = tool;
    faster.currentValues().spindleSpeed += 0.25;
    const auto fast = ToolFeedsAndSpeedsPreset::fromCurrentValues(preset->metadata(), faster);
    EXPECT_FALSE(preset->isEqual(*fast, true, 0.2));
    EXPECT_TRUE(preset->isEqual(*fast, true, 0.25));
}

TEST(ToolFeedsAndSpeedsPreset, ExpressionsAreReplacedInACopy)
{
    const auto preset = ToolFeedsAndSpeedsPreset::fromCurrentValues(named(L"x"), toolOf(ToolGeometry::TYPE_DRILL));
    const auto with = preset->withExpressions({{L"tool_feedCutting", L"1 + 1"}});
    EXPECT_THAT(with->details().getExpressions(), ElementsAre(testing::Pair(L"tool_feedCutting", L"1 + 1")));
    EXPECT_TRUE(preset->details().getExpressions().empty());
    EXPECT_EQ(with->name(), L"x");
    EXPECT_EQ(with->details().feedCutting, preset->details().feedCutting);

    Varn::GeneralHoleMakingToolFeedsAndSpeedsPreset::Details details;
    details.setExpression(L"a", L"1");
    details.setExpression(L"a", L"2");
    EXPECT_THAT(details.getExpressions(), ElementsAre(testing::Pair(L"a", L"2")));
}

TEST(ToolFeedsAndSpeedsPreset, MaterialBelongsToChipMaking)
{
    for (const ToolGeometry::Type type : typeOfKind) {
        const auto preset = ToolFeedsAndSpeedsPreset::fromCurrentValues(named(L"x"), toolOf(type));
        const bool aware =
            !ToolGeometry::isProbe(type) && !ToolGeometry::isJetCutter(type) && !ToolGeometry::isDepositing(type);
        EXPECT_EQ(preset->isMaterialAware(), aware) << type;
    }
}

TEST(ToolFeedsAndSpeedsPreset, TheDefaultIsTheSameEveryTime)
{
    const Metadata first = Metadata::createDefault();
    const Metadata second = Metadata::createDefault();
    EXPECT_EQ(first.id(), second.id());
    EXPECT_EQ(first.name(), L"Default preset");
    EXPECT_EQ(first.description(), L"");
    EXPECT_EQ(first.id().toString().size(), 38u);
}

TEST(ToolFeedsAndSpeedsPreset, ANameThatIsTakenGetsANumber)
{
    const ToolSpecification tool = toolOf(ToolGeometry::TYPE_DRILL);
    Varn::ToolPresets presets;
    for (const wchar_t *expected : {L"steel", L"steel (2)", L"steel (3)"}) {
        const std::wstring name = Metadata::createUniquePresetName(presets, L"steel");
        EXPECT_EQ(name, expected);
        presets.push_back(ToolFeedsAndSpeedsPreset::fromCurrentValues(named(name.c_str()), tool));
    }
    EXPECT_EQ(Metadata::createUniquePresetName(presets, L"steel (2)"), L"steel (2) (2)");
    EXPECT_EQ(Metadata::createUniquePresetName(presets, L""), L"");
}

TEST(ToolFeedsAndSpeedsPreset, AGapInTheListIsNoName)
{
    EXPECT_EQ(Metadata::createUniquePresetName({nullptr}, L"steel"), L"steel");
}

TEST(ToolFeedsAndSpeedsPreset, ATableThatNamesNoTypeHasNoKind)
{
    EXPECT_THROW(ToolFeedsAndSpeedsPreset::fromParameterTable(named(L"x"), ParameterTable(), NCUnit::millimeters),
                 Varn::ToolLibraries::InvalidInput);
}

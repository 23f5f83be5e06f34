#include "platform/core/VarnParameters.h"

#include "platform/core/ToolSpecification.h"

#include "platform/tool/Exception.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>
#include <string>
#include <thread>
#include <vector>

using testing::Contains;
using testing::IsEmpty;
using testing::Not;
using Varn::ParameterTable;
using Varn::Strategy;
using Varn::VarnParameters;

namespace {

const std::vector<Strategy::Type> strategies = {Strategy::UNSPECIFIED, Strategy::ROTATING, Strategy::SHARED,
                                                Strategy::TURNING,     Strategy::JET,      Strategy::DEPOSITING};

} // namespace

TEST(VarnParameters, TheQuantityOfAParameter)
{
    struct Case {
        std::wstring name;
        Strategy::Type strategy;
        int kind;
    };
    const std::vector<Case> cases = {
        {L"tool_description", Strategy::ROTATING, 0},
        {L"tool_numberOfFlutes", Strategy::ROTATING, 0},
        {L"tool_diameter", Strategy::ROTATING, 1},
        {L"tool_threadPitch", Strategy::ROTATING, 1},
        {L"tool_taperAngle", Strategy::ROTATING, 2},
        {L"tool_feedPerRevolution", Strategy::ROTATING, 3},
        {L"tool_feedPerTooth", Strategy::ROTATING, 4},
        {L"tool_pierceTime", Strategy::JET, 5},
        {L"tool_feedCutting", Strategy::JET, 6},
        {L"tool_surfaceSpeed", Strategy::TURNING, 6},
        {L"tool_spindleSpeed", Strategy::TURNING, 7},
        {L"tool_maximumRotationalSpeed", Strategy::ROTATING, 7},
        {L"tool_cutPower", Strategy::JET, 8},
        {L"tool_pressure", Strategy::JET, 9},
        {L"tool_depositingShieldGasFlowRate", Strategy::DEPOSITING, 10},
        {L"tool_powderFlowRate", Strategy::DEPOSITING, 11},
        {L"tool_depositingCurrent", Strategy::DEPOSITING, 12},
        {L"tool_depositingVoltage", Strategy::DEPOSITING, 13},
        {L"tool_presetMaterialMinimumHardness", Strategy::TURNING, 14},
    };
    for (const auto &[name, strategy, kind] : cases)
        EXPECT_EQ(VarnParameters::getParameterKind(name, strategy), kind) << std::string(name.begin(), name.end());
}

TEST(VarnParameters, AStrategyKnowsItsOwnParametersOnly)
{
    EXPECT_EQ(VarnParameters::getParameterKind(L"tool_spindleSpeed", Strategy::JET), 0);
    EXPECT_EQ(VarnParameters::getParameterKind(L"tool_spindleSpeed", Strategy::SHARED), 0);
    EXPECT_EQ(VarnParameters::getParameterKind(L"tool_kerfWidth", Strategy::JET), 1);
    EXPECT_EQ(VarnParameters::getParameterKind(L"tool_kerfWidth", Strategy::ROTATING), 0);
    EXPECT_EQ(VarnParameters::getParameterKind(L"tool_block_maximumRotationalSpeed", Strategy::TURNING), 7);
    EXPECT_EQ(VarnParameters::getParameterKind(L"tool_block_maximumRotationalSpeed", Strategy::ROTATING), 0);
    EXPECT_EQ(VarnParameters::getParameterKind(L"tool_feedPlunge", Strategy::DEPOSITING), 6);
    EXPECT_EQ(VarnParameters::getParameterKind(L"tool_feedPlunge", Strategy::TURNING), 0);
}

TEST(VarnParameters, AToolWithoutTypeHoldsWhatARotatingToolHolds)
{
    const auto strategy = Varn::ToolSpecification::getStrategyType(Varn::ToolGeometry::TYPE_NONE);
    for (const wchar_t *name : {L"tool_diameter", L"tool_spindleSpeed", L"tool_feedPlunge", L"tool_tipAngle"})
        EXPECT_NE(VarnParameters::getParameterKind(name, strategy), 0) << name;
    EXPECT_EQ(VarnParameters::getParameterKind(L"tool_kerfWidth", strategy), 0);
}

TEST(VarnParameters, SegmentsOfAHolderAreNumberedLengths)
{
    for (const Strategy::Type strategy : strategies) {
        for (const wchar_t *name :
             {L"segment_1_height", L"segment_2_lower_diameter", L"segment_10_upper_diameter", L"segment_4096_height"})
            EXPECT_EQ(VarnParameters::getParameterKind(name, strategy), ParameterTable::KIND_LENGTH) << name;
    }
    for (const wchar_t *name :
         {L"segment_0_height", L"segment__height", L"segment_01_height", L"segment_-1_height", L"segment_1_height_",
          L"segment_1_width", L"segment_1x_height", L"segment_height", L"segment_\u0661_height", L" segment_1_height"})
        EXPECT_EQ(VarnParameters::getParameterKind(name, Strategy::ROTATING), ParameterTable::KIND_NONE) << name;
}

TEST(VarnParameters, WhatNobodyKnowsIsOfNoKind)
{
    for (const Strategy::Type strategy : strategies) {
        for (const wchar_t *name :
             {L"", L"tool_", L"TOOL_SPINDLESPEED", L"tool_spindleSpeed ", L"spindleSpeed", L"\u00FC"})
            EXPECT_EQ(VarnParameters::getParameterKind(name, strategy), ParameterTable::KIND_NONE) << name;
    }
    for (const int strategy : {-1, 0, 1, 199, 1000}) {
        for (const wchar_t *name : {L"tool_spindleSpeed", L"tool_diameter", L"segment_1_height"})
            EXPECT_EQ(VarnParameters::getParameterKind(name, Strategy::Type(strategy)), ParameterTable::KIND_NONE)
                << name << strategy;
    }
    EXPECT_EQ(VarnParameters::getParameterKind(std::wstring(1 << 20, L't'), Strategy::ROTATING), 0);
}

TEST(VarnParameters, ManyThreadsMayAskAtOnce)
{
    std::vector<int> kinds(8);
    {
        std::vector<std::jthread> threads;
        for (int &kind : kinds)
            threads.emplace_back(
                [&kind] { kind = VarnParameters::getParameterKind(L"tool_spindleSpeed", Strategy::ROTATING); });
    }
    EXPECT_EQ(kinds, std::vector(8, 7));
}

TEST(VarnParameters, ATableIsFilledWithTheParametersOfItsStrategy)
{
    ParameterTable table;
    table.setMetric(false);
    VarnParameters::initToolParameters(table, Strategy::ROTATING);
    EXPECT_FALSE(table.isMetric()) << "the flag stays";
    EXPECT_TRUE(table.hasParameter(L"tool_diameter"));
    EXPECT_TRUE(table.hasParameter(L"tool_description")) << "what all tools share";
    EXPECT_FALSE(table.hasParameter(L"tool_kerfWidth"));
    table.setParameter(L"tool_diameter", 1.0, Varn::Units::UNIT_INCHES);
    VarnParameters::initOperationParameters(table, Strategy::TURNING, true);
    EXPECT_TRUE(table.isMetric());
    EXPECT_EQ(table.getWideMessage(L"tool_type"), L"turning general");
    EXPECT_TRUE(table.getParameter(L"tool_diameter")->isDefault()) << "all are at their defaults";
    VarnParameters::initToolParameters(table, Strategy::INVALID);
    EXPECT_FALSE(table.hasParameter(L"tool_type"));
}

TEST(VarnParameters, EveryParameterOfAStrategyIsInItsTable)
{
    for (const Strategy::Type strategy : strategies) {
        const ParameterTable table(strategy);
        const std::vector<int> numbers = VarnParameters::getParametersWithFlag(38, strategy);
        EXPECT_GE(numbers.size(), 15u);
        EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
        for (const int number : numbers)
            EXPECT_TRUE(table.hasParameter(VarnParameters::getParamName(number)));
    }
    EXPECT_EQ(VarnParameters::getParametersWithFlag(38, Strategy::SHARED).size(), 15u);
    EXPECT_THAT(VarnParameters::getParametersWithFlag(38, Strategy::INVALID), IsEmpty());
    EXPECT_THAT(VarnParameters::getParametersWithFlag(99, Strategy::ROTATING), IsEmpty());
}

TEST(VarnParameters, FlagsSelectParameters)
{
    const auto isColumn = [](const std::vector<int> &flags) {
        const auto has = [&](int flag) { return std::find(flags.begin(), flags.end(), flag) != flags.end(); };
        return has(38) && !has(1) && !has(2) && !has(12);
    };
    std::set<std::wstring> names;
    for (const int number : VarnParameters::getParametersWithFlag(isColumn, Strategy::ROTATING))
        names.insert(VarnParameters::getParamName(number));
    EXPECT_THAT(names, Contains(L"tool_diameter"));
    EXPECT_THAT(names, Not(Contains(L"holder_attached"))) << "state that follows the attachments";
    EXPECT_EQ(VarnParameters::getParametersWithFlag(1, Strategy::TURNING).size(), 1u);
}

TEST(VarnParameters, ADefinitionIsThatOfItsStrategyAndUnits)
{
    const int diameter = 16;
    const auto &rotating = VarnParameters::getDefinition(diameter, Strategy::ROTATING, true);
    const auto &turning = VarnParameters::getDefinition(diameter, Strategy::TURNING, true);
    EXPECT_EQ(rotating.id, L"tool_diameter");
    EXPECT_EQ(rotating.fullTitle.asString(), "Cutting diameter");
    EXPECT_EQ(turning.fullTitle.asString(), "Insert diameter");
    EXPECT_EQ(turning.title.asString(), "Diameter") << "what is not overridden stays";
    EXPECT_EQ(turning.enableExpression, L"");
    EXPECT_EQ(turning.errors.size(), 1u);
    EXPECT_THAT(turning.warnings, IsEmpty());
    EXPECT_NE(rotating.defaultExpression,
              VarnParameters::getDefinition(diameter, Strategy::ROTATING, false).defaultExpression);
    EXPECT_EQ(&rotating, &VarnParameters::getDefinition(diameter, Strategy::ROTATING, true)) << "one for the process";
    EXPECT_EQ(VarnParameters::getTitle(diameter, Strategy::TURNING).asString(), "Diameter");
    EXPECT_EQ(VarnParameters::getParameterTypeName(diameter), L"LengthParameter");
    EXPECT_TRUE(rotating.hasFlag(38));
    EXPECT_FALSE(rotating.hasFlag(1));
}

TEST(VarnParameters, ANumberThatTheStrategyDoesNotHoldIsRefused)
{
    using Varn::ToolLibraries::InvalidInput;
    for (const int number : {-1, 0, 170, 100000}) {
        EXPECT_THROW(VarnParameters::getDefinition(number, Strategy::ROTATING, true), InvalidInput);
        EXPECT_THROW(VarnParameters::getParamName(number), InvalidInput);
        EXPECT_THROW(VarnParameters::getParameterTypeName(number), InvalidInput);
        EXPECT_THROW(VarnParameters::isFeedSpeedParameter(number), InvalidInput);
        EXPECT_THROW(VarnParameters::getTitle(number, Strategy::ROTATING), InvalidInput);
    }
    EXPECT_THROW(VarnParameters::getDefinition(78, Strategy::ROTATING, true), InvalidInput) << "the kerf width";
    EXPECT_NO_THROW(VarnParameters::getDefinition(78, Strategy::JET, true));
    EXPECT_THROW(VarnParameters::getDefinition(1, Strategy::INVALID, true), InvalidInput);
}

TEST(VarnParameters, EnumerationsHoldTheirValuesInOrder)
{
    const auto &coolant = VarnParameters::getDefinition(44, Strategy::ROTATING, true);
    const auto &values = VarnParameters::getParameterEnum(Strategy::ROTATING, coolant);
    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(values[0].expression, L"'no'");
    EXPECT_EQ(values[1].key, L"yes");
    const auto &type = VarnParameters::getDefinition(1, Strategy::JET, true);
    EXPECT_EQ(VarnParameters::getParameterEnum(type).size(), 49u);
    const auto &jets = VarnParameters::getParameterEnum(Strategy::JET, type);
    ASSERT_EQ(jets.size(), 3u);
    EXPECT_EQ(jets[0].key, L"waterjet");
    EXPECT_EQ(jets[0].value, 29);
    EXPECT_TRUE(jets[0].isValidFor(Strategy::JET));
    EXPECT_FALSE(jets[0].isValidFor(Strategy::ROTATING));
    EXPECT_EQ(jets[0].description.asWideString(), L"Waterjet");
    EXPECT_THAT(VarnParameters::getParameterEnum(Strategy::SHARED, type), IsEmpty());
    EXPECT_THAT(VarnParameters::getParameterEnum(VarnParameters::getDefinition(16, Strategy::ROTATING, true)),
                IsEmpty());
}

TEST(VarnParameters, FeedsAndSpeedsBelongToPresets)
{
    for (const wchar_t *name : {L"tool_spindleSpeed", L"tool_feedCutting", L"use_tool_stepdown", L"tool_coolant"})
        EXPECT_TRUE(VarnParameters::isFeedSpeedParameter(name)) << name;
    for (const wchar_t *name : {L"tool_diameter", L"tool_type", L"", L"nonsense", L"segment_1_height"})
        EXPECT_FALSE(VarnParameters::isFeedSpeedParameter(name)) << name;
    EXPECT_TRUE(VarnParameters::isFeedSpeedParameter(113));
    EXPECT_FALSE(VarnParameters::isFeedSpeedParameter(16));
}

TEST(VarnParameters, ManyThreadsMayFillTablesAtOnce)
{
    std::vector<double> diameters(8);
    {
        std::vector<std::jthread> threads;
        for (double &diameter : diameters)
            threads.emplace_back([&diameter] {
                for (const Strategy::Type strategy : strategies)
                    ParameterTable(strategy).getWideMessage(L"tool_type");
                diameter =
                    ParameterTable(Strategy::ROTATING, false).getDouble(L"tool_diameter", Varn::Units::UNIT_INCHES);
            });
    }
    EXPECT_EQ(diameters, std::vector(8, 0.5));
}

// Those are left out of a map when they are 0, so that their defaults count; a default of 0 would make no sense there.
TEST(VarnParameters, WhatIsWrittenOnlyWhenNotZeroHasAnotherDefault)
{
    for (const bool metric : {true, false})
        for (const wchar_t *name : {L"tool_threadTipWidth", L"tool_threadTipRadius", L"tool_insertWidth",
                                    L"tool_grooveWidth", L"tool_headLength", L"tool_lengthNonCuttingEdge"})
            EXPECT_NE(ParameterTable(Strategy::TURNING, metric).getParameter(name)->getSystemDefaultExpression(), L"0")
                << name;
}

#include "platform/core/VarnParameters.h"

#include "platform/core/ToolSpecification.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

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

#include "ToolLibrary/Interface/Private/ToolTypeRecorder.h"
#include "platform/core/ToolSpecification.h"
#include "platform/tool/JsonText.h"

#include <gtest/gtest.h>

using Varn::ToolGeometry;
using Varn::ToolLibraries::ToolTypeRecorder;
namespace JsonText = Varn::ToolLibraries::JsonText;

namespace {

std::string recorded(std::initializer_list<int> types)
{
    ToolTypeRecorder recorder;
    for (const int type : types)
        recorder.addToolType(static_cast<ToolGeometry::Type>(type));
    return JsonText::print(recorder.getRecordedToolTypes());
}

} // namespace

TEST(ToolTypeRecorder, WithoutTypesItIsAnEmptyListAndNotNull)
{
    const Json::Value types = ToolTypeRecorder().getRecordedToolTypes();
    EXPECT_TRUE(types.isArray());
    EXPECT_EQ(types.size(), 0U);
}

TEST(ToolTypeRecorder, EachTypeStandsOnceInTheOrderOfItsBytes)
{
    EXPECT_EQ(recorded({ToolGeometry::TYPE_DRILL}), R"(["drill"])");
    EXPECT_EQ(recorded({ToolGeometry::TYPE_DRILL, ToolGeometry::TYPE_DRILL}), R"(["drill"])");
    EXPECT_EQ(
        recorded({ToolGeometry::TYPE_TURNING_GENERAL, ToolGeometry::TYPE_BULL_NOSE_END_MILL, ToolGeometry::TYPE_DRILL,
                  ToolGeometry::TYPE_BALL_END_MILL, ToolGeometry::TYPE_TURNING_GENERAL}),
        R"(["ball end mill","bull nose end mill","drill","turning general"])");
    EXPECT_EQ(
        recorded({ToolGeometry::TYPE_MULTI_SPINDLE_DRILL, ToolGeometry::TYPE_TOOL_BLOCK, ToolGeometry::TYPE_HOLDER}),
        R"(["holder","multi-spindle drill","tool block"])");
}

TEST(ToolTypeRecorder, WhatIsNoTypeCountsAsUnspecified)
{
    EXPECT_EQ(recorded({0, 1000, -1}), R"(["unspecified"])");
}

TEST(ToolTypeRecorder, TypesMayComeAfterALook)
{
    ToolTypeRecorder recorder;
    recorder.addToolType(ToolGeometry::TYPE_PROBE);
    EXPECT_EQ(recorder.getRecordedToolTypes().size(), 1U);
    recorder.addToolType(ToolGeometry::TYPE_DRILL);
    EXPECT_EQ(JsonText::print(recorder.getRecordedToolTypes()), R"(["drill","probe"])");
}

TEST(ToolTypeRecorder, EveryTypeHasAKeywordOfItsOwn)
{
    ToolTypeRecorder recorder;
    for (int type = ToolGeometry::TYPE_NONE; type <= ToolGeometry::TYPE_PLUNGE_MILL; ++type)
        recorder.addToolType(static_cast<ToolGeometry::Type>(type));
    EXPECT_EQ(recorder.getRecordedToolTypes().size(), 49U);
}

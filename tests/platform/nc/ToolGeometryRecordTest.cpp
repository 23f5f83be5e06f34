#include "platform/nc/Tool3DGeometry.h"
#include "platform/nc/ToolGeometry.h"
#include "platform/nc/ToolPlaceholder3DGeometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <numbers>

using Varn::NCUnit;
using Varn::ToolGeometry;
using Varn::ToolPlaceholder3DGeometry;
using Varn::ToolSection;

namespace {

double tangent(double degrees)
{
    return std::tan(degrees * std::numbers::pi / 180);
}

/// A tool with sizes that all differ.
ToolGeometry toolOf(ToolGeometry::Type type)
{
    ToolGeometry tool;
    tool.setType(type);
    tool.cutting().diameter = 20;
    tool.cutting().cornerRadius = 1;
    tool.cutting().shaftDiameter = 16;
    tool.cutting().fluteLength = 12;
    tool.cutting().shoulderLength = 14;
    tool.cutting().bodyLength = 40;
    tool.cutting().taperAngle = 30;
    tool.cutting().tipAngle = 118;
    tool.cutting().threadPitch = 2;
    tool.cutting().threadProfileAngle = 60;
    return tool;
}

class Solid : public Varn::Tool3DGeometry
{
public:
    explicit Solid(std::wstring id) : Tool3DGeometry(std::move(id)) {}

private:
    bool writeTo(const Sink &) const override { return true; }
};

} // namespace

TEST(ToolGeometryRecord, TheShoulderFollowsFromTheShape)
{
    const double tan30 = tangent(30);
    const struct {
        ToolGeometry::Type type;
        double diameter;
    } rows[] = {
        {ToolGeometry::TYPE_FLAT_END_MILL, 20},
        {ToolGeometry::TYPE_BALL_END_MILL, 20},
        {ToolGeometry::TYPE_BULL_NOSE_END_MILL, 20},
        {ToolGeometry::TYPE_CORNER_CHAMFER_END_MILL, 20},
        {ToolGeometry::TYPE_TAPERED_MILL, 20 + 2 * tan30 * 14},
        {ToolGeometry::TYPE_FACE_MILL, 20 + 2 * tan30 * 12},
        {ToolGeometry::TYPE_RADIUS_MILL, 22},
        {ToolGeometry::TYPE_DOVETAIL_MILL, 20 - 2 * tan30 * (12 - 1 * (1 + 1 / 0.5)) - 2},
        {ToolGeometry::TYPE_THREAD_MILL, 20 - 2 / tan30},
        {ToolGeometry::TYPE_CHAMFER_MILL, 16},
        {ToolGeometry::TYPE_LOLLIPOP_MILL, 16},
        {ToolGeometry::TYPE_SLOT_MILL, 16},
        {ToolGeometry::TYPE_WOODRUFF_CUTTER, 16},
    };
    for (const auto &row : rows)
        EXPECT_NEAR(toolOf(row.type).getShoulderDiameter(), row.diameter, 1e-9) << row.type;
}

TEST(ToolGeometryRecord, ASlotMillEndsAsItsShaftDoes)
{
    ToolGeometry tool = toolOf(ToolGeometry::TYPE_SLOT_MILL);
    tool.setShaft({{5, 10}, {5, 12}});
    EXPECT_EQ(tool.getShoulderDiameter(), 12);
    EXPECT_TRUE(tool.hasShaft());
    tool.removeShaft();
    EXPECT_FALSE(tool.hasShaft());
    EXPECT_EQ(tool.getShoulderDiameter(), 16);
}

TEST(ToolGeometryRecord, WithoutAShaftTheCutterIsTheShoulder)
{
    ToolGeometry tool = toolOf(ToolGeometry::TYPE_WOODRUFF_CUTTER);
    tool.cutting().shaftDiameter = 0;
    EXPECT_EQ(tool.getShoulderDiameter(), 20);
}

TEST(ToolGeometryRecord, AnAngleOfZeroLeavesTheDiameter)
{
    ToolGeometry dovetail = toolOf(ToolGeometry::TYPE_DOVETAIL_MILL);
    dovetail.cutting().taperAngle = 0;
    EXPECT_TRUE(std::isfinite(dovetail.getShoulderDiameter()));
    ToolGeometry thread = toolOf(ToolGeometry::TYPE_THREAD_MILL);
    thread.cutting().threadProfileAngle = 0;
    EXPECT_EQ(thread.getShoulderDiameter(), 20);
}

TEST(ToolGeometryRecord, TheLargestDiameterIsAtTheUpperEndOfTheFlute)
{
    EXPECT_NEAR(toolOf(ToolGeometry::TYPE_FACE_MILL).getMaximumCutterDiameter(), 20 + 24 * tangent(30), 1e-9);
    EXPECT_NEAR(toolOf(ToolGeometry::TYPE_TAPERED_MILL).getMaximumCutterDiameter(), 20 + 24 * tangent(30), 1e-9);
    EXPECT_EQ(toolOf(ToolGeometry::TYPE_RADIUS_MILL).getMaximumCutterDiameter(), 22);
    EXPECT_EQ(toolOf(ToolGeometry::TYPE_FLAT_END_MILL).getMaximumCutterDiameter(), 20);
}

TEST(ToolGeometryRecord, ACircleSegmentTouchesItsLowerRadius)
{
    ToolGeometry barrel = toolOf(ToolGeometry::TYPE_CIRCLE_SEGMENT_BARREL);
    EXPECT_EQ(barrel.getProfileRadius(), 100);
    EXPECT_EQ(barrel.getLowerRadius(), 0);
    EXPECT_EQ(barrel.getUpperRadius(), 0);
    barrel.cutting().lowerRadius = 4;
    const double distance = barrel.getAxialDistance();
    // The centers (0, 4) and (10 - 100, distance) are as far apart as the radii differ.
    EXPECT_NEAR(std::hypot(90.0, distance - 4), 96, 1e-9);
    EXPECT_TRUE(barrel.isCircleSegment());
    EXPECT_FALSE(toolOf(ToolGeometry::TYPE_BALL_END_MILL).isCircleSegment());
}

TEST(ToolGeometryRecord, ALensHasItsCenterOnTheAxis)
{
    EXPECT_EQ(toolOf(ToolGeometry::TYPE_CIRCLE_SEGMENT_LENS).getAxialDistance(), 100);
}

TEST(ToolGeometryRecord, ARadiusThatTouchesNothingHasNoDistance)
{
    ToolGeometry barrel = toolOf(ToolGeometry::TYPE_CIRCLE_SEGMENT_BARREL);
    barrel.cutting().lowerRadius = 11; // wider than the tool
    EXPECT_EQ(barrel.getAxialDistance(), 0);
}

TEST(ToolGeometryRecord, WhatIsGivenCounts)
{
    ToolGeometry tool = toolOf(ToolGeometry::TYPE_CIRCLE_SEGMENT_OVAL);
    EXPECT_EQ(tool.getOverallLength(), 40 + 3 * 16);
    EXPECT_EQ(tool.getAssemblyGaugeLength(), 40);
    EXPECT_EQ(tool.getChamferWidth(), 0.5);
    EXPECT_EQ(tool.getChamferAngle().getDegrees(), Varn::Angle::fromDegrees(45).getDegrees());

    tool.cutting().overallLength = 90;
    tool.cutting().shoulderDiameter = 15;
    tool.cutting().maximumCuttingDiameter = 25;
    tool.cutting().upperRadius = 1;
    tool.cutting().lowerRadius = 2;
    tool.cutting().profileRadius = 250;
    tool.cutting().axialDistance = 0;
    tool.cutting().chamferWidth = 0.2;
    tool.cutting().chamferAngle = -30;
    tool.cutting().assemblyGaugeLength = 0;
    EXPECT_EQ(tool.getOverallLength(), 90);
    EXPECT_EQ(tool.getShoulderDiameter(), 15);
    EXPECT_EQ(tool.getMaximumCutterDiameter(), 25);
    EXPECT_EQ(tool.getUpperRadius(), 1);
    EXPECT_EQ(tool.getLowerRadius(), 2);
    EXPECT_EQ(tool.getProfileRadius(), 250);
    EXPECT_EQ(tool.getAxialDistance(), 0);
    EXPECT_EQ(tool.getChamferWidth(), 0.2);
    EXPECT_NEAR(tool.getChamferAngle().getDegrees(), 330, 1e-9);
    EXPECT_EQ(tool.getAssemblyGaugeLength(), 0);
}

TEST(ToolGeometryRecord, AnInchToolHasAChamferInInches)
{
    ToolGeometry tool = toolOf(ToolGeometry::TYPE_CORNER_CHAMFER_END_MILL);
    tool.setUnit(NCUnit::inches);
    EXPECT_EQ(tool.getChamferWidth(), 0.02);
    EXPECT_TRUE(tool.isCornerChamferEndMill());
}

TEST(ToolGeometryRecord, TheAngleIsThatOfTheType)
{
    EXPECT_EQ(toolOf(ToolGeometry::TYPE_DRILL).getAngle(), 118);
    EXPECT_EQ(toolOf(ToolGeometry::TYPE_CHAMFER_MILL).getAngle(), 30);
}

TEST(ToolGeometryRecord, AnOutlineAttachesAHolderUnlessTheToolIsOne)
{
    ToolGeometry mill = toolOf(ToolGeometry::TYPE_FLAT_END_MILL);
    mill.holder().gaugeLength = 60;
    mill.holder().texts.vendor = L"Quillon";
    mill.holder().guid = L"one";
    EXPECT_EQ(mill.getAssemblyGaugeLength(), 40);
    mill.setHolder({});
    EXPECT_FALSE(mill.hasHolder());
    mill.setHolder({{0, 20}, {60, 40}});
    EXPECT_TRUE(mill.hasHolder());
    EXPECT_EQ(mill.getAssemblyGaugeLength(), 100);
    EXPECT_EQ(mill.getHolderDiameter(), 16);

    mill.removeHolder();
    EXPECT_FALSE(mill.hasHolder());
    EXPECT_TRUE(mill.getHolder().empty());
    EXPECT_EQ(mill.holder().guid, L"");
    EXPECT_EQ(mill.holder().texts.vendor, L"Quillon");

    ToolGeometry holder = toolOf(ToolGeometry::TYPE_HOLDER);
    holder.setHolder({{60, 40}});
    EXPECT_FALSE(holder.hasHolder());
    EXPECT_EQ(holder.getHolderDiameter(), 0);
    EXPECT_EQ(holder.getHolder(), (std::vector<ToolSection>{{60, 40}}));
}

TEST(ToolGeometryRecord, ABlockThatIsRemovedTakesItsSolidAndPlaceAlong)
{
    ToolGeometry tool = toolOf(ToolGeometry::TYPE_TURNING_GENERAL);
    tool.attachToolBlock();
    tool.toolBlock().guid = L"block";
    tool.setNested3DGeometry(std::make_shared<ToolPlaceholder3DGeometry>(L"solid"));
    auto turning = tool.getTurningParameterization();
    turning.toolBlockTransform = Varn::Matrix4x4({}, {1, 2, 3});
    tool.setTurningParameterization(turning);
    EXPECT_TRUE(tool.hasAttachedToolBlock());
    tool.removeToolBlock();
    EXPECT_FALSE(tool.hasAttachedToolBlock());
    EXPECT_EQ(tool.toolBlock().guid, L"");
    EXPECT_EQ(tool.getRawNested3DGeometry(), nullptr);
    EXPECT_FALSE(tool.getTurningParameterization().toolBlockTransform.has_value());
}

TEST(ToolGeometryRecord, ASolidIsLoadedOrAPlaceholder)
{
    ToolGeometry tool;
    EXPECT_EQ(tool.getRaw3DGeometry(), nullptr);
    EXPECT_EQ(tool.getLoaded3DGeometry(), nullptr);
    EXPECT_EQ(tool.getPlaceholder3DGeometry(), nullptr);

    tool.set3DGeometry(std::make_shared<ToolPlaceholder3DGeometry>(L"a"));
    tool.setNested3DGeometry(std::make_shared<Solid>(L"b"));
    EXPECT_EQ(tool.getRaw3DGeometry()->id(), L"a");
    EXPECT_EQ(tool.getPlaceholder3DGeometry()->id(), L"a");
    EXPECT_EQ(tool.getLoaded3DGeometry(), nullptr);
    EXPECT_EQ(tool.getRawNested3DGeometry()->id(), L"b");
    EXPECT_EQ(tool.getPlaceholderNested3DGeometry(), nullptr);
    EXPECT_EQ(tool.getLoadedNested3DGeometry()->id(), L"b");

    tool.set3DGeometry(std::nullopt);
    tool.setNested3DGeometry(std::nullopt);
    EXPECT_EQ(tool.getRaw3DGeometry(), nullptr);
    EXPECT_EQ(tool.getRawNested3DGeometry(), nullptr);
}

TEST(ToolGeometryRecord, ACopyIsIndependent)
{
    ToolGeometry tool = toolOf(ToolGeometry::TYPE_FORM_MILL);
    tool.setCustomCutter(Varn::ToolProfile(2));
    tool.setShaft({{5, 10}});
    ToolGeometry copy = tool;
    copy.cutting().diameter = 1;
    copy.setCustomCutter({});
    copy.removeShaft();
    EXPECT_EQ(tool.cutting().diameter, 20);
    EXPECT_EQ(tool.getCustomCutter().size(), 2u);
    EXPECT_TRUE(tool.hasShaft());
}

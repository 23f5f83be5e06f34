#include "RandomToolRecord.h"
#include "platform/core/ToolFeedsAndSpeedsPreset.h"
#include "platform/core/ToolSpecification.h"
#include "platform/nc/ToolPlaceholder3DGeometry.h"
#include "platform/ox/XMLDocument.h"
#include "platform/utils/FileOutputStream.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <limits>

using Ox::Status;
using Ox::XMLDocument;
using TestSupport::RandomToolRecord;
using Varn::NCUnit;
using Varn::ToolGeometry;
using Varn::ToolSpecification;

namespace {

using Options = ToolSpecification::ComparisonOptions;
constexpr Options exactly{0, Options::IDENTITY_COMPARED, std::nullopt};

class ToolSpecificationXml : public testing::Test
{
protected:
    /// The document of that text, as a file would give it.
    XMLDocument read(const std::string &text)
    {
        const std::wstring path = m_folder.filePath(QStringLiteral("tool.xml")).toStdWString();
        EXPECT_TRUE(Varn::FileOutputStream(path).write(text));
        Status status;
        XMLDocument document(path, status, true);
        EXPECT_TRUE(status.isOk()) << status.description().toStdString();
        return document;
    }

    /// What reading a tool of that text ends in: the record, or the error.
    Ox::expected<ToolSpecification, std::string> toolOf(const std::string &text)
    {
        ToolSpecification tool;
        const auto result = tool.importFrom(read(text).root());
        if (!result)
            return Ox::unexpected<std::string>(result.error());
        return tool;
    }

    std::string errorOf(const std::string &text)
    {
        const auto tool = toolOf(text);
        return tool ? "none" : tool.error();
    }

    QTemporaryDir m_folder;
};

std::string textOf(const ToolSpecification &tool)
{
    XMLDocument document("tool");
    tool.exportTo(document.root());
    return document.toString();
}

} // namespace

TEST_F(ToolSpecificationXml, EveryFieldOfEveryTypeComesBack)
{
    RandomToolRecord random(41);
    for (int type = 0; type <= 48; ++type) {
        const ToolSpecification tool = random.record(ToolGeometry::Type(type), NCUnit::Unit(type % 2));
        const auto back = toolOf(textOf(tool));
        ASSERT_TRUE(back) << back.error();
        EXPECT_TRUE(back->isSame(tool, exactly)) << type;
        EXPECT_EQ(textOf(*back), textOf(tool));
    }
}

TEST_F(ToolSpecificationXml, AnEmptyRecordComesBack)
{
    const auto back = toolOf(textOf(ToolSpecification()));
    ASSERT_TRUE(back) << back.error();
    EXPECT_TRUE(back->isSame(ToolSpecification(), exactly));
}

TEST_F(ToolSpecificationXml, TextsKeepTheirLinesAndBlanks)
{
    ToolSpecification tool;
    tool.texts().description = L"  two\nlines,\ta tab\rand a return  ";
    const auto back = toolOf(textOf(tool));
    ASSERT_TRUE(back) << back.error();
    EXPECT_EQ(back->texts().description, tool.texts().description);
}

TEST_F(ToolSpecificationXml, NumbersThatAreNoneComeBack)
{
    ToolSpecification tool;
    tool.cutting().diameter = std::numeric_limits<double>::quiet_NaN();
    tool.cutting().bodyLength = std::numeric_limits<double>::infinity();
    tool.cutting().tipAngle = -std::numeric_limits<double>::infinity();
    tool.cutting().fluteLength = std::numeric_limits<double>::denorm_min();
    tool.cutting().threadPitch = std::numeric_limits<double>::max();
    tool.setCustomCutter({{Varn::Vector2D::getNaN(), false, true, {}}});
    const auto back = toolOf(textOf(tool));
    ASSERT_TRUE(back) << back.error();
    EXPECT_TRUE(back->isSame(tool, exactly));
}

TEST_F(ToolSpecificationXml, WhatIsMissingHasItsDefault)
{
    for (const char *text : {"<tool/>", "<anything/>", "<tool><cutting/><holder/><presets/><expressions/></tool>"}) {
        const auto tool = toolOf(text);
        ASSERT_TRUE(tool) << tool.error();
        EXPECT_TRUE(tool->isSame(ToolSpecification(), exactly)) << text;
    }
    const auto tool = toolOf(R"(<tool type="drill"><cutting tool_diameter="8" from="later"/><unknown/></tool>)");
    ASSERT_TRUE(tool) << tool.error();
    EXPECT_EQ(tool->getType(), ToolGeometry::TYPE_DRILL);
    EXPECT_EQ(tool->cutting().diameter, 8);
    EXPECT_FALSE(tool->cutting().overallLength.has_value());
}

TEST_F(ToolSpecificationXml, WhatIsNoValueIsNamed)
{
    const struct {
        const char *text;
        const char *error;
    } rows[] = {
        {R"(<tool type="drehen"/>)", R"(Element "tool": "type" has no valid value: "drehen")"},
        {R"(<tool unit="cm"/>)", R"(Element "tool": "unit" has no valid value: "cm")"},
        {R"(<tool><cutting tool_diameter="eight"/></tool>)",
         R"(Element "cutting": "tool_diameter" has no valid value: "eight")"},
        {R"(<tool><cutting tool_diameter=""/></tool>)", R"(Element "cutting": "tool_diameter" has no valid value: "")"},
        {R"(<tool><cutting tool_diameter="1e999"/></tool>)",
         R"(Element "cutting": "tool_diameter" has no valid value: "1e999")"},
        {R"(<tool><cutting tool_upperRadius="8 mm"/></tool>)",
         R"(Element "cutting": "tool_upperRadius" has no valid value: "8 mm")"},
        {R"(<tool><program number="1.5"/></tool>)", R"(Element "program": "number" has no valid value: "1.5")"},
        {R"(<tool><program number="99999999999"/></tool>)",
         R"(Element "program": "number" has no valid value: "99999999999")"},
        {R"(<tool><program live="1"/></tool>)", R"(Element "program": "live" has no valid value: "1")"},
        {R"(<tool><program material="cheese"/></tool>)",
         R"(Element "program": "material" has no valid value: "cheese")"},
        {R"(<tool><turning tool_hand="RR"/></tool>)", R"(Element "turning": "tool_hand" has no valid value: "RR")"},
        {R"(<tool><turning tool_insertType="Q"/></tool>)",
         R"(Element "turning": "tool_insertType" has no valid value: "Q")"},
        {R"(<tool><block orientationType="upside down"/></tool>)",
         R"(Element "block": "orientationType" has no valid value: "upside down")"},
        {R"(<tool><holder><section offset="x"/></holder></tool>)",
         R"(Element "section": "offset" has no valid value: "x")"},
        {R"(<tool><profile><arc ccw="maybe"/></profile></tool>)",
         R"(Element "arc": "ccw" has no valid value: "maybe")"},
        {R"(<tool><blockTransform m00="?"/></tool>)", R"(Element "blockTransform": "m00" has no valid value: "?")"},
        {R"(<tool><presets><preset kind="knitting"/></presets></tool>)",
         R"(Element "preset": "kind" has no valid value: "knitting")"},
        {R"(<tool><presets><preset/></presets></tool>)", R"(Element "preset": "kind" has no valid value: "")"},
        {R"(<tool><presets><preset kind="turning" tool_depthOfCut="deep"/></presets></tool>)",
         R"(Element "preset": "tool_depthOfCut" has no valid value: "deep")"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(errorOf(row.text), row.error) << row.text;
}

TEST_F(ToolSpecificationXml, AFailureLeavesTheRecord)
{
    RandomToolRecord random(3);
    const ToolSpecification tool = random.record(ToolGeometry::TYPE_DRILL, NCUnit::inches);
    ToolSpecification target = tool;
    const auto result =
        target.importFrom(read(R"(<tool type="probe" guid="x"><program number="many"/></tool>)").root());
    EXPECT_FALSE(result);
    EXPECT_TRUE(target.isSame(tool, exactly));
}

TEST_F(ToolSpecificationXml, AnErrorRepeatsALongValueInPartOnly)
{
    const std::string error = errorOf("<tool type=\"" + std::string(1'000'000, 'x') + "\"/>");
    EXPECT_LT(error.size(), 200u);
}

TEST_F(ToolSpecificationXml, ManySectionsAreRead)
{
    std::string text = "<tool><shaft>";
    for (int i = 0; i < 50'000; ++i)
        text += "<section offset=\"1\" diameter=\"2\"/>";
    const auto tool = toolOf(text + "</shaft></tool>");
    ASSERT_TRUE(tool) << tool.error();
    EXPECT_EQ(tool->getShaft().size(), 50'000u);
}

TEST_F(ToolSpecificationXml, AnElementThatIsNotThereIsAnEmptyRecord)
{
    ToolSpecification tool;
    tool.exportTo(Ox::XMLNode()); // nowhere to write to
    ASSERT_TRUE(tool.importFrom(Ox::XMLNode()));
    EXPECT_TRUE(tool.isSame(ToolSpecification(), exactly));
}

TEST_F(ToolSpecificationXml, APresetHoldsWhatItsKindHas)
{
    ToolSpecification probe;
    probe.setType(ToolGeometry::TYPE_PROBE);
    RandomToolRecord random(9);
    probe.addPreset(random.preset(probe, L"p"));
    const std::string text = textOf(probe);
    const std::string preset = text.substr(text.find("<preset "));
    EXPECT_THAT(preset, testing::HasSubstr("tool_feedProbeMeasure"));
    EXPECT_THAT(preset, testing::Not(testing::HasSubstr("tool_spindleSpeed=")));
}

TEST_F(ToolSpecificationXml, AValueThatIsNoEnumeratorIsWrittenAsOne)
{
    ToolSpecification tool;
    tool.getTurningParameterization().hand = ToolGeometry::Hand(0);
    tool.getTurningParameterization().insertType = ToolGeometry::InsertType(99);
    tool.getTurningParameterization().holderType = ToolGeometry::HolderType(-5);
    tool.getTurningParameterization().compensation = ToolGeometry::CompensationMode(99);
    tool.cutting().taperedType = ToolGeometry::TaperedType(99);
    tool.cutting().threadTipType = ToolGeometry::ThreadTipType(-1);
    tool.cutting().coolantSupport = ToolGeometry::CoolantSupport(99);
    tool.nc().material = Varn::NCTool::Material(99);
    tool.toolBlock().orientationType = Varn::ToolBlock::OrientationType(99);
    tool.currentValues().coolant = Varn::NCTool::Coolant(99);
    tool.currentValues().feedMode = Varn::ToolFeedMode(99);
    tool.currentValues().materialCategory = ToolSpecification::PresetMaterialCategory(99);
    const auto back = toolOf(textOf(tool));
    ASSERT_TRUE(back) << back.error();
    EXPECT_EQ(back->getTurningParameterization().hand, ToolGeometry::HAND_RIGHT);
    EXPECT_EQ(back->getTurningParameterization().insertType, ToolGeometry::INSERT_CUSTOM);
    EXPECT_EQ(back->nc().material, Varn::NCTool::MATERIAL_UNSPECIFIED);
    EXPECT_EQ(textOf(*back), textOf(tool));
}

TEST_F(ToolSpecificationXml, AnExpressionForNoParameterIsPassedOver)
{
    const auto tool = toolOf(R"(<tool><expressions>
        <expression text="1"/><expression parameter="" text="2"/><expression parameter="tool_diameter"/>
        </expressions></tool>)");
    ASSERT_TRUE(tool) << tool.error();
    EXPECT_THAT(tool->getExpressions(), testing::ElementsAre(testing::Pair(L"tool_diameter", L"")));
}

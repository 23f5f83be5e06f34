#include "platform/core/ToolSpecification.h"

#include "RandomToolRecord.h"
#include "platform/core/ToolError.h"
#include "platform/core/ToolFeedsAndSpeedsPreset.h"
#include "platform/nc/RecordUnits.h"
#include "platform/nc/Tool3DGeometry.h"
#include "platform/nc/ToolPlaceholder3DGeometry.h"
#include "platform/utils/Guid.h"
#include "platform/utils/Messages.h"

#include <gmock/gmock.h>

#include <limits>

using TestSupport::RandomToolRecord;
using Varn::NCUnit;
using Varn::ToolFeedsAndSpeedsPresetId;
using Varn::ToolGeometry;
using Varn::ToolPlaceholder3DGeometry;
using Varn::ToolRecordPart;
using Varn::ToolSpecification;

namespace {

using Options = ToolSpecification::ComparisonOptions;

/// Takes numbers exactly.
constexpr Options exactly{0, Options::IDENTITY_COMPARED, std::nullopt};

class Solid : public Varn::Tool3DGeometry
{
public:
    explicit Solid(std::wstring id) : Tool3DGeometry(std::move(id)) {}

private:
    bool writeTo(const Sink &) const override { return true; }
};

ToolSpecification turningTool()
{
    RandomToolRecord random(5);
    ToolSpecification tool = random.record(ToolGeometry::TYPE_TURNING_GENERAL, NCUnit::millimeters);
    while (!tool.hasAttachedToolBlock())
        tool = random.record(ToolGeometry::TYPE_TURNING_GENERAL, NCUnit::millimeters);
    return tool;
}

struct Change {
    const char *what;
    void (*apply)(ToolSpecification &);
};

const Change changesOfTheRest[] = {
    {"type", [](ToolSpecification &tool) { tool.setType(ToolGeometry::TYPE_TURNING_BORING); }},
    {"unit", [](ToolSpecification &tool) { tool.setUnit(NCUnit::inches); }},
    {"guid", [](ToolSpecification &tool) { tool.setGUID(L"another"); }},
    {"section",
     [](ToolSpecification &tool) {
         tool.holder().sections.push_back({1, 2});
     }},
    {"shaft", [](ToolSpecification &tool) { tool.removeShaft(); }},
    {"shaft diameter",
     [](ToolSpecification &tool) {
         auto shaft = tool.getShaft();
         shaft.back().diameter += 0.001;
         tool.setShaft(shaft);
     }},
    {"profile", [](ToolSpecification &tool) { tool.setCustomCutter({}); }},
    {"arc",
     [](ToolSpecification &tool) {
         auto profile = tool.getCustomCutter();
         profile.back().ccw = !profile.back().ccw;
         tool.setCustomCutter(profile);
     }},
    {"center",
     [](ToolSpecification &tool) {
         auto profile = tool.getCustomCutter();
         profile.back().center.x += 0.001;
         tool.setCustomCutter(profile);
     }},
    {"no place", [](ToolSpecification &tool) { tool.getTurningParameterization().toolBlockTransform.reset(); }},
    {"place",
     [](ToolSpecification &tool) {
         auto &place = *tool.getTurningParameterization().toolBlockTransform;
         place = Varn::Matrix4x4(place.getRotation(), {place.getTranslation().x, 0.001, place.getTranslation().z});
     }},
    {"turn",
     [](ToolSpecification &tool) {
         auto &place = *tool.getTurningParameterization().toolBlockTransform;
         place = Varn::Matrix4x4(Varn::Matrix3x3(), place.getTranslation());
     }},
    {"solid", [](ToolSpecification &tool) { tool.set3DGeometry(std::nullopt); }},
    {"another solid",
     [](ToolSpecification &tool) { tool.set3DGeometry(std::make_shared<ToolPlaceholder3DGeometry>(L"other")); }},
    {"solid of the block", [](ToolSpecification &tool) { tool.setNested3DGeometry(std::nullopt); }},
    {"expression", [](ToolSpecification &tool) { tool.setExpression(L"tool_diameter", L"1"); }},
    {"no expression", [](ToolSpecification &tool) { tool.setExpression(L"tool_diameter", std::nullopt); }},
    {"presets", [](ToolSpecification &tool) { tool.setPresets({}); }},
    {"fewer presets", [](ToolSpecification &tool) { tool.setPresets({tool.getPresets().front()}); }},
    {"order of presets",
     [](ToolSpecification &tool) {
         tool.setPresets({tool.getPresets().back(), tool.getPresets().front()});
     }},
    {"default preset", [](ToolSpecification &tool) { tool.setDefaultPresetId(ToolFeedsAndSpeedsPresetId(L"one")); }},
};

} // namespace

TEST(ToolSpecificationRecord, EveryFieldCountsInAComparison)
{
    RandomToolRecord random(17);
    const ToolSpecification tool = turningTool();
    int fields = 0;
    Varn::forEachRecordField([&](const ToolRecordPart &part, const auto &access, const auto &field) {
        ToolSpecification changed = tool;
        ASSERT_TRUE(changed.isSame(tool, Options()));
        random.change(access(changed).*field.member);
        EXPECT_FALSE(changed.isSame(tool, Options())) << part.element << " " << field.name;
        EXPECT_FALSE(tool.isSame(changed, Options())) << part.element << " " << field.name;
        ++fields;
    });
    EXPECT_GT(fields, 140);
}

TEST(ToolSpecificationRecord, WhatIsNoFieldCountsToo)
{
    const ToolSpecification tool = turningTool();
    for (const Change &change : changesOfTheRest) {
        ToolSpecification changed = tool;
        change.apply(changed);
        EXPECT_FALSE(changed.isSame(tool, Options())) << change.what;
    }
}

TEST(ToolSpecificationRecord, AChangeOfACopyLeavesTheRecord)
{
    const ToolSpecification tool = turningTool();
    const ToolSpecification witness = turningTool();
    for (const Change &change : changesOfTheRest) {
        ToolSpecification copy = tool;
        EXPECT_TRUE(copy.isSame(witness, exactly)) << change.what;
        change.apply(copy);
        EXPECT_TRUE(tool.isSame(witness, exactly)) << change.what;
        copy = tool;
        const ToolSpecification moved = std::move(copy);
        EXPECT_TRUE(moved.isSame(witness, exactly)) << change.what;
    }
}

TEST(ToolSpecificationRecord, NumbersMayDifferByTheTolerance)
{
    const ToolSpecification tool = turningTool();
    ToolSpecification changed = tool;
    changed.cutting().diameter += 4e-7;
    EXPECT_TRUE(changed.isSame(tool, Options()));
    EXPECT_FALSE(changed.isSame(tool, exactly));
    changed.cutting().diameter += 1e-6;
    EXPECT_FALSE(changed.isSame(tool, Options()));
    Options wide;
    wide.tolerance = 0.01;
    EXPECT_TRUE(changed.isSame(tool, wide));
}

TEST(ToolSpecificationRecord, ANumberThatIsNoneIsTheSameAsItself)
{
    ToolSpecification tool;
    tool.cutting().diameter = std::numeric_limits<double>::quiet_NaN();
    tool.cutting().fluteLength = std::numeric_limits<double>::infinity();
    tool.cutting().upperRadius = std::numeric_limits<double>::quiet_NaN();
    tool.setCustomCutter({{Varn::Vector2D::getNaN(), false, true, {}}});
    EXPECT_TRUE(tool.isSame(ToolSpecification(tool), Options()));
    ToolSpecification other = tool;
    other.cutting().diameter = 0;
    EXPECT_FALSE(tool.isSame(other, Options()));
    other = tool;
    other.cutting().fluteLength = -std::numeric_limits<double>::infinity();
    EXPECT_FALSE(tool.isSame(other, Options()));
}

TEST(ToolSpecificationRecord, WithoutIdentityTheSameToolUnderOtherNamesIsTheSame)
{
    const ToolSpecification tool = turningTool();
    ToolSpecification renamed = tool;
    renamed.resetGUID();
    renamed.setHolderGUID(L"another holder");
    renamed.setToolBlockGUID(L"another block");
    renamed.set3DGeometry(std::make_shared<ToolPlaceholder3DGeometry>(L"a copy"));
    renamed.setNested3DGeometry(std::make_shared<ToolPlaceholder3DGeometry>(L"a second copy"));
    EXPECT_FALSE(renamed.isSame(tool, Options()));
    Options options;
    options.identity = Options::IDENTITY_IGNORED;
    EXPECT_TRUE(renamed.isSame(tool, options));
    renamed.cutting().diameter += 1;
    EXPECT_FALSE(renamed.isSame(tool, options));
}

TEST(ToolSpecificationRecord, CurrentValuesMayBeLeftOut)
{
    const ToolSpecification tool = turningTool();
    ToolSpecification other = tool;
    other.currentValues().spindleSpeed += 1;
    Options options;
    EXPECT_FALSE(other.isSame(tool, options));
    options.currentValues = true;
    EXPECT_FALSE(other.isSame(tool, options));
    options.currentValues = false;
    EXPECT_TRUE(other.isSame(tool, options));
}

TEST(ToolSpecificationRecord, FaultsCountWhateverTheirLanguage)
{
    using Varn::ToolError;
    const auto fault = [](int code, const wchar_t *parameter, const wchar_t *value, ToolError::Kind kind,
                          const wchar_t *message) {
        ToolSpecification tool;
        tool.setErrors({std::make_shared<ToolError>(code, parameter, value, kind, message)});
        return tool;
    };
    const auto error = ToolError::Kind::Error;
    const ToolSpecification tool = fault(3201, L"tool_diameter", L"-1", error, L"too small");
    EXPECT_TRUE(tool.isSame(fault(3201, L"tool_diameter", L"-1", error, L"zu klein"), Options()));
    EXPECT_FALSE(tool.isSame(fault(2201, L"tool_diameter", L"-1", error, L"too small"), Options()));
    EXPECT_FALSE(tool.isSame(fault(3201, L"tool_number", L"-1", error, L"too small"), Options()));
    EXPECT_FALSE(tool.isSame(fault(3201, L"tool_diameter", L"-2", error, L"too small"), Options()));
    EXPECT_FALSE(tool.isSame(fault(3201, L"tool_diameter", L"-1", ToolError::Kind::Warning, L"too small"), Options()));
    EXPECT_FALSE(tool.isSame(ToolSpecification(), Options()));
    EXPECT_EQ(ToolSpecification(tool).getErrors(), tool.getErrors());
}

TEST(ToolSpecificationRecord, ALineHasNoCenter)
{
    ToolSpecification a;
    ToolSpecification b;
    a.setCustomCutter({{{1, 2}, false, true, {}}});
    b.setCustomCutter({{{1, 2}, false, false, {3, 4}}});
    EXPECT_TRUE(a.isSame(b, Options()));
}

TEST(ToolSpecificationRecord, ANewGuidIsOne)
{
    ToolSpecification tool;
    EXPECT_EQ(tool.getGUID(), L"");
    tool.resetGUID();
    const std::string guid = Varn::Messages::fromWideUnicodeToUTF8(tool.getGUID());
    EXPECT_EQ(Varn::Guid::fromString(guid).asString(), guid);
    ToolSpecification other;
    other.resetGUID();
    EXPECT_NE(other.getGUID(), tool.getGUID());
}

TEST(ToolSpecificationRecord, EveryQuantityIsConvertedAndNothingElse)
{
    RandomToolRecord random(23);
    for (int type = 1; type <= 48; ++type) {
        const auto tool = random.record(ToolGeometry::Type(type), NCUnit::inches);
        ToolSpecification metric = tool;
        metric.convertToUnit(NCUnit::millimeters);
        EXPECT_EQ(metric.getUnit(), NCUnit::millimeters);
        Varn::forEachRecordField([&](const ToolRecordPart &part, const auto &access, const auto &field) {
            const auto &before = access(tool).*field.member;
            const auto &after = access(metric).*field.member;
            using Value = std::remove_cvref_t<decltype(before)>;
            if constexpr (std::is_same_v<Value, double>) {
                EXPECT_EQ(after, Varn::inUnit(before, field.quantity, NCUnit::inches, NCUnit::millimeters))
                    << part.element << " " << field.name;
            } else if constexpr (!std::is_same_v<Value, std::optional<double>>) {
                EXPECT_EQ(after, before) << part.element << " " << field.name;
            }
        });
        metric.convertToUnit(NCUnit::inches);
        EXPECT_TRUE(metric.isSame(tool, Options())) << type;
        Varn::forEachRecordField([&](const ToolRecordPart &part, const auto &access, const auto &field) {
            using Quantity = Varn::FieldQuantity;
            if (field.quantity == Quantity::Length || field.quantity == Quantity::Feed) {
                EXPECT_EQ(access(metric).*field.member, access(tool).*field.member)
                    << part.element << " " << field.name;
            }
        });
        EXPECT_EQ(metric.getHolder(), tool.getHolder());
        EXPECT_EQ(metric.getShaft(), tool.getShaft());
        EXPECT_EQ(metric.getCustomCutter(), tool.getCustomCutter());
    }
}

TEST(ToolSpecificationRecord, OutlinesSolidsPlaceAndPresetsAreConverted)
{
    ToolSpecification tool;
    tool.setType(ToolGeometry::TYPE_FLAT_END_MILL);
    tool.setUnit(NCUnit::inches);
    tool.setHolder({{1, 2}});
    tool.setShaft({{3, 4}});
    tool.setCustomCutter({{{1, 2}, true, true, {3, 4}}});
    tool.getTurningParameterization().toolBlockTransform = Varn::Matrix4x4({}, {1, 2, 3});
    tool.cutting().taperAngle = 30;
    tool.cutting().overallLength = 3;
    tool.cutting().chamferAngle = 45;
    tool.currentValues().feedCutting = 40;
    tool.currentValues().spindleSpeed = 5000;
    tool.currentValues().stepdown = 0.1;
    tool.addPreset(Varn::ToolFeedsAndSpeedsPreset::fromCurrentValues(
        Varn::ToolFeedsAndSpeedsPreset::Metadata::createDefault(), tool));
    tool.setExpression(L"tool_diameter", L"1 + tool_cornerRadius");
    tool.convertToUnit(NCUnit::millimeters);
    EXPECT_EQ(tool.getHolder(), (std::vector<Varn::ToolSection>{{25.4, 50.8}}));
    EXPECT_EQ(tool.getShaft(), (std::vector<Varn::ToolSection>{{76.2, 101.6}}));
    EXPECT_EQ(tool.getCustomCutter().front().end, (Varn::Vector2D{25.4, 50.8}));
    EXPECT_EQ(tool.getCustomCutter().front().center, (Varn::Vector2D{76.2, 101.6}));
    EXPECT_EQ(tool.getTurningParameterization().toolBlockTransform->getTranslation(),
              (Varn::Vector3D{25.4, 50.8, 76.2}));
    EXPECT_EQ(tool.cutting().taperAngle, 30);
    EXPECT_EQ(tool.cutting().overallLength, 76.2);
    EXPECT_EQ(tool.cutting().chamferAngle, 45);
    EXPECT_EQ(tool.getExpressions().at(L"tool_diameter"), L"1 + tool_cornerRadius");
    const auto &preset = *tool.getPresets().front();
    EXPECT_EQ(preset.unit(), NCUnit::millimeters);
    EXPECT_EQ(preset.details().feedCutting, 1016);
    EXPECT_EQ(preset.details().spindleSpeed, 5000);
    EXPECT_EQ(preset.details().stepdown, 2.54);
}

TEST(ToolSpecificationRecord, ExpressionsAreAddedReplacedAndRemoved)
{
    ToolSpecification tool;
    tool.setExpression(L"tool_diameter", L"1");
    tool.setExpression(L"tool_number", L"2");
    tool.setExpression(L"tool_diameter", L"3");
    EXPECT_THAT(tool.getExpressions(),
                testing::ElementsAre(testing::Pair(L"tool_diameter", L"3"), testing::Pair(L"tool_number", L"2")));
    tool.setExpression(L"tool_diameter", std::nullopt);
    tool.setExpression(L"never there", std::nullopt);
    EXPECT_EQ(tool.getExpressions().size(), 1u);
}

TEST(ToolSpecificationRecord, TheDefaultPresetIsTheFirstUnlessOneIsSet)
{
    ToolSpecification tool;
    EXPECT_FALSE(tool.getDefaultPresetId().has_value());
    EXPECT_FALSE(tool.hasPresets());
    RandomToolRecord random(1);
    tool.setType(ToolGeometry::TYPE_DRILL);
    tool.setPresets({random.preset(tool, L"a"), nullptr, random.preset(tool, L"b")});
    tool.addPreset(nullptr);
    EXPECT_EQ(tool.getPresets().size(), 2u);
    EXPECT_EQ(tool.getDefaultPresetId()->toString(), L"a");
    tool.setDefaultPresetId(ToolFeedsAndSpeedsPresetId(L"b"));
    EXPECT_EQ(tool.getDefaultPresetId()->toString(), L"b");
    tool.setDefaultPresetId(ToolFeedsAndSpeedsPresetId(L"gone"));
    EXPECT_EQ(tool.getDefaultPresetId()->toString(), L"a");
    EXPECT_EQ(tool.getPreset(ToolFeedsAndSpeedsPresetId(L"b")), tool.getPresets().back());
    EXPECT_EQ(tool.getPreset(ToolFeedsAndSpeedsPresetId(L"c")), nullptr);
}

TEST(ToolSpecificationRecord, AHolderAndABlockAnswerForThemselves)
{
    ToolSpecification tool;
    tool.setType(ToolGeometry::TYPE_DRILL);
    tool.setGUID(L"own");
    tool.texts() = {L"own description", L"own vendor", L"own id", L"own link"};
    tool.nc().comment = L"own comment";
    tool.nc().live = true;
    tool.setHolderGUID(L"holder");
    tool.holder().texts = {L"d", L"v", L"i", L"l"};
    tool.setToolBlockGUID(L"block");
    tool.toolBlock().texts = {L"D", L"V", L"I", L"L"};
    tool.toolBlock().comment = L"C";
    tool.toolBlock().live = false;
    EXPECT_EQ(tool.getHolderGUID(), L"holder");
    EXPECT_EQ(tool.getHolderDescription() + tool.getHolderVendor() + tool.getHolderProductId() +
                  tool.getHolderProductLink(),
              L"dvil");
    EXPECT_EQ(tool.getToolBlockGUID(), L"block");
    EXPECT_EQ(tool.getToolBlockDescription() + tool.getToolBlockVendor() + tool.getToolBlockProductId() +
                  tool.getToolBlockProductLink() + tool.getToolBlockComment(),
              L"DVILC");
    EXPECT_FALSE(tool.getToolBlockLive());

    tool.setType(ToolGeometry::TYPE_HOLDER);
    EXPECT_EQ(tool.getHolderGUID(), L"own");
    EXPECT_EQ(tool.getHolderDescription(), L"own description");
    EXPECT_EQ(tool.getHolderVendor(), L"own vendor");
    EXPECT_EQ(tool.getHolderProductId(), L"own id");
    EXPECT_EQ(tool.getHolderProductLink(), L"own link");

    tool.setType(ToolGeometry::TYPE_TOOL_BLOCK);
    EXPECT_EQ(tool.getToolBlockGUID(), L"own");
    EXPECT_EQ(tool.getToolBlockDescription(), L"own description");
    EXPECT_EQ(tool.getToolBlockComment(), L"own comment");
    EXPECT_TRUE(tool.getToolBlockLive());
}

TEST(ToolSpecificationRecord, SolidsAreRestoredAsFarAsTheyAreFound)
{
    ToolSpecification tool;
    tool.set3DGeometry(std::make_shared<ToolPlaceholder3DGeometry>(L"known"));
    tool.setNested3DGeometry(std::make_shared<ToolPlaceholder3DGeometry>(L"unknown"));
    tool.restore3DGeometry(); // nobody knows any
    EXPECT_EQ(tool.getLoaded3DGeometry(), nullptr);

    const auto solid = std::make_shared<Solid>(L"known");
    ToolSpecification::set3DGeometryResolver(
        [solid](const std::wstring &id) -> ToolGeometry::Raw3DGeometry { return id == L"known" ? solid : nullptr; });
    tool.restore3DGeometry();
    EXPECT_EQ(tool.getRaw3DGeometry(), solid);
    EXPECT_EQ(tool.getPlaceholderNested3DGeometry()->id(), L"unknown");
    tool.setNested3DGeometry(std::make_shared<ToolPlaceholder3DGeometry>(L"known"));
    tool.restore3DGeometry();
    EXPECT_EQ(tool.getLoadedNested3DGeometry(), solid);
    ToolSpecification::set3DGeometryResolver(nullptr);
    ToolSpecification().restore3DGeometry();
}

TEST(ToolSpecificationRecord, AnInvalidRecordForgetsWhatFillingAddsTo)
{
    ToolSpecification tool = turningTool();
    const auto diameter = tool.cutting().diameter;
    const std::wstring guid = tool.getGUID();
    tool.setErrors({nullptr});
    tool.invalidate();
    EXPECT_TRUE(tool.getErrors().empty());
    EXPECT_TRUE(tool.getExpressions().empty());
    EXPECT_EQ(tool.getRaw3DGeometry(), nullptr);
    EXPECT_EQ(tool.getRawNested3DGeometry(), nullptr);
    EXPECT_FALSE(tool.hasHolder());
    EXPECT_FALSE(tool.hasShaft());
    EXPECT_FALSE(tool.hasAttachedToolBlock());
    EXPECT_TRUE(tool.getCustomCutter().empty());
    EXPECT_EQ(tool.cutting().diameter, diameter);
    EXPECT_EQ(tool.getGUID(), guid);
    EXPECT_TRUE(tool.hasPresets());
}

TEST(ToolSpecificationRecord, TabbedValuesHaveAColumnForEveryName)
{
    ToolSpecification tool = turningTool();
    tool.texts().description = L"two\tcolumns\r\nand lines";
    const std::wstring lines = tool.getAsTabbedValues(true);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), L'\n'), 2);
    const std::wstring names = lines.substr(0, lines.find(L'\n'));
    const std::wstring values = lines.substr(lines.find(L'\n') + 1);
    EXPECT_EQ(std::count(names.begin(), names.end(), L'\t'), std::count(values.begin(), values.end(), L'\t'));
    EXPECT_EQ(tool.getAsTabbedValues(false), values);
    EXPECT_NE(names.find(L"\ttool_diameter\t"), std::wstring::npos);
    EXPECT_NE(names.find(L"\ttool_block_numberOfTools\t"), std::wstring::npos);
    EXPECT_NE(values.find(L"\tturning general\tmillimeters\ttwo columns  and lines\t"), std::wstring::npos);
}

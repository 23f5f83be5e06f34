#include "platform/nc/ToolGeometry.h"

#include "platform/tool/Exception.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <map>
#include <numbers>
#include <set>
#include <string>
#include <vector>

using testing::HasSubstr;
using Varn::ToolGeometry;

namespace {

struct NamedType {
    ToolGeometry::Type type;
    std::string name;
};

#define NAMED(name)                                                                                                    \
    {                                                                                                                  \
        ToolGeometry::name, #name                                                                                      \
    }
const std::vector<NamedType> namedTypes = {
    NAMED(TYPE_DRILL),
    NAMED(TYPE_CENTER_DRILL),
    NAMED(TYPE_SPOT_DRILL),
    NAMED(TYPE_MULTI_SPINDLE_DRILL),
    NAMED(TYPE_FLAT_END_MILL),
    NAMED(TYPE_BALL_END_MILL),
    NAMED(TYPE_BULL_NOSE_END_MILL),
    NAMED(TYPE_CHAMFER_MILL),
    NAMED(TYPE_FACE_MILL),
    NAMED(TYPE_SLOT_MILL),
    NAMED(TYPE_RADIUS_MILL),
    NAMED(TYPE_DOVETAIL_MILL),
    NAMED(TYPE_TAPERED_MILL),
    NAMED(TYPE_LOLLIPOP_MILL),
    NAMED(TYPE_RIGHT_HAND_TAP),
    NAMED(TYPE_LEFT_HAND_TAP),
    NAMED(TYPE_REAMER),
    NAMED(TYPE_BORING_HEAD),
    NAMED(TYPE_COUNTERBORE),
    NAMED(TYPE_COUNTERSINK),
    NAMED(TYPE_HOLDER),
    NAMED(TYPE_TURNING_GENERAL),
    NAMED(TYPE_TURNING_THREADING),
    NAMED(TYPE_TURNING_GROOVING),
    NAMED(TYPE_TURNING_BORING),
    NAMED(TYPE_PROBE),
    NAMED(TYPE_ENGRAVING_TOOL),
    NAMED(TYPE_ROUGHING_END_MILL),
    NAMED(TYPE_WATERJET),
    NAMED(TYPE_LASER_CUTTER),
    NAMED(TYPE_SLITTING_SAW),
    NAMED(TYPE_WOODRUFF_CUTTER),
    NAMED(TYPE_FORM_MILL),
    NAMED(TYPE_BACK_CHAMFER_MILL),
    NAMED(TYPE_DEBURRING_TOOL),
    NAMED(TYPE_PLASMA_CUTTER),
    NAMED(TYPE_GEAR_CUTTER),
    NAMED(TYPE_THREAD_MILL),
    NAMED(TYPE_LASER_POWDER),
    NAMED(TYPE_LASER_WIRE),
    NAMED(TYPE_ELECTRIC_ARC_WIRE),
    NAMED(TYPE_CIRCLE_SEGMENT_BARREL),
    NAMED(TYPE_CIRCLE_SEGMENT_LENS),
    NAMED(TYPE_CIRCLE_SEGMENT_OVAL),
    NAMED(TYPE_CIRCLE_SEGMENT_TAPER),
    NAMED(TYPE_CORNER_CHAMFER_END_MILL),
    NAMED(TYPE_TOOL_BLOCK),
    NAMED(TYPE_PLUNGE_MILL),
};
#undef NAMED

/// "TYPE_DRILL" to "drill".
std::string keywordOf(std::string enumerator)
{
    enumerator = enumerator == "TYPE_MULTI_SPINDLE_DRILL" ? "TYPE_MULTI-SPINDLE_DRILL" : enumerator;
    std::string keyword;
    for (const char c : enumerator.substr(5))
        keyword += c == '_' ? ' ' : static_cast<char>(std::tolower(c));
    return keyword;
}

using Predicate = bool (*)(ToolGeometry::Type);

std::set<int> valuesWith(Predicate predicate)
{
    std::set<int> values;
    for (int value = -2; value <= 70; ++value) {
        if (predicate(ToolGeometry::Type(value)))
            values.insert(value);
    }
    return values;
}

double radians(double degrees)
{
    return degrees * std::numbers::pi / 180;
}

} // namespace

TEST(ToolGeometry, TheFortyEightTypesAreNumberedFromOne)
{
    ASSERT_EQ(namedTypes.size(), 48u);
    for (std::size_t i = 0; i < namedTypes.size(); ++i)
        EXPECT_EQ(namedTypes[i].type, static_cast<int>(i) + 1) << namedTypes[i].name;
}

TEST(ToolGeometry, EachTypeAndItsKeywordLeadToEachOther)
{
    for (const auto &[type, name] : namedTypes) {
        const std::string keyword = keywordOf(name);
        const std::wstring wide(keyword.begin(), keyword.end());
        EXPECT_EQ(ToolGeometry::getToolTypeAsString(type), keyword);
        EXPECT_EQ(ToolGeometry::getToolTypeFromString(keyword), type) << keyword;
        EXPECT_EQ(ToolGeometry::getToolTypeFromString(wide), type) << keyword;
        EXPECT_EQ(ToolGeometry::getToolTypeFromStringNoThrow(keyword), type) << keyword;
        EXPECT_EQ(ToolGeometry::getToolTypeFromStringNoThrow(wide), type) << keyword;
    }
}

TEST(ToolGeometry, TheKeywordsThatFilesRelyOn)
{
    const std::map<int, std::string> keywords = {
        {13, "tapered mill"},      {21, "holder"},           {22, "turning general"},
        {23, "turning threading"}, {24, "turning grooving"}, {25, "turning boring"},
        {33, "form mill"},         {38, "thread mill"},      {47, "tool block"},
    };
    for (const auto &[value, keyword] : keywords)
        EXPECT_EQ(ToolGeometry::getToolTypeAsString(ToolGeometry::Type(value)), keyword);
}

TEST(ToolGeometry, NoTypeHasAKeywordToo)
{
    EXPECT_EQ(ToolGeometry::getToolTypeFromString("unspecified"), ToolGeometry::TYPE_NONE);
    for (const int value : {0, -1, 49, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        EXPECT_EQ(ToolGeometry::getToolTypeAsString(ToolGeometry::Type(value)), "unspecified") << value;
}

TEST(ToolGeometry, AnUnknownKeywordIsNoTypeOrAnErrorThatNamesIt)
{
    for (const char *keyword : {"", "Drill", "drill ", " drill", "dril", "drills", "bohrer \xC3\xBC", "tapered_mill"}) {
        EXPECT_EQ(ToolGeometry::getToolTypeFromStringNoThrow(keyword), 0) << keyword;
        try {
            ToolGeometry::getToolTypeFromString(keyword);
            FAIL() << keyword;
        } catch (const Varn::ToolLibraries::InvalidInput &error) {
            EXPECT_THAT(error.what(), HasSubstr("\"" + std::string(keyword) + "\""));
        }
    }
    EXPECT_EQ(ToolGeometry::getToolTypeFromStringNoThrow(L"\u0434rill"), 0);
    EXPECT_THROW(ToolGeometry::getToolTypeFromString(L"Bohrer \u00FC"), Varn::ToolLibraries::InvalidInput);
    EXPECT_EQ(ToolGeometry::getToolTypeFromStringNoThrow(std::string(1 << 20, 'd')), 0);
}

TEST(ToolGeometry, TheFamiliesShareTheTypesOut)
{
    const std::set<int> mills = {5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 27, 28, 31,
                                 32, 33, 34, 35, 37, 38, 42, 43, 44, 45, 46, 48};
    EXPECT_EQ(valuesWith(ToolGeometry::isMill), mills);
    EXPECT_EQ(valuesWith(ToolGeometry::isDrill), (std::set{1, 2, 3, 4, 15, 16, 17, 18, 19, 20}));
    EXPECT_EQ(valuesWith(ToolGeometry::isProbe), (std::set{26}));
    EXPECT_EQ(valuesWith(ToolGeometry::isJetCutter), (std::set{29, 30, 36}));
    EXPECT_EQ(valuesWith(ToolGeometry::isTurning), (std::set{22, 23, 24, 25}));
    EXPECT_EQ(valuesWith(ToolGeometry::isDepositing), (std::set{39, 40, 41}));
    EXPECT_EQ(valuesWith(ToolGeometry::isHolderOnly), (std::set{21}));
    EXPECT_EQ(valuesWith(ToolGeometry::isToolBlockOnly), (std::set{47}));
}

TEST(ToolGeometry, EachTypeIsOfExactlyOneFamily)
{
    const std::vector<Predicate> families = {
        ToolGeometry::isMill,    ToolGeometry::isDrill,      ToolGeometry::isProbe,      ToolGeometry::isJetCutter,
        ToolGeometry::isTurning, ToolGeometry::isDepositing, ToolGeometry::isHolderOnly, ToolGeometry::isToolBlockOnly,
    };
    for (int value = -1; value <= 49; ++value) {
        int count = 0;
        for (const Predicate isMember : families)
            count += isMember(ToolGeometry::Type(value)) ? 1 : 0;
        EXPECT_EQ(count, value >= 1 && value <= 48 ? 1 : 0) << value;
    }
}

TEST(ToolGeometry, MembersWithinTheFamilies)
{
    EXPECT_EQ(valuesWith(ToolGeometry::isFormMill), (std::set{33}));
    EXPECT_EQ(valuesWith(ToolGeometry::isCircleSegmentTool), (std::set{42, 43, 44, 45}));
    EXPECT_EQ(valuesWith(ToolGeometry::isCornerChamferEndMill), (std::set{46}));
    EXPECT_EQ(valuesWith(ToolGeometry::isGeneralHoleMaking), (std::set{1, 2, 3, 17, 19}));
    EXPECT_EQ(valuesWith(ToolGeometry::isBoringHoleMaking), (std::set{4, 18, 20}));
    EXPECT_EQ(valuesWith(ToolGeometry::hasTipAngle), valuesWith(ToolGeometry::isDrill));
    EXPECT_EQ(valuesWith(ToolGeometry::supports3DGeometry), (std::set{22, 23, 24, 25, 47}));
}

TEST(ToolGeometry, ThreadTips)
{
    EXPECT_EQ(ToolGeometry::getThreadTipTypeAsString(ToolGeometry::THREAD_TIP_FLAT), "flat");
    EXPECT_EQ(ToolGeometry::getThreadTipTypeAsString(ToolGeometry::THREAD_TIP_ROUND), "round");
    EXPECT_EQ(ToolGeometry::getThreadTipTypeAsString(ToolGeometry::THREAD_TIP_POINT), "point");
    EXPECT_EQ(ToolGeometry::getThreadTipTypeAsString(ToolGeometry::ThreadTipType(9)), "flat");
}

TEST(ToolGeometry, AHandIsTheValueOfItsLetter)
{
    EXPECT_EQ(ToolGeometry::HAND_RIGHT, 82);
    EXPECT_EQ(ToolGeometry::HAND_LEFT, 76);
    EXPECT_EQ(ToolGeometry::HAND_NEUTRAL, 78);
}

TEST(ToolGeometry, SegmentsAreNumberedFromTheTipUp)
{
    EXPECT_EQ(ToolGeometry::SEGMENT_PROBE_TIP, 0);
    EXPECT_EQ(ToolGeometry::SEGMENT_FLUTE, 1);
    EXPECT_EQ(ToolGeometry::SEGMENT_SHOULDER, 2);
    EXPECT_EQ(ToolGeometry::SEGMENT_SHAFT, 3);
    EXPECT_EQ(ToolGeometry::ToolSegment(4), ToolGeometry::SEGMENT_HOLDER);
}

TEST(ToolGeometry, AHandAndItsLetterLeadToEachOther)
{
    using Turning = ToolGeometry::TurningToolParameterization;
    for (const char letter : {'L', 'N', 'R'})
        EXPECT_EQ(Turning::getHandAsChar(Turning::getHandFromChar(letter).value()), letter);
    for (int letter = -128; letter < 128; ++letter)
        EXPECT_EQ(Turning::getHandFromChar(static_cast<char>(letter)).has_value(),
                  letter == 'L' || letter == 'N' || letter == 'R');
    for (const int none : {0, -1, 108, 256 + 76, 1'000'000})
        EXPECT_EQ(Turning::getHandAsChar(ToolGeometry::Hand(none)), 'R') << none;
}

TEST(ToolGeometry, InsertLettersLeadThereAndBack)
{
    std::wstring letters;
    for (int value = -1; value <= 24; ++value) {
        const auto type = ToolGeometry::InsertType(value);
        const wchar_t letter = ToolGeometry::insertTypeChar(type);
        EXPECT_EQ(letter != 0, value >= 1 && value <= 16) << value;
        if (letter == 0)
            continue;
        letters += letter;
        EXPECT_EQ(ToolGeometry::insertTypeFromChar(letter), type) << value;
    }
    EXPECT_EQ(letters, L"ABCDEHKLMOPRSTVW");
    for (const wchar_t letter : {L'\0', L'c', L'F', L'Z', L' ', L'\u0421'})
        EXPECT_EQ(ToolGeometry::insertTypeFromChar(letter), std::nullopt) << static_cast<int>(letter);
}

TEST(ToolGeometry, OnlyTheFirstInsertIsCustom)
{
    for (int value = 0; value <= 22; ++value)
        EXPECT_EQ(ToolGeometry::isCustomInsert(ToolGeometry::InsertType(value)), value == 0) << value;
}

TEST(ToolGeometry, CuttingLengthFollowsFromTheShapeAroundTheCircle)
{
    const auto rhombus = [](double angle) { return 1 / std::sin(radians(angle)); };
    const auto polygon = [](int sides) { return std::tan(radians(180.0 / sides)); };
    const auto cot = [](double angle) { return 1 / std::tan(radians(angle)); };
    const std::map<wchar_t, double> factors = {
        {L'C', rhombus(80)},
        {L'D', rhombus(55)},
        {L'E', rhombus(75)},
        {L'M', rhombus(86)},
        {L'V', rhombus(35)},
        {L'T', polygon(3)},
        {L'S', polygon(4)},
        {L'P', polygon(5)},
        {L'H', polygon(6)},
        {L'O', polygon(8)},
        {L'R', 1},
        {L'W', (cot(40) + cot(80)) / 2},
        {L'L', 2},
        {L'A', 16.15 / 9.525},
        {L'B', 16.15 / 9.525},
        {L'K', 16.15 / 9.525},
    };
    ASSERT_EQ(factors.size(), 16u);
    for (const auto &[letter, factor] : factors) {
        const auto type = ToolGeometry::insertTypeFromChar(letter);
        ASSERT_TRUE(type);
        EXPECT_NEAR(ToolGeometry::insertTypeCuttingLengthToICFactor(*type), factor, 1e-14) << static_cast<char>(letter);
    }
}

TEST(ToolGeometry, CatalogueSizesComeOutOfTheFactor)
{
    // Edges of an inscribed circle of 12.7 as in CNMG12, DNMG15, SNMG12, TNMG22, VNMG22 and WNMG08: the length to a
    // tenth of a millimeter with the decimals dropped (ISO 1832).
    const std::map<wchar_t, int> sizes = {{L'C', 12}, {L'D', 15}, {L'S', 12}, {L'T', 22}, {L'V', 22}, {L'W', 8}};
    for (const auto &[letter, size] : sizes) {
        const double factor =
            ToolGeometry::insertTypeCuttingLengthToICFactor(*ToolGeometry::insertTypeFromChar(letter));
        EXPECT_EQ(static_cast<int>(std::round(12.7 * factor * 10) / 10), size) << static_cast<char>(letter);
    }
}

TEST(ToolGeometry, InsertsWithoutACircleHaveTheFactorOne)
{
    for (const int value : {0, 17, 18, 19, 20, 21, 22, 23, -1})
        EXPECT_EQ(ToolGeometry::insertTypeCuttingLengthToICFactor(ToolGeometry::InsertType(value)), 1) << value;
}

TEST(ToolGeometry, AnyRhombusHasItsOwnFactor)
{
    EXPECT_DOUBLE_EQ(ToolGeometry::insertDiamondInsertCuttingLengthToICFactor(90), 1);
    EXPECT_DOUBLE_EQ(ToolGeometry::insertDiamondInsertCuttingLengthToICFactor(30), 2);
    EXPECT_DOUBLE_EQ(ToolGeometry::insertDiamondInsertCuttingLengthToICFactor(150), 2);
    EXPECT_DOUBLE_EQ(ToolGeometry::insertDiamondInsertCuttingLengthToICFactor(80),
                     ToolGeometry::insertTypeCuttingLengthToICFactor(ToolGeometry::INSERT_C));
}

TEST(ToolGeometry, AnAngleThatMakesNoRhombusHasTheFactorOne)
{
    for (const double degrees : {0.0, -0.0, -30.0, 180.0, 210.0, std::numeric_limits<double>::quiet_NaN(),
                                 std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()})
        EXPECT_EQ(ToolGeometry::insertDiamondInsertCuttingLengthToICFactor(degrees), 1) << degrees;
}

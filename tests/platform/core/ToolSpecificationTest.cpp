#include "platform/core/ToolSpecification.h"

#include "platform/utils/LocaleRegistry.h"
#include "support/Asserts.h"

#include <gmock/gmock.h>

#include <limits>
#include <map>
#include <set>

using testing::ElementsAre;
using Varn::Strategy;
using Varn::ToolGeometry;
using Varn::ToolSpecification;

namespace {

std::string narrow(const std::wstring &text)
{
    return {text.begin(), text.end()};
}

} // namespace

TEST(ToolSpecification, TypesAndKeywordsLeadToEachOther)
{
    for (int value = 0; value <= 48; ++value) {
        const auto type = ToolGeometry::Type(value);
        const std::wstring keyword = ToolSpecification::getToolTypeAsWideString(type);
        EXPECT_EQ(narrow(keyword), ToolGeometry::getToolTypeAsString(type));
        for (const auto &found : {ToolSpecification::getToolTypeByString(keyword),
                                  ToolSpecification::getToolTypeByString(narrow(keyword))}) {
            ASSERT_TRUE(found.isValid()) << value;
            EXPECT_EQ(found.value(), type);
        }
    }
}

TEST(ToolSpecification, AnUnknownTypeIsInvalidAndReadingItIsAFault)
{
    const TestSupport::Asserts asserts;
    for (const wchar_t *keyword : {L"", L"Drill", L"drill ", L"drehen"}) {
        const auto type = ToolSpecification::getToolTypeByString(keyword);
        EXPECT_FALSE(type.isValid()) << keyword;
        EXPECT_EQ(type.value(), ToolGeometry::TYPE_NONE);
    }
    EXPECT_THAT(asserts.messages(), ElementsAre("m_valid", "m_valid", "m_valid", "m_valid"));
}

TEST(ToolSpecification, TypesHaveNamesInTheLanguageOfTheProcess)
{
    EXPECT_EQ(ToolSpecification::getToolTypeAsLocalizedString(ToolGeometry::TYPE_BULL_NOSE_END_MILL).asWideString(),
              L"Bull nose end mill");
    EXPECT_EQ(ToolSpecification::getToolTypeAsLocalizedString(ToolGeometry::TYPE_NONE).asWideString(), L"Unspecified");
    EXPECT_EQ(ToolSpecification::getToolTypeAsLocalizedString(ToolGeometry::Type(49)).asWideString(), L"Unspecified");

    Varn::LocaleRegistry::addCatalogue("xq", {{"Bull nose end mill", "Torusfr\xC3\xA4ser"}});
    const auto message = ToolSpecification::getToolTypeAsLocalizedString(ToolGeometry::TYPE_BULL_NOSE_END_MILL);
    EXPECT_EQ(Varn::LocaleRegistry::getLocalizedMessage(message, L"xq"), L"Torusfr\u00E4ser");
}

TEST(ToolSpecification, TheNameOfATypeIsItsKeywordWithACapital)
{
    std::set<std::wstring> names;
    for (const ToolGeometry::Type type : ToolSpecification::getSupportedTypes()) {
        std::wstring expected = ToolSpecification::getToolTypeAsWideString(type);
        expected.front() = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(expected.front())));
        const std::wstring name = ToolSpecification::getToolTypeAsLocalizedString(type).asWideString();
        EXPECT_EQ(name, expected);
        names.insert(name);
    }
    EXPECT_EQ(names.size(), 48u);
}

TEST(ToolSpecification, InsertsByKeyword)
{
    const std::map<int, std::wstring> keywords = {
        {0, L"custom"},
        {1, L"A"},
        {3, L"C"},
        {12, L"R"},
        {16, L"W"},
        {17, L"groove square"},
        {18, L"groove round"},
        {19, L"groove v"},
        {20, L"thread iso double"},
        {21, L"thread iso triple"},
        {22, L"thread trapezoid"},
    };
    for (const auto &[value, keyword] : keywords) {
        EXPECT_EQ(ToolSpecification::getInsertTypeAsWideString(ToolGeometry::InsertType(value)), keyword);
        EXPECT_EQ(ToolSpecification::getInsertTypeByString(keyword).value(), value);
        EXPECT_EQ(ToolSpecification::getInsertTypeByString(narrow(keyword)).value(), value);
    }
    for (const char *keyword : {"", "c", "F", "Custom", "CNMG120408"})
        EXPECT_FALSE(ToolSpecification::getInsertTypeByString(keyword).isValid()) << keyword;
}

TEST(ToolSpecification, LetteredInsertsHaveTheirLetterAsKeyword)
{
    for (const ToolGeometry::InsertType type : ToolSpecification::getSupportedInsertTypes()) {
        const wchar_t letter = ToolGeometry::insertTypeChar(type);
        if (letter != 0) {
            EXPECT_EQ(ToolSpecification::getInsertTypeAsWideString(type), std::wstring(1, letter));
            EXPECT_TRUE(ToolSpecification::getInsertTypeTitle(type).asWideString().starts_with(std::wstring(1, letter) +
                                                                                               L": "));
        }
    }
    EXPECT_EQ(ToolSpecification::getInsertTypeTitle(ToolGeometry::INSERT_C).asWideString(), L"C: rhombus 80\u00B0");
    EXPECT_EQ(ToolSpecification::getInsertTypeTitle(ToolGeometry::INSERT_GROOVE_V).asWideString(),
              L"Grooving, V shape");
    EXPECT_EQ(ToolSpecification::getInsertTypeTitle(ToolGeometry::InsertType(99)).asWideString(), L"Custom");
}

TEST(ToolSpecification, HoldersByKeyword)
{
    const std::map<int, std::wstring> keywords = {
        {0, L""},
        {1, L"A"},
        {8, L"H"},
        {9, L"J"}, // there is no I, nor an O and an X
        {14, L"P"},
        {22, L"Y"},
        {23, L"offset profile"},
        {24, L"thread straight"},
        {26, L"groove external"},
        {27, L"parting blade"},
        {30, L"thread internal"},
        {31, L"boring bar f"},
        {42, L"boring bar y"},
        {43, L"custom"},
    };
    for (const auto &[value, keyword] : keywords) {
        EXPECT_EQ(ToolSpecification::getHolderTypeAsWideString(ToolGeometry::HolderType(value)), keyword);
        EXPECT_EQ(ToolSpecification::getHolderTypeByString(keyword).value(), value);
        EXPECT_EQ(ToolSpecification::getHolderTypeByString(narrow(keyword)).value(), value);
    }
    for (const wchar_t *keyword : {L"I", L"O", L"X", L"Z", L"boring bar", L"boring bar F", L"none"})
        EXPECT_FALSE(ToolSpecification::getHolderTypeByString(keyword).isValid()) << keyword;
}

TEST(ToolSpecification, HolderTitles)
{
    EXPECT_EQ(ToolSpecification::getHolderTypeTitle(ToolGeometry::HOLDER_NONE).asWideString(), L"No holder");
    EXPECT_EQ(ToolSpecification::getHolderTypeTitle(ToolGeometry::HOLDER_H).asWideString(),
              L"H: 107.5\u00B0, side cutting, offset shank");
    EXPECT_EQ(ToolSpecification::getHolderTypeTitle(ToolGeometry::HOLDER_CUSTOM).asWideString(), L"Custom");
    std::set<std::wstring> titles;
    for (const ToolGeometry::HolderType type : ToolSpecification::getSupportedHolderTypes())
        titles.insert(ToolSpecification::getHolderTypeTitle(type).asWideString());
    EXPECT_EQ(titles.size(), 43u);
}

TEST(ToolSpecification, CompensationModes)
{
    const std::map<int, std::string> keywords = {{0, "center"}, {1, "tip"}, {2, "corner"}, {3, "tangent"}};
    for (const auto &[value, keyword] : keywords) {
        const auto mode = ToolGeometry::CompensationMode(value);
        const std::wstring wide = ToolSpecification::getCompensationModeAsWideString(mode);
        EXPECT_EQ(ToolSpecification::getCompensationModeAsString(mode), keyword);
        EXPECT_EQ(narrow(wide), keyword);
        EXPECT_EQ(ToolSpecification::getCompensationModeByString(keyword).value(), value);
        EXPECT_EQ(ToolSpecification::getCompensationModeByString(wide).value(), value);
    }
    for (const char *keyword : {"", "Tip", "centre", "none"})
        EXPECT_FALSE(ToolSpecification::getCompensationModeByString(keyword).isValid()) << keyword;
}

TEST(ToolSpecification, TaperedMillsEndInABallOrABullNose)
{
    EXPECT_EQ(ToolSpecification::getTaperedTypeAsString(ToolGeometry::TAPERED_BALL), "tapered_ball");
    EXPECT_EQ(ToolSpecification::getTaperedTypeAsString(ToolGeometry::TAPERED_BULL_NOSE), "tapered_bull_nose");
}

TEST(ToolSpecification, PresetMaterials)
{
    std::set<std::string> keywords;
    for (int value = 0; value <= 11; ++value) {
        const auto category = ToolSpecification::PresetMaterialCategory(value);
        const std::string keyword = ToolSpecification::getPresetMaterialCategoryAsString(category);
        keywords.insert(keyword);
        EXPECT_EQ(ToolSpecification::getAsPresetMaterialCategory(keyword), category);
        EXPECT_EQ(ToolSpecification::getAsPresetMaterialCategory(std::wstring(keyword.begin(), keyword.end())),
                  category);
    }
    EXPECT_EQ(keywords.size(), 12u);
    EXPECT_EQ(ToolSpecification::getPresetMaterialCategoryAsString(ToolSpecification::MATERIAL_ALL), "all");
    EXPECT_EQ(ToolSpecification::getAsPresetMaterialCategory("cast iron"), ToolSpecification::MATERIAL_CAST_IRON);
    EXPECT_EQ(ToolSpecification::getAsPresetMaterialCategory(L"wood"), 11);
    for (const char *keyword : {"", "All", "aluminum", "gold"})
        EXPECT_EQ(ToolSpecification::getAsPresetMaterialCategory(keyword), std::nullopt) << keyword;
}

TEST(ToolSpecification, ADialogOffersEverythingInItsOrder)
{
    const auto &types = ToolSpecification::getSupportedTypes();
    ASSERT_EQ(types.size(), 48u);
    EXPECT_EQ(types.front(), ToolGeometry::TYPE_DRILL);
    EXPECT_EQ(types.back(), ToolGeometry::TYPE_PLUNGE_MILL);

    const auto &inserts = ToolSpecification::getSupportedInsertTypes();
    ASSERT_EQ(inserts.size(), 23u);
    EXPECT_EQ(inserts.front(), ToolGeometry::INSERT_CUSTOM);
    EXPECT_EQ(std::set(inserts.begin(), inserts.end()).size(), 23u);

    const auto &holders = ToolSpecification::getSupportedHolderTypes();
    ASSERT_EQ(holders.size(), 43u);
    EXPECT_EQ(holders.front(), ToolGeometry::HOLDER_A);
    EXPECT_EQ(holders.back(), ToolGeometry::HOLDER_CUSTOM);
    EXPECT_EQ(std::set(holders.begin(), holders.end()).count(ToolGeometry::HOLDER_NONE), 0u);
}

TEST(ToolSpecification, AnInsertIsValidWhereSomeHolderTakesIt)
{
    for (int type = 0; type <= 49; ++type) {
        for (const ToolGeometry::InsertType insert : ToolSpecification::getSupportedInsertTypes()) {
            EXPECT_EQ(ToolSpecification::isInsertValidForType(insert, ToolGeometry::Type(type)),
                      ToolGeometry::doesSupportHolder(ToolGeometry::Type(type), insert, ToolGeometry::HOLDER_CUSTOM))
                << type << ' ' << insert;
        }
    }
    EXPECT_TRUE(
        ToolSpecification::isInsertValidForType(ToolGeometry::INSERT_CUSTOM, ToolGeometry::TYPE_TURNING_BORING));
    EXPECT_FALSE(
        ToolSpecification::isInsertValidForType(ToolGeometry::INSERT_CUSTOM, ToolGeometry::TYPE_TURNING_GROOVING));
}

TEST(ToolSpecification, TheFamilyDecidesTheParameters)
{
    for (int value = 1; value <= 48; ++value) {
        const auto type = ToolGeometry::Type(value);
        const int expected = ToolGeometry::isTurning(type)      ? 212
                             : ToolGeometry::isJetCutter(type)  ? 213
                             : ToolGeometry::isDepositing(type) ? 214
                                                                : 198;
        EXPECT_EQ(ToolSpecification::getStrategyType(type), expected) << value;
    }
    EXPECT_EQ(ToolSpecification::getStrategyType(ToolGeometry::TYPE_NONE), Strategy::UNSPECIFIED);
    EXPECT_EQ(ToolSpecification::getStrategyType(ToolGeometry::Type(-5)), 97);
}

TEST(ToolSpecification, InchSizesAsMachinistsWriteThem)
{
    const std::map<double, std::wstring> fractions = {
        {0.5, L"1/2"},       {0.25, L"1/4"},        {0.375, L"3/8"},       {0.015625, L"1/64"},  {0.01563, L"1/64"},
        {0.04688, L"3/64"},  {1.5, L"1-1/2"},       {2.046875, L"2-3/64"}, {0.984375, L"63/64"}, {0.3125, L"5/16"},
        {0.65625, L"21/32"}, {12.0625, L"12-1/16"}, {999.5, L"999-1/2"},   {0.500009, L"1/2"},   {0.499991, L"1/2"},
    };
    for (const auto &[inches, text] : fractions)
        EXPECT_EQ(ToolSpecification::getFractionalString(inches), text) << inches;
}

TEST(ToolSpecification, EverySixtyFourthComesOutInLowestTerms)
{
    for (int n = 1; n < 3 * 64; ++n) {
        const auto text = ToolSpecification::getFractionalString(n / 64.0);
        ASSERT_EQ(text.has_value(), n % 64 != 0) << n;
        if (!text)
            continue;
        const std::wstring fraction = text->substr(text->find(L'-') == std::wstring::npos ? 0 : text->find(L'-') + 1);
        const int numerator = std::stoi(fraction);
        const int denominator = std::stoi(fraction.substr(fraction.find(L'/') + 1));
        const int whole = text->find(L'-') == std::wstring::npos ? 0 : std::stoi(*text);
        EXPECT_EQ((whole * denominator + numerator) * 64, n * denominator);
        EXPECT_EQ(numerator % 2, 1) << n;
        EXPECT_LT(numerator, denominator);
    }
}

TEST(ToolSpecification, OtherSizesHaveNoFraction)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const double inches :
         {0.0, -0.0, 1.0, 17.0, 0.1, 0.33333, 0.123456, 0.51, 0.50002, -0.5, 1000.5, 1e300, 0.999999, 1.000001,
          999.9999999, infinity, -infinity, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(ToolSpecification::getFractionalString(inches), std::nullopt) << inches;
}

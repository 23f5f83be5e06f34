#include "platform/nc/NCTool.h"

#include <gtest/gtest.h>

using Varn::NCTool;

TEST(NCTool, MaterialsAndKeywordsLeadToEachOther)
{
    for (int value = 0; value <= 9; ++value) {
        const std::string keyword = NCTool::getMaterialAsString(NCTool::Material(value));
        EXPECT_EQ(NCTool::getAsMaterial(keyword), NCTool::Material(value));
        EXPECT_EQ(NCTool::getAsMaterial(std::wstring(keyword.begin(), keyword.end())), NCTool::Material(value));
    }
    EXPECT_EQ(NCTool::getMaterialAsString(NCTool::MATERIAL_COATED_CARBIDE), "coated carbide");
}

TEST(NCTool, CoolantsAndKeywordsLeadToEachOther)
{
    for (int value = 0; value <= 9; ++value) {
        const std::string keyword = NCTool::getCoolantAsString(NCTool::Coolant(value));
        EXPECT_EQ(NCTool::getAsCoolant(keyword), NCTool::Coolant(value));
        EXPECT_EQ(NCTool::getAsCoolant(std::wstring(keyword.begin(), keyword.end())), NCTool::Coolant(value));
    }
    EXPECT_EQ(NCTool::getCoolantAsString(NCTool::COOLANT_FLOOD_AND_THROUGH_TOOL), "flood and through tool");
    EXPECT_EQ(NCTool::getCoolantAsString(NCTool::COOLANT_UNSET), "unset");
}

TEST(NCTool, AnUnknownKeywordIsNone)
{
    for (const char *keyword : {"", "Carbide", "carbide ", "steel"})
        EXPECT_FALSE(NCTool::getAsMaterial(keyword).has_value()) << keyword;
    for (const wchar_t *keyword : {L"", L"FLOOD", L" flood", L"water"})
        EXPECT_FALSE(NCTool::getAsCoolant(keyword).has_value());
}

TEST(NCTool, ANumberThatIsNoEnumeratorCountsAsTheFirst)
{
    EXPECT_EQ(NCTool::getMaterialAsString(NCTool::Material(10)), "unspecified");
    EXPECT_EQ(NCTool::getMaterialAsString(NCTool::Material(-1)), "unspecified");
    EXPECT_EQ(NCTool::getCoolantAsString(NCTool::Coolant(99)), "disabled");
}

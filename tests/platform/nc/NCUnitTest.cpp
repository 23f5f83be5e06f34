#include "platform/nc/NCUnit.h"

#include <gtest/gtest.h>

using Varn::NCUnit;

TEST(NCUnit, ReadsTheTwoUnits)
{
    EXPECT_EQ(NCUnit::getAsUnit(L"inches").value(), 0);
    EXPECT_EQ(NCUnit::getAsUnit(L"millimeters").value(), 1);
}

TEST(NCUnit, AnyOtherTextIsNone)
{
    for (const wchar_t *text :
         {L"", L"Inches", L"INCHES", L" inches", L"inches ", L"inch", L"in", L"mm", L"0", L"Zoll \u00FC"})
        EXPECT_FALSE(NCUnit::getAsUnit(text).isValid()) << text;
    EXPECT_FALSE(NCUnit::getAsUnit(std::wstring_view(L"inches\0", 7)).isValid());
}

TEST(NCUnit, TextsReadBack)
{
    for (const NCUnit::Unit unit : {NCUnit::inches, NCUnit::millimeters})
        EXPECT_EQ(NCUnit::getAsUnit(NCUnit::getUnitAsString(unit)).value(), unit);
    EXPECT_EQ(NCUnit::getUnitAsString(NCUnit::inches), L"inches");
    EXPECT_EQ(NCUnit::getUnitAsString(NCUnit::Unit(7)), L"millimeters");
}

TEST(NCUnit, AnInchIsExactlyTwentyFivePointFourMillimeters)
{
    EXPECT_EQ(NCUnit::getUnitConversionFactor(NCUnit::inches, NCUnit::millimeters), 25.4);
    EXPECT_EQ(NCUnit::getUnitConversionFactor(NCUnit::millimeters, NCUnit::inches), 1 / 25.4);
    EXPECT_EQ(NCUnit::getUnitConversionFactor(NCUnit::inches, NCUnit::inches), 1);
    EXPECT_EQ(NCUnit::getUnitConversionFactor(NCUnit::millimeters, NCUnit::millimeters), 1);
    EXPECT_EQ(NCUnit::getUnitConversionFactor(NCUnit::Unit(7), NCUnit::millimeters), 1);
}

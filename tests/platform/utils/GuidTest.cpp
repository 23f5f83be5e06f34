#include "platform/utils/Guid.h"

#include <gtest/gtest.h>

#include <algorithm>

using Varn::Guid;

TEST(Guid, ReadsBothFormsInEitherCaseAndPrintsOne)
{
    const char *const text = "821b1d1d-502b-430d-a8dc-37adc1b5d4ec";
    for (const char *form : {"821b1d1d-502b-430d-a8dc-37adc1b5d4ec", "{821b1d1d-502b-430d-a8dc-37adc1b5d4ec}",
                             "821B1D1D-502B-430D-A8DC-37ADC1B5D4EC", "{821B1D1D-502b-430D-A8DC-37ADC1B5D4EC}"})
        EXPECT_EQ(Guid::fromString(form).asString(), text) << form;
}

TEST(Guid, WhatIsNoGuidIsNull)
{
    for (const char *form :
         {"", "{}", "not a guid", "821b1d1d-502b-430d-a8dc-37adc1b5d4e", "821b1d1d502b430da8dc37adc1b5d4ec",
          "821b1d1d-502b-430d-a8dc-37adc1b5d4eg", "ÄÖÜ", "00000000-0000-0000-0000-000000000000"})
        EXPECT_TRUE(Guid::fromString(form).isNull()) << form;
}

TEST(Guid, ComparesInTheOrderOfTheTexts)
{
    std::vector<Guid> guids;
    for (int i = 0; i < 500; ++i)
        guids.push_back(Guid::create());
    for (std::size_t i = 1; i < guids.size(); ++i) {
        const int byText = guids[i - 1].asString().compare(guids[i].asString());
        const int byGuid = Guid::compare(guids[i - 1], guids[i]);
        EXPECT_EQ(byText < 0, byGuid < 0);
        EXPECT_EQ(byText > 0, byGuid > 0);
    }
    EXPECT_EQ(Guid::compare(guids[0], guids[0]), 0);
}

TEST(Guid, GeneratedOnesAreNewAndOfVersionFour)
{
    Guid guid;
    EXPECT_TRUE(guid.isNull());
    guid.generate();
    EXPECT_FALSE(guid.isNull());
    EXPECT_EQ(guid.asString()[14], '4');
    EXPECT_FALSE(guid == Guid::create());
}

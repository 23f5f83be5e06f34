#include "platform/utils/Format.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

using Varn::Format;

TEST(Format, AnUnsignedNumberIsTheWholeText)
{
    struct {
        const wchar_t *text;
        unsigned int number;
    } const rows[] = {
        {L"0", 0},          {L"17", 17},
        {L"007", 7},        {L"4294967295", 4294967295u},
        {L"4294967296", 0}, {L"", 0},
        {L"-1", 0},         {L"+1", 0},
        {L" 1", 0},         {L"1 ", 0},
        {L"1.0", 0},        {L"0x10", 0},
        {L"1e2", 0},        {L"99999999999999999999", 0},
        {L"\u0661", 0},
    };
    for (const auto &row : rows)
        EXPECT_EQ(Format::getUnsignedInt(row.text), row.number) << row.text;
}

TEST(Format, EveryDoubleReadsBackEqual)
{
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        const auto value = std::bit_cast<double>(std::uint64_t(random()));
        const std::optional<double> back = Format::tryDouble(Format::getDouble(value));
        ASSERT_TRUE(back.has_value());
        if (std::isnan(value))
            EXPECT_TRUE(std::isnan(*back));
        else
            EXPECT_EQ(*back, value);
    }
    EXPECT_EQ(Format::getDouble(0.1), "0.1");
    EXPECT_EQ(Format::getDouble(10), "10");
    EXPECT_EQ(Format::getDouble(-std::numeric_limits<double>::infinity()), "-inf");
}

TEST(Format, ATextThatIsNotWhollyANumberIsNone)
{
    for (const char *text : {"", " ", "1 ", " 1", "1,5", "0x10", "1e", "one", "1e999", "--1", "+1"})
        EXPECT_FALSE(Format::tryDouble(text).has_value()) << text;
    for (const char *text : {"", "1.0", "2147483648", "-2147483649", "1 ", "x", "+1"})
        EXPECT_FALSE(Format::tryInt(text).has_value()) << text;
    EXPECT_EQ(Format::tryInt("-2147483648"), std::numeric_limits<int>::min());
    EXPECT_EQ(Format::tryInt("2147483647"), std::numeric_limits<int>::max());
}

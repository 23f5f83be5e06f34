#include "platform/utils/Messages.h"

#include <gmock/gmock.h>

using namespace std::string_literals;
using Varn::Messages;

TEST(Messages, EveryUnicodeTextSurvivesTheWayThereAndBack)
{
    struct Row {
        const char *name;
        std::string utf8;
        std::wstring wide;
    };
    const Row rows[] = {
        {"empty", "", L""},
        {"ASCII", "a drill", L"a drill"},
        {"two bytes", "Fr\u00e4ser \u00d8", L"Fr\u00e4ser \u00d8"},
        {"three bytes", "\u5de5\u5177", L"\u5de5\u5177"},
        {"four bytes", "\U0001F529!", L"\U0001F529!"},
        {"NUL inside", "a\0b"s, L"a\0b"s},
        {"last character", "\U0010FFFF", L"\U0010FFFF"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(Messages::fromUTF8ToWideUnicode(row.utf8), row.wide) << row.name;
        EXPECT_EQ(Messages::fromWideUnicodeToUTF8(row.wide), row.utf8) << row.name;
    }
}

TEST(Messages, BytesThatAreNoUtf8BecomeTheReplacementCharacter)
{
    struct Row {
        const char *name;
        std::string utf8;
    };
    const Row rows[] = {
        {"lone continuation", "a\x80z"},
        {"cut short", "a\xC3z"},
        {"never in UTF-8", "a\xFFz"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(Messages::fromUTF8ToWideUnicode(row.utf8), L"a\uFFFDz") << row.name;
}

TEST(Messages, WhatIsNoCharacterBecomesTheReplacementCharacter)
{
    for (const int value : {0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0x110000, -1}) {
        const std::wstring wide = {L'a', static_cast<wchar_t>(value), L'z'};
        EXPECT_EQ(Messages::fromWideUnicodeToUTF8(wide), "a\uFFFDz") << std::hex << value;
    }
}

TEST(Messages, APairOfSurrogatesIsOneCharacter)
{
    const std::wstring pair = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDD29)};
    EXPECT_EQ(Messages::fromWideUnicodeToUTF8(pair), "\U0001F529");
}

TEST(Messages, UpperCaseGoesByUnicode)
{
    EXPECT_EQ(Messages::getUpperCase(L""), L"");
    EXPECT_EQ(Messages::getUpperCase(L"boring bar 1z"), L"BORING BAR 1Z");
    EXPECT_EQ(Messages::getUpperCase(L"\u00e4\u03c9\u5de5"), L"\u00c4\u03a9\u5de5");
    EXPECT_EQ(Messages::getUpperCase(L"\u00df"), L"SS");
}

TEST(Messages, CaseIsThatOfUnicode)
{
    EXPECT_EQ(Messages::getUpperCase(L"straße ä1"), L"STRASSE Ä1");
    EXPECT_EQ(Messages::getLowerCase(L"ÄBC Ω1"), L"äbc ω1");
    EXPECT_TRUE(Messages::iequals(L".STP", L".stp"));
    EXPECT_TRUE(Messages::iequals(L"FRÄSER Ω", L"fräser ω"));
    EXPECT_TRUE(Messages::iequals(L"", L""));
    EXPECT_FALSE(Messages::iequals(L".stp", L".step"));
    EXPECT_FALSE(Messages::iequals(L"a", L"ä"));
}

TEST(Messages, APartLiesBeforeBetweenAndBehindTheSeparators)
{
    using testing::ElementsAre;
    EXPECT_THAT(Messages::split(L"", L';'), ElementsAre(L""));
    EXPECT_THAT(Messages::split(L"a", L';'), ElementsAre(L"a"));
    EXPECT_THAT(Messages::split(L";a;;b c;", L';'), ElementsAre(L"", L"a", L"", L"b c", L""));
    EXPECT_EQ(Messages::split(std::wstring(100'000, L';'), L';').size(), 100'001u);
}

TEST(Messages, NarrowTextsAreUtf8)
{
    EXPECT_EQ(Messages::getAsWideString("∅ 🛠"), L"∅ 🛠");
    EXPECT_EQ(Messages::getAsString(L"∅ 🛠"), "∅ 🛠");
}

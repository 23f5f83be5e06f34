#include "ToolLibrary/Interface/Private/SearchText.h"

#include <gtest/gtest.h>

namespace SearchText = Varn::ToolLibraries::SearchText;

TEST(SearchText, LosesBlanksCaseAndTheDigitBeforeIn)
{
    const struct {
        const wchar_t *text;
        const wchar_t *normalised;
    } rows[] = {
        {L"", L""},
        {L" \t\n\v", L""},
        {L"10 MM End", L"10mmend"},
        {L"10in", L"1\""},
        {L"12 in", L"1\""},
        {L"12\"", L"12\""},
        {L"13IN", L"1\""},
        {L"3in", L"\""},
        {L"4 I N", L"\""},
        {L"in", L"in"},
        {L"1i", L"1i"},
        {L"1in2in", L"\"\""},
        {L"1inin", L"\"in"},
        {L"5inserts", L"\"serts"},
        {L"11in", L"1\""},
        {L"٣in", L"٣in"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(SearchText::normalised(row.text), row.normalised);
}

TEST(SearchText, AMillionCharactersTakeNoTime)
{
    std::wstring text;
    for (int i = 0; i < 1'000'000; ++i)
        text += L"1in "[i % 4];
    EXPECT_EQ(SearchText::normalised(text).size(), 250'000u);
}

TEST(SearchText, ANeedleIsFoundAtItsFirstPlace)
{
    const std::string needle(40, 'n');
    for (const std::string &each : {std::string("n"), needle, needle + needle}) {
        EXPECT_EQ(SearchText::find("xx" + each + "x" + each, each), 2U);
        EXPECT_EQ(SearchText::find("xx" + each + "x" + each, each, 3), 3 + each.size());
        EXPECT_EQ(SearchText::find("xx" + each, each + "y"), std::string::npos);
        EXPECT_EQ(SearchText::find(each, each, 5000), std::string::npos);
        EXPECT_EQ(SearchText::find("", each), std::string::npos);
    }
    const std::wstring wide(40, L'ö');
    EXPECT_TRUE(SearchText::contains(L"x" + wide + L"y", wide));
    EXPECT_TRUE(SearchText::contains(L"x" + wide + L"y", L"ö"));
    EXPECT_TRUE(SearchText::contains(L"x", L""));
    EXPECT_FALSE(SearchText::contains(wide, wide + L"y"));
    EXPECT_FALSE(SearchText::contains(wide + L"xx", wide + L"y"));
}

TEST(SearchText, ATextThatNearlyIsTheNeedleAtEveryPlaceIsNoMatch)
{
    const std::string text(1'000'000, 'a');
    const std::string needle = std::string(500'000, 'a') + "b";
    EXPECT_EQ(SearchText::find(text, needle), std::string::npos);
    EXPECT_FALSE(SearchText::contains(std::wstring(1'000'000, L'a'), std::wstring(500'000, L'a') + L"b"));
}

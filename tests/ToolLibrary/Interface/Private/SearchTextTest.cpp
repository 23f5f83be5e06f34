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

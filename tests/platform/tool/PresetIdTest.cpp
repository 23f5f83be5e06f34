#include "platform/tool/PresetId.h"

#include <gtest/gtest.h>

using namespace std::string_literals;
using Varn::ToolLibraries::PresetId;

TEST(PresetIdTest, KeepsTheTextAsItWasStored)
{
    for (const std::wstring &text :
         {L""s, L"0123ABCD-89ef-4123-8567-89abcdef0123"s, L"{braces}"s, L" my preset \u00e4\U0001F527"s, L"a\0b"s}) {
        EXPECT_EQ(PresetId(text).rawString(), text);
        EXPECT_EQ(PresetId(text).toString(), text);
    }
}

TEST(PresetIdTest, IsEqualWhereTheTextIs)
{
    PresetId id(L"a");
    EXPECT_EQ(id, PresetId(L"a"));
    EXPECT_FALSE(id == PresetId(L"A"));
    EXPECT_FALSE(id == PresetId(L""));
    id = PresetId(L"b");
    EXPECT_EQ(id, PresetId(L"b"));
}

#include "platform/zip/EntryNames.h"
#include "platform/utils/Messages.h"

#include <gtest/gtest.h>

#include <string>

using Varn::Messages;

namespace {

struct NameRow {
    std::wstring name;
    bool safe;
};
// clang-format off
const NameRow nameRows[] = {
    { L"tools.json",                    true  },
    { L"a/b/c.3DTool",                  true  },
    { L"folder/",                       true  },
    { L"a/folder/",                     true  },
    { L"..a/b..",                       true  },
    { L"...",                           true  },
    { L" ",                             true  },
    { L"\u5de5\u5177/\U0001f527",       true  },
    { L"ab:c",                          true  },
    { L"1:",                            true  },
    { std::wstring(255, L'x'),          true  },
    { L"",                              false },
    { L"/",                             false },
    { L"//",                            false },
    { L"/etc/passwd",                   false },
    { L"..",                            false },
    { L"../a",                          false },
    { L"a/../b",                        false },
    { L"a/..",                          false },
    { L"a/../",                         false },
    { L".",                             false },
    { L"./a",                           false },
    { L"a/./b",                         false },
    { L"a//b",                          false },
    { L"a/b//",                         false },
    { L"a\\b",                          false },
    { L"..\\a",                         false },
    { L"\\\\server\\share",             false },
    { L"C:",                            false },
    { L"C:/a",                          false },
    { L"c:a",                           false },
    { L"z:\\a",                         false },
    { std::wstring(L"a\0b", 3),         false },
    { L"a\nb",                          false },
    { L"a\u007f",                       false },
    { std::wstring(1, wchar_t(0xD800)), false },
    { std::wstring(256, L'x'),          false },
    { std::wstring(128, L'\u00e9'),     false },
};

struct MatchRow {
    const wchar_t *name;
    const wchar_t *pattern;
    bool caseSensitive;
    bool matches;
};
constexpr MatchRow matchRows[] = {
    { L"product_data_files/a.p21", L"product_data_files*", true,  true  },
    { L"product_data_files/",      L"product_data_files*", true,  true  },
    { L"product_data_files",       L"product_data_files*", true,  true  },
    { L"Product_data_files/a",     L"product_data_files*", true,  false },
    { L"Product_data_files/a",     L"product_data_files*", false, true  },
    { L"x/product_data_files/a",   L"product_data_files*", true,  false },
    { L"a.xml",                    L"a.xml",               true,  true  },
    { L"A.XML",                    L"a.xml",               true,  false },
    { L"A.XML",                    L"a.xml",               false, true  },
    { L"\u00c4\u03a3",             L"\u00e4\u03c2",        false, true  },
    { L"a.xml.bak",                L"a.xml",               true,  false },
    { L"aXxml",                    L"a.xml",               true,  false },
    { L"a/b/c.p21",                L"*.p21",               true,  true  },
    { L"abc",                      L"a?c",                 true,  true  },
    { L"a/c",                      L"a?c",                 true,  true  },
    { L"ac",                       L"a?c",                 true,  false },
    { L"abcabc",                   L"*a*c",                true,  true  },
    { L"[a]",                      L"[a]",                 true,  true  },
    { L"",                         L"",                    true,  true  },
    { L"",                         L"*",                   true,  true  },
    { L"",                         L"?",                   true,  false },
    { L"a",                        L"",                    true,  false },
};
// clang-format on

} // namespace

TEST(EntryNamesTest, ANameIsSafeWhenItStaysBelowTheFolder)
{
    for (const NameRow &row : nameRows)
        EXPECT_EQ(Varn::EntryNames::isSafe(row.name), row.safe) << Messages::fromWideUnicodeToUTF8(row.name);
}

TEST(EntryNamesTest, ANameHasAtMost65535BytesOfUtf8)
{
    std::wstring name;
    for (int i = 0; i < 32768; ++i)
        name += L"x/";
    EXPECT_FALSE(Varn::EntryNames::isSafe(name)); // 65536
    name.pop_back();
    EXPECT_TRUE(Varn::EntryNames::isSafe(name));
    name.back() = L'\u00e9';
    EXPECT_FALSE(Varn::EntryNames::isSafe(name));
}

TEST(EntryNamesTest, APatternMustFitTheWholeName)
{
    for (const MatchRow &row : matchRows)
        EXPECT_EQ(Varn::EntryNames::matches(row.name, row.pattern, row.caseSensitive), row.matches)
            << Messages::fromWideUnicodeToUTF8(row.name) << " and " << Messages::fromWideUnicodeToUTF8(row.pattern);
}

TEST(EntryNamesTest, ManyStarsEndSoon)
{
    const std::wstring name(20000, L'a');
    std::wstring pattern;
    for (int i = 0; i < 50; ++i)
        pattern += L"*a";
    EXPECT_TRUE(Varn::EntryNames::matches(name, pattern, true));
    EXPECT_FALSE(Varn::EntryNames::matches(name, pattern + L"b", true));
}

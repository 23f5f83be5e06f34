#include "platform/nc/KeywordTable.h"

#include <gtest/gtest.h>

#include <string>

using Varn::KeywordTable;

namespace {

struct Row {
    int value;
    std::string_view key;
};

constexpr Row metals[] = {{0, "zinc"}, {1, "iron"}, {2, ""}, {3, "iron ore"}, {4, "Iron"}};
constexpr KeywordTable table(metals);
static_assert(table.isComplete());

} // namespace

TEST(KeywordTable, FindsEachKeywordInBothKindsOfText)
{
    for (const Row &row : metals) {
        EXPECT_EQ(table.find(row.key), &row) << row.key;
        EXPECT_EQ(table.find(std::wstring_view(std::wstring(row.key.begin(), row.key.end()))), &row) << row.key;
    }
}

TEST(KeywordTable, FindsNothingElse)
{
    for (const char *text : {"iro", "irons", "iron ", "IRON", "a", "zz", "ir\xC3\xB6n", "\xFF"})
        EXPECT_EQ(table.find(std::string_view(text)), nullptr) << text;
    for (const wchar_t *text : {L"iro", L"irons", L"ir\u00F6n", L"\u4E00", L"\U0001F600"})
        EXPECT_EQ(table.find(std::wstring_view(text)), nullptr) << text;
    // The low byte of each character is that of "iron".
    EXPECT_EQ(table.find(std::wstring_view(L"\u0169\u0172\u016F\u016E")), nullptr);
    EXPECT_EQ(table.find(std::string_view("iron\0", 5)), nullptr);
}

TEST(KeywordTable, AValueOutsideOfTheTableGivesTheFirstRow)
{
    EXPECT_EQ(table.row(3).key, "iron ore");
    for (const int value : {-1, 5, 1000, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        EXPECT_EQ(table.row(value).key, "zinc") << value;
}

TEST(KeywordTable, SeesGapsAndDuplicates)
{
    static constexpr Row gap[] = {{0, "a"}, {2, "b"}};
    static constexpr Row twice[] = {{0, "a"}, {1, "b"}, {2, "a"}};
    EXPECT_FALSE(KeywordTable(gap).isComplete());
    EXPECT_FALSE(KeywordTable(twice).isComplete());
}

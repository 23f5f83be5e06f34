#include "host/TextTable.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace Quillon;

namespace {

std::size_t widestLine(const std::string &text)
{
    std::size_t widest = 0;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        widest = std::max(widest, displayWidth(line));
    return widest;
}

} // namespace

TEST(TextTable, ColumnsAreAsWideAsTheirWidestCell)
{
    TextTable table({{"Id"}, {"Size", true}, {"Name"}});
    table.addRow({"1", "6", "drill"});
    table.addRow({"1000", "12.5", ""});
    EXPECT_EQ(table.print(0), "Id    Size  Name\n"
                              "----  ----  -----\n"
                              "1        6  drill\n"
                              "1000  12.5\n");
}

TEST(TextTable, OnlyColumnsThatMayShrinkGiveWay)
{
    TextTable table({{"Id"}, {"Description", false, true}});
    table.addRow({"12345678", "a description of some length"});
    EXPECT_EQ(table.print(25), "Id        Description\n"
                               "--------  ---------------\n"
                               "12345678  a description …\n");
    EXPECT_LE(widestLine(table.print(25)), 25u);
    EXPECT_LE(widestLine(table.print(20)), 20u);
    EXPECT_EQ(table.print(0).find("…"), std::string::npos);
}

TEST(TextTable, WhereShrinkingIsNotEnoughTheLastColumnsAreLeftOut)
{
    TextTable table({{"Id"}, {"Name", false, true}, {"Last"}});
    table.addRow({"12345678", "a long name", "1234567890"});
    EXPECT_EQ(table.print(20), "Id        Name\n"
                               "--------  ----------\n"
                               "12345678  a long na…\n");
    EXPECT_EQ(table.print(3), "Id\n--------\n12345678\n");
}

TEST(TextTable, AWideCharacterTakesTwoCellsAndAMarkNone)
{
    EXPECT_EQ(displayWidth("エンドミル"), 10u);
    EXPECT_EQ(displayWidth("Fräser"), 6u);
    EXPECT_EQ(displayWidth("e\u0301"), 1u);
    EXPECT_EQ(displayWidth(""), 0u);
    TextTable table({{"Name", false, true}, {"x"}});
    table.addRow({"エンドミルエンドミル", "1"});
    EXPECT_LE(widestLine(table.print(16)), 16u);
}

TEST(TextTable, ControlCharactersCannotBreakALine)
{
    TextTable table({{"Name"}});
    table.addRow({"a\nb\tc\x1b[31m"});
    EXPECT_EQ(table.print(0), "Name\n----------\na b c [31m\n");
}

TEST(TextTable, ARowWithTooFewCellsIsFilledUp)
{
    TextTable table({{"A"}, {"B"}});
    table.addRow({"1"});
    EXPECT_EQ(table.print(0), "A  B\n-  -\n1\n");
}

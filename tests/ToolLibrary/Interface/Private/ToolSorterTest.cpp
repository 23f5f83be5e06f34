#include "ToolLibrary/Interface/Private/ToolSorter.h"
#include "support/Failure.h"
#include "support/LibraryFile.h"

#include "ToolLibrary/Interface/Private/IndexedTool.h"

#include <gmock/gmock.h>

#include <QString>

#include <json/value.h>

#include <algorithm>

using namespace TestSupport;
using namespace Varn::ToolLibraries;
using testing::ElementsAre;

namespace {

/// The numbers of tools with these members, numbered from 1, in the order of a request.
std::vector<int> sorted(const std::string &state, const std::vector<std::string> &tools)
{
    std::vector<std::unique_ptr<IndexedTool>> indexed;
    for (std::size_t i = tools.size(); i > 0; --i)
        indexed.push_back(
            std::make_unique<IndexedTool>(Tool::fromJson(toolText(static_cast<unsigned>(i), tools[i - 1]))));
    std::ranges::stable_sort(indexed, ToolSorter::createSortFunction(state));
    std::vector<int> numbers;
    for (const auto &tool : indexed)
        numbers.push_back(std::stoi(tool->getTool().getToolId().guid().asString().substr(24)));
    return numbers;
}

std::string by(const std::string &key, const std::string &order = "asc")
{
    return R"([{"key":")" + key + R"(","order":")" + order + R"("}])";
}

std::string byProperty(const std::string &property, const std::string &order = "asc")
{
    return by("components.indexedProperties." + property, order);
}

std::string diameter(double value)
{
    return R"("geometry":{"DC":)" + std::to_string(value) + "}";
}

std::string described(const std::string &text)
{
    return R"("description":")" + text + "\"";
}

std::string natural(const wchar_t *a, const wchar_t *b)
{
    const auto order = ToolSorter::compareNaturalOrdering(a, b, std::locale("C"));
    return order < 0 ? "<" : order > 0 ? ">" : order == 0 ? "=" : "?";
}

} // namespace

TEST(ToolSorter, WithoutAKeyTheGuidDecides)
{
    for (const char *nothing : {"", "[]", "broken", "null", "{}", "[null]"})
        EXPECT_THAT(sorted(nothing, {"", "", ""}), ElementsAre(1, 2, 3)) << nothing;
    EXPECT_THAT(sorted(by("x"), {"", ""}), ElementsAre(1, 2)) << "a key that is none counts for nothing";
    EXPECT_THAT(sorted(by("tool_diameter"), {diameter(2), diameter(1)}), ElementsAre(1, 2));
    EXPECT_THAT(sorted(by("x.normValue"), {diameter(2), diameter(1)}), ElementsAre(1, 2));
}

TEST(ToolSorter, OnlyTheExactWordIsAscending)
{
    const std::vector<std::string> tools{diameter(2), diameter(1), diameter(3)};
    const std::string key = "tool_diameter.normValue";
    EXPECT_THAT(sorted(byProperty(key, "asc"), tools), ElementsAre(2, 1, 3));
    for (const char *order : {"desc", "ASC", "", "ascending"})
        EXPECT_THAT(sorted(byProperty(key, order), tools), ElementsAre(3, 1, 2)) << order;
}

TEST(ToolSorter, EqualToolsKeepTheOrderOfTheirGuidsInEitherDirection)
{
    const std::vector<std::string> tools{diameter(1), diameter(1), diameter(2)};
    EXPECT_THAT(sorted(byProperty("tool_diameter.normValue", "asc"), tools), ElementsAre(1, 2, 3));
    EXPECT_THAT(sorted(byProperty("tool_diameter.normValue", "desc"), tools), ElementsAre(3, 1, 2));
}

TEST(ToolSorter, AMissingNumberIsFirstAndAMissingValueLast)
{
    const std::vector<std::string> tools{diameter(2), "", diameter(1), ""};
    EXPECT_THAT(sorted(byProperty("tool_diameter.normValue"), tools), ElementsAre(2, 4, 3, 1));
    EXPECT_THAT(sorted(byProperty("tool_diameter.normValue", "desc"), tools), ElementsAre(1, 3, 2, 4));
    EXPECT_THAT(sorted(byProperty("tool_diameter"), tools), ElementsAre(3, 1, 2, 4));
    EXPECT_THAT(sorted(byProperty("tool_diameter", "desc"), tools), ElementsAre(2, 4, 1, 3));
}

TEST(ToolSorter, NormValuesAreInMillimeters)
{
    const std::vector<std::string> tools{R"("unit":"inches",)" + diameter(1),
                                         R"("unit":"millimeters",)" + diameter(20)};
    EXPECT_THAT(sorted(byProperty("tool_diameter.normValue"), tools), ElementsAre(2, 1));
    EXPECT_THAT(sorted(byProperty("tool_diameter"), tools), ElementsAre(1, 2));
}

TEST(ToolSorter, ValuesCompareByTheirKind)
{
    EXPECT_THAT(sorted(byProperty("tool_vendor"), {R"("vendor":"b")", R"("vendor":"B")", R"("vendor":"ba")"}),
                ElementsAre(2, 1, 3))
        << "bytes, a prefix first";
    EXPECT_THAT(sorted(byProperty("tool_manualToolChange"), {R"("post-process":{"manual-tool-change":true})",
                                                             R"("post-process":{"manual-tool-change":false})"}),
                ElementsAre(2, 1));
    EXPECT_THAT(sorted(byProperty("tool_diameter"), {diameter(2.5), diameter(1.5)}), ElementsAre(2, 1));
    EXPECT_THAT(sorted(byProperty("tool_diameter"), {diameter(10), diameter(-9)}), ElementsAre(2, 1))
        << "whole numbers";
}

TEST(ToolSorter, TwoKindsUnderOneKeyRaise)
{
    EXPECT_EQ(failureOf([] {
                  sorted(byProperty("tool_vendor"), {R"("vendor":"b")", R"("vendor":1)"});
              }),
              "runtime_error: Type mismatch for key: components.indexedProperties.tool_vendor");
}

TEST(ToolSorter, TypesGoByNameAndUnitsByText)
{
    const auto type = [](const char *keyword) { return R"("type":")" + std::string(keyword) + "\""; };
    EXPECT_THAT(sorted(byProperty("tool_type"), {type("right hand tap"), type("ball end mill"), type("drill")}),
                ElementsAre(2, 3, 1));
    EXPECT_THAT(sorted(byProperty("tool_unit"), {R"("unit":"millimeters")", R"("unit":"inches")"}), ElementsAre(2, 1));
}

TEST(ToolSorter, TheFirstKeyCountsMost)
{
    const std::string state = R"([{"key":"components.indexedProperties.tool_unit","order":"desc"},)"
                              R"({"key":"components.indexedProperties.tool_diameter.normValue","order":"asc"}])";
    const std::string metric = R"("unit":"millimeters",)";
    const std::string inch = R"("unit":"inches",)";
    EXPECT_THAT(sorted(state, {inch + diameter(2), metric + diameter(3), inch + diameter(1), metric + diameter(1)}),
                ElementsAre(4, 2, 3, 1));
}

TEST(ToolSorter, NumbersInNamesCompareAsNumbers)
{
    EXPECT_THAT(sorted(by("components.info.name"),
                       {described("T10"), described("T9"), described("D2.5"), described("D10"), described("T")}),
                ElementsAre(3, 4, 5, 2, 1));
    EXPECT_THAT(sorted(by("components.info.name"), {described("t1"), described("T1"), described("T01")}),
                ElementsAre(3, 2, 1))
        << "upper case first, and equal numbers by the whole name";
}

TEST(ToolSorter, NaturalOrderStopsWithTheShorterText)
{
    const struct {
        const wchar_t *a;
        const wchar_t *b;
        const char *order;
    } rows[] = {
        {L"", L"", "="},          {L"", L"a", "="},
        {L"ab", L"abc", "="},     {L"a", L"b", "<"},
        {L"b", L"a", ">"},        {L"A", L"a", "<"},
        {L"T9", L"T10", "<"},     {L"T01", L"T1", "="},
        {L"T1.50", L"T1.5", "="}, {L"T1.5x", L"T1.5y", "<"},
        {L"D2.5", L"D10", "<"},   {L"1.2.3", L"1.2.4", "="}, // one run each, read as far as a number goes
        {L"1e2", L"99", ">"},                                // the C library reads exponents too
        {L"1a", L"a1", "<"},      {L"x1", L"x", "="},
        {L"10", L"9a", ">"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(natural(row.a, row.b), row.order) << QString::fromWCharArray(row.a).toStdString();
}

TEST(ToolSorter, NamesWithoutAConsistentOrderStillEnd)
{
    std::vector<std::string> tools;
    for (int round = 0; round < 200; ++round)
        for (const char *name : {"T2", "T02b", "T2a", "T1", "T01x", "T1a", "T002"})
            tools.push_back(described(name));
    EXPECT_EQ(sorted(by("components.info.name"), tools).size(), tools.size());
}

TEST(ToolSorter, ASortKeyThatIsNoObjectRaises)
{
    for (const char *state : {"[1]", "[\"x\"]", R"([{"key":{},"order":"asc"}])", R"([{"key":"x","order":[]}])"})
        EXPECT_THROW(ToolSorter::createSortFunction(state), Json::Exception) << state;
}

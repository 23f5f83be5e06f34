#include "host/ToolQuery.h"
#include "host/ToolKeyTable.h"
#include "host/UsageError.h"

#include <gtest/gtest.h>

using namespace Quillon;

namespace {

/// The values of one filter, or what is wrong with it.
std::string valuesOf(const std::string &filter)
{
    try {
        const std::string state = filtersState({filter});
        const std::size_t at = state.find("\"values\":");
        return state.substr(at + 9, state.size() - at - 11);
    } catch (const UsageError &failure) {
        return failure.what();
    }
}

std::string keyOf(const std::string &filter)
{
    const std::string state = filtersState({filter});
    return state.substr(9, state.find('"', 9) - 9);
}

} // namespace

TEST(ToolQuery, LengthsAreInTheUnitThatIsTyped)
{
    const std::pair<const char *, const char *> rows[] = {
        {"diameter=6", R"([{"op":":","value":6.0}])"},
        {"diameter = 6 mm", R"([{"op":":","value":6.0}])"},
        {"diameter=1in", R"([{"op":":","value":25.4}])"},
        {"diameter=1/2\"", R"([{"op":":","value":12.7}])"},
        {"diameter=1-1/2 inch", R"([{"op":":","value":38.099999999999994}])"},
        {"diameter=-2", R"([{"op":":","value":-2.0}])"},
        {"diameter!=6", R"([{"negated":true,"op":":","value":6.0}])"},
        {"diameter<6", R"([{"op":"<","value":6.0}])"},
        {"diameter>6", R"([{"op":">","value":6.0}])"},
        {"diameter<=6", R"([{"op":"<=","value":6.0}])"},
        {"diameter>=6", R"([{"op":">=","value":6.0}])"},
        {"diameter=6..12", R"([{"lowerBound":6.0,"upperBound":12.0}])"},
        {"diameter=6mm..1/2in", R"([{"lowerBound":6.0,"upperBound":12.7}])"},
        {"diameter=1/4..1/2in", R"([{"lowerBound":6.35,"upperBound":12.7}])"},
        {"diameter=1/4in..1/2", R"([{"lowerBound":6.35,"upperBound":12.7}])"},
        {"diameter=6..", R"([{"op":">=","value":6.0}])"},
        {"diameter=..1in", R"([{"op":"<=","value":25.4}])"},
        {"tool_diameter=6", R"([{"op":":","value":6.0}])"},
    };
    for (const auto &[filter, values] : rows)
        EXPECT_EQ(valuesOf(filter), values) << filter;
    EXPECT_EQ(keyOf("diameter=6"), "components.indexedProperties.tool_diameter.normValue");
}

TEST(ToolQuery, NumbersAndAnglesAreTakenAsTheyAre)
{
    EXPECT_EQ(keyOf("flutes>=3"), "components.indexedProperties.tool_numberOfFlutes");
    EXPECT_EQ(valuesOf("flutes>=3"), R"([{"op":">=","value":3.0}])");
    EXPECT_EQ(keyOf("point-angle=118"), "components.indexedProperties.tool_pointAngle");
    EXPECT_EQ(valuesOf("point-angle=118°..140°"), R"([{"lowerBound":118.0,"upperBound":140.0}])");
    EXPECT_EQ(valuesOf("flutes=3mm"), "Cannot read the filter flutes=3mm: \"3mm\" is no number");
}

TEST(ToolQuery, TextsAreListed)
{
    EXPECT_EQ(keyOf("name=x"), "components.info.name");
    EXPECT_EQ(keyOf("vendor=x"), "components.indexedProperties.tool_vendor");
    EXPECT_EQ(valuesOf("vendor=3M"), R"(["3M"])");
    EXPECT_EQ(valuesOf("vendor=\" A | B \""), R"(["A","B"])");
    EXPECT_EQ(valuesOf("product-id=12345"), R"(["12345"])");
    EXPECT_EQ(valuesOf("comment="), R"([""])");
    EXPECT_EQ(valuesOf("type=\"ball end mill\""), R"(["ball end mill"])");
    EXPECT_EQ(valuesOf("type=Drill|BALL END MILL"), R"(["drill","ball end mill"])");
    EXPECT_EQ(valuesOf("unit=mm"), R"(["millimeters"])");
    EXPECT_EQ(valuesOf("unit=Inches"), R"(["inches"])");
}

TEST(ToolQuery, WhatCannotBeReadIsTold)
{
    const std::pair<const char *, const char *> rows[] = {
        {"diameter", "Cannot read the filter diameter: there is no =, <, >, <=, >= or != in it"},
        {"", "Cannot read the filter : there is no =, <, >, <=, >= or != in it"},
        {"diameter==6", "Cannot read the filter diameter==6: == is no comparison"},
        {"diameter!6", "Cannot read the filter diameter!6: ! is no comparison"},
        {"diameter=", "Cannot read the filter diameter=: \"\" is no number"},
        {"diameter=x", "Cannot read the filter diameter=x: \"x\" is no number"},
        {"diameter=1/0", "Cannot read the filter diameter=1/0: \"1/0\" is no number"},
        {"diameter=1-/2", "Cannot read the filter diameter=1-/2: \"1-/2\" is no number"},
        {"diameter=..", "Cannot read the filter diameter=..: the range has no bound"},
        {"diameter<1..2", "Cannot read the filter diameter<1..2: a range goes with = alone"},
        {"vendor>a", "Cannot read the filter vendor>a: texts are compared with = alone"},
        {"vendor!=a", "Cannot read the filter vendor!=a: texts are compared with = alone"},
        {"type=spoon", "Cannot read the filter type=spoon: there is no tool type \"spoon\""},
        {"unit=ft", "Cannot read the filter unit=ft: a unit is mm or in"},
    };
    for (const auto &[filter, complaint] : rows)
        EXPECT_EQ(valuesOf(filter), complaint) << filter;
    const std::string unknown = valuesOf("diamter=3");
    EXPECT_TRUE(unknown.starts_with("Unknown key: diamter. The keys are assembly-gauge-length, ")) << unknown;
    for (const ToolKeyRow &row : toolKeyRows())
        EXPECT_NE(unknown.find(row.word), std::string::npos) << row.word;
}

TEST(ToolQuery, OrdersHaveADirection)
{
    EXPECT_EQ(sortState({}), "[]");
    EXPECT_EQ(sortState({"diameter:desc", "name", "flutes:asc"}),
              R"([{"key":"components.indexedProperties.tool_diameter.normValue","order":"desc"},)"
              R"({"key":"components.info.name","order":"asc"},)"
              R"({"key":"components.indexedProperties.tool_numberOfFlutes","order":"asc"}])");
    EXPECT_THROW(sortState({"diameter:up"}), UsageError);
    EXPECT_THROW(sortState({"diameter:"}), UsageError);
    EXPECT_THROW(sortState({":desc"}), UsageError);
}

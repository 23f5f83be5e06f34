#include "ToolLibrary/Interface/Private/IndexedTool.h"
#include "ToolLibrary/Interface/Private/IndexedToolLookup.h"
#include "platform/core/ToolSpecification.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>

using namespace Varn::ToolLibraries;
using namespace std::string_literals;
using Varn::NCUnit;
using Varn::ToolGeometry;
using Varn::ToolSpecification;

namespace {

using Lookup = IndexedToolLookup;
using Properties = std::map<std::string, Tool::Property, std::less<>>;

/// A tool that answers whatever a test wants, and may change its mind.
class ScriptedTool : public Tool
{
public:
    explicit ScriptedTool(std::shared_ptr<Properties> properties) : m_properties(std::move(properties)) {}

protected:
    std::optional<Property> getRawPropertyImpl(std::string_view key) const override
    {
        const auto found = m_properties->find(key);
        return found == m_properties->end() ? std::nullopt : std::optional(found->second);
    }

private:
    std::shared_ptr<Properties> m_properties;
};

IndexedTool scripted(const Properties &properties)
{
    return IndexedTool(std::make_unique<ScriptedTool>(std::make_shared<Properties>(properties)));
}

IndexedTool fromJson(const std::string &json)
{
    return IndexedTool(Tool::fromJson(json));
}

constexpr double infinity = std::numeric_limits<double>::infinity();

} // namespace

TEST(IndexedTool, HoldsItsTool)
{
    std::unique_ptr<const Tool> tool = Tool::fromJson(R"({"guid":"a"})");
    const Tool *const address = tool.get();
    const IndexedTool indexed(std::move(tool));
    EXPECT_EQ(&indexed.getTool(), address);
}

TEST(IndexedTool, ANullToolEndsTheProgram)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(IndexedTool(nullptr), "");
}

TEST(IndexedTool, GivesTheTextsOfTheToolAndEmptyOnesForMissingTexts)
{
    const IndexedTool tool =
        fromJson("{\"post-process\":{\"comment\":\"\u00e4\"},\"product-id\":\"P \U0001F527\",\"vendor\":\"V\"}");
    EXPECT_EQ(tool.getComment(), L"\u00e4");
    EXPECT_EQ(tool.getProductId(), L"P \U0001F527");
    EXPECT_EQ(tool.getVendor(), L"V");
    for (const IndexedTool &empty : {fromJson("{}"), fromJson(R"({"product-id":5,"vendor":null})")}) {
        EXPECT_EQ(empty.getComment(), L"");
        EXPECT_EQ(empty.getProductId(), L"");
        EXPECT_EQ(empty.getVendor(), L"");
    }
}

TEST(IndexedTool, TextsAreAskedForEachTime)
{
    const auto properties = std::make_shared<Properties>();
    const IndexedTool tool(std::make_unique<ScriptedTool>(properties));
    EXPECT_EQ(tool.getComment(), L"");
    *properties = {{"tool_comment", "c"}, {"tool_productId", "p"}, {"tool_vendor", "v"}};
    EXPECT_EQ(tool.getComment(), L"c");
    EXPECT_EQ(tool.getProductId(), L"p");
    EXPECT_EQ(tool.getVendor(), L"v");
    *properties = {{"tool_comment", "d"}};
    EXPECT_EQ(tool.getComment(), L"d");
    EXPECT_EQ(tool.getProductId(), L"");
}

TEST(IndexedTool, TypeAndUnitFallBackToNoneAndMillimeters)
{
    struct Row {
        const char *json;
        ToolGeometry::Type type;
        NCUnit::Unit unit;
    };
    const Row rows[] = {
        {R"({"type":"drill","unit":"inches"})", ToolGeometry::TYPE_DRILL, NCUnit::inches},
        {R"({"type":"plunge mill","unit":"millimeters"})", ToolGeometry::TYPE_PLUNGE_MILL, NCUnit::millimeters},
        {R"({})", ToolGeometry::TYPE_NONE, NCUnit::millimeters},
        {R"({"type":"no such tool","unit":"cubits"})", ToolGeometry::TYPE_NONE, NCUnit::millimeters},
        {R"({"type":"Drill","unit":"Inches"})", ToolGeometry::TYPE_NONE, NCUnit::millimeters},
        {R"({"type":1,"unit":0})", ToolGeometry::TYPE_NONE, NCUnit::millimeters},
        {R"({"type":null,"unit":null})", ToolGeometry::TYPE_NONE, NCUnit::millimeters},
        {R"({"type":"unspecified","unit":""})", ToolGeometry::TYPE_NONE, NCUnit::millimeters},
    };
    for (const Row &row : rows) {
        const IndexedTool tool = fromJson(row.json);
        EXPECT_EQ(tool.getType(), row.type) << row.json;
        EXPECT_EQ(tool.getUnit(), row.unit) << row.json;
        EXPECT_EQ(Lookup::getType(tool, "tool_type"), row.type) << row.json;
        EXPECT_EQ(Lookup::getUnit(tool, "tool_unit"), row.unit) << row.json;
    }
    EXPECT_EQ(NCUnit::millimeters, 1);
    EXPECT_EQ(ToolGeometry::TYPE_NONE, 0);
}

TEST(IndexedTool, TheInsertFallsBackToTheFreeOne)
{
    EXPECT_EQ(Lookup::getInsertType(fromJson(R"({"geometry":{"SC":"C"}})"), "tool_insertType"), ToolGeometry::INSERT_C);
    EXPECT_EQ(Lookup::getInsertType(fromJson(R"({"geometry":{"SC":"groove round"}})"), "tool_insertType"),
              ToolGeometry::INSERT_GROOVE_ROUND);
    for (const char *json :
         {"{}", R"({"geometry":{"SC":"c"}})", R"({"geometry":{"SC":5}})", R"({"geometry":{"SC":"X"}})"})
        EXPECT_EQ(Lookup::getInsertType(fromJson(json), "tool_insertType"), ToolGeometry::INSERT_CUSTOM) << json;
}

TEST(IndexedTool, EachTypedLookupAnswersToItsOwnKeyOnly)
{
    const IndexedTool tool = fromJson(R"({"type":"turning general","unit":"inches","geometry":{"SC":"C"}})");
    for (const std::string_view key :
         {"", "tool_unit", "tool_insertType", "type", "TOOL_TYPE", "tool_type ", "tool_typ"})
        EXPECT_EQ(Lookup::getType(tool, key), std::nullopt) << key;
    for (const std::string_view key : {"", "tool_type", "tool_insertType", "unit", "tool_Unit", "tool_unit.normValue"})
        EXPECT_EQ(Lookup::getUnit(tool, key), std::nullopt) << key;
    for (const std::string_view key : {"", "tool_type", "tool_unit", "SC", "tool_inserttype", "tool_insertType\n"})
        EXPECT_EQ(Lookup::getInsertType(tool, key), std::nullopt) << key;
    EXPECT_EQ(Lookup::getType(tool, "tool_type\0"s), std::nullopt);
    EXPECT_EQ(tool.getType(), ToolGeometry::TYPE_TURNING_GENERAL) << "a foreign key has left nothing behind";
    EXPECT_EQ(tool.getUnit(), NCUnit::inches);
    EXPECT_EQ(Lookup::getInsertType(tool, "tool_insertType"), ToolGeometry::INSERT_C);
}

TEST(IndexedTool, TheFirstAnswerStaysWhateverTheToolSaysLater)
{
    const auto properties = std::make_shared<Properties>(
        Properties{{"tool_type", "drill"}, {"tool_unit", "inches"}, {"tool_insertType", "C"}});
    const IndexedTool tool(std::make_unique<ScriptedTool>(properties));
    EXPECT_EQ(tool.getType(), ToolGeometry::TYPE_DRILL);
    EXPECT_EQ(tool.getUnit(), NCUnit::inches);
    EXPECT_EQ(Lookup::getInsertType(tool, "tool_insertType"), ToolGeometry::INSERT_C);
    *properties = {{"tool_type", "probe"}, {"tool_unit", "millimeters"}, {"tool_insertType", "D"}};
    EXPECT_EQ(tool.getType(), ToolGeometry::TYPE_DRILL);
    EXPECT_EQ(Lookup::getType(tool, "tool_type"), ToolGeometry::TYPE_DRILL);
    EXPECT_EQ(tool.getUnit(), NCUnit::inches);
    EXPECT_EQ(Lookup::getInsertType(tool, "tool_insertType"), ToolGeometry::INSERT_C);
}

TEST(IndexedTool, AFallbackIsKeptAsWell)
{
    const auto properties = std::make_shared<Properties>();
    const IndexedTool tool(std::make_unique<ScriptedTool>(properties));
    EXPECT_EQ(tool.getType(), ToolGeometry::TYPE_NONE);
    EXPECT_EQ(tool.getUnit(), NCUnit::millimeters);
    EXPECT_EQ(Lookup::getInsertType(tool, "tool_insertType"), ToolGeometry::INSERT_CUSTOM);
    *properties = {{"tool_type", "probe"}, {"tool_unit", "inches"}, {"tool_insertType", "D"}};
    EXPECT_EQ(tool.getType(), ToolGeometry::TYPE_NONE);
    EXPECT_EQ(tool.getUnit(), NCUnit::millimeters);
    EXPECT_EQ(Lookup::getInsertType(tool, "tool_insertType"), ToolGeometry::INSERT_CUSTOM);
}

TEST(IndexedTool, RawPropertiesAreThoseOfTheTool)
{
    const IndexedTool tool = scripted({{"a", "text"}, {"b", 2.5}, {"c", 3}, {"d", true}});
    EXPECT_EQ(tool.getRawProperty("a"), Tool::Property("text"s));
    EXPECT_EQ(tool.getRawProperty("b"), Tool::Property(2.5));
    EXPECT_EQ(tool.getRawProperty("c"), Tool::Property(3));
    EXPECT_EQ(tool.getRawProperty("d"), Tool::Property(true));
    EXPECT_EQ(tool.getRawProperty("e"), std::nullopt);
    EXPECT_EQ(scripted({{"x.normValue", 1}}).getRawProperty("x.normValue"), Tool::Property(1));
}

TEST(IndexedTool, ThePrecisionDependsOnTheQuantity)
{
    const auto precision = [](const char *key, int type, int unit) {
        return Lookup::getPrecision(key, static_cast<ToolGeometry::Type>(type), static_cast<NCUnit::Unit>(unit));
    };
    struct Row {
        const char *key;
        ToolGeometry::Type type;
        int millimeters;
        int inches;
    };
    const Row rows[] = {
        {"tool_feedCutting", ToolGeometry::TYPE_DRILL, 100, 1000},
        {"tool_feedCutting", ToolGeometry::TYPE_NONE, 100, 1000},
        {"tool_surfaceSpeed", ToolGeometry::TYPE_TURNING_GENERAL, 100, 1000},
        {"tool_feedWire", ToolGeometry::TYPE_LASER_WIRE, 100, 1000},
        {"tool_spindleSpeed", ToolGeometry::TYPE_FLAT_END_MILL, 1, 1},
        {"tool_maximumRotationalSpeed", ToolGeometry::TYPE_HOLDER, 1, 1},
        {"tool_diameter", ToolGeometry::TYPE_DRILL, 100000, 100000},
        {"tool_tipAngle", ToolGeometry::TYPE_DRILL, 100000, 100000},
        {"tool_feedPerTooth", ToolGeometry::TYPE_DRILL, 100000, 100000},
        {"tool_number", ToolGeometry::TYPE_DRILL, 100000, 100000},
        {"tool_spindleSpeed", ToolGeometry::TYPE_WATERJET, 100000, 100000}, // of no interest to a jet
        {"tool_feedCutting.normValue", ToolGeometry::TYPE_DRILL, 100000, 100000},
        {"no such parameter", ToolGeometry::TYPE_DRILL, 100000, 100000},
        {"", ToolGeometry::TYPE_DRILL, 100000, 100000},
        {"\xFF\xC3", ToolGeometry::TYPE_DRILL, 100000, 100000},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(precision(row.key, row.type, 1), row.millimeters) << row.key;
        EXPECT_EQ(precision(row.key, row.type, 0), row.inches) << row.key;
        EXPECT_EQ(precision(row.key, row.type, 7), row.inches) << row.key << ": whatever is not 1";
    }
}

TEST(IndexedTool, NumbersAreRoundedHalfAwayFromZero)
{
    struct Row {
        const char *key;
        const char *type;
        const char *unit;
        Tool::Property value;
        double rounded;
    };
    const Row rows[] = {
        {"tool_feedCutting", "drill", "millimeters", 0.125, 0.13},
        {"tool_feedCutting", "drill", "millimeters", -0.125, -0.13},
        {"tool_feedCutting", "drill", "millimeters", 0.1249, 0.12},
        {"tool_feedCutting", "drill", "millimeters", -0.1249, -0.12},
        {"tool_feedCutting", "drill", "millimeters", 1234.5678, 1234.57},
        {"tool_feedCutting", "drill", "inches", 0.0625, 0.063},
        {"tool_feedCutting", "drill", "inches", -0.0625, -0.063},
        {"tool_feedCutting", "drill", "inches", 0.125, 0.125},
        {"tool_feedCutting", "", "", 0.125, 0.13},
        {"tool_spindleSpeed", "drill", "millimeters", 1000.5, 1001},
        {"tool_spindleSpeed", "drill", "inches", -1000.5, -1001},
        {"tool_spindleSpeed", "drill", "inches", 0.49, 0},
        {"tool_spindleSpeed", "waterjet", "inches", 0.49, 0.49},
        {"tool_diameter", "drill", "millimeters", 0.1234567, 0.12346},
        {"tool_diameter", "drill", "inches", 0.1234567, 0.12346},
        {"tool_diameter", "drill", "inches", -0.000004, 0},
        {"tool_diameter", "drill", "inches", 12, 12},
        {"tool_diameter", "drill", "inches", -7, -7},
        {"tool_diameter", "drill", "inches", infinity, infinity},
        {"tool_diameter", "drill", "inches", -infinity, -infinity},
    };
    for (const Row &row : rows) {
        const IndexedTool tool = scripted({{"tool_type", row.type}, {"tool_unit", row.unit}, {row.key, row.value}});
        const std::optional<double> rounded = Lookup::getRoundedDouble(tool, row.key);
        ASSERT_TRUE(rounded) << row.key;
        EXPECT_EQ(*rounded, row.rounded) << row.key << " " << row.type << " " << row.unit;
    }
    EXPECT_DOUBLE_EQ(Lookup::getRoundedDouble(scripted({{"a", 1e300}}), "a").value_or(0), 1e300);
    const auto nan = Lookup::getRoundedDouble(scripted({{"a", std::nan("")}}), "a");
    EXPECT_TRUE(nan && std::isnan(*nan));
}

TEST(IndexedTool, WhatIsNoNumberHasNoRoundedOne)
{
    const IndexedTool tool = scripted({{"text", "12"}, {"truth", true}});
    for (const char *key : {"text", "truth", "missing", "", "text.normValue", "missing.normValue"})
        EXPECT_EQ(Lookup::getRoundedDouble(tool, key), std::nullopt) << key;
}

TEST(IndexedTool, NormalisedValuesAreMillimetersOnTheGridOfTheOwnUnit)
{
    struct Row {
        const char *key;
        const char *unit;
        Tool::Property value;
        double plain;
        double normalised;
    };
    const Row rows[] = {
        {"tool_diameter", "inches", 1, 1, 25.4},
        {"tool_diameter", "inches", 0.5, 0.5, 12.7},
        {"tool_diameter", "millimeters", 1, 1, 1},
        {"tool_diameter", "", 1.5, 1.5, 1.5},
        {"tool_diameter", "no unit", 1.5, 1.5, 1.5},
        {"tool_feedCutting", "inches", 1, 1, 25.4},
        {"tool_feedCutting", "inches", 0.0001, 0, 0.003}, // 0.00254 mm: nothing on the grid of millimeters
        {"tool_feedCutting", "millimeters", 0.125, 0.13, 0.13},
        {"tool_spindleSpeed", "inches", 2, 2, 51},
        {"x", "inches", 1, 1, 25.4},
    };
    for (const Row &row : rows) {
        const IndexedTool tool = scripted({{"tool_type", "drill"}, {"tool_unit", row.unit}, {row.key, row.value}});
        EXPECT_EQ(Lookup::getRoundedDouble(tool, row.key), row.plain) << row.key << " " << row.unit;
        EXPECT_EQ(Lookup::getRoundedDouble(tool, row.key + ".normValue"s), row.normalised)
            << row.key << " " << row.unit;
    }
}

TEST(IndexedTool, OnlyTheWholeEndIsCutAndOnlyOnce)
{
    const IndexedTool tool = scripted({{"tool_unit", "inches"},
                                       {"", 2},
                                       {"x", 1},
                                       {"x.normvalue", 3},
                                       {"normValue", 4},
                                       {"xnormValue", 5},
                                       {"x.normValue", 6},
                                       {"x.normValue ", 7}});
    EXPECT_EQ(Lookup::getRoundedDouble(tool, ".normValue"), 50.8) << "the empty key";
    EXPECT_EQ(Lookup::getRoundedDouble(tool, "x.normValue"), 25.4) << "not the member of that name";
    EXPECT_EQ(Lookup::getRoundedDouble(tool, "x.normvalue"), 3);
    EXPECT_EQ(Lookup::getRoundedDouble(tool, "normValue"), 4);
    EXPECT_EQ(Lookup::getRoundedDouble(tool, "xnormValue"), 5);
    EXPECT_EQ(Lookup::getRoundedDouble(tool, "x.normValue.normValue"), 152.4);
    EXPECT_EQ(Lookup::getRoundedDouble(tool, "x.normValue "), 7);
    EXPECT_EQ(Lookup::getRoundedDouble(fromJson(R"({"":5,"unit":"inches"})"), ".normValue"), std::nullopt);
}

TEST(IndexedTool, AToolOfALibraryIsRoundedByItsPaths)
{
    const IndexedTool tool = fromJson(
        R"({"type":"drill","unit":"inches","geometry":{"DC":0.5},"post-process":{"number":7},"maximumRotationalSpeed":99.5})");
    EXPECT_EQ(Lookup::getRoundedDouble(tool, "tool_diameter"), 0.5);
    EXPECT_EQ(Lookup::getRoundedDouble(tool, "tool_diameter.normValue"), 12.7);
    EXPECT_EQ(Lookup::getRoundedDouble(tool, "tool_number"), 7);
    EXPECT_EQ(Lookup::getRoundedDouble(tool, "tool_maximumRotationalSpeed"), 100);
    EXPECT_EQ(Lookup::getRoundedDouble(tool, "geometry"), std::nullopt);
    EXPECT_EQ(Lookup::getRoundedDouble(tool, "DC"), std::nullopt);
}

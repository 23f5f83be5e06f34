#include "ToolLibrary/Interface/Private/ToolFilter.h"
#include "support/Asserts.h"
#include "support/LibraryFile.h"

#include "ToolLibrary/Interface/Private/IndexedTool.h"

#include <gmock/gmock.h>

#include <limits>

using namespace TestSupport;
using namespace Varn::ToolLibraries;
using testing::ElementsAre;

namespace {

const ToolLibraryLocator here(L"custom://a.json");

bool passes(const std::string &filters, const std::string &query, const std::string &members,
            const ToolLibraryLocator &library = here)
{
    return ToolFilter::createFilterFunction(filters, query)(IndexedTool(Tool::fromJson(toolText(1, members))), library);
}

/// One filter on a property of a tool of 10 mm by R 0.5.
std::string onProperty(const std::string &property, const std::string &values)
{
    return R"([{"key":"components.indexedProperties.)" + property + R"(","values":)" + values + "}]";
}

constexpr const char *endMill =
    R"("type":"flat end mill","unit":"millimeters","vendor":"Quillon","product-id":"EF-10",)"
    R"("geometry":{"DC":10,"RE":0.5},"description":"Schaftfräser")";

struct Row {
    const char *filter; ///< values of a filter on the diameter, which is 10
    bool passes;
};

} // namespace

TEST(ToolFilter, WithoutFilterAndQueryEveryToolPasses)
{
    for (const char *nothing : {"", "[]", "null", "[", "broken", "{}", "// only a comment"})
        EXPECT_TRUE(passes(nothing, "", "")) << nothing;
}

TEST(ToolFilter, NumbersAreComparedAsTheValuesSay)
{
    const Row rows[] = {
        {R"([{"op":":","value":10}])", true},
        {R"([{"op":":","value":10.000001}])", false},
        {R"([{"op":":","value":11}])", false},
        {R"([{"op":":","value":10,"negated":true}])", false},
        {R"([{"op":":","value":11,"negated":true}])", true},
        {R"([{"op":":","value":11,"negated":"true"}])", false},
        {R"([{"op":":","value":11,"negated":1}])", false},
        {R"([{"op":"<","value":10}])", false},
        {R"([{"op":"<","value":10.5}])", true},
        {R"([{"op":"<","value":10.5,"negated":true}])", true},
        {R"([{"op":">","value":10}])", false},
        {R"([{"op":">","value":9}])", true},
        {R"([{"op":"<=","value":10}])", true},
        {R"([{"op":"<=","value":9.9}])", false},
        {R"([{"op":">=","value":10}])", true},
        {R"([{"op":">=","value":10.1}])", false},
        {R"([{"op":"=","value":11}])", true}, // no operator: no filter
        {R"([{"op":"","value":11}])", true},
        {R"([{"op":":","value":"10"}])", true}, // no number: no filter
        {R"([{"op":":","value":true}])", true},
        {R"([{"op":":"}])", true},
        {R"([{"op":"!","lowerBound":11,"upperBound":12}])", true}, // an operator that is none wins over bounds
        {R"([{"op":5,"lowerBound":11,"upperBound":12}])", false},  // but not one that is no text
        {R"([{"lowerBound":10,"upperBound":10}])", true},
        {R"([{"lowerBound":9.5,"upperBound":10}])", true},
        {R"([{"lowerBound":10.1,"upperBound":12}])", false},
        {R"([{"lowerBound":12,"upperBound":9}])", false},
        {R"([{"lowerBound":9}])", true}, // half a range: no filter
        {R"([{"lowerBound":"9","upperBound":12}])", true},
        {R"([{}])", true},
        {R"([{"op":":","value":11},{"op":":","value":10}])", true}, // two objects: no filter
        {R"([{"op":":","value":11},"10"])", true},
        {R"(["10",10])", true}, // one that is no text: no filter
        {R"([10])", true},
        {R"([[]])", true},
        {R"([null])", true},
        {R"([])", false},                   // none of no texts
        {R"({"op":":","value":11})", true}, // no list: no filter
        {R"("10")", true},
        {R"(null)", true},
        {R"(["10"])", false}, // the number is no text
    };
    for (const Row &row : rows)
        EXPECT_EQ(passes(onProperty("tool_diameter", row.filter), "", endMill), row.passes) << row.filter;
}

TEST(ToolFilter, AToolWithoutTheValuePassesNoComparison)
{
    for (const char *values : {R"([{"op":":","value":11,"negated":true}])", R"([{"op":"<","value":11}])",
                               R"([{"lowerBound":0,"upperBound":9}])"})
        for (const char *property : {"tool_taperAngle", "nothing", ""})
            EXPECT_FALSE(passes(onProperty(property, values), "", endMill)) << property << values;
    EXPECT_FALSE(passes(R"([{"key":"tool_diameter","values":[{"op":":","value":10}]}])", "", endMill))
        << "a key without the prefix is none";
    EXPECT_FALSE(passes(R"([{"values":[{"op":":","value":10}]}])", "", endMill));
}

TEST(ToolFilter, ComparesTheRoundedValue)
{
    EXPECT_TRUE(
        passes(onProperty("tool_diameter", R"([{"op":":","value":10}])"), "", R"("geometry":{"DC":10.0000004})"));
    EXPECT_TRUE(passes(onProperty("tool_diameter.normValue", R"([{"op":":","value":25.4}])"), "",
                       R"("unit":"inches","geometry":{"DC":1})"));
}

TEST(ToolFilter, TextsAreComparedExactly)
{
    EXPECT_TRUE(passes(onProperty("tool_vendor", R"(["Other","Quillon"])"), "", endMill));
    EXPECT_FALSE(passes(onProperty("tool_vendor", R"(["quillon"])"), "", endMill));
    EXPECT_FALSE(passes(onProperty("tool_vendor", R"(["Quillon"])"), "", "")) << "a tool without one";
    EXPECT_TRUE(passes(onProperty("tool_type", R"(["drill","flat end mill"])"), "", endMill));
    EXPECT_FALSE(passes(onProperty("tool_type", R"(["Flat end mill"])"), "", endMill));
    EXPECT_TRUE(passes(onProperty("tool_type", R"(["unspecified"])"), "", R"("type":"odd")"));
    EXPECT_TRUE(passes(onProperty("tool_unit", R"(["millimeters"])"), "", endMill));
    EXPECT_TRUE(passes(onProperty("tool_unit", R"(["millimeters"])"), "", "")) << "a tool without a unit";
    for (const char *unit : {"Millimeters", "mm", "millimeter", "metric", ""})
        EXPECT_FALSE(passes(onProperty("tool_unit", R"([")" + std::string(unit) + R"("])"), "", endMill)) << unit;
}

TEST(ToolFilter, TheNameIsATextAndNoNumber)
{
    const auto onName = [](const std::string &values) {
        return R"([{"key":"components.info.name","values":)" + values + "}]";
    };
    EXPECT_TRUE(passes(onName(R"x(["∅10mm R0.5mm (Schaftfräser)"])x"), "", endMill));
    EXPECT_FALSE(passes(onName(R"x(["∅10MM R0.5mm (Schaftfräser)"])x"), "", endMill));
    EXPECT_FALSE(passes(onName(R"([{"op":":","value":10,"negated":true}])"), "", endMill));
    EXPECT_FALSE(passes(onName(R"([{"lowerBound":0,"upperBound":100}])"), "", endMill));
}

TEST(ToolFilter, NamedToolsPassInTheirLibraryOnly)
{
    const auto named = [](const std::string &values) {
        return R"([{"key":"toolIdentifier","values":)" + values + "}]";
    };
    const std::string one = R"({"guid":")" + guidOf(1) + R"(","libraryUrl":"custom://a.json"})";
    const std::string two = R"({"guid":")" + guidOf(2) + R"(","libraryUrl":"custom://b.json"})";
    const ToolLibraryLocator other(L"custom://b.json");
    EXPECT_TRUE(passes(named("[" + one + "," + two + "]"), "", ""));
    EXPECT_FALSE(passes(named("[" + one + "," + two + "]"), "", "", other));
    EXPECT_FALSE(passes(named("[" + two + "]"), "", ""));
    EXPECT_TRUE(passes(named(R"([{"guid":1,"libraryUrl":"custom://a.json"},)" + one + "]"), "", "")) << "skipped";
    EXPECT_TRUE(passes(named("[" + one + R"(,"x"])"), "", "", other)) << "no list of tools: it restricts nothing";
    EXPECT_FALSE(passes(named(R"(["x"])"), "", "")) << "a set of texts under a key that is no property";
    EXPECT_FALSE(passes(named("[]"), "", ""));
    EXPECT_TRUE(passes(named("5"), "", ""));
    EXPECT_TRUE(passes(named("[{}]"), "", ""));
}

TEST(ToolFilter, AllFiltersAndTheQueryMustPass)
{
    const std::string both = R"([{"key":"components.indexedProperties.tool_diameter","values":[{"op":">","value":9}]},)"
                             R"({"key":"components.indexedProperties.tool_vendor","values":["Quillon"]}])";
    EXPECT_TRUE(passes(both, "", endMill));
    EXPECT_TRUE(passes(both, "ef-10", endMill));
    EXPECT_FALSE(passes(both, "ef-11", endMill));
    EXPECT_FALSE(passes(both, "", R"("vendor":"Quillon","geometry":{"DC":8})"));
    EXPECT_FALSE(passes(both + "broken", "", R"("vendor":"Other","geometry":{"DC":10})")) << "what was read counts";
}

TEST(ToolFilter, TheQueryLooksIntoFourTextsWithoutCaseAndBlanks)
{
    const std::string tool = R"("post-process":{"comment":"Keep sharp"},"product-id":"AB-1","vendor":"Some Vendor",)"
                             R"("description":"12in face mill")";
    for (const char *query :
         {"keep", "SHARP", "p s", "ab-1", "some vendor", "SOMEVENDOR", "face", "12 in", "13 in FACE"})
        EXPECT_TRUE(passes("[]", query, tool)) << query;
    for (const char *query : {"12\"", "sharpab", "keepsome", "x", "\xFF"})
        EXPECT_FALSE(passes("[]", query, tool)) << query;
}

TEST(ToolFilter, AQueryOfBlanksIsFoundInAnyText)
{
    EXPECT_TRUE(passes("[]", "   ", R"("vendor":"V")"));
    EXPECT_TRUE(passes("[]", "\t", "")) << "every tool has a name";
}

TEST(ToolFilter, AQueryOfAMillionCharactersIsFine)
{
    EXPECT_FALSE(passes("[]", std::string(1'000'000, 'x'), endMill));
}

TEST(ToolFilter, AFilterThatIsNoObjectRaises)
{
    for (const char *filters : {"[1]", "[\"x\"]", "[true]", R"([{"key":{},"values":[]}])", R"([{"key":[1]}])"})
        EXPECT_THROW(ToolFilter::createFilterFunction(filters, ""), Json::Exception) << filters;
    EXPECT_TRUE(passes(R"([{"key":5,"values":3}])", "", "")) << "a number can be read as a text";
    EXPECT_TRUE(passes("[null]", "", ""));
}

TEST(ToolFilter, DeepTextIsNoFilter)
{
    EXPECT_TRUE(passes(std::string(100'000, '['), "", ""));
}

TEST(ToolFilter, NotANumberIsInNoOrderAndNoRange)
{
    // A text cannot hold one; the ordering is what the operators make of it.
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(nan <=> 1.0, std::partial_ordering::unordered);
    EXPECT_FALSE(passes(onProperty("tool_diameter", R"([{"lowerBound":-1e308,"upperBound":1e308}])"), "", ""));
}

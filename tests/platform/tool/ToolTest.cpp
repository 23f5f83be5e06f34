#include "platform/tool/Tool.h"
#include "platform/tool/Exception.h"
#include "platform/tool/JsonText.h"
#include "platform/tool/ToolParameterJSONKeyPaths.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <thread>
#include <vector>

namespace Varn::ToolLibraries {

namespace {

using namespace std::string_literals;
using Property = Tool::Property;

const std::string guid = "0123abcd-89ef-4123-8567-89abcdef0123";

std::optional<Property> propertyOf(const std::string &json, std::string_view key)
{
    return Tool(json).getRawProperty(key);
}

std::string failureOf(const std::string &json)
{
    try {
        const Tool tool(json);
        return "none";
    } catch (const InvalidInput &failure) {
        EXPECT_EQ(failure.translatedWhat(), std::nullopt);
        return failure.what();
    }
}

/// A tool whose properties and value come from elsewhere, as those of a view do.
class Elsewhere : public Tool
{
public:
    explicit Elsewhere(Property property) : m_property(std::move(property)) {}
    std::string toJson() const override { return R"({"vendor":"elsewhere"})"; }
    int made() const { return m_made; }

protected:
    std::optional<Property> getRawPropertyImpl(std::string_view) const override { return m_property; }
    Json::Value makeToolValue() const override
    {
        ++m_made;
        return *JsonText::parse(toJson());
    }

private:
    Property m_property;
    mutable std::atomic<int> m_made{0};
};

} // namespace

TEST(ToolTest, KeepsItsTextAndItsParsedValue)
{
    const std::string json = "{ \"vendor\" : \"\u00e4\", \"n\" : [ 1 , 2.0 ] }";
    const Tool tool(json);
    EXPECT_EQ(tool.toJson(), json);
    EXPECT_EQ(JsonText::print(tool.getToolValue()), "{\"n\":[1,2.0],\"vendor\":\"\u00e4\"}");
    EXPECT_EQ(&tool.getToolValue(), &tool.getToolValue());
    EXPECT_EQ(Tool::fromJson(json)->toJson(), json);
    EXPECT_EQ(Tool("{}").getToolValue(), Json::Value(Json::objectValue));
}

TEST(ToolTest, BadTextFailsInTheConstructor)
{
    EXPECT_EQ(failureOf("{"), "Tool is not valid JSON: Missing a name for object member. At byte 1.");
    EXPECT_EQ(failureOf("{} x"),
              "Tool is not valid JSON: The document root must not be followed by other values. At byte 3.");
    const std::string deep = "{\"a\":" + std::string(1000, '[') + std::string(1000, ']') + "}";
    EXPECT_EQ(failureOf(deep), "Tool is not valid JSON: Nested deeper than 1000 levels. At byte 1004.");
    for (const std::string &json : {""s, " "s, "nonsense"s, R"({"a":1,})"s, "{}\0"s, "{\"a\":\"\xFF\"}"s,
                                    "\xEF\xBB\xBF{}"s, std::string(1 << 20, '{')})
        EXPECT_TRUE(failureOf(json).starts_with("Tool is not valid JSON: ")) << json.substr(0, 20);
    EXPECT_THROW(Tool::fromJson("{"), InvalidInput);
}

TEST(ToolTest, WhatIsNoObjectFailsInTheConstructor)
{
    for (const char *json : {"[]", "5", "null", "\"{}\"", "true"})
        EXPECT_EQ(failureOf(json), "Tool is not a JSON object") << json;
}

TEST(ToolTest, TheIdentifierIsTheGuid)
{
    const ToolId none{Guid()};
    EXPECT_EQ(Tool("{\"guid\":\"" + guid + "\"}").getToolId(), ToolId(guid));
    EXPECT_EQ(Tool("{\"guid\":\"{0123ABCD-89EF-4123-8567-89ABCDEF0123}\"}").getToolId(), ToolId(guid));
    for (const char *json :
         {"{}", R"({"guid":null})", R"({"guid":5})", R"({"guid":""})", R"({"guid":"drill"})", R"({"GUID":"x"})"})
        EXPECT_EQ(Tool(json).getToolId(), none) << json;
}

TEST(ToolTest, AnEndOfAPathDecidesByItsKind)
{
    struct Row {
        const char *value;
        std::optional<Property> property;
    };
    const Row rows[] = {
        {R"("text")", Property("text"s)},
        {R"("a\u0000b")", Property("a\0b"s)},
        {"0", Property(0)},
        {"2147483647", Property(2147483647)},
        {"-2147483648", Property(std::numeric_limits<int>::min())},
        {"2147483648", std::nullopt},
        {"-2147483649", std::nullopt},
        {"18446744073709551615", std::nullopt},
        {"2.0", Property(2)},
        {"2.5", Property(2.5)},
        {"-0.0", Property(0)},
        {"2147483648.0", Property(2147483648.0)},
        {"-1e300", Property(-1e300)},
        {"true", Property(true)},
        {"false", Property(false)},
        {"null", std::nullopt},
        {"{}", std::nullopt},
        {"[1]", std::nullopt},
    };
    for (const Row &row : rows) {
        const auto property = propertyOf(R"({"vendor":)"s + row.value + "}", "tool_vendor");
        EXPECT_EQ(property, row.property) << row.value;
        if (property && row.property) {
            EXPECT_EQ(property->index(), row.property->index()) << row.value;
        }
    }
}

TEST(ToolTest, APathThatFailsGivesWayToTheNext)
{
    struct Row {
        const char *json;
        const char *key;
        std::optional<Property> property;
    };
    const Row rows[] = {
        {R"({"geometry":{"DC":1,"INSD":2}})", "tool_diameter", Property(1)},
        {R"({"geometry":{"DC":null,"INSD":2}})", "tool_diameter", Property(2)},
        {R"({"geometry":{"DC":[1],"INSD":2.5}})", "tool_diameter", Property(2.5)},
        {R"({"geometry":{"DC":3000000000,"INSD":2}})", "tool_diameter", Property(2)},
        {R"({"geometry":{"dc":1,"INSD":2}})", "tool_diameter", Property(2)},
        {R"({"post-process":5,"comment":"c"})", "tool_comment", Property("c"s)},
        {R"({"post-process":[{"comment":"x"}],"comment":"c"})", "tool_comment", Property("c"s)},
        {R"({"post-process":{},"comment":"c"})", "tool_comment", Property("c"s)},
        {R"({"vendor":"a","vendor":"b"})", "tool_vendor", Property("b"s)},
        {R"({"vendor\u0000":"a"})", "tool_vendor", std::nullopt},
        {R"({"geometry":"DC"})", "tool_diameter", std::nullopt},
        {R"({})", "tool_diameter", std::nullopt},
    };
    for (const Row &row : rows)
        EXPECT_EQ(propertyOf(row.json, row.key), row.property) << row.json;
}

TEST(ToolTest, AnUnknownKeyHasNoValueEvenIfAMemberBearsItsName)
{
    for (const std::string_view key : {"nonsense", "description", "tool_coolant", "", "TOOL_DESCRIPTION"})
        EXPECT_EQ(propertyOf(R"({"nonsense":1,"description":"d","tool_coolant":"flood","":2})", key), std::nullopt)
            << key;
}

TEST(ToolTest, TypedGettersTakeWhatFits)
{
    struct Row {
        const char *value;
        std::optional<std::string> text;
        std::optional<double> number;
        std::optional<int> whole;
    };
    const Row rows[] = {
        {R"("5")", "5", std::nullopt, std::nullopt},
        {"5", std::nullopt, 5, 5},
        {"5.0", std::nullopt, 5, 5},
        {"5.5", std::nullopt, 5.5, std::nullopt},
        {"1e10", std::nullopt, 1e10, std::nullopt},
        {"10000000000", std::nullopt, std::nullopt, std::nullopt},
        {"true", std::nullopt, std::nullopt, std::nullopt},
        {"null", std::nullopt, std::nullopt, std::nullopt},
    };
    for (const Row &row : rows) {
        const Tool tool(R"({"vendor":)"s + row.value + "}");
        EXPECT_EQ(tool.getString("tool_vendor"), row.text) << row.value;
        EXPECT_EQ(tool.getWString("tool_vendor").has_value(), row.text.has_value()) << row.value;
        EXPECT_EQ(tool.getDouble("tool_vendor"), row.number) << row.value;
        EXPECT_EQ(tool.getInt("tool_vendor"), row.whole) << row.value;
    }
    const Tool wide("{\"vendor\":\"\u00e4\U0001F527\"}");
    EXPECT_EQ(wide.getString("tool_vendor"), "\u00e4\U0001F527");
    EXPECT_EQ(wide.getWString("tool_vendor"), L"\u00e4\U0001F527");
    EXPECT_EQ(wide.getWString("tool_comment"), std::nullopt);
}

TEST(ToolTest, AnIntegerMayComeAsAWholeDouble)
{
    EXPECT_EQ(Elsewhere(3.0).getInt("any"), 3);
    EXPECT_EQ(Elsewhere(3.5).getInt("any"), std::nullopt);
    EXPECT_EQ(Elsewhere(3e9).getInt("any"), std::nullopt);
    EXPECT_EQ(Elsewhere(std::nan("")).getInt("any"), std::nullopt);
    EXPECT_EQ(Elsewhere(HUGE_VAL).getInt("any"), std::nullopt);
    EXPECT_EQ(Elsewhere(3).getDouble("any"), 3);
    EXPECT_EQ(Elsewhere(true).getDouble("any"), std::nullopt);
    EXPECT_EQ(Elsewhere("3"s).getDouble("any"), std::nullopt);
}

TEST(ToolTest, NamedGettersReadTheirPaths)
{
    const Tool tool(R"({
        "type": "turning general", "description": "d", "_document_tool_id": 12,
        "post-process": {"number": 7},
        "geometry": {"EPSR": 80, "RE": 0.8, "INSD": 12.7, "S": 4.76, "SIZE_SPECIFICATION_MODE": "length", "TC": "M",
                     "SCTY": "A", "3DGeometry": {"id": "{x} ä"}},
        "holder": {"tool_leadingAngle": 5, "tool_trailingAngle": 5.5, "HAND": "R", "THSC": "L", "MTP": "P"}
    })");
    EXPECT_EQ(tool.getType(), "turning general");
    EXPECT_EQ(tool.getDescription(), "d");
    EXPECT_EQ(tool.getToolNumber(), 7);
    EXPECT_EQ(tool.getToolDocumentId(), 12);
    EXPECT_EQ(tool.get3DGeometryId(), L"{x} \u00e4");
    EXPECT_EQ(tool.getInsertAngle(), 80);
    EXPECT_EQ(tool.getCornerRadiusIndexed(), 0.8);
    EXPECT_EQ(tool.getInsertSize(), 12.7);
    EXPECT_EQ(tool.getThickness(), 4.76);
    EXPECT_EQ(tool.getLeadingAngle(), 5);
    EXPECT_EQ(tool.getTrailingAngle(), 5.5);
    EXPECT_EQ(tool.getInsertSizeSpecificationMode(), "length");
    EXPECT_EQ(tool.getTolerance(), "M");
    EXPECT_EQ(tool.getCrossSection(), "A");
    EXPECT_EQ(tool.getHandString(), "R");
    EXPECT_EQ(tool.getHolderTypeString(), "L");
    EXPECT_EQ(tool.getClamping(), "P");
}

TEST(ToolTest, NamedGettersOfAnEmptyOrWrongToolAreEmpty)
{
    const char *const tools[] = {
        "{}",
        R"({"type":5,"description":null,"_document_tool_id":"x","post-process":[],"geometry":5,"holder":"x"})",
        R"({"_document_tool_id":1e20,"post-process":{"number":"7"},"geometry":{"3DGeometry":{"id":5}},"holder":{"HAND":1}})",
        R"({"_document_tool_id":true,"geometry":{"3DGeometry":"id"}})",
    };
    for (const char *json : tools) {
        const Tool tool(json);
        EXPECT_EQ(tool.getType(), "") << json;
        EXPECT_EQ(tool.getDescription(), "") << json;
        EXPECT_EQ(tool.getToolNumber(), std::nullopt) << json;
        EXPECT_EQ(tool.getToolDocumentId(), 0) << json;
        EXPECT_EQ(tool.get3DGeometryId(), std::nullopt) << json;
        for (const auto &number : {tool.getInsertAngle(), tool.getCornerRadiusIndexed(), tool.getInsertSize(),
                                   tool.getThickness(), tool.getLeadingAngle(), tool.getTrailingAngle()})
            EXPECT_EQ(number, std::nullopt) << json;
        for (const auto &text : {tool.getInsertSizeSpecificationMode(), tool.getTolerance(), tool.getCrossSection(),
                                 tool.getHandString(), tool.getHolderTypeString(), tool.getClamping()})
            EXPECT_EQ(text, std::nullopt) << json;
    }
}

TEST(ToolTest, ACloneStandsAlone)
{
    auto original = std::make_unique<Tool>("{\"guid\":\"" + guid + "\",\"vendor\":\"v\",\"n\":2.0}");
    const std::unique_ptr<Tool> before = original->clone();
    original->getToolValue();
    const std::unique_ptr<Tool> after = original->clone();
    const std::string json = original->toJson();
    original.reset();
    for (const auto &clone : {before.get(), after.get()}) {
        EXPECT_EQ(clone->toJson(), json);
        EXPECT_EQ(clone->getToolId(), ToolId(guid));
        EXPECT_EQ(clone->getString("tool_vendor"), "v");
        EXPECT_EQ(clone->clone()->toJson(), json);
    }
}

TEST(ToolTest, CopyingAndAssigning)
{
    Tool tool(R"({"vendor":"a"})");
    const Tool copy(tool);
    EXPECT_NE(&copy.getToolValue(), &tool.getToolValue());
    tool = Tool(R"({"vendor":"b"})");
    EXPECT_EQ(tool.getString("tool_vendor"), "b");
    EXPECT_EQ(tool.getToolValue()["vendor"], "b");
    EXPECT_EQ(copy.getString("tool_vendor"), "a");
    const Tool &same = tool;
    tool = same;
    EXPECT_EQ(tool.toJson(), R"({"vendor":"b"})");
    EXPECT_EQ(tool.getToolValue()["vendor"], "b");
}

TEST(ToolTest, AToolThatComesFromElsewhereIsCopiedByItsText)
{
    const Elsewhere elsewhere("answer"s);
    EXPECT_EQ(elsewhere.getString("tool_vendor"), "answer");
    EXPECT_EQ(elsewhere.clone()->getString("tool_vendor"), "elsewhere");
    EXPECT_EQ(Tool(static_cast<const Tool &>(elsewhere)).getString("tool_vendor"), "elsewhere");
    EXPECT_EQ(elsewhere.made(), 0) << "a value is made when it is asked for";
    elsewhere.getToolValue();
    elsewhere.getToolValue();
    EXPECT_EQ(elsewhere.made(), 1);
}

TEST(ToolTest, ThreadsThatAskForTheValueAtOnceGetOne)
{
    for (int round = 0; round < 50; ++round) {
        const Elsewhere tool("x"s);
        std::vector<const Json::Value *> values(6);
        {
            std::vector<std::jthread> threads;
            for (auto &value : values)
                threads.emplace_back([&] { value = &tool.getToolValue(); });
        }
        EXPECT_EQ(values, std::vector(6, values[0]));
        EXPECT_EQ((*values[0])["vendor"], "elsewhere");
    }
}

} // namespace Varn::ToolLibraries

#include "ToolLibrary/Interface/Private/ToolSourceSink/OxJsonTool.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidJsonTool.h"
#include "platform/tool/Exception.h"

#include <gtest/gtest.h>

#include <limits>

using namespace std::string_literals;
using namespace Varn::ToolLibraries;

namespace {

using Property = Tool::Property;

OxJsonTool tool(const std::string &json)
{
    const auto node = Ox::JSONNode::parse(json);
    EXPECT_TRUE(node) << json;
    return OxJsonTool(node);
}

} // namespace

TEST(OxJsonTool, AnEndOfAPathDecidesByItsKindAndWholeDoublesStayDoubles)
{
    struct Row {
        const char *value;
        std::optional<Property> property;
    };
    const Row rows[] = {
        {R"("text")", Property("text"s)},
        {R"("")", Property(""s)},
        {R"("a\u0000b")", Property("a\0b"s)},
        {"7", Property(7)},
        {"-0", Property(0)},
        {"2147483647", Property(2147483647)},
        {"-2147483648", Property(std::numeric_limits<int>::min())},
        {"2147483648", std::nullopt},
        {"-2147483649", std::nullopt},
        {"18446744073709551615", std::nullopt},
        {"3.0", Property(3.0)},
        {"3e0", Property(3.0)},
        {"-0.0", Property(-0.0)},
        {"2.5", Property(2.5)},
        {"1e300", Property(1e300)},
        {"18446744073709551616", Property(18446744073709551616.0)},
        {"true", Property(true)},
        {"false", Property(false)},
        {"null", std::nullopt},
        {"{}", std::nullopt},
        {"[1]", std::nullopt},
    };
    for (const Row &row : rows) {
        const auto property = tool(R"({"vendor":)"s + row.value + "}").getRawProperty("tool_vendor");
        EXPECT_EQ(property, row.property) << row.value;
        if (property && row.property) {
            EXPECT_EQ(property->index(), row.property->index()) << row.value;
        }
    }
}

TEST(OxJsonTool, WholeDoublesAreWhereTheTwoKindsOfToolDiffer)
{
    rapidjson::Document document;
    document.Parse(R"({"vendor":3.0})");
    EXPECT_EQ(RapidJsonTool(&document).getRawProperty("tool_vendor"), Property(3));
    EXPECT_EQ(tool(R"({"vendor":3.0})").getRawProperty("tool_vendor"), Property(3.0));
}

TEST(OxJsonTool, AWholeDoubleIsANumberOfEitherKind)
{
    const OxJsonTool whole = tool(R"({"post-process":{"number":3.0},"geometry":{"DC":2.0,"LCF":2.5}})");
    EXPECT_EQ(whole.getToolNumber(), 3);
    EXPECT_EQ(whole.getDouble("tool_number"), 3);
    EXPECT_EQ(whole.getInt("tool_fluteLength"), std::nullopt);
    EXPECT_EQ(whole.getDouble("tool_fluteLength"), 2.5);
}

TEST(OxJsonTool, APathThatFailsGivesWayToTheNext)
{
    struct Row {
        const char *json;
        const char *key;
        std::optional<Property> property;
    };
    const Row rows[] = {
        {R"({"geometry":{"DC":1,"INSD":2}})", "tool_diameter", Property(1)},
        {R"({"geometry":{"DC":null,"INSD":2}})", "tool_diameter", Property(2)},
        {R"({"geometry":{"DC":{},"INSD":2.0}})", "tool_diameter", Property(2.0)},
        {R"({"geometry":{"DC":3000000000,"INSD":2}})", "tool_diameter", Property(2)},
        {R"({"geometry":{"dc":1,"INSD":2}})", "tool_diameter", Property(2)},
        {R"({"geometry":{"DC":null}})", "tool_diameter", std::nullopt},
        {R"({"post-process":5,"comment":"c"})", "tool_comment", Property("c"s)},
        {R"({"post-process":[{"comment":"x"}],"comment":"c"})", "tool_comment", Property("c"s)},
        {R"({"post-process":{},"comment":"c"})", "tool_comment", Property("c"s)},
        {R"({"post-process":{"comment":"p"},"comment":"c"})", "tool_comment", Property("p"s)},
        {R"({"geometry":"DC"})", "tool_diameter", std::nullopt},
        {R"({"vendor":"a","vendor":"b"})", "tool_vendor", Property("b"s)},
        {R"({})", "tool_diameter", std::nullopt},
    };
    for (const Row &row : rows)
        EXPECT_EQ(tool(row.json).getRawProperty(row.key), row.property) << row.json;
}

TEST(OxJsonTool, AnUnknownKeyHasNoValueEvenIfAMemberBearsItsName)
{
    const OxJsonTool known = tool(R"({"nonsense":1,"description":"d","tool_coolant":"flood","tool_diameter":5,"":2})");
    for (const char *key : {"nonsense", "description", "tool_coolant", "tool_diameter", "TOOL_DESCRIPTION", ""})
        EXPECT_EQ(known.getRawProperty(key), std::nullopt) << key;
}

TEST(OxJsonTool, TheTextIsThatOfTheDocument)
{
    const auto node = Ox::JSONNode::parse("{ \"b\" : 2.0, \"a\" : [ 1, \"\u00e4\" ] }");
    const OxJsonTool whole(node);
    EXPECT_EQ(whole.toJson(), node->stringify());
    EXPECT_EQ(whole.getToolValue()["b"], 2.0);
    EXPECT_EQ(whole.getToolValue()["a"][0], 1);
}

TEST(OxJsonTool, ItOwnsAShareOfTheDocument)
{
    auto node = Ox::JSONNode::parse(R"({"vendor":"a vendor of some length"})");
    const std::weak_ptr<const Ox::JSONNode> watched = node;
    auto owner = std::make_unique<OxJsonTool>(std::move(node));
    EXPECT_FALSE(watched.expired());
    EXPECT_EQ(owner->getString("tool_vendor"), "a vendor of some length");
    const auto clone = owner->clone();
    owner.reset();
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(clone->getString("tool_vendor"), "a vendor of some length");
}

TEST(OxJsonTool, WhatIsNoObjectIsNoTool)
{
    for (const char *json : {"[]", "5", "null", "\"a\""})
        EXPECT_THROW(tool(json), InvalidInput) << json;
}

#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidJsonTool.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonConvert.h"
#include "platform/tool/JsonText.h"
#include "platform/tool/LibraryTool.h"
#include "platform/tool/ToolParameterJSONKeyPaths.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <thread>

using namespace std::string_literals;
using namespace Varn::ToolLibraries;

namespace {

using Property = Tool::Property;

rapidjson::Document parsed(const std::string &json)
{
    rapidjson::Document document;
    document.Parse(json.data(), json.size());
    EXPECT_FALSE(document.HasParseError()) << json;
    return document;
}

std::optional<Property> propertyOf(const std::string &json, std::string_view key)
{
    const rapidjson::Document document = parsed(json);
    const std::optional<Property> eager = RapidJsonTool(&document).getRawProperty(key);
    EXPECT_EQ(RapidJsonTool::view(&document)->getRawProperty(key), eager) << json;
    return eager;
}

/// Everything that a tool answers, as one text.
std::string answersOf(const Tool &tool)
{
    Json::Value all(Json::objectValue);
    for (const auto &[key, paths] : ToolParameterJSONKeyPaths::get()) {
        Json::Value &entry = all[std::string(key)];
        if (const auto property = tool.getRawProperty(key)) {
            entry["kind"] = static_cast<int>(property->index());
            entry["value"] = std::visit([](const auto &value) { return Json::Value(value); }, *property);
        }
        entry["text"] = tool.getString(key).value_or("none");
        entry["wide"] = static_cast<int>(tool.getWString(key).value_or(L"none").size());
        entry["double"] = tool.getDouble(key).value_or(-1e9);
        entry["int"] = tool.getInt(key).value_or(-1);
    }
    all["guid"] = tool.getToolId().guid().asString();
    all["type"] = tool.getType();
    all["description"] = tool.getDescription();
    all["number"] = tool.getToolNumber().value_or(-1);
    all["documentId"] = tool.getToolDocumentId();
    all["has3D"] = tool.get3DGeometryId().has_value();
    return tool.toJson() + '\n' + JsonText::print(tool.getToolValue()) + '\n' + JsonText::print(all);
}

} // namespace

TEST(RapidJsonTool, AnEndOfAPathDecidesByItsKind)
{
    struct Row {
        const char *value;
        std::optional<Property> property;
    };
    const Row rows[] = {
        {R"("text")", Property("text"s)},
        {R"("")", Property(""s)},
        {R"("a\u0000b")", Property("a\0b"s)},
        {R"("5")", Property("5"s)},
        {"0", Property(0)},
        {"7", Property(7)},
        {"-7", Property(-7)},
        {"2147483647", Property(2147483647)},
        {"-2147483648", Property(std::numeric_limits<int>::min())},
        {"2147483648", std::nullopt},
        {"-2147483649", std::nullopt},
        {"4294967295", std::nullopt},
        {"9223372036854775808", std::nullopt},
        {"2.0", Property(2)},
        {"2.5", Property(2.5)},
        {"-3.0", Property(-3)},
        {"3e0", Property(3)},
        {"-0.0", Property(0)},
        {"0.49999999999999994", Property(0.49999999999999994)},
        {"2147483647.0", Property(2147483647)},
        {"-2147483648.0", Property(std::numeric_limits<int>::min())},
        {"2147483648.0", Property(2147483648.0)},
        {"-2147483649.0", Property(-2147483649.0)},
        {"1e300", Property(1e300)},
        {"18446744073709551616", Property(18446744073709551616.0)},
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

TEST(RapidJsonTool, TheAlternativesStandInTheirOrder)
{
    EXPECT_EQ(Property("a"s).index(), 0U);
    EXPECT_EQ(Property(2.5).index(), 1U);
    EXPECT_EQ(Property(2).index(), 2U);
    EXPECT_EQ(Property(true).index(), 3U);
}

TEST(RapidJsonTool, NumbersThatNoTextCanHoldStayDoubles)
{
    rapidjson::Document document = parsed(R"({"vendor":0})");
    document["vendor"].SetDouble(std::nan(""));
    const auto nan = RapidJsonTool::view(&document)->getRawProperty("tool_vendor");
    ASSERT_TRUE(nan && std::holds_alternative<double>(*nan));
    EXPECT_TRUE(std::isnan(std::get<double>(*nan)));
    for (const double number : {HUGE_VAL, -HUGE_VAL}) {
        document["vendor"].SetDouble(number);
        EXPECT_EQ(RapidJsonTool::view(&document)->getRawProperty("tool_vendor"), Property(number));
    }
}

TEST(RapidJsonTool, AnUnknownKeyHasNoValueEvenIfAMemberBearsItsName)
{
    const std::string json =
        R"({"nonsense":1,"description":"d","guid":"g","tool_coolant":"flood","tool_diameter":5,"geometry":{"DC":1},"":2})";
    EXPECT_EQ(propertyOf(json, "tool_diameter"), Property(1));
    for (const std::string_view key : {"nonsense", "description", "guid", "geometry", "DC", "geometry.DC", "",
                                       "tool_coolant", "TOOL_DIAMETER", "tool_diameter ", "tool_diamete"})
        EXPECT_EQ(propertyOf(json, key), std::nullopt) << key;
    EXPECT_EQ(propertyOf(json, "tool_diameter\0"s), std::nullopt);
}

TEST(RapidJsonTool, APathThatFailsGivesWayToTheNext)
{
    struct Row {
        const char *json;
        const char *key;
        std::optional<Property> property;
    };
    const Row rows[] = {
        {R"({"geometry":{"DC":1,"INSD":2}})", "tool_diameter", Property(1)},
        {R"({"geometry":{"DC":null,"INSD":2}})", "tool_diameter", Property(2)},
        {R"({"geometry":{"DC":{},"INSD":2}})", "tool_diameter", Property(2)},
        {R"({"geometry":{"DC":[1],"INSD":2.5}})", "tool_diameter", Property(2.5)},
        {R"({"geometry":{"DC":3000000000,"INSD":2}})", "tool_diameter", Property(2)},
        {R"({"geometry":{"INSD":2}})", "tool_diameter", Property(2)},
        {R"({"geometry":{"dc":1,"INSD":2}})", "tool_diameter", Property(2)},
        {R"({"geometry":{"DC":"","INSD":2}})", "tool_diameter", Property(""s)},
        {R"({"geometry":{"DC":null,"INSD":null}})", "tool_diameter", std::nullopt},
        {R"({"post-process":5,"comment":"c"})", "tool_comment", Property("c"s)},
        {R"({"post-process":[{"comment":"x"}],"comment":"c"})", "tool_comment", Property("c"s)},
        {R"({"post-process":null,"comment":"c"})", "tool_comment", Property("c"s)},
        {R"({"post-process":{},"comment":"c"})", "tool_comment", Property("c"s)},
        {R"({"post-process":{"comment":"p"},"comment":"c"})", "tool_comment", Property("p"s)},
        {R"({"geometry":{"HAND":false},"setup":{"HAND":true}})", "tool_clockwise", Property(false)},
        {R"({"setup":{"HAND":true}})", "tool_clockwise", Property(true)},
        {R"({"geometry":"DC"})", "tool_diameter", std::nullopt},
        {R"({})", "tool_diameter", std::nullopt},
    };
    for (const Row &row : rows)
        EXPECT_EQ(propertyOf(row.json, row.key), row.property) << row.json;
}

TEST(RapidJsonTool, TheFirstOfSeveralMembersWithOneNameIsWalked)
{
    EXPECT_EQ(propertyOf(R"({"vendor":"a","vendor":"b"})", "tool_vendor"), Property("a"s));
}

TEST(RapidJsonTool, NamesMatchByteForByte)
{
    EXPECT_EQ(propertyOf(R"({"vendor\u0000":"a"})", "tool_vendor"), std::nullopt);
    EXPECT_EQ(propertyOf(R"({"Vendor":"a","vendo":"b","vendorx":"c"})", "tool_vendor"), std::nullopt);
}

TEST(RapidJsonTool, AValueThatIsNoObjectHasNoProperties)
{
    for (const char *json : {"[]", "5", "null", "\"vendor\""}) {
        EXPECT_EQ(propertyOf(json, "tool_vendor"), std::nullopt) << json;
        const rapidjson::Document document = parsed(json);
        EXPECT_EQ(RapidJsonTool::view(&document)->toJson(), json);
        EXPECT_EQ(RapidJsonTool::view(&document)->getToolDocumentId(), 0);
    }
}

TEST(RapidJsonTool, TheTextIsPrintedAtOnceAndOfAViewWhenAsked)
{
    rapidjson::Document document = parsed(R"({ "vendor" : "old", "n" : 2.0 })");
    const RapidJsonTool tool(&document);
    const auto view = RapidJsonTool::view(&document);
    document["vendor"].SetString("new");
    EXPECT_EQ(tool.toJson(), R"({"vendor":"old","n":2.0})");
    EXPECT_EQ(tool.getToolValue()["vendor"], "old");
    EXPECT_EQ(tool.getString("tool_vendor"), "new") << "properties come out of the document";
    EXPECT_EQ(view->toJson(), R"({"vendor":"new","n":2.0})");
    EXPECT_EQ(&tool.getRapidJsonValue(), &document);
    EXPECT_EQ(&view->getRapidJsonValue(), &document);
}

TEST(RapidJsonTool, TheIdentifierIsThatOfTheParsedValue)
{
    const std::string a = "11111111-1111-4111-8111-111111111111";
    const std::string b = "22222222-2222-4222-8222-222222222222";
    struct Row {
        std::string json;
        std::string guid;
    };
    const std::string none = "00000000-0000-0000-0000-000000000000";
    const Row rows[] = {
        {R"({"guid":")" + a + "\"}", a},
        {R"({"x":1,"guid":"{)" + a + "}\"}", a},
        {R"({"guid":")" + a + R"(","guid":")" + b + "\"}", b},
        {R"({"guid":")" + a + R"(","guid":null})", none},
        {R"({"guid":5})", none},
        {R"({"guid":""})", none},
        {R"({"Guid":")" + a + "\"}", none},
        {"{}", none},
    };
    for (const Row &row : rows) {
        const rapidjson::Document document = parsed(row.json);
        EXPECT_EQ(RapidJsonTool(&document).getToolId().guid().asString(), row.guid) << row.json;
        EXPECT_EQ(RapidJsonTool::view(&document)->getToolId().guid().asString(), row.guid) << row.json;
        EXPECT_EQ(Tool(row.json).getToolId().guid().asString(), row.guid) << row.json;
    }
}

TEST(RapidJsonTool, ACloneNeedsNoDocument)
{
    std::unique_ptr<Tool> ofTool;
    std::unique_ptr<Tool> ofView;
    std::string answers;
    {
        const rapidjson::Document document =
            parsed("{\"guid\":\"11111111-1111-4111-8111-111111111111\",\"type\":\"drill\",\"geometry\":{\"DC\":2.0,"
                   "\"LCF\":2.5},"
                   "\"description\":\"\u00e4 long text that lives in the document\",\"post-process\":{\"number\":3}}");
        const RapidJsonTool tool(&document);
        const auto view = RapidJsonTool::view(&document);
        answers = answersOf(tool);
        ofTool = tool.clone();
        ofView = view->clone();
    }
    EXPECT_EQ(answersOf(*ofTool), answers);
    EXPECT_EQ(answersOf(*ofView), answers);
    EXPECT_EQ(answersOf(*ofView->clone()), answers);
}

TEST(RapidJsonTool, AViewCopiedIntoAPlainToolStandsAlone)
{
    Tool assigned("{}");
    std::string answers;
    {
        const rapidjson::Document document = parsed(R"({"vendor":"a vendor of some length"})");
        const auto view = RapidJsonTool::view(&document);
        answers = answersOf(*view);
        assigned = *view;
        EXPECT_EQ(answersOf(Tool(static_cast<const Tool &>(*view))), answers);
    }
    EXPECT_EQ(answersOf(assigned), answers);
}

namespace {

/// A tool object with members along the paths of the keys, of every kind, some of them twice or broken.
class RandomTool
{
public:
    explicit RandomTool(unsigned seed) : m_random(seed)
    {
        for (const auto &[key, paths] : ToolParameterJSONKeyPaths::get())
            for (const auto &path : paths)
                if (below(3) == 0)
                    add(path);
        if (below(2))
            member(m_document, "guid")
                .SetString("11111111-1111-4111-8111-11111111111" + std::to_string(below(10)), allocator());
        if (below(2))
            member(m_document, "_document_tool_id") = value();
    }

    const rapidjson::Value &get() const { return m_document; }

private:
    void add(const std::list<std::string_view> &path)
    {
        rapidjson::Value *at = &m_document;
        for (const std::string_view name : path) {
            if (!at->IsObject())
                return;
            at = &member(*at, name);
            if (name != path.back() && at->IsNull() && below(20))
                at->SetObject();
        }
        *at = value();
    }

    rapidjson::Value &member(rapidjson::Value &object, std::string_view name)
    {
        const rapidjson::Value key(rapidjson::StringRef(name.data(), static_cast<rapidjson::SizeType>(name.size())));
        const auto found = object.FindMember(key);
        if (found != object.MemberEnd() && below(10))
            return found->value;
        object.AddMember(rapidjson::Value(key, allocator()), rapidjson::Value(), allocator());
        return (object.MemberEnd() - 1)->value;
    }

    rapidjson::Value value()
    {
        static const std::string texts[] = {"",          "drill", "inches", "\u00e4\U0001F527",
                                            "\"\\\n\0"s, "C",     "a\xFFz", "\xED\xB0\x80"};
        switch (below(9)) {
        case 0:
            return rapidjson::Value();
        case 1:
            return rapidjson::Value(below(2) == 0);
        case 2:
            return rapidjson::Value(below(100) - 50);
        case 3:
            return rapidjson::Value(static_cast<int64_t>(m_random()));
        case 4:
            return rapidjson::Value(static_cast<double>(below(100) - 50));
        case 5:
            return rapidjson::Value((below(100000) - 50000) / 7.0);
        case 6:
            return rapidjson::Value(below(2) ? rapidjson::kArrayType : rapidjson::kObjectType);
        default:
            return rapidjson::Value(texts[below(std::size(texts))], allocator());
        }
    }

    int below(int end) { return static_cast<int>(m_random() % static_cast<unsigned>(end)); }
    rapidjson::Document::AllocatorType &allocator() { return m_document.GetAllocator(); }

    std::mt19937_64 m_random;
    rapidjson::Document m_document{rapidjson::kObjectType};
};

} // namespace

TEST(RapidJsonTool, AViewAnswersAsATool)
{
    std::set<std::string> different;
    for (unsigned seed = 0; seed < 100; ++seed) {
        const RandomTool random(seed);
        const RapidJsonTool tool(&random.get());
        const std::string answers = answersOf(tool);
        ASSERT_EQ(answersOf(*RapidJsonTool::view(&random.get())), answers) << seed;
        different.insert(answers);
    }
    EXPECT_EQ(different.size(), 100U);
}

TEST(RapidJsonTool, WhatAToolIsParsedToIsAlwaysUtf8)
{
    const std::string json = "{\"description\":\"a\xFFz\",\"n\xC3\":[\"\xED\xB0\x80\"]}";
    const rapidjson::Document document = parsed(json);
    for (const std::string &text : {JsonText::print(RapidJsonTool(&document).getToolValue()),
                                    JsonText::print(RapidJsonTool::view(&document)->getToolValue()),
                                    JsonText::print(RapidJsonTool::view(&document)->clone()->getToolValue())}) {
        EXPECT_TRUE(QUtf8StringView(text.data(), static_cast<qsizetype>(text.size())).isValidUtf8()) << text;
        EXPECT_NE(text.find("a\uFFFDz"), std::string::npos) << text;
    }
}

TEST(RapidJsonTool, ManyThreadsMayLookAtOneTool)
{
    const rapidjson::Document document = parsed(
        R"({"guid":"11111111-1111-4111-8111-111111111111","type":"drill","unit":"inches","geometry":{"DC":2.0},"post-process":{"number":3}})");
    for (int round = 0; round < 20; ++round) {
        const std::unique_ptr<Tool> tools[] = {std::make_unique<RapidJsonTool>(&document),
                                               RapidJsonTool::view(&document), RapidJsonTool::view(&document)->clone()};
        for (const auto &tool : tools) {
            std::vector<const Json::Value *> values(8);
            std::vector<std::string> answers(8);
            {
                std::vector<std::jthread> threads;
                for (std::size_t i = 0; i < values.size(); ++i)
                    threads.emplace_back([&, i] {
                        values[i] = &tool->getToolValue();
                        answers[i] = tool->toJson() + tool->getToolId().guid().asString() + tool->getType() +
                                     std::to_string(tool->getDouble("tool_diameter").value_or(0));
                    });
            }
            EXPECT_EQ(values, std::vector(8, values[0]));
            EXPECT_EQ(answers, std::vector(8, answers[0]));
        }
    }
}

TEST(RapidJsonTool, ADeepToolIsParsed)
{
    std::string json = "1";
    for (int i = 0; i < 998; ++i)
        json = "[" + json + "]";
    json = "{\"a\":" + json + "}";
    const rapidjson::Document document = parsed(json);
    EXPECT_EQ(answersOf(*RapidJsonTool::view(&document)), answersOf(RapidJsonTool(&document)));
    EXPECT_EQ(JsonText::print(RapidJsonTool::view(&document)->getToolValue()), json);
}

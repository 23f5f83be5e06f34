#include "platform/tool/ToolPage.h"

#include "platform/tool/Exception.h"
#include "platform/tool/JsonText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace Varn::ToolLibraries {

namespace {

Json::Value json(const char *text)
{
    return JsonText::parse(text).value();
}

std::string refusal(const std::string &text)
{
    try {
        ToolPage::fromJson(text);
    } catch (const InvalidInput &e) {
        return e.what();
    }
    return "read";
}

} // namespace

TEST(ToolPageTest, PrintsEachPartUnderItsName)
{
    const auto page = ToolPage::make(json(R"({"u\u00e4":[{"guid":"g"}]})"), json(R"(["drill"])"), 1, 2, 3, 4, 36);
    EXPECT_EQ(page->toJson(), "{\"data\":{\"u\u00e4\":[{\"guid\":\"g\"}]},\"limit\":1,\"matched\":3,\"offset\":2,"
                              "\"toolTypes\":[\"drill\"],\"total\":4,\"version\":36}");
}

TEST(ToolPageTest, APageOfNoLibraryHasNullData)
{
    const auto page = ToolPage::make(Json::Value(), Json::Value(Json::arrayValue), 0, 0, 0, 0, 36);
    EXPECT_EQ(page->toJson(),
              R"({"data":null,"limit":0,"matched":0,"offset":0,"toolTypes":[],"total":0,"version":36})");
    EXPECT_EQ(ToolPage::fromJson(page->toJson())->toJson(), page->toJson());
}

TEST(ToolPageTest, TakesItsPartsOverWithoutACopy)
{
    Json::Value tools(Json::objectValue);
    Json::Value types(Json::arrayValue);
    types.append(std::string(100, 'x'));
    Json::Value &list = tools["url"];
    list.append(std::string(100, 'y'));
    const Json::Value *const tool = &list[0];
    const Json::Value *const type = &types[0];
    const auto page = ToolPage::make(std::move(tools), std::move(types), 1, 0, 1, 1, 36);
    EXPECT_EQ(&page->value()["data"]["url"][0], tool);
    EXPECT_EQ(&page->value()["toolTypes"][0], type);
}

TEST(ToolPageTest, ReadsWhatItPrintsWithoutLoss)
{
    Json::Value tools(Json::objectValue);
    Json::Value &list = tools["toollibraryroot://a.json"];
    list.append(0.1 + 0.2);
    list.append(2.0);
    list.append(std::numeric_limits<double>::denorm_min());
    list.append(Json::Value::maxUInt64);
    const auto page = ToolPage::make(std::move(tools), Json::Value(), 1, 0, 1, 1, 36);
    EXPECT_THAT(page->toJson(), testing::HasSubstr("[0.30000000000000004,2.0,5e-324,18446744073709551615]"));
    EXPECT_EQ(ToolPage::fromJson(page->toJson())->value(), page->value());
}

TEST(ToolPageTest, KeepsErrorPayloadsAndMembersOfOthers)
{
    const std::string text = R"({"data":{"u":{"error":{"developerText":"gone"}}},"extra":[1],"version":36})";
    EXPECT_EQ(ToolPage::fromJson(text)->toJson(), text);
}

TEST(ToolPageTest, RefusesABadTextAndSaysWhy)
{
    struct Row {
        std::string json, reason;
    };
    const Row rows[] = {
        {"", "Tool page is not valid JSON: The document is empty. At byte 0."},
        {"{\"data\":{}", "Tool page is not valid JSON: Missing a comma or '}' after an object member. At byte 10."},
        {"[]", "Tool page is not a JSON object"},
        {"null", "Tool page is not a JSON object"},
        {"{}", "Tool page has no object \"data\""},
        {"{\"data\":[]}", "Tool page has no object \"data\""},
        {"{\"data\":\"x\"}", "Tool page has no object \"data\""},
        {"{\"data\":" + std::string(100000, '['),
         "Tool page is not valid JSON: Nested deeper than 1000 levels. At byte 1007."},
    };
    for (const Row &row : rows)
        EXPECT_EQ(refusal(row.json), row.reason) << row.json.substr(0, 100);
}

} // namespace Varn::ToolLibraries

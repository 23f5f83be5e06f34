#include "platform/tool/ToolLibrary.h"

#include "platform/tool/Exception.h"

#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

namespace {

using namespace std::string_literals;

std::string refusal(const std::string &text)
{
    try {
        ToolLibrary::fromJson(text);
    } catch (const InvalidInput &e) {
        return e.what();
    }
    return "read";
}

} // namespace

TEST(ToolLibraryTest, KeepsTheTextAsItCame)
{
    const std::string text =
        "{ \"version\" : 36,\n \"data\" : [ {\"guid\":\"g\", \"x\":1.50}, {} ],\n \"own\":[[]] }\n";
    const auto library = ToolLibrary::fromJson(text);
    EXPECT_EQ(library->toJson(), text);
    EXPECT_EQ(library->json(), text);
    EXPECT_EQ(library->version(), 36);
    EXPECT_EQ(library->numberOfTools(), 2U);
}

TEST(ToolLibraryTest, TakesATextThatIsMovedInWithoutACopy)
{
    std::string text = "{\"data\":[" + std::string(1000, ' ') + "]}";
    const char *const bytes = text.data();
    EXPECT_EQ(ToolLibrary::fromJson(std::move(text))->json().data(), bytes);
}

TEST(ToolLibraryTest, TakesThePrintersWordForWhatIsInTheText)
{
    std::string text = "{\"data\":[" + std::string(1000, ' ') + "{}],\"version\":36}";
    const std::string same = text;
    const char *const bytes = text.data();
    const auto library = ToolLibrary::make(std::move(text), 36, 1);
    EXPECT_EQ(library->json().data(), bytes);
    EXPECT_EQ(library->toJson(), same);
    EXPECT_EQ(library->version(), 36);
    EXPECT_EQ(library->numberOfTools(), 1U);
}

TEST(ToolLibraryTest, ReadsVersionAndNumberOfToolsFromTheRootAlone)
{
    struct Row {
        const char *json;
        int version;
        std::size_t tools;
    };
    // clang-format off
    const Row rows[] = {
        { R"({"data":[]})",                                                  1, 0 },
        { R"({"data":[],"version":36})",                                    36, 0 },
        { R"({"version":36,"data":[{"version":5,"data":[1,2,3]},{}]})",     36, 2 },
        { R"({"data":[{"a":[{"version":7}]}]})",                             1, 1 },
        { R"({"version":[36],"data":[[],[[]],1,"a",null]})",                 1, 5 },
        { R"({"version":{"version":36},"data":[{}]})",                       1, 1 },
        { R"({"version":"36","data":[]})",                                   1, 0 },
        { R"({"version":36.0,"data":[]})",                                   1, 0 },
        { R"({"version":null,"data":[]})",                                   1, 0 },
        { R"({"version":true,"data":[]})",                                   1, 0 },
        { R"({"version":2147483647,"data":[]})",                    2147483647, 0 },
        { R"({"version":2147483648,"data":[]})",                             1, 0 },
        { R"({"version":-2147483649,"data":[]})",                            1, 0 },
        { R"({"version":99999999999999999999,"data":[]})",                   1, 0 },
        { R"({"version":0,"data":[]})",                                      0, 0 },
        { R"({"version":-5,"data":[]})",                                     0, 0 },
        { R"({"version":3,"version":4,"data":[1],"data":[1,2]})",            4, 2 },
        { R"({"version":3,"version":"x","data":{},"data":[1]})",             1, 1 },
        { R"({"data":[1],"other":[1,2,3],"another":{"data":{}}})",           1, 1 },
    };
    // clang-format on
    for (const Row &row : rows) {
        const auto library = ToolLibrary::fromJson(row.json);
        EXPECT_EQ(library->version(), row.version) << row.json;
        EXPECT_EQ(library->numberOfTools(), row.tools) << row.json;
    }
}

TEST(ToolLibraryTest, RefusesABadTextAndSaysWhy)
{
    struct Row {
        std::string json, reason;
    };
    const Row rows[] = {
        {"", "Tool library is not valid JSON: The document is empty. At byte 0."},
        {"{\"data\":[}", "Tool library is not valid JSON: Invalid value. At byte 9."},
        {"{\"data\":[]}\0"s,
         "Tool library is not valid JSON: The document root must not be followed by other values. At byte 11."},
        {"{\"data\":[\"\xFF\"]}", "Tool library is not valid JSON: Invalid encoding in string. At byte 10."},
        {"{\"data\":" + std::string(1000000, '['),
         "Tool library is not valid JSON: Nested deeper than 1000 levels. At byte 1007."},
        {"[]", "Tool library is not a JSON object"},
        {"[{\"data\":[]}]", "Tool library is not a JSON object"},
        {"\"data\"", "Tool library is not a JSON object"},
        {"{}", "Tool library has no list \"data\""},
        {"{\"data\":{}}", "Tool library has no list \"data\""},
        {"{\"data\":null}", "Tool library has no list \"data\""},
        {"{\"data\":1}", "Tool library has no list \"data\""},
        {"{\"Data\":[]}", "Tool library has no list \"data\""},
        {"{\"data\\u0000\":[]}", "Tool library has no list \"data\""},
        {"{\"own\":{\"data\":[]}}", "Tool library has no list \"data\""},
        {"{\"data\":[],\"data\":{}}", "Tool library has no list \"data\""},
        {"{\"data\":[],\"data\":1}", "Tool library has no list \"data\""},
    };
    for (const Row &row : rows)
        EXPECT_EQ(refusal(row.json), row.reason) << row.json.substr(0, 100);
}

TEST(ToolLibraryTest, AThousandLevelsPass)
{
    const std::string text = "{\"data\":[" + std::string(998, '[') + std::string(998, ']') + "]}";
    EXPECT_EQ(ToolLibrary::fromJson(text)->numberOfTools(), 1U);
}

} // namespace Varn::ToolLibraries

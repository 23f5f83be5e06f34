// BadPageRequestsTest.cpp -- requests that nobody should make: each has its page or its failure, the same with what a
// library keeps and without it.
#include "support/LibraryFile.h"
#include "support/PageSources.h"

#include <gtest/gtest.h>

#include <cwctype>
#include <limits>

using namespace TestSupport;
using namespace Varn::ToolLibraries;

namespace {

constexpr int most = std::numeric_limits<int>::max();
constexpr int least = std::numeric_limits<int>::min();
constexpr int fails = -1;

const ToolLibraryLocator here(L"custom://a.json");

/// Five tools, of which two have a diameter of 10, one the largest and one the smallest; two are broken somewhere.
Library library()
{
    return libraryOf(libraryText(
        {toolText(1, R"("type":"drill","unit":"millimeters","vendor":"A","geometry":{"DC":10},"description":"T2")"),
         toolText(2, R"("type":"drill","unit":"inches","vendor":"B","geometry":{"DC":10},"description":"T02b")"),
         toolText(3, "\"vendor\":\"\xFF\xC3\",\"geometry\":{\"DC\":1e308},\"description\":\"T2a\\u0000z\""),
         toolText(4, R"("unit":"inches","vendor":7,"geometry":{"DC":-1.7e308})"),
         toolText(5, R"("type":5,"vendor":null,"geometry":{"DC":"10"},"product-id":"日本ÄÖ")")}));
}

/// How many tools match; or `fails`.
int matchesOf(const std::string &page)
{
    const std::optional<Json::Value> value = JsonText::parse(page);
    return value && value->isObject() ? (*value)["matched"].asInt() : fails;
}

/// How many tools match, which is the same both ways.
int matches(const std::string &filters, const std::string &search, const std::string &sort, int limit = 20,
            int offset = 0)
{
    static const Library tools = library();
    const ToolPageRequest request({here}, filters, limit, offset, search, sort);
    const std::string page = pageOf(tools, request);
    EXPECT_EQ(page, pageOf(std::make_shared<PlainSource>(tools), request)) << filters << "\n"
                                                                           << search.substr(0, 100) << "\n"
                                                                           << sort;
    return matchesOf(page);
}

std::string onDiameter(const std::string &values)
{
    return R"([{"key":"components.indexedProperties.tool_diameter","values":)" + values + "}]";
}

std::string by(const std::string &property, const std::string &order = R"("asc")")
{
    return R"([{"key":"components.indexedProperties.)" + property + R"(","order":)" + order + "}]";
}

struct Row {
    std::string text;
    int matches;
};

} // namespace

TEST(BadPageRequests, FiltersOfEveryWrongShape)
{
    const Row rows[] = {
        {"", 5},
        {"   ", 5},
        {"nul", 5},
        {"true", 5},
        {"12", 5},
        {"\"text\"", 5},
        {std::string(1, '\0'), 5},
        {"[", 5},
        {"]", 5},
        {"[[]]", fails},
        {"[1]", fails},
        {"[1.5]", fails},
        {"[\"x\"]", fails},
        {"[false]", fails},
        {"[null]", 5},
        {"[{}]", 5},
        {"{}", 5},
        {R"({"a":{"key":"x","values":[]}})", 0}, // the members of an object are elements too
        {R"({"key":"x","values":[]})", fails},
        {R"([{"key":{},"values":[]}])", fails},
        {R"([{"key":[],"values":[]}])", fails},
        {R"([{"key":null,"values":[]}])", 0},
        {R"([{"key":true,"values":[]}])", 0},
        {R"([{"key":1e400,"values":[]}])", 5},
        {R"([{"values":[]}])", 0},
        {R"([{"key":"x"}])", 5},
        {R"([{"key":"x","values":null}])", 5},
        {R"([{"key":"x","values":{}}])", 5},
        {R"([{"key":"x","values":[{}]}])", 5},
        {R"([{"key":"x","values":[[]]}])", 5},
        {R"([{"key":"x","values":["a",{}]}])", 5},
        {R"([{"key":"x","values":[]}] trailing)", 0},
        {R"([{"key":"x","values":[]})", 0}, // what was read before the fault counts
        {R"([{"key":"x","values":[)", 5},
        {R"([{"key":"x","values":[],"key":"y","values":5}])", 5}, // the last of duplicate members
        {R"(/* why */ [{"key":"x","values":[]}] // so)", 0},
        {"\xEF\xBB\xBF"
         R"([{"key":"x","values":[]}])",
         0},
        {onDiameter(R"([{"op":{},"value":10}])"), 5},
        {onDiameter(R"([{"op":null,"lowerBound":10,"upperBound":10}])"), 2},
        {onDiameter(R"([{"op":":","value":[]}])"), 5},
        {onDiameter(R"([{"op":":","value":10,"negated":{}}])"), 2},
        {onDiameter(R"([{"lowerBound":null,"upperBound":10}])"), 5},
        {R"([{"key":"toolIdentifier","values":[{"guid":{},"libraryUrl":[]}]}])", 5},
        {R"([{"key":"toolIdentifier","values":[[]]}])", 5},
        {R"([{"key":"toolIdentifier","values":[{"guid":"","libraryUrl":"custom://a.json"}]}])", 0},
        {R"([{"key":"toolIdentifier","values":[{"guid":")" + guidOf(1) + R"(","libraryUrl":"custom://A.json"}]}])", 0},
        {R"([{"key":"toolIdentifier","values":[{"guid":"{)" + guidOf(1) + R"(}","libraryUrl":"custom://a.json"}]}])",
         0},
        {R"([{"key":"toolIdentifier","values":[{"guid":")" + guidOf(1) + R"(","libraryUrl":"custom://a.json"}]}])", 1},
        {R"([{"key":"components.indexedProperties.","values":["x"]}])", 0},
        {R"([{"key":"components.indexedProperties","values":["x"]}])", 0},
        {R"([{"key":"components.indexedProperties.tool_vendor\u0000","values":["A"]}])", 0},
        {std::string(100'000, '['), 5},
        {std::string(100'000, '{'), 5},
    };
    for (const Row &row : rows)
        EXPECT_EQ(matches(row.text, "", ""), row.matches) << row.text.substr(0, 200);
}

TEST(BadPageRequests, NumbersBeyondAnyRange)
{
    const Row rows[] = {
        {R"([{"op":":","value":10.0}])", 2},
        {R"([{"op":">","value":9223372036854775808}])", 1},
        {R"([{"op":"<","value":-9223372036854775809}])", 1},
        {R"([{"op":">=","value":18446744073709551616}])", 1},
        {R"([{"op":"<","value":1e308}])", 3},
        {R"([{"op":"<=","value":1.7976931348623157e308}])", 3},
        {R"([{"op":":","value":-0.0}])", 0},
        {R"([{"lowerBound":-1.7976931348623157e308,"upperBound":1.7976931348623157e308}])", 2},
        {R"([{"lowerBound":1,"upperBound":-1}])", 0},
        {R"([{"lowerBound":10,"upperBound":9223372036854775807}])", 2},
    };
    for (const Row &row : rows)
        EXPECT_EQ(matches(onDiameter(row.text), "", ""), row.matches) << row.text;
    for (const char *beyond : {"1e400", "-1e400", "1e-400", "NaN", "Infinity", "1e", "--1", "0x10", "1e99999999999"})
        for (const char *op : {":", "<", ">", "<=", ">="})
            matches(onDiameter(R"([{"op":")" + std::string(op) + R"(","value":)" + beyond + "}]"), "", "");
    EXPECT_EQ(matches(onDiameter("[{\"op\":\">\",\"value\":" + std::string(10'000, '9') + "}]"), "", ""),
              matches(onDiameter(R"([{"op":">","value":1e400}])"), "", ""));
}

TEST(BadPageRequests, OrdersOfEveryWrongShape)
{
    const Row rows[] = {
        {"", 5},
        {"broken", 5},
        {"[", 5},
        {"7", 5},
        {"[[]]", fails},
        {"[1]", fails},
        {"[\"components.info.name\"]", fails},
        {"[true]", fails},
        {"[null]", 5},
        {"[{}]", 5},
        {R"([{"key":"components.info.name"}])", 5},
        {R"([{"key":"components.info.name","order":null}])", 5},
        {R"([{"key":"components.info.name","order":{}}])", fails},
        {R"([{"key":"x","order":[]}])", fails},
        {R"([{"key":[],"order":"asc"}])", fails},
        {R"([{"key":5,"order":5}])", 5},
        {R"({"key":"components.info.name","order":"asc"})", fails},
        {R"([{"key":"components.info.name","order":"asc"})", 5},
        {R"([{"key":"components.info.name.normValue","order":"asc"}])", 5},
        {R"([{"key":".normValue","order":"asc"}])", 5},
        {R"([{"key":"components.indexedProperties.normValue","order":"asc"}])", 5},
        {R"([{"key":"components.indexedProperties..normValue","order":"asc"}])", 5},
        {R"([{"key":"components.indexedProperties.","order":"desc"}])", 5},
        {by("tool_diameter.normValue"), 5},
        {by("tool_diameter.normValue", R"("DESC")"), 5},
        {by("tool_diameter"), fails}, // a text among numbers
        {by("tool_vendor"), fails},
        {by("tool_type.normValue"), 5},
        {by("tool_unit"), 5},
        {std::string(100'000, '['), 5},
    };
    for (const Row &row : rows)
        EXPECT_EQ(matches("", "", row.text), row.matches) << row.text.substr(0, 200);
}

TEST(BadPageRequests, TextsThatAreNoUtf8)
{
    for (const std::string &bytes : {std::string("\xFF"), std::string("\xC3"), std::string("\x80\x80"),
                                     std::string("\xED\xA0\x80"), std::string("\xF4\x90\x80\x80"),
                                     std::string("\xC0\x80"), std::string("a\0b", 3), std::string("\xEF\xBF\xBD")}) {
        matches("", bytes, "");
        matches(R"([{"key":")" + bytes + R"(","values":[")" + bytes + "\"]}]", "", "");
        matches(R"([{"key":"components.indexedProperties.tool_vendor","values":[")" + bytes + "\"]}]", "", "");
        matches(R"([{"key":"components.info.name","values":[")" + bytes + "\"]}]", "", "");
        matches("", "", R"([{"key":"components.indexedProperties.)" + bytes + R"(","order":")" + bytes + "\"}]");
    }
    for (const char *escape : {"\\ud800", "\\udc00\\ud800", "\\ud83d\\ude00", "\\u0000", "\\x", "\\u12"})
        matches(R"([{"key":"components.indexedProperties.tool_vendor","values":[")" + std::string(escape) + "\"]}]", "",
                R"([{"key":"components.info.name","order":")" + std::string(escape) + "\"}]");
    EXPECT_EQ(matches("", "\xEF\xBF\xBD", ""), 1) << "the vendor that is no UTF-8";
    EXPECT_EQ(matches("", "\xFF", ""), 1);
    EXPECT_EQ(matches("", "日本äö", ""), std::towlower(L'Ä') == L'ä' ? 1 : 0) << "case is that of the C library";
    EXPECT_EQ(matches("", "日本", ""), 1);
}

TEST(BadPageRequests, SearchesOfAMillionCharacters)
{
    EXPECT_EQ(matches("", std::string(1'000'000, 'x'), ""), 0);
    EXPECT_EQ(matches("", std::string(1'000'000, ' '), ""), 5) << "every tool has a name";
    EXPECT_EQ(matches("", std::string(1'000'000, '\xFF'), ""), 0);
    std::string inches;
    for (int i = 0; i < 300'000; ++i)
        inches += "1in";
    EXPECT_EQ(matches("", inches, ""), 0);
    EXPECT_EQ(matches("", std::string(1'000'000, ' ') + "t02B", ""), 1);
}

TEST(BadPageRequests, WindowsBelowZeroAndAtTheEndOfTheIntegers)
{
    for (const int limit : {least, least + 1, -1, 0, 1, 3, 5, 6, most - 1, most})
        for (const int offset : {least, least + 1, -6, -5, -1, 0, 1, 4, 5, most - 1, most})
            for (const char *search : {"", "t"})
                for (const std::string &sort : {std::string(), by("tool_diameter.normValue"),
                                                std::string(R"([{"key":"components.info.name","order":"asc"}])")})
                    EXPECT_EQ(matches("", search, sort, limit, offset), matches("", search, "", 1, 0));
}

TEST(BadPageRequests, ManyFiltersAndManyTexts)
{
    std::string texts = "[";
    std::string filters = "[";
    for (int i = 0; i < 20'000; ++i) {
        texts += "\"text " + std::to_string(i) + "\",";
        filters += R"({"key":"components.indexedProperties.tool_diameter","values":[{"op":">","value":)" +
                   std::to_string(-i) + "}]},";
    }
    EXPECT_EQ(matches(R"([{"key":"components.indexedProperties.tool_vendor","values":)" + texts + R"("B"]}])", "", ""),
              1);
    EXPECT_EQ(matches(filters + R"({"key":"x","values":5}])", "", ""), 3);
}

#include "platform/ox/JSONNode.h"

#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <locale>
#include <random>

using namespace std::string_literals;
using Ox::JSONNode;

namespace {

std::string printed(std::string_view text, bool pretty = false)
{
    const auto node = JSONNode::parse(text);
    return node ? node->stringify(pretty) : "no JSON";
}

std::string nested(int levels, char open, char close)
{
    return std::string(static_cast<std::size_t>(levels), open) + std::string(static_cast<std::size_t>(levels), close);
}

} // namespace

TEST(JSONNode, PrintsWhatItReadWithoutBlanks)
{
    struct Row {
        const char *text;
        const char *printed;
    };
    const Row rows[] = {
        {" { } ", "{}"},
        {"[ ]", "[]"},
        {"null", "null"},
        {" true ", "true"},
        {"\t\r\n \"a\"", "\"a\""},
        {"{\"b\" : [1, -2 ,3.5, null, true, false], \"a\": {\"c\": \"d\"}}",
         "{\"a\":{\"c\":\"d\"},\"b\":[1,-2,3.5,null,true,false]}"},
        {"{\"\": 1}", "{\"\":1}"},
        {"{\"a\": 1, \"a\": [], \"a\": 3}", "{\"a\":3}"}, // the last counts
        {"[[[1]]]", "[[[1]]]"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(printed(row.text), row.printed) << row.text;
}

TEST(JSONNode, PrettyTextHasALineForEachMember)
{
    EXPECT_EQ(printed("{\"a\":[1,{}],\"b\":3.0}", true),
              "{\n    \"a\": [\n        1,\n        {}\n    ],\n    \"b\": 3.0\n}");
}

TEST(JSONNode, NumbersKeepTheirKindAndValue)
{
    struct Row {
        const char *text;
        const char *printed;
    };
    const Row rows[] = {
        {"0", "0"},
        {"-0", "0"},
        {"3", "3"},
        {"3.0", "3.0"},
        {"-0.0", "-0.0"},
        {"1e2", "100.0"},
        {"1E+20", "1e+20"},
        {"0.1", "0.10000000000000001"},
        {"123456789.123456789", "123456789.12345679"},
        {"-2147483648", "-2147483648"},
        {"9223372036854775807", "9223372036854775807"},
        {"-9223372036854775808", "-9223372036854775808"},
        {"18446744073709551615", "18446744073709551615"},
        {"18446744073709551616", "1.8446744073709552e+19"},
        {"-9223372036854775809", "-9.2233720368547758e+18"},
        {"1.7976931348623157e308", "1.7976931348623157e+308"},
        {"5e-324", "4.9406564584124654e-324"},
        {"1e-400", "0.0"},
        {"0.00000000000000000001e320", "1.0000000000000001e+300"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(printed(row.text), row.printed) << row.text;
}

TEST(JSONNode, EveryDoubleReadsBackEqual)
{
    std::mt19937_64 random(20240229);
    for (int i = 0; i < 2000; ++i) {
        const auto value = std::bit_cast<double>(random());
        if (!std::isfinite(value))
            continue;
        char text[64];
        std::snprintf(text, sizeof text, "%.17e", value);
        for (char &c : text)
            c = c == ',' ? '.' : c; // snprintf goes by the locale
        const auto node = JSONNode::parse(text);
        ASSERT_TRUE(node) << text;
        EXPECT_EQ(node->root().getDouble(), value) << text;
        const auto again = JSONNode::parse(node->stringify());
        ASSERT_TRUE(again) << text;
        EXPECT_TRUE(again->root().isDouble()) << text;
        EXPECT_EQ(std::bit_cast<std::uint64_t>(again->root().getDouble().value()), std::bit_cast<std::uint64_t>(value))
            << text;
    }
}

TEST(JSONNode, NumbersDoNotGoByTheLocale)
{
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale(), new Comma));
    const std::string text = printed("[1234567.5,1234567]");
    std::locale::global(before);
    EXPECT_EQ(text, "[1234567.5,1234567]");
}

TEST(JSONNode, TextsKeepEveryCharacter)
{
    struct Row {
        const char *name;
        std::string text;
        std::string printed;
    };
    const Row rows[] = {
        {"UTF-8 stays as it is", "\"\u00e4 \u5de5 \U0001F529 \u2028\x7F\"", "\"\u00e4 \u5de5 \U0001F529 \u2028\x7F\""},
        {"an escape becomes its character", R"("\u00e4\ud83d\udd29\/")", "\"\u00e4\U0001F529/\""},
        {"short escapes", R"("\"\\\b\f\n\r\t")", R"("\"\\\b\f\n\r\t")"},
        {"control characters", R"("\u0001\u001F")", R"("\u0001\u001F")"},
        {"NUL in text and name", R"({"a\u0000b":"c\u0000d"})", R"({"a\u0000b":"c\u0000d"})"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(printed(row.text), row.printed) << row.name;
        EXPECT_EQ(printed(printed(row.text)), row.printed) << row.name;
    }
}

TEST(JSONNode, WhatIsNoJsonGivesNoNode)
{
    struct Row {
        const char *name;
        std::string text;
    };
    const Row rows[] = {
        {"empty", ""},
        {"blanks", " \n"},
        {"comment of a line", "{} // x"},
        {"comment in front", "/* x */ {}"},
        {"comma at the end of a list", "[1,]"},
        {"comma at the end of an object", "{\"a\":1,}"},
        {"comma alone", "[,]"},
        {"two roots", "{}{}"},
        {"something behind the root", "1 x"},
        {"NUL behind the root", "{}\0"s},
        {"NUL and more behind the root", "{}\0{"s},
        {"NUL in a text", "\"a\0b\""s},
        {"newline in a text", "\"a\nb\""},
        {"open text", "\"a"},
        {"open list", "[1"},
        {"open object", "{\"a\":1"},
        {"wrong bracket", "[1}"},
        {"no value", "{\"a\":}"},
        {"no name", "{1:2}"},
        {"name without quotes", "{a:1}"},
        {"single quotes", "{'a':1}"},
        {"NaN", "NaN"},
        {"infinity", "[-Infinity]"},
        {"too large for a double", "1e309"},
        {"too small for a double", "-1e309"},
        {"leading zero", "01"},
        {"plus", "+1"},
        {"point without digit", "1."},
        {"point in front", ".5"},
        {"exponent without digit", "1e"},
        {"hexadecimal", "0x10"},
        {"minus alone", "-"},
        {"upper case word", "True"},
        {"cut word", "tru"},
        {"unknown escape", R"("\x41")"},
        {"short unicode escape", R"("\u12")"},
        {"lone first surrogate", R"("\ud83d")"},
        {"lone second surrogate", R"("\udd29")"},
        {"lone second surrogate in a name", R"({"\udd29":1})"},
        {"byte order mark", "\xEF\xBB\xBF{}"},
        {"broken UTF-8", "\"\x80\""},
        {"UTF-8 cut short", "\"\xC3\""},
        {"broken UTF-8 in a name", "{\"\xFF\":1}"},
        {"encoded surrogate", "\"\xED\xA0\x80\""},
    };
    for (const Row &row : rows)
        EXPECT_FALSE(JSONNode::parse(row.text)) << row.name;
}

TEST(JSONNode, AThousandLevelsAreTheLimit)
{
    EXPECT_EQ(printed(nested(1000, '[', ']')), nested(1000, '[', ']'));
    EXPECT_FALSE(JSONNode::parse(nested(1001, '[', ']')));
    std::string objects;
    for (int i = 0; i < 1001; ++i)
        objects += "{\"a\":";
    EXPECT_TRUE(JSONNode::parse(objects.substr(5) + "1" + std::string(1000, '}')));
    EXPECT_FALSE(JSONNode::parse(objects + "1" + std::string(1001, '}')));
    EXPECT_FALSE(JSONNode::parse(nested(1'000'000, '[', ']')));
    EXPECT_FALSE(JSONNode::parse(std::string(1'000'000, '[')));
}

TEST(JSONNode, DepthCountsOnlyWhatIsOpen)
{
    std::string wide = "[";
    for (int i = 0; i < 2000; ++i)
        wide += "[{}],";
    EXPECT_TRUE(JSONNode::parse(wide + "0]"));
}

TEST(JSONNode, ALongTextSurvives)
{
    const std::string text = "\"" + std::string(1'000'000, 'x') + "\"";
    EXPECT_EQ(printed(text), text);
    EXPECT_EQ(printed("0." + std::string(100'000, '3')), "0.33333333333333331");
    EXPECT_EQ(printed("1" + std::string(300, '0') + ".0"), "1.0000000000000001e+300");
    EXPECT_FALSE(JSONNode::parse(std::string(100'000, '9')));
}

TEST(JSONNode, GetsAMemberOfTheRoot)
{
    const auto node = JSONNode::parse("{\"a\": 1, \"A\": 2, \"n\": null, \"in\\u0000side\": 3, \"\": 4}");
    ASSERT_TRUE(node);
    ASSERT_TRUE(node->get("a"));
    EXPECT_EQ(node->get("a")->getInt(), 1);
    EXPECT_EQ(node->get("A")->getInt(), 2);
    EXPECT_EQ(node->get(std::string_view("in\0side", 7))->getInt(), 3);
    EXPECT_EQ(node->get("")->getInt(), 4);
    ASSERT_TRUE(node->get("n")) << "a member that is null is there";
    EXPECT_TRUE(node->get("n")->isNull());
    EXPECT_FALSE(node->get("b"));
    EXPECT_FALSE(node->get("in"));
    EXPECT_EQ(node->get(std::string_view("abc").substr(0, 1))->getInt(), 1) << "a name need not end in a NUL";
}

TEST(JSONNode, ARootThatIsNoObjectHasNoMembers)
{
    for (const char *text : {"[1]", "1", "\"a\"", "null", "true", "[]"}) {
        const auto node = JSONNode::parse(text);
        ASSERT_TRUE(node) << text;
        EXPECT_FALSE(node->get("a")) << text;
        EXPECT_FALSE(node->get("")) << text;
    }
}

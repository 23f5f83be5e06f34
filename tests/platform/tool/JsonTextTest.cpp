#include "platform/tool/JsonText.h"

#include <gtest/gtest.h>

#include <cctype>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <locale>
#include <random>

namespace Varn::ToolLibraries {

namespace {

using namespace std::string_literals;

std::string nested(int levels, char open, char close)
{
    return std::string(std::size_t(levels), open) + std::string(std::size_t(levels), close);
}

std::string printed(std::string_view text)
{
    const std::optional<Json::Value> value = JsonText::parse(text);
    return value ? JsonText::print(*value) : "refused";
}

std::uint64_t bits(double value)
{
    std::uint64_t result = 0;
    std::memcpy(&result, &value, sizeof result);
    return result;
}

struct TextRow {
    const char *name;
    std::string text;
    std::string expected; // "refused" where the reader must answer with nothing
};

class JsonTextRows : public testing::TestWithParam<TextRow>
{
};

TEST_P(JsonTextRows, ReadAndPrintedAgain)
{
    EXPECT_EQ(printed(GetParam().text), GetParam().expected) << GetParam().name;
}

// clang-format off
const TextRow accepted[] = {
    // name                        text                                    printed again
    { "null",                      "null",                                 "null" },
    { "a root that is a text",     " \"a\" ",                              "\"a\"" },
    { "a root that is a number",   "-12",                                  "-12" },
    { "blanks of all four kinds",  " \t\r\n{ \"a\" :\t[ 1 , 2 ]\r\n}\n",   R"({"a":[1,2]})" },
    { "empty containers",          R"({"a":{},"b":[]})",                   R"({"a":{},"b":[]})" },
    { "members by name",           R"({"b":1,"a":2})",                     R"({"a":2,"b":1})" },
    { "the last of duplicates",    R"({"a":{"x":1},"a":{"y":2}})",         R"({"a":{"y":2}})" },
    { "a scalar after an object",  R"({"a":{"x":1},"a":3})",               R"({"a":3})" },
    { "mixed nesting",             R"([[1,{"a":[true,null]}],false])",     R"([[1,{"a":[true,null]}],false])" },
    { "UTF-8 as it is",            "\"\u00e4\u20ac\U0001F527\"",            "\"\u00e4\u20ac\U0001F527\"" },
    { "escapes",                   R"("\u00e4\n\t\"\\\/\b\f\r\u001f")", "\"\u00e4\\n\\t\\\"\\\\/\\b\\f\\r\\u001f\"" },
    { "a surrogate pair",          R"("\ud83d\udd27")",                    "\"\xF0\x9F\x94\xA7\"" },
    { "U+D7FF, just below",        R"("\ud7ff")",                          "\"\xED\x9F\xBF\"" },
    { "an escaped NUL in a text",  R"(["a\u0000b"])",                      R"(["a\u0000b"])" },
    { "an escaped NUL in a name",  R"({"a\u0000b":1})",                    R"({"a\u0000b":1})" },
    { "an empty name",             R"({"":1})",                            R"({"":1})" },
    { "DEL and the line separator","\"\x7F\xE2\x80\xA8\"",                 "\"\x7F\xE2\x80\xA8\"" },
    { "whole double",              "2.0",                                  "2.0" },
    { "whole number",              "2",                                    "2" },
    { "exponent",                  "2e3",                                  "2000.0" },
    { "shortest digits",           "0.1",                                  "0.1" },
    { "more digits than needed",   "0.1000000000000000055511151231257827", "0.1" },
    { "large whole double",        "1e16",                                 "10000000000000000.0" },
    { "large double",              "1e300",                                "1e+300" },
    { "small double",              "0.0000001",                            "1e-07" },
    { "negative zero",             "-0.0",                                 "-0.0" },
    { "largest signed",            "9223372036854775807",                  "9223372036854775807" },
    { "smallest signed",           "-9223372036854775808",                 "-9223372036854775808" },
    { "largest unsigned",          "18446744073709551615",                 "18446744073709551615" },
    { "beyond the largest",        "18446744073709551616",                 "1.8446744073709552e+19" },
    { "too small for a double",    "1e-400",                               "0.0" },
    { "smallest subnormal",        "5e-324",                               "5e-324" },
    { "largest double",            "1.7976931348623157e308",               "1.7976931348623157e+308" },
};
const TextRow refused[] = {
    { "empty",                     "",                             "refused" },
    { "blank",                     " \n",                          "refused" },
    { "two roots",                 "1 2",                          "refused" },
    { "bracket after the root",    "{}]",                          "refused" },
    { "NUL after the root",        "{}\0"s,                        "refused" },
    { "text behind a NUL",         "{}\0{}"s,                      "refused" },
    { "NUL inside",                "[1,\0 2]"s,                    "refused" },
    { "NUL in a text",             "\"a\0b\""s,                    "refused" },
    { "byte order mark",           "\xEF\xBB\xBF{}",               "refused" },
    { "line comment",              "// a\n1",                      "refused" },
    { "block comment",             "[1 /* a */]",                  "refused" },
    { "trailing comma, list",      "[1,]",                         "refused" },
    { "trailing comma, object",    R"({"a":1,})",                  "refused" },
    { "leading comma",             "[,1]",                         "refused" },
    { "missing comma",             "[1 2]",                        "refused" },
    { "missing colon",             R"({"a" 1})",                   "refused" },
    { "name without quotes",       "{a:1}",                        "refused" },
    { "name that is a number",     "{1:1}",                        "refused" },
    { "single quotes",             "'a'",                          "refused" },
    { "unclosed list",             "[1",                           "refused" },
    { "unclosed object",           R"({"a":1)",                    "refused" },
    { "unclosed text",             "\"a",                          "refused" },
    { "crossed brackets",          "[{]}",                         "refused" },
    { "NaN",                       "NaN",                          "refused" },
    { "Infinity",                  "[Infinity]",                   "refused" },
    { "minus infinity",            "-Infinity",                    "refused" },
    { "capital literal",           "True",                         "refused" },
    { "cut literal",               "tru",                          "refused" },
    { "plus sign",                 "+1",                           "refused" },
    { "leading zero",              "01",                           "refused" },
    { "no digit before the point", ".5",                           "refused" },
    { "no digit behind the point", "1.",                           "refused" },
    { "no digit in the exponent",  "1e",                           "refused" },
    { "only a sign",               "-",                            "refused" },
    { "hexadecimal",               "0x10",                         "refused" },
    { "decimal comma",             "1,5",                          "refused" },
    { "beyond a double",           "1e309",                        "refused" },
    { "beyond a double, digits",   "1000e306",                     "refused" },
    { "beyond a double, negative", "[-1e400]",                     "refused" },
    { "400 digits",                std::string(400, '9'),          "refused" },
    { "control character",         "\"a\x01\"",                    "refused" },
    { "newline in a text",         "\"a\nb\"",                     "refused" },
    { "unknown escape",            R"("\x41")",                    "refused" },
    { "cut escape",                R"("\u12")",                    "refused" },
    { "lone high surrogate",       R"("\ud83d")",                  "refused" },
    { "high and no low surrogate", R"("\ud83dA")",                 "refused" },
    { "lone low surrogate",        R"("\udd27")",                  "refused" },
    { "lone low surrogate, name",  R"({"a\udd27":1})",             "refused" },
    { "surrogate as bytes",        "\"\xED\xA0\x80\"",             "refused" },
    { "stray continuation",        "\"\x80\"",                     "refused" },
    { "overlong slash",            "\"\xC0\xAF\"",                 "refused" },
    { "cut sequence",              "\"\xE2\x82\"",                 "refused" },
    { "beyond U+10FFFF",           "\"\xF4\x90\x80\x80\"",         "refused" },
    { "UTF-16",                    "\xFF\xFE{\0}\0"s,              "refused" },
    { "Latin-1 outside a text",    "[\xE4]",                       "refused" },
};
// clang-format on

std::string rowName(const testing::TestParamInfo<TextRow> &info)
{
    std::string name = info.param.name;
    for (char &c : name) {
        if (!std::isalnum(static_cast<unsigned char>(c)))
            c = '_';
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(Accepted, JsonTextRows, testing::ValuesIn(accepted), rowName);
INSTANTIATE_TEST_SUITE_P(Refused, JsonTextRows, testing::ValuesIn(refused), rowName);

} // namespace

TEST(JsonTextTest, AThousandLevelsAreReadAndOneMoreIsRefused)
{
    EXPECT_EQ(printed(nested(1000, '[', ']')), nested(1000, '[', ']'));
    std::string error;
    EXPECT_FALSE(JsonText::parse(nested(1001, '[', ']'), &error));
    EXPECT_EQ(error, "Nested deeper than 1000 levels. At byte 1000.");
}

TEST(JsonTextTest, DepthCountsObjectsAndOnlyWhatIsOpen)
{
    std::string wide = "[";
    for (int i = 0; i < 3000; ++i)
        wide += "[{}],";
    EXPECT_TRUE(JsonText::parse(wide + "0]"));
    std::string deep;
    for (int i = 0; i < 1001; ++i)
        deep += "{\"a\":";
    EXPECT_FALSE(JsonText::parse(deep + "1" + std::string(1001, '}')));
}

TEST(JsonTextTest, AMillionOpenBracketsAreRefusedWithoutHarm)
{
    EXPECT_FALSE(JsonText::parse(std::string(1000000, '[')));
    std::string objects;
    for (int i = 0; i < 200000; ++i)
        objects += "{\"\":";
    EXPECT_FALSE(JsonText::parse(objects));
}

TEST(JsonTextTest, AnErrorSaysWhatAndWhere)
{
    struct Row {
        std::string text, error;
    };
    const Row rows[] = {
        {"", "The document is empty. At byte 0."},
        {"[1,]", "Invalid value. At byte 3."},
        {"{\"a\":1} x", "The document root must not be followed by other values. At byte 8."},
        {"{}\0"s, "The document root must not be followed by other values. At byte 2."},
        {"[\"\\udd27\"]", "The surrogate pair in string is invalid. At byte 9."},
        {"[1e999]", "Number too big to be stored in double. At byte 1."},
        {"[99e307]", "Number too big to be stored in double. At byte 1."},
    };
    for (const Row &row : rows) {
        std::string error;
        EXPECT_FALSE(JsonText::parse(row.text, &error)) << row.text;
        EXPECT_EQ(error, row.error) << row.text;
    }
}

TEST(JsonTextTest, AGoodTextLeavesTheErrorAlone)
{
    std::string error = "before";
    EXPECT_TRUE(JsonText::parse("[]", &error));
    EXPECT_EQ(error, "before");
}

TEST(JsonTextTest, WholeNumbersAreIntegersAndOthersDoubles)
{
    const auto value = JsonText::parse("[1,1.0,1e0,-1,4294967296,18446744073709551615]");
    ASSERT_TRUE(value);
    const Json::ValueType types[] = {Json::intValue, Json::realValue, Json::realValue,
                                     Json::intValue, Json::intValue,  Json::uintValue};
    for (Json::ArrayIndex i = 0; i < value->size(); ++i)
        EXPECT_EQ((*value)[i].type(), types[i]) << i;
}

TEST(JsonTextTest, EveryDoubleReadsBackEqual)
{
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t pattern = random();
        double value = 0;
        std::memcpy(&value, &pattern, sizeof value);
        if (i % 2) // the numbers of everyday tools as well
            value = std::ldexp(double(pattern >> 11), -int(pattern % 70));
        if (!std::isfinite(value))
            continue;
        const std::string text = JsonText::print(Json::Value(value));
        const auto back = JsonText::parse(text);
        ASSERT_TRUE(back && back->isDouble()) << text;
        EXPECT_EQ(bits(back->asDouble()), bits(value)) << text;
    }
}

TEST(JsonTextTest, LongDecimalsAreRoundedToTheNearestDouble)
{
    std::mt19937_64 random(2);
    for (int i = 0; i < 20000; ++i) {
        std::string text = std::to_string(random() % 1000) + ".";
        for (int part = 0; part < 1 + i % 4; ++part)
            text += std::to_string(random());
        text += "e" + std::to_string(int(random() % 600) - 320);
        const auto value = JsonText::parse(text);
        const double expected = std::strtod(text.c_str(), nullptr);
        ASSERT_EQ(value.has_value(), std::isfinite(expected)) << text;
        if (value) {
            EXPECT_EQ(bits(value->asDouble()), bits(expected)) << text;
        }
    }
}

TEST(JsonTextTest, HalfwayCasesAreRoundedToEven)
{
    EXPECT_EQ(JsonText::parse("9007199254740993.0")->asDouble(), 9007199254740992.0);
    EXPECT_EQ(JsonText::parse("9007199254740995.0")->asDouble(), 9007199254740996.0);
    const std::string halfwayAndABit = "9007199254740993." + std::string(800, '0') + "1";
    EXPECT_EQ(JsonText::parse(halfwayAndABit)->asDouble(), 9007199254740994.0);
}

TEST(JsonTextTest, NumbersDoNotDependOnTheLocale)
{
    struct DecimalComma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new DecimalComma));
    const std::string saved = std::setlocale(LC_NUMERIC, nullptr);
    for (const char *name : {"de_DE.UTF-8", "fr_FR.UTF-8"}) {
        if (std::setlocale(LC_NUMERIC, name))
            break;
    }
    EXPECT_EQ(printed("[1234567,1234.5]"), "[1234567,1234.5]");
    std::setlocale(LC_NUMERIC, saved.c_str());
    std::locale::global(before);
}

TEST(JsonTextTest, NumbersThatJsonLacksArePrintedAsNull)
{
    Json::Value list(Json::arrayValue);
    list.append(std::numeric_limits<double>::infinity());
    list.append(-std::numeric_limits<double>::infinity());
    list.append(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(JsonText::print(list), "[null,null,null]");
}

TEST(JsonTextTest, AGapOfAnArrayIsNull)
{
    Json::Value list(Json::arrayValue);
    list[3] = "x";
    EXPECT_EQ(JsonText::print(list), R"([null,null,null,"x"])");
}

TEST(JsonTextTest, PrintingAppends)
{
    std::string out = "a";
    JsonText::print(Json::Value(1), out);
    JsonText::printString("\"", out);
    EXPECT_EQ(out, "a1\"\\\"\"");
}

TEST(JsonTextTest, LongTextsPassUnharmed)
{
    const std::string text(5000000, 'x');
    const auto value = JsonText::parse("\"" + text + "\"");
    ASSERT_TRUE(value);
    EXPECT_EQ(JsonText::print(*value), "\"" + text + "\"");
}

} // namespace Varn::ToolLibraries

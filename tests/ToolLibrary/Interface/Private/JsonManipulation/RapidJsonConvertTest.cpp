#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonConvert.h"
#include "platform/tool/JsonText.h"
#include "support/Asserts.h"

#include <QDate>
#include <QJsonArray>
#include <QJsonObject>
#include <QPoint>
#include <QUuid>

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <thread>

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using Varn::ToolLibraries::RapidJsonConvert;
namespace JsonText = Varn::ToolLibraries::JsonText;

namespace {

using Limits = std::numeric_limits<double>;

constexpr int leastInt = std::numeric_limits<int>::min();
constexpr int mostInt = std::numeric_limits<int>::max();
constexpr unsigned mostUnsigned = std::numeric_limits<unsigned>::max();
constexpr qlonglong leastLong = std::numeric_limits<qlonglong>::min();
constexpr qlonglong mostLong = std::numeric_limits<qlonglong>::max();
constexpr qulonglong mostUnsignedLong = std::numeric_limits<qulonglong>::max();

rapidjson::Document parsed(const std::string &text)
{
    rapidjson::Document document;
    document.Parse(text.data(), text.size());
    EXPECT_FALSE(document.HasParseError()) << text;
    return document;
}

QVariant variantOf(const std::string &text)
{
    return RapidJsonConvert::toQVariant(parsed(text));
}

std::string textOf(const QVariant &variant)
{
    rapidjson::Document document;
    return RapidJsonConvert::toString(RapidJsonConvert::fromQVariant(variant, document.GetAllocator()));
}

/// What RapidJSON says of a number: i int, u uint, I int64, U uint64, d double.
std::string rangesOf(const QVariant &variant)
{
    rapidjson::Document document;
    const rapidjson::Value value = RapidJsonConvert::fromQVariant(variant, document.GetAllocator());
    return std::string(value.IsInt() ? "i" : "") + (value.IsUint() ? "u" : "") + (value.IsInt64() ? "I" : "") +
           (value.IsUint64() ? "U" : "") + (value.IsDouble() ? "d" : "");
}

} // namespace

TEST(RapidJsonConvert, AValueBecomesAVariantOfItsKind)
{
    EXPECT_FALSE(variantOf("null").isValid());
    EXPECT_EQ(variantOf("true"), QVariant(true));
    EXPECT_EQ(variantOf("false"), QVariant(false));
    EXPECT_EQ(variantOf("\"\u00e4\\u0000\U0001F527\""), QVariant(QString::fromStdU32String(U"\u00e4\0\U0001F527"s)));
    EXPECT_EQ(variantOf("\"\"").typeId(), QMetaType::QString);
    EXPECT_EQ(variantOf("[]"), QVariant(QVariantList()));
    EXPECT_EQ(variantOf("{}"), QVariant(QVariantMap()));
    EXPECT_EQ(variantOf(R"({"a":[true,{"b":null}]})"),
              QVariant(QVariantMap{{"a", QVariantList{true, QVariantMap{{"b", QVariant()}}}}}));
}

TEST(RapidJsonConvert, EveryNumberBecomesADouble)
{
    struct Row {
        const char *text;
        double number;
    };
    const Row rows[] = {
        {"0", 0},
        {"2", 2},
        {"-2", -2},
        {"2147483648", 2147483648.0},
        {"4294967296", 4294967296.0},
        {"-9223372036854775808", -9223372036854775808.0},
        {"18446744073709551615", 18446744073709551616.0},
        {"18446744073709551616", 18446744073709551616.0},
        {"2.0", 2},
        {"2.5", 2.5},
        {"1e300", 1e300},
    };
    for (const Row &row : rows) {
        const QVariant variant = variantOf(row.text);
        EXPECT_EQ(variant.typeId(), QMetaType::Double) << row.text;
        EXPECT_EQ(variant.toDouble(), row.number) << row.text;
    }
}

TEST(RapidJsonConvert, ANameEndsAtItsNulAndTheLastOfOneNameCounts)
{
    EXPECT_EQ(variantOf(R"({"a":1,"b":2,"a":3})"), QVariant(QVariantMap{{"a", 3.0}, {"b", 2.0}}));
    EXPECT_EQ(variantOf(R"({"a":1,"a\u0000b":true})"), QVariant(QVariantMap{{"a", true}}));
    EXPECT_EQ(variantOf("{\"\":1,\"\u00e4\":2}"), QVariant(QVariantMap{{"", 1.0}, {QString(QChar(0xE4)), 2.0}}));
}

TEST(RapidJsonConvert, NothingBecomesNull)
{
    EXPECT_EQ(textOf(QVariant()), "null");
    EXPECT_EQ(textOf(QVariant::fromValue(nullptr)), "null");
    EXPECT_EQ(textOf(QVariant(QMetaType::fromType<int>())), "null");
    EXPECT_EQ(textOf(QVariant(QMetaType::fromType<QString>())), "null");
}

TEST(RapidJsonConvert, NumbersKeepTheirRange)
{
    struct Row {
        const char *name;
        QVariant variant;
        const char *text;
        const char *ranges;
    };
    const Row rows[] = {
        {"true", true, "true", ""},
        {"false", false, "false", ""},
        {"0", 0, "0", "iuIU"},
        {"least int", leastInt, "-2147483648", "iI"},
        {"most int", mostInt, "2147483647", "iuIU"},
        {"small uint", 5U, "5", "iuIU"},
        {"most uint", mostUnsigned, "4294967295", "uIU"},
        {"small long", 5LL, "5", "iuIU"},
        {"least long", leastLong, "-9223372036854775808", "I"},
        {"most long", mostLong, "9223372036854775807", "IU"},
        {"small ulong", 5ULL, "5", "iuIU"},
        {"most ulong", mostUnsignedLong, "18446744073709551615", "U"},
        {"whole double", 2.0, "2.0", "d"},
        {"double", 0.1, "0.1", "d"},
        {"zero", 0.0, "0.0", "d"},
        {"negative zero", -0.0, "-0.0", "d"},
        {"largest", Limits::max(), "1.7976931348623157e308", "d"},
        {"smallest normal", Limits::min(), "2.2250738585072014e-308", "d"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(textOf(row.variant), row.text) << row.name;
        EXPECT_EQ(rangesOf(row.variant), row.ranges) << row.name;
    }
}

TEST(RapidJsonConvert, NumbersThatAreNeitherNormalNorZeroBecomeNull)
{
    for (const double number : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(), Limits::denorm_min(),
                                -Limits::denorm_min(), Limits::min() / 2})
        EXPECT_EQ(textOf(number), "null") << number;
}

TEST(RapidJsonConvert, OtherVariantsAreTextsFirstThenListsThenMaps)
{
    const QUuid uuid = QUuid::fromString(QStringLiteral("0123abcd-89ef-4123-8567-89abcdef0123"));
    struct Row {
        const char *name;
        QVariant variant;
        std::string text;
    };
    const Row rows[] = {
        {"text", "a \"\n", R"("a \"\n")"},
        {"empty text", QString(), "\"\""},
        {"text beyond ASCII", QString::fromStdWString(L"\u00e4\U0001F527"), "\"\u00e4\U0001F527\""},
        {"text with a NUL", QString::fromUtf8("a\0b", 3), R"("a\u0000b")"},
        {"bytes", QByteArray("ab"), R"("ab")"},
        {"bytes that are no UTF-8", QByteArray("a\xFF"), "\"a\uFFFD\""},
        {"GUID", uuid, "\"{0123abcd-89ef-4123-8567-89abcdef0123}\""},
        {"date", QDate(2024, 2, 29), R"("2024-02-29")"},
        {"character", QVariant::fromValue(QChar('x')), R"("x")"},
        {"a number of another width", QVariant::fromValue<short>(-3), R"("-3")"},
        {"a short float", QVariant::fromValue(1.5F), R"("1.5")"},
        {"one text in a list of texts", QStringList{"a"}, R"("a")"},
        {"several texts have no text together", QStringList{"a", "b"}, "\"\""},
        {"list", QVariantList{"b", 1, QVariantList(), QVariant()}, R"(["b",1,[],null])"},
        {"list of numbers", QVariant::fromValue(QList<int>{3, 1, 2}), "[3,1,2]"},
        {"JSON array", QJsonArray{1, "a"}, R"([1,"a"])"},
        {"map", QVariantMap{{"b", 1}, {"a", QVariantMap{{"x", true}}}, {"B", 2}}, R"({"B":2,"a":{"x":true},"b":1})"},
        {"hash", QVariantHash{{"a", 1}}, R"({"a":1})"},
        {"map of texts", QVariant::fromValue(QMap<QString, QString>{{"a", "b"}}), R"({"a":"b"})"},
        {"JSON object", QJsonObject{{"a", true}}, R"({"a":true})"},
        {"names of every kind", QVariantMap{{"", 1}, {QString::fromUtf8("a\0b", 3), 2}}, R"({"":1,"a\u0000b":2})"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(textOf(row.variant), row.text) << row.name;
}

TEST(RapidJsonConvert, WhatHasNoJsonFormIsNullAndAProgrammingError)
{
    const QVariantList list{1, QPoint(1, 2), QVariantMap{{"p", QPoint()}}};
    EXPECT_EQ(textOf(list), R"([1,null,{"p":null}])");

    const TestSupport::Asserts asserts;
    EXPECT_EQ(textOf(list), R"([1,null,{"p":null}])");
    EXPECT_THAT(asserts.messages(), ElementsAre("Restricted flow", "Restricted flow"));
}

TEST(RapidJsonConvert, GoodVariantsAssertNothing)
{
    const TestSupport::Asserts asserts;
    textOf(QVariantList{QVariant(), 1, Limits::infinity(), "a", QVariantMap{{"a", QByteArray("b")}}});
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(RapidJsonConvert, ShortTextsLiveInTheValueLongOnesInTheAllocator)
{
    rapidjson::Document document;
    auto &allocator = document.GetAllocator();
    QString text(13, 'x');
    const rapidjson::Value shortValue = RapidJsonConvert::fromQVariant(text, allocator);
    EXPECT_EQ(allocator.Size(), 0U);
    text += 'y';
    const rapidjson::Value longValue = RapidJsonConvert::fromQVariant(text, allocator);
    EXPECT_GT(allocator.Size(), 0U);
    text.fill('z');
    EXPECT_EQ(shortValue.GetString(), std::string(13, 'x'));
    EXPECT_EQ(longValue.GetString(), std::string(13, 'x') + 'y') << "a copy of its own";
}

TEST(RapidJsonConvert, PrintsCompactUtf8)
{
    const std::string text =
        "{\"b\":[1,-2,2.0,0.1,1e300,true,null],\"a\":{\"\u00e4\":\"\\\"\\\\\\n\\u0000\U0001F527/\"},\"b\":{}}";
    EXPECT_EQ(RapidJsonConvert::toString(parsed(text)), text) << "members in their order, twins too";
    for (const char *plain : {"null", "5", "\"a\"", "[]", "{}", "18446744073709551615", "-9223372036854775808", "-0.0"})
        EXPECT_EQ(RapidJsonConvert::toString(parsed(plain)), plain);
}

TEST(RapidJsonConvert, PrintsIntoAWriterOfAnotherForm)
{
    rapidjson::StringBuffer buffer;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
    writer.SetIndent(' ', 1);
    RapidJsonConvert::toString(parsed(R"({"a":[1]})"), writer);
    EXPECT_STREQ(buffer.GetString(), "{\n \"a\": [\n  1\n ]\n}");
}

TEST(RapidJsonConvert, AWriteThatFailsIsAProgrammingError)
{
    rapidjson::Value list(rapidjson::kArrayType);
    rapidjson::Document document;
    list.PushBack(1, document.GetAllocator()).PushBack(Limits::infinity(), document.GetAllocator());
    RapidJsonConvert::toString(list);
    {
        const TestSupport::Asserts asserts;
        RapidJsonConvert::toString(list);
        EXPECT_THAT(asserts.messages(), ElementsAre("success"));
    }
    const TestSupport::Asserts asserts;
    EXPECT_EQ(RapidJsonConvert::toString(parsed("[2]")), "[2]") << "nothing of the failed text is left over";
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(RapidJsonConvert, LongAndShortTextsInTurnAndInManyThreads)
{
    const std::string large = "[\"" + std::string(3'000'000, 'x') + "\"]";
    const rapidjson::Document largeDocument = parsed(large);
    const rapidjson::Document smallDocument = parsed("[1]");
    std::vector<std::jthread> threads;
    for (int i = 0; i < 3; ++i)
        threads.emplace_back([&] {
            for (int turn = 0; turn < 3; ++turn) {
                EXPECT_TRUE(RapidJsonConvert::toString(largeDocument) == large);
                EXPECT_EQ(RapidJsonConvert::toString(smallDocument), "[1]");
            }
        });
}

TEST(RapidJsonConvert, ADocumentThatPassesThroughAVariantLosesIntegers)
{
    const QVariant variant = variantOf(R"({"a":[2,{"b":-3}],"version":36})");
    EXPECT_EQ(textOf(variant), R"({"a":[2.0,{"b":-3.0}],"version":36.0})");
}

namespace {

/// Documents of every kind of value, with twins among the members and characters that need care.
class RandomJson
{
public:
    explicit RandomJson(unsigned seed) : m_random(seed) {}

    rapidjson::Value make(RapidJsonConvert::Allocator &allocator, int depth = 0)
    {
        rapidjson::Value value;
        switch (below(depth < 4 ? 9 : 7)) {
        case 0:
            return value;
        case 1:
            return rapidjson::Value(below(2) == 0);
        case 2:
            return rapidjson::Value(static_cast<int64_t>(m_random()) >> below(63));
        case 3:
            return rapidjson::Value(static_cast<uint64_t>(m_random()));
        case 4:
            return rapidjson::Value(number());
        case 5:
        case 6:
            return text(allocator);
        case 7:
            value.SetArray();
            for (int i = below(5); i > 0; --i)
                value.PushBack(make(allocator, depth + 1), allocator);
            return value;
        default:
            value.SetObject();
            for (int i = below(6); i > 0; --i)
                value.AddMember(text(allocator), make(allocator, depth + 1), allocator);
            return value;
        }
    }

private:
    int below(int end) { return static_cast<int>(m_random() % static_cast<unsigned>(end)); }

    double number()
    {
        double result = std::bit_cast<double>(m_random());
        while (!std::isfinite(result))
            result = std::bit_cast<double>(m_random());
        return below(3) ? result : std::round(static_cast<double>(below(100000)) / 8);
    }
    rapidjson::Value text(RapidJsonConvert::Allocator &allocator)
    {
        static const std::string pieces[] = {"a",   "b",    "\"",     "\\",     "\n",
                                             "\0"s, "\x7F", "\u00e4", "\u2028", "\U0001F527"};
        std::string result;
        for (int i = below(4); i > 0; --i)
            result += pieces[below(std::size(pieces))];
        return rapidjson::Value(result.data(), static_cast<rapidjson::SizeType>(result.size()), allocator);
    }

    std::mt19937_64 m_random;
};

} // namespace

TEST(RapidJsonConvert, TheValueIsWhatAReaderMakesOfTheText)
{
    for (unsigned seed = 0; seed < 2000; ++seed) {
        rapidjson::Document document;
        const rapidjson::Value value = RandomJson(seed).make(document.GetAllocator());
        const std::string text = RapidJsonConvert::toString(value);
        const std::optional<Json::Value> expected = JsonText::parse(text);
        ASSERT_TRUE(expected) << text;
        const Json::Value made = RapidJsonConvert::toJsonValue(value);
        ASSERT_EQ(made, *expected) << text;
        ASSERT_EQ(JsonText::print(made), JsonText::print(*expected)) << text; // tells -0.0 from 0.0
    }
}

TEST(RapidJsonConvert, BrokenUtf8IsMendedInTheValue)
{
    struct Row {
        const char *name;
        std::string text;
        std::string expected;
    };
    const Row rows[] = {
        {"a byte that begins nothing", "a\xFFz", "a\uFFFDz"},
        {"a cut character", "a\xC3", "a\uFFFD"},
        {"a byte order mark stays", "\xEF\xBB\xBF\x80", "\xEF\xBB\xBF\uFFFD"},
        {"good text stays", "\xEF\xBB\xBF\u00e4\0"s, "\xEF\xBB\xBF\u00e4\0"s},
    };
    for (const Row &row : rows) {
        rapidjson::Document document;
        rapidjson::Value text(row.text, document.GetAllocator());
        rapidjson::Value name(row.text, document.GetAllocator());
        rapidjson::Value object(rapidjson::kObjectType);
        object.AddMember(name, text, document.GetAllocator());
        Json::Value expected(Json::objectValue);
        expected[row.expected] = row.expected;
        EXPECT_EQ(RapidJsonConvert::toJsonValue(object), expected) << row.name;
    }
}

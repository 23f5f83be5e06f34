#include "ToolLibrary/Interface/Private/JsonManipulation/LibraryTextWriter.h"
#include "ToolLibrary/DocumentToolVariantMapUtil.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/GuidUtil.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonConvert.h"
#include "platform/ox/TestMgr.h"
#include "support/Asserts.h"
#include "support/LibraryGenerator.h"

#include <QJsonDocument>

#include <gmock/gmock.h>

#include <bit>
#include <limits>
#include <random>

using namespace Varn::ToolLibraries;
using namespace std::string_literals;
using testing::ElementsAre;
using Varn::GuidUtil;
using Varn::Tools::DocumentToolVariantMapUtil;

namespace {

using Value = rapidjson::Value;

rapidjson::Document parse(const std::string &text)
{
    rapidjson::Document document;
    document.Parse<rapidjson::kParseFullPrecisionFlag>(text.data(), text.size());
    EXPECT_FALSE(document.HasParseError()) << text;
    return document;
}

std::string print(const Value &value)
{
    std::string text;
    EXPECT_TRUE(LibraryTextWriter::print(value, [&](std::string_view block) {
        text += block;
        return true;
    }));
    return text;
}

std::string printWithNewGuids(const Value &value)
{
    std::string text;
    EXPECT_TRUE(LibraryTextWriter::printWithNewGuids(value, [&](std::string_view block) {
        text += block;
        return true;
    }));
    return text;
}

std::string printCompact(const Value &tools, const std::vector<std::uint32_t> &order)
{
    std::string text;
    EXPECT_TRUE(LibraryTextWriter::printCompact(tools, order, 36, [&](std::string_view block) {
        text += block;
        return true;
    }));
    return text;
}

/// The long way.
std::string printed(const QVariantMap &map)
{
    return QJsonDocument::fromVariant(map).toJson(QJsonDocument::Indented).toStdString();
}

std::string expected(const Value &value)
{
    return printed(RapidJsonConvert::toQVariant(value).toMap());
}

/// Bytes that make trouble in texts, each alone and next to each other.
const std::string textPieces[] = {
    "a",
    "guid",
    "\"",
    "\\",
    "/",
    "\b",
    "\f",
    "\n",
    "\r",
    "\t",
    "\x01",
    "\x1f",
    "\x7f",
    " ",
    "\0"s,
    "\u00fc",
    "\u20ac",
    "\U0001F6E0",
    "\uFFFD",
    "\uE000",
    "\uD7FF",
    "\uFFFF",
    "\uFEFF",
    "\U0010FFFF",
    "\x80",
    "\xC3",
    "\xC0\x80",
    "\xED\xA0\x80",
    "\xED\xB0\x80",
    "\xF4\x90\x80\x80",
    "\xFF",
    "plain text ",
    "12345678",
    "\u2028",
    "\xF0\x9F",
};

/// Documents of every shape, built without the parser, which would refuse some of them.
class RandomDocument
{
public:
    explicit RandomDocument(unsigned seed) : m_random(seed) {}

    rapidjson::Document make()
    {
        rapidjson::Document document;
        m_allocator = &document.GetAllocator();
        Value root = object(0);
        root.Swap(document);
        return document;
    }

private:
    std::size_t below(std::size_t limit) { return m_random() % limit; }

    std::string text()
    {
        std::string made;
        for (std::size_t i = below(5); i > 0; --i)
            made += textPieces[below(std::size(textPieces))];
        if (below(50) == 0)
            made.append(below(3000), 'x');
        return made;
    }

    Value textValue()
    {
        const std::string made = text();
        return Value(made.data(), static_cast<rapidjson::SizeType>(made.size()), *m_allocator);
    }

    double real()
    {
        switch (below(4)) {
        case 0:
            return std::bit_cast<double>(m_random());
        case 1: {
            const double digits = static_cast<double>(static_cast<std::int64_t>(m_random() >> below(64)));
            return digits / std::pow(10.0, static_cast<double>(below(20)));
        }
        case 2: // around 2^53 and beyond
            return std::ldexp(1 + static_cast<double>(below(1 << 20)), static_cast<int>(below(70)) - 10);
        default:
            return static_cast<double>(below(1000)) / 8 - 20;
        }
    }

    Value number()
    {
        switch (below(5)) {
        case 0:
            return Value(static_cast<int>(m_random()));
        case 1:
            return Value(static_cast<std::int64_t>(m_random() >> below(64)));
        case 2:
            return Value(static_cast<std::uint64_t>(m_random()));
        default:
            return Value(real());
        }
    }

    Value array(int depth)
    {
        Value made(rapidjson::kArrayType);
        for (std::size_t i = below(6); i > 0; --i)
            made.PushBack(value(depth + 1), *m_allocator);
        return made;
    }

    Value object(int depth)
    {
        Value made(rapidjson::kObjectType);
        const bool plain = below(2) == 0; // the short way needs ascending plain names
        for (std::size_t i = 0, size = below(8); i < size; ++i) {
            Value name = plain ? Value(std::string(1, static_cast<char>('a' + i)) + "-key", *m_allocator) : textValue();
            made.AddMember(name, value(depth + 1), *m_allocator);
        }
        return made;
    }

    Value value(int depth)
    {
        switch (below(depth > 6 ? 5 : 9)) {
        case 0:
            return Value();
        case 1:
            return Value(below(2) == 0);
        case 2:
        case 3:
            return number();
        case 4:
            return textValue();
        case 5:
        case 6:
            return array(depth);
        default:
            return object(depth);
        }
    }

    std::mt19937_64 m_random;
    rapidjson::Document::AllocatorType *m_allocator = nullptr;
};

/// GUIDs that tell in which order they were made.
class Counting : public GuidUtil::GuidGenerator
{
public:
    QString operator()() override { return QStringLiteral("new %1").arg(++m_count); }

private:
    int m_count = 0;
};

class WithCountedGuids : public testing::Test
{
protected:
    WithCountedGuids() { restart(); }
    ~WithCountedGuids() override
    {
        GuidUtil::setTestGuidGenerator(nullptr);
        Ox::Test::TestMgr::setTesting(false);
    }

    static void restart()
    {
        Ox::Test::TestMgr::setTesting(true);
        GuidUtil::setTestGuidGenerator(std::make_unique<Counting>());
    }

    /// The long way.
    static std::string expectedWithNewGuids(const Value &library)
    {
        restart();
        QVariantMap map = RapidJsonConvert::toQVariant(library).toMap();
        QVariantList tools = map.value("data").toList();
        for (QVariant &tool : tools) {
            QVariantMap changed = tool.toMap();
            changed["guid"] = GuidUtil::createGuid();
            DocumentToolVariantMapUtil::removeDocumentToolInformation(changed);
            tool = changed;
        }
        map["data"] = tools;
        std::string text = printed(map);
        restart();
        return text;
    }
};

} // namespace

TEST(LibraryTextWriter, PrintsTheFormOfLibraryFiles)
{
    EXPECT_EQ(print(parse(R"({"version":36,"data":[{"unit":"inches","guid":"1","list":[1,2.5,[],{}],"none":null}]})")),
              R"({
    "data": [
        {
            "guid": "1",
            "list": [
                1,
                2.5,
                [
                ],
                {
                }
            ],
            "none": null,
            "unit": "inches"
        }
    ],
    "version": 36
}
)");
    EXPECT_EQ(print(parse("{}")), "{\n}\n");
    EXPECT_EQ(print(parse(R"({"a":true,"b":false})")), "{\n    \"a\": true,\n    \"b\": false\n}\n");
}

TEST(LibraryTextWriter, NumbersPrintAsDoubles)
{
    const std::pair<const char *, const char *> rows[] = {
        {"0", "0"},
        {"-0", "0"},
        {"-0.0", "0"},
        {"2", "2"},
        {"2.0", "2"},
        {"-2147483648", "-2147483648"},
        {"4294967296", "4294967296"},
        {"9007199254740992", "9007199254740992"},
        {"9007199254740993", "9007199254740992"},
        {"-9007199254740993", "-9007199254740992"},
        {"9007199254740995", "9007199254740996"},
        {"9223372036854775807", "9223372036854776000"},
        {"18446744073709551615", "18446744073709552000"},
        {"1e15", "1000000000000000"},
        {"1e16", "1e+16"},
        {"1e300", "1e+300"},
        {"0.1", "0.1"},
        {"0.0001", "1e-04"},
        {"0.00012", "0.00012"},
        {"1e-7", "1e-07"},
        {"5e-324", "5e-324"},
        {"2.2250738585072011e-308", "2.225073858507201e-308"},
        {"1.7976931348623157e308", "1.7976931348623157e+308"},
        {"0.30000000000000004", "0.30000000000000004"},
        {"123456.789", "123456.789"},
    };
    for (const auto &[number, text] : rows) {
        const rapidjson::Document document = parse("{\"a\":"s + number + "}");
        EXPECT_EQ(print(document), expected(document)) << number;
        EXPECT_EQ(print(document), "{\n    \"a\": "s + text + "\n}\n") << number;
    }
}

TEST(LibraryTextWriter, WhatIsNotFiniteIsNull)
{
    using Limits = std::numeric_limits<double>;
    for (const double number : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()}) {
        rapidjson::Document document(rapidjson::kObjectType);
        document.AddMember("a", number, document.GetAllocator());
        EXPECT_EQ(print(document), "{\n    \"a\": null\n}\n");
        EXPECT_EQ(print(document), expected(document));
    }
}

TEST(LibraryTextWriter, EveryCharacterOfATextPrintsAsBefore)
{
    for (unsigned c = 0; c < 0x11000; ++c) {
        if (c >= 0xD800 && c < 0xE000)
            continue;
        rapidjson::Document document(rapidjson::kObjectType);
        const std::string text = QString::fromUcs4(reinterpret_cast<const char32_t *>(&c), 1).toUtf8().toStdString();
        const std::string around = "1234567" + text + "x" + text;
        auto &allocator = document.GetAllocator();
        document.AddMember(Value("b" + text, allocator), Value(text, allocator), allocator);
        document.AddMember("a", Value(around, allocator), allocator);
        ASSERT_EQ(print(document), expected(document)) << c;
    }
    for (const std::string &first : textPieces)
        for (const std::string &second : textPieces) {
            rapidjson::Document document(rapidjson::kObjectType);
            auto &allocator = document.GetAllocator();
            document.AddMember(Value(first + second, allocator), Value(second + first, allocator), allocator);
            document.AddMember(Value(second, allocator), Value(first, allocator), allocator);
            ASSERT_EQ(print(document), expected(document)) << first << second;
        }
}

TEST(LibraryTextWriter, NamesAreInTheOrderOfUtf16)
{
    const std::string text =
        print(parse("{\"\uFFFD\":1,\"\U0001F6E0\":2,\"\uE000\":3,\"\uD7FF\":4,\"z\":5,\"Z\":6,\"\":7,"
                    "\"za\":8,\"\U0001F6E0a\":9}"));
    EXPECT_EQ(text, "{\n    \"\": 7,\n    \"Z\": 6,\n    \"z\": 5,\n    \"za\": 8,\n    \"\uD7FF\": 4,\n"
                    "    \"\U0001F6E0\": 2,\n    \"\U0001F6E0a\": 9,\n    \"\uE000\": 3,\n    \"\uFFFD\": 1\n}\n");
}

TEST(LibraryTextWriter, TheLastOfSeveralMembersCounts)
{
    EXPECT_EQ(print(parse(R"({"b":1,"a":2,"b":3,"a":{"x":1,"x":2},"b":4})")),
              "{\n    \"a\": {\n        \"x\": 2\n    },\n    \"b\": 4\n}\n");
    EXPECT_EQ(print(parse(R"({"a":1,"a":2})")), "{\n    \"a\": 2\n}\n");
    EXPECT_EQ(print(parse(R"({"a\u0000b":1,"a\u0000c":2})")), "{\n    \"a\": 2\n}\n") << "a NUL ends a name";
}

TEST(LibraryTextWriter, NamesOfEveryLengthArePrinted)
{
    rapidjson::Document document(rapidjson::kObjectType);
    auto &allocator = document.GetAllocator();
    for (std::size_t length = 0; length < 300; ++length) {
        const std::string name(length, 'a');
        document.AddMember(Value(name, allocator), Value(static_cast<int>(length)), allocator);
        ASSERT_EQ(print(document), expected(document)) << length;
    }
    // A letter that needs an escape, at each place.
    for (std::size_t length = 1; length < 40; ++length)
        for (std::size_t at = 0; at < length; ++at)
            for (const char letter : {'"', '\\', '\n', '\x1f', '\x7f', '\xC3'}) {
                rapidjson::Document one(rapidjson::kObjectType);
                std::string name(length, 'a');
                name[at] = letter;
                one.AddMember(Value(name, one.GetAllocator()), Value(name, one.GetAllocator()), one.GetAllocator());
                ASSERT_EQ(print(one), expected(one)) << length << ' ' << at << ' ' << letter;
            }
}

TEST(LibraryTextWriter, RandomDocumentsGiveTheBytesOfTheLongWay)
{
    for (unsigned seed = 1; seed <= 3000; ++seed) {
        const rapidjson::Document document = RandomDocument(seed).make();
        ASSERT_EQ(print(document), expected(document)) << "seed " << seed;
    }
}

TEST(LibraryTextWriter, RandomToolsGiveTheBytesOfTheLongWayWithoutBlanks)
{
    for (unsigned seed = 1; seed <= 1000; ++seed) {
        rapidjson::Document tools(rapidjson::kArrayType);
        for (unsigned tool = 0; tool < 3; ++tool) {
            const rapidjson::Document document = RandomDocument(10 * seed + tool).make();
            tools.PushBack(Value(document, tools.GetAllocator()), tools.GetAllocator());
        }
        QVariantList inOrder;
        const std::vector<std::uint32_t> order =
            seed % 2 ? std::vector<std::uint32_t>{2, 0, 1} : std::vector<std::uint32_t>{1};
        for (const std::uint32_t index : order)
            inOrder.append(RapidJsonConvert::toQVariant(tools[index]));
        const QVariantMap library{{QStringLiteral("data"), inOrder}, {QStringLiteral("version"), 36}};
        ASSERT_EQ(printCompact(tools, order),
                  QJsonDocument::fromVariant(library).toJson(QJsonDocument::Compact).toStdString())
            << "seed " << seed;
    }
    EXPECT_EQ(printCompact(Value(rapidjson::kArrayType), {}), R"({"data":[],"version":36})");
}

TEST(LibraryTextWriter, AThousandLevelsArePrinted)
{
    const std::string deep = "{\"a\":" + std::string(999, '[') + std::string(999, ']') + "}";
    EXPECT_EQ(print(parse(deep)), expected(parse(deep)));
    std::string objects = "1";
    for (int i = 0; i < 1000; ++i)
        objects = "{\"b\":0,\"a\":" + objects + "}"; // unsorted, so that every level is on the stack of members
    EXPECT_EQ(print(parse(objects)), expected(parse(objects)));
}

TEST(LibraryTextWriter, TextsLongerThanABlockArriveWhole)
{
    rapidjson::Document document(rapidjson::kObjectType);
    auto &allocator = document.GetAllocator();
    for (const std::size_t length : {1023u, 1024u, 1025u, 65535u, 65536u, 65537u, 300000u}) {
        std::string text(length, 'x');
        text.back() = '"';
        document.AddMember(Value("\u00fc" + std::to_string(length), allocator), Value(text, allocator), allocator);
    }
    EXPECT_EQ(print(document), expected(document));
}

TEST(LibraryTextWriter, BlocksAreLargeAndNotTheWholeText)
{
    rapidjson::Document document = parse("{\"a\":[]}");
    for (int i = 0; i < 100000; ++i)
        document["a"].PushBack(i, document.GetAllocator());
    std::vector<std::size_t> blocks;
    EXPECT_TRUE(LibraryTextWriter::print(document, [&](std::string_view block) {
        blocks.push_back(block.size());
        return true;
    }));
    ASSERT_GT(blocks.size(), 10u);
    blocks.pop_back();
    EXPECT_THAT(blocks, testing::Each(testing::AllOf(testing::Ge(60000u), testing::Le(65536u))));
}

TEST(LibraryTextWriter, ARefusedBlockEndsIt)
{
    rapidjson::Document document = parse("{\"a\":[]}");
    for (int i = 0; i < 100000; ++i)
        document["a"].PushBack(i, document.GetAllocator());
    for (const int taken : {0, 1, 3}) {
        int asked = 0;
        EXPECT_FALSE(LibraryTextWriter::print(document, [&](std::string_view) { return asked++ < taken; }));
        EXPECT_EQ(asked, taken + 1) << "nothing more is handed over";
    }
    EXPECT_FALSE(LibraryTextWriter::print(parse("{}"), [](std::string_view) { return false; }));
}

TEST(LibraryTextWriter, OnlyAnObjectIsALibrary)
{
    const TestSupport::Asserts asserts;
    print(parse("{}"));
    EXPECT_THAT(asserts.messages(), testing::IsEmpty());
}

TEST_F(WithCountedGuids, EveryToolGetsANewOneInItsOrder)
{
    const rapidjson::Document library = parse(R"({"version":36,"other":{"guid":"stays"},"data":[
        {"unit":"inches","guid":"1","_document_tool_id":3,"_document_tool_reference_guid":"r","holder":{"guid":"h"}},
        {"_document_tool_id":4},
        {"guid":"2","guid":"3","zzz":1}]})");
    const std::string before = print(library);
    EXPECT_EQ(printWithNewGuids(library), R"({
    "data": [
        {
            "guid": "new 1",
            "holder": {
                "guid": "h"
            },
            "unit": "inches"
        },
        {
            "guid": "new 2"
        },
        {
            "guid": "new 3",
            "zzz": 1
        }
    ],
    "other": {
        "guid": "stays"
    },
    "version": 36
}
)");
    EXPECT_EQ(print(library), before) << "the library itself stays";
}

TEST_F(WithCountedGuids, TheBytesAreThoseOfTheLongWay)
{
    for (const char *text :
         {R"({"data":[]})", R"({})", R"({"data":7})", R"({"data":null,"a":1})", R"({"data":{"a":1}})",
          R"({"data":[1,[],"x",{"a":1}]})", R"({"data":[{"guid":7}],"data":[{"guid":8},{}]})",
          R"({"z":1,"data":[{"h":1,"g":2,"\u00fc":3}],"a":2})"}) {
        const rapidjson::Document document = parse(text);
        const std::string long_ = expectedWithNewGuids(document);
        EXPECT_EQ(printWithNewGuids(document), long_) << text;
    }
    for (unsigned seed = 1; seed <= 300; ++seed) {
        rapidjson::Document document = RandomDocument(seed).make();
        rapidjson::Document tools = RandomDocument(seed + 1000).make();
        Value list(rapidjson::kArrayType);
        for (auto &member : tools.GetObject())
            list.PushBack(Value(member.value, document.GetAllocator()), document.GetAllocator());
        document.AddMember("data", list, document.GetAllocator());
        const std::string long_ = expectedWithNewGuids(document);
        ASSERT_EQ(printWithNewGuids(document), long_) << "seed " << seed;
    }
}

#include "ToolLibrary/Interface/Private/JsonManipulation/JsonConvert.h"

#include <QJsonArray>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <limits>

using namespace std::string_literals;
using Varn::ToolLibraries::JsonConvert;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr qlonglong largest = std::numeric_limits<qlonglong>::max();
constexpr qlonglong lowest = std::numeric_limits<qlonglong>::min();

bool isDouble(const QVariant &variant, double value)
{
    return variant.typeId() == QMetaType::Double && variant.toDouble() == value;
}

std::string nested(int levels)
{
    return std::string(static_cast<std::size_t>(levels), '[') + std::string(static_cast<std::size_t>(levels), ']');
}

} // namespace

TEST(JsonConvert, PrintsCompactTextWithTheMembersInOrder)
{
    const QVariantMap map{{"b", QVariantList{true, QVariant(), "x"}}, {"a", QVariantMap{{"n", 1.5}}}, {"B", 0}};
    const std::string text = R"({"B":0,"a":{"n":1.5},"b":[true,null,"x"]})";
    EXPECT_EQ(JsonConvert::fromQVariantMap(map), text);
    EXPECT_EQ(JsonConvert::fromQVariant(map), text);
    EXPECT_EQ(JsonConvert::fromQJsonDocument(QJsonDocument::fromVariant(map)), text);
    EXPECT_EQ(JsonConvert::fromQVariantMap({}), "{}");
    EXPECT_EQ(JsonConvert::fromQVariant(QVariantList{1, 2.0, "\"\n"}), R"([1,2,"\"\n"])");
}

TEST(JsonConvert, TextStaysUtf8)
{
    const std::string name = "\u00e4\u20ac\U0001F527";
    const std::string text =
        JsonConvert::fromQVariantMap({{QString::fromStdString(name), QString::fromStdString(name)}});
    EXPECT_EQ(text, "{\"" + name + "\":\"" + name + "\"}");
    EXPECT_EQ(JsonConvert::toQVariantMap(text).firstKey().toStdString(), name);
    EXPECT_EQ(JsonConvert::toQVariantMap(text).first().toString().toStdString(), name);
}

TEST(JsonConvert, WhatIsNoContainerHasNoText)
{
    EXPECT_EQ(JsonConvert::fromQJsonDocument(QJsonDocument()), "");
    for (const QVariant &variant : {QVariant(), QVariant(5), QVariant("text"), QVariant(true)})
        EXPECT_EQ(JsonConvert::fromQVariant(variant), "") << variant.typeName();
}

TEST(JsonConvert, NumbersThatJsonLacksAreNull)
{
    const QVariantMap map{{"i", infinity}, {"m", -infinity}, {"n", std::numeric_limits<double>::quiet_NaN()}};
    EXPECT_EQ(JsonConvert::fromQVariantMap(map), R"({"i":null,"m":null,"n":null})");
}

TEST(JsonConvert, EveryNumberComesBackAsADouble)
{
    const QVariantMap map{
        {"int", 2},
        {"largest", largest},
        {"lowest", lowest},
        {"whole", 2.0},
        {"half", 2.5},
        {"list", QVariantList{7, QVariantList{8}, QVariantMap{{"inner", 9}}}},
        {"map", QVariantMap{{"inner", QVariantList{-3}}}},
    };
    const QVariantMap back = JsonConvert::toQVariantMap(JsonConvert::fromQVariantMap(map));
    EXPECT_TRUE(isDouble(back["int"], 2));
    EXPECT_TRUE(isDouble(back["largest"], static_cast<double>(largest)));
    EXPECT_TRUE(isDouble(back["lowest"], static_cast<double>(lowest)));
    EXPECT_TRUE(isDouble(back["whole"], 2));
    EXPECT_TRUE(isDouble(back["half"], 2.5));
    const QVariantList list = back["list"].toList();
    ASSERT_EQ(list.size(), 3);
    EXPECT_TRUE(isDouble(list[0], 7));
    EXPECT_TRUE(isDouble(list[1].toList().value(0), 8));
    EXPECT_TRUE(isDouble(list[2].toMap()["inner"], 9));
    EXPECT_TRUE(isDouble(back["map"].toMap()["inner"].toList().value(0), -3));

    const QVariantList alone = JsonConvert::toQVariantList("[1,2.5,[3]]");
    ASSERT_EQ(alone.size(), 3);
    EXPECT_TRUE(isDouble(alone[0], 1));
    EXPECT_TRUE(isDouble(alone[1], 2.5));
    EXPECT_TRUE(isDouble(alone[2].toList().value(0), 3));
}

TEST(JsonConvert, WhatIsNoNumberKeepsItsKind)
{
    const QVariantList list = JsonConvert::toQVariantList(R"([null,true,"2",{},[]])");
    ASSERT_EQ(list.size(), 5);
    EXPECT_TRUE(list[0].isNull());
    EXPECT_EQ(list[1].typeId(), QMetaType::Bool);
    EXPECT_EQ(list[2].typeId(), QMetaType::QString);
    EXPECT_EQ(list[3].typeId(), QMetaType::QVariantMap);
    EXPECT_EQ(list[4].typeId(), QMetaType::QVariantList);
}

TEST(JsonConvert, ADocumentIsReadWhole)
{
    const QJsonDocument document = JsonConvert::toQJsonDocument(" { \"a\" : [ 1 , { } ] , \"a\" : 2 }\r\n\t");
    EXPECT_EQ(document, QJsonDocument(QJsonObject{{"a", 2}})) << "the last of several members with one name counts";
    EXPECT_EQ(JsonConvert::toQJsonDocument("[1,{}]"), QJsonDocument(QJsonArray{1, QJsonObject()}));
    EXPECT_FALSE(JsonConvert::toQJsonDocument("{}").isNull());
    EXPECT_FALSE(JsonConvert::toQJsonDocument("[]").isNull());
}

TEST(JsonConvert, BadTextGivesNothing)
{
    const std::string texts[] = {
        "",
        " ",
        "{",
        "[1,]",
        R"({"a":1,})",
        "{a:1}",
        "{'a':1}",
        "{}x",
        "{}{}",
        "[1 2]",
        "[NaN]",
        "[Infinity]",
        "[1e400]",
        "[01]",
        "[+1]",
        "[1] //",
        "/**/[]",
        "5",
        R"("text")",
        "true",
        "null",
        "nonsense",
        "[\"\xFF\"]",
        "[\"\xC0\x80\"]",
        "[\"\xED\xA0\x80\"]",
        "[\"",
        "[\"\\ud800",
        "\xFF\xFE[\0]"s,
    };
    for (const std::string &text : texts) {
        EXPECT_TRUE(JsonConvert::toQJsonDocument(text).isNull()) << text;
        EXPECT_TRUE(JsonConvert::toQVariantList(text).empty()) << text;
        EXPECT_TRUE(JsonConvert::toQVariantMap(text).empty()) << text;
    }
}

TEST(JsonConvert, AListIsNoMapAndAMapNoList)
{
    EXPECT_TRUE(JsonConvert::toQVariantList(R"({"a":1})").empty());
    EXPECT_TRUE(JsonConvert::toQVariantMap("[1]").empty());
}

TEST(JsonConvert, AnEmbeddedNulEndsTheText)
{
    EXPECT_EQ(JsonConvert::toQJsonDocument("[1]\0 and no JSON"s), QJsonDocument(QJsonArray{1}));
    EXPECT_EQ(JsonConvert::toQVariantMap("{\"a\":true}\0{"s), (QVariantMap{{"a", true}}));
    EXPECT_EQ(JsonConvert::toQVariantList("[true]\0]"s), QVariantList{true});
    EXPECT_TRUE(JsonConvert::toQJsonDocument("[1\0]"s).isNull());
    EXPECT_TRUE(JsonConvert::toQJsonDocument("\0[1]"s).isNull());
}

TEST(JsonConvert, DeepTextIsRefusedWithoutACrash)
{
    EXPECT_FALSE(JsonConvert::toQJsonDocument(nested(1000)).isNull());
    EXPECT_EQ(JsonConvert::toQVariantList(nested(1000)).size(), 1);
    for (const int levels : {1025, 100'000, 1'000'000})
        EXPECT_TRUE(JsonConvert::toQJsonDocument(nested(levels)).isNull()) << levels;
    EXPECT_TRUE(JsonConvert::toQVariantMap(std::string(1'000'000, '{')).empty());
}

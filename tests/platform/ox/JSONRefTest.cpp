#include "platform/ox/JSONRef.h"
#include "platform/ox/JSONNode.h"

#include <gtest/gtest.h>

#include <thread>

using Ox::JSONNode;
using Ox::JSONRef;

namespace {

JSONRef rootOf(std::string_view text)
{
    const auto node = JSONNode::parse(text);
    EXPECT_TRUE(node) << text;
    return node ? node->root() : JSONRef();
}

// The letters of the kinds that a value says it is.
std::string kindsOf(const JSONRef &value)
{
    std::string kinds;
    kinds += value.isNull() ? "n" : "";
    kinds += value.isObject() ? "o" : "";
    kinds += value.isArray() ? "a" : "";
    kinds += value.isString() ? "s" : "";
    kinds += value.isBool() ? "b" : "";
    kinds += value.isInt() ? "i" : "";
    kinds += value.isDouble() ? "d" : "";
    return kinds;
}

} // namespace

TEST(JSONRef, AValueIsOfOneKindAtMost)
{
    struct Row {
        const char *text;
        const char *kinds;
    };
    const Row rows[] = {
        {"null", "n"},
        {"{}", "o"},
        {"{\"a\":1}", "o"},
        {"[]", "a"},
        {"[null]", "a"},
        {"\"\"", "s"},
        {"\"1\"", "s"},
        {"true", "b"},
        {"false", "b"},
        {"0", "i"},
        {"2147483647", "i"},
        {"-2147483648", "i"},
        {"2147483648", ""},
        {"-2147483649", ""},
        {"9223372036854775808", ""},
        {"18446744073709551615", ""},
        {"18446744073709551616", "d"},
        {"3.0", "d"},
        {"3e0", "d"},
        {"0.5", "d"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(kindsOf(rootOf(row.text)), row.kinds) << row.text;
}

TEST(JSONRef, GivesAValueOnlyInItsOwnKind)
{
    struct Row {
        const char *text;
        std::string string;
        bool boolean;
        std::optional<int> integer;
        std::optional<double> number;
    };
    const Row rows[] = {
        // text          string  boolean  integer      number
        {"null", "", false, std::nullopt, std::nullopt},
        {"\"true\"", "true", false, std::nullopt, std::nullopt},
        {"\"1\"", "1", false, std::nullopt, std::nullopt},
        {"true", "", true, std::nullopt, std::nullopt},
        {"false", "", false, std::nullopt, std::nullopt},
        {"1", "", false, 1, 1.0},
        {"-7", "", false, -7, -7.0},
        {"3.0", "", false, std::nullopt, 3.0},
        {"4294967296", "", false, std::nullopt, 4294967296.0},
        {"18446744073709551615", "", false, std::nullopt, 18446744073709551616.0},
        {"[1]", "", false, std::nullopt, std::nullopt},
        {"{\"a\":1}", "", false, std::nullopt, std::nullopt},
    };
    for (const Row &row : rows) {
        const JSONRef value = rootOf(row.text);
        EXPECT_EQ(value.asHString(), row.string) << row.text;
        EXPECT_EQ(value.asBool(), row.boolean) << row.text;
        EXPECT_EQ(value.getInt(), row.integer) << row.text;
        EXPECT_EQ(value.getDouble(), row.number) << row.text;
    }
}

TEST(JSONRef, WalksObjectsAndLists)
{
    const JSONRef root = rootOf("{\"geometry\": {\"DC\": 12.5}, \"presets\": [{\"n\": 1}, {\"n\": 2}]}");
    EXPECT_TRUE(root.exists("geometry"));
    EXPECT_FALSE(root.exists("Geometry"));
    EXPECT_EQ(root["geometry"]["DC"].getDouble(), 12.5);
    EXPECT_EQ(root["presets"].at(1)["n"].getInt(), 2);
    EXPECT_EQ(root.size(), 2U);
    EXPECT_EQ(root["presets"].size(), 2U);
}

TEST(JSONRef, WhatIsNotThereReadsAsNull)
{
    const JSONRef root = rootOf("{\"list\": [1], \"text\": \"abc\", \"null\": null}");
    const JSONRef missing[] = {
        JSONRef(),
        root["missing"],
        root["missing"]["more"],
        root["text"]["a"],
        root["list"]["0"],
        root["list"].at(1),
        root["text"].at(0),
        root.at(0),
        root["null"]["a"],
        root["missing"].at(0),
        root["list"].at(std::size_t(1) << 32),
    };
    for (const JSONRef &value : missing) {
        EXPECT_EQ(kindsOf(value), "n");
        EXPECT_FALSE(value.exists("a"));
        EXPECT_EQ(value.size(), 0U);
        EXPECT_EQ(value.asHString(), "");
        EXPECT_EQ(value.getDouble(), std::nullopt);
    }
    EXPECT_TRUE(root.exists("null"));
    EXPECT_EQ(root["text"].size(), 0U);
}

TEST(JSONRef, NamesAreComparedByteByByte)
{
    const JSONRef root = rootOf("{\"a\\u0000b\": 1, \"\u00e4\": 2, \"\": 3}");
    EXPECT_TRUE(root.exists(std::string_view("a\0b", 3)));
    EXPECT_FALSE(root.exists("a"));
    EXPECT_EQ(root["\u00e4"].getInt(), 2);
    EXPECT_FALSE(root.exists("a\u0308"));
    EXPECT_EQ(root[""].getInt(), 3);
    EXPECT_EQ(root[std::string_view()].getInt(), 3);
}

TEST(JSONRef, KeepsItsDocumentAlive)
{
    JSONRef value;
    {
        const JSONRef root = rootOf("{\"a\": [\"a text that is too long for a short string\"]}");
        value = root["a"].at(0);
    }
    EXPECT_EQ(value.asHString(), "a text that is too long for a short string");
}

TEST(JSONRef, ATextMayHoldANul)
{
    EXPECT_EQ(rootOf("\"a\\u0000b\"").asHString(), std::string("a\0b", 3));
}

TEST(JSONRef, ManyThreadsReadOneDocument)
{
    const auto node = JSONNode::parse("{\"list\": [1, 2.5, \"three\", {\"four\": 4}]}");
    ASSERT_TRUE(node);
    std::vector<int> good(4);
    std::vector<std::thread> threads;
    for (int &mine : good) {
        threads.emplace_back([&node, &mine] {
            for (int i = 0; i < 200; ++i) {
                const JSONRef list = node->root()["list"];
                mine += list.at(0).getInt() == 1 && list.at(1).getDouble() == 2.5 &&
                        list.at(2).asHString() == "three" && list.at(3)["four"].isInt() &&
                        node->stringify() == "{\"list\":[1,2.5,\"three\",{\"four\":4}]}";
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(good, std::vector<int>(4, 200));
}

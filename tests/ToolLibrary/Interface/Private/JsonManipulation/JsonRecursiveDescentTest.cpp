#include "ToolLibrary/Interface/Private/JsonManipulation/JsonRecursiveDescent.h"
#include "support/Asserts.h"

#include <QJsonArray>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using Varn::ToolLibraries::JsonRecursiveDescent;

namespace {

QJsonDocument json(const char *text)
{
    return QJsonDocument::fromJson(text);
}

std::string text(const QJsonDocument &document)
{
    return document.toJson(QJsonDocument::Compact).toStdString();
}

QJsonObject same(const QJsonObject &object)
{
    return object;
}

} // namespace

TEST(JsonRecursiveDescent, EachObjectIsSeenOnceTheParentFirst)
{
    struct Row {
        const char *name;
        const char *document;
        std::vector<std::string> seen; // the members "id"
    };
    const Row rows[] = {
        {"one object", R"({"id":"a"})", {"a"}},
        {"a child", R"({"id":"a","x":{"id":"b","y":{"id":"c"}}})", {"a", "b", "c"}},
        {"children in the order of their keys", R"({"id":"a","z":{"id":"c"},"b":{"id":"b"}})", {"a", "b", "c"}},
        {"a list in an object", R"({"id":"a","x":[{"id":"b"},{"id":"c"}]})", {"a", "b", "c"}},
        {"lists in lists", R"([[{"id":"a"}],[[{"id":"b"}]],{"id":"c"}])", {"a", "b", "c"}},
        {"twins", R"([{"id":"a"},{"id":"a"}])", {"a", "a"}},
        {"a list without objects", R"([1,"id",null,true,[],[2]])", {}},
        {"an empty list", "[]", {}},
    };
    for (const Row &row : rows) {
        std::vector<std::string> seen;
        const QJsonDocument result = JsonRecursiveDescent::apply(json(row.document), [&](const QJsonObject &object) {
            seen.push_back(object["id"].toString().toStdString());
            return object;
        });
        EXPECT_EQ(seen, row.seen) << row.name;
        EXPECT_EQ(result, json(row.document)) << row.name;
    }
}

TEST(JsonRecursiveDescent, TheChildrenAreThoseOfTheParentsResult)
{
    std::vector<QStringList> seen;
    const auto rewrite = [&](const QJsonObject &object) {
        seen.push_back(object.keys());
        QJsonObject result = object;
        if (result.remove("old"), object.contains("old"))
            result["new"] = QJsonObject{{"fresh", QJsonArray{QJsonObject{{"leaf", 1}}}}};
        return result;
    };
    const QJsonDocument result = JsonRecursiveDescent::apply(json(R"({"old":{"never":1},"kept":2})"), rewrite);
    EXPECT_EQ(text(result), R"({"kept":2,"new":{"fresh":[{"leaf":1}]}})");
    EXPECT_THAT(seen, ElementsAre(QStringList{"kept", "old"}, QStringList{"fresh"}, QStringList{"leaf"}));
}

TEST(JsonRecursiveDescent, WhatTheChildrenBecomeIsWrittenBack)
{
    const auto count = [](const QJsonObject &object) {
        QJsonObject result = object;
        result["n"] = object["n"].toInt() + 1;
        return result;
    };
    EXPECT_EQ(text(JsonRecursiveDescent::apply(json(R"({"a":[{"n":1},[{"n":2}],5],"b":{"n":3}})"), count)),
              R"({"a":[{"n":2},[{"n":3}],5],"b":{"n":4},"n":1})");
    EXPECT_EQ(text(JsonRecursiveDescent::apply(json(R"([{"n":1},[[{"n":2}]],"x"])"), count)),
              R"([{"n":2},[[{"n":3}]],"x"])");
}

TEST(JsonRecursiveDescent, TheFormOfTheRootStays)
{
    const auto empty = [](const QJsonObject &) { return QJsonObject(); };
    EXPECT_EQ(text(JsonRecursiveDescent::apply(json(R"({"a":1})"), empty)), "{}");
    EXPECT_EQ(text(JsonRecursiveDescent::apply(json(R"([{"a":1},2])"), empty)), "[{},2]");
    EXPECT_TRUE(JsonRecursiveDescent::apply(json("{}"), &same).isObject());
    EXPECT_TRUE(JsonRecursiveDescent::apply(json("[]"), &same).isArray());
}

TEST(JsonRecursiveDescent, TheDocumentGivenStaysAsItIs)
{
    const QJsonDocument document = json(R"({"a":{"b":1}})");
    JsonRecursiveDescent::apply(document, [](const QJsonObject &) { return QJsonObject{{"x", 1}}; });
    EXPECT_EQ(text(document), R"({"a":{"b":1}})");
}

TEST(JsonRecursiveDescent, ADocumentWithoutARootIsAProgrammingError)
{
    int calls = 0;
    const auto rewrite = [&](const QJsonObject &object) { return ++calls, object; };
    EXPECT_TRUE(JsonRecursiveDescent::apply(QJsonDocument(), rewrite).isNull());

    const TestSupport::Asserts asserts;
    EXPECT_TRUE(JsonRecursiveDescent::apply(QJsonDocument(), rewrite).isNull());
    EXPECT_THAT(asserts.messages(), ElementsAre("json.isArray() || json.isObject()"));
    EXPECT_EQ(calls, 0);
}

TEST(JsonRecursiveDescent, AGoodDocumentAssertsNothing)
{
    const TestSupport::Asserts asserts;
    JsonRecursiveDescent::apply(json("[{}]"), &same);
    JsonRecursiveDescent::apply(json(R"({"a":[]})"), &same);
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(JsonRecursiveDescent, TheDeepestTextThatIsReadIsRewritten)
{
    QByteArray deep = "{}";
    for (int i = 1; i < 1000; ++i)
        deep = R"({"a":)" + deep + "}";
    int calls = 0;
    const auto rewrite = [&](const QJsonObject &object) { return ++calls, object; };
    EXPECT_EQ(JsonRecursiveDescent::apply(QJsonDocument::fromJson(deep), rewrite).toJson(QJsonDocument::Compact), deep);
    EXPECT_EQ(calls, 1000);
}

#include "ToolLibrary/Interface/Private/JsonManipulation/GuidRegenerator.h"
#include "support/Asserts.h"

#include <QJsonArray>
#include <QUuid>

#include <gmock/gmock.h>

#include <set>

using testing::ElementsAre;
using testing::IsEmpty;
using Varn::ToolLibraries::GuidRegenerator;

namespace {

QJsonDocument json(const char *text)
{
    return QJsonDocument::fromJson(text);
}

/// A GUID in the form that is stored: 36 characters, lower case.
bool isStoredGuid(const QJsonValue &value)
{
    const QUuid uuid = QUuid::fromString(value.toString());
    return !uuid.isNull() && value.toString() == uuid.toString(QUuid::WithoutBraces);
}

const char *const library = R"({
    "data": [
        {"guid": "11111111-1111-4111-8111-111111111111", "type": "drill",
         "holder": {"guid": "22222222-2222-4222-8222-222222222222", "gaugeLength": 1.5},
         "start-values": {"presets": [{"guid": "33333333-3333-4333-8333-333333333333", "n": 5000},
                                      {"guid": "33333333-3333-4333-8333-333333333333"}]}},
        {"guid": "", "GUID": "kept"},
        {"no": "guid"}
    ],
    "version": 36
})";

} // namespace

TEST(GuidRegenerator, EveryGuidOfTheTreeIsNewAndItsOwn)
{
    const QJsonObject root = GuidRegenerator::regenerateGuids(json(library)).object();
    const QJsonObject tool = root["data"][0].toObject();
    const QJsonArray presets = tool["start-values"]["presets"].toArray();
    std::set<QString> guids;
    for (const QJsonValue &guid : {tool["guid"], tool["holder"]["guid"], QJsonValue(presets[0]["guid"]),
                                   QJsonValue(presets[1]["guid"]), QJsonValue(root["data"][1]["guid"])}) {
        EXPECT_TRUE(isStoredGuid(guid)) << guid.toString().toStdString();
        guids.insert(guid.toString());
    }
    EXPECT_EQ(guids.size(), 5U);
    EXPECT_EQ(guids.count("11111111-1111-4111-8111-111111111111"), 0U);
    EXPECT_EQ(guids.count("22222222-2222-4222-8222-222222222222"), 0U);
    EXPECT_EQ(guids.count("33333333-3333-4333-8333-333333333333"), 0U);
}

TEST(GuidRegenerator, AllElseStays)
{
    const auto withoutGuids = [](QJsonDocument document) {
        QByteArray text = document.toJson(QJsonDocument::Compact);
        for (qsizetype at = 0; (at = text.indexOf("\"guid\":\"", at)) >= 0;)
            text.remove(at, text.indexOf('"', at + 8) + 1 - at);
        return text;
    };
    EXPECT_EQ(withoutGuids(GuidRegenerator::regenerateGuids(json(library))), withoutGuids(json(library)));
}

TEST(GuidRegenerator, AMemberOfAnyKindBecomesAGuid)
{
    const QJsonDocument result =
        GuidRegenerator::regenerateGuids(json(R"([{"guid":5},{"guid":null},{"guid":{"guid":1}}])"));
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(isStoredGuid(result[i]["guid"])) << i;
}

TEST(GuidRegenerator, EachCallMakesOthers)
{
    const QJsonDocument document = json(R"({"guid":"x"})");
    EXPECT_NE(GuidRegenerator::regenerateGuids(document), GuidRegenerator::regenerateGuids(document));
}

TEST(GuidRegenerator, ADocumentWithoutGuidsStaysEqual)
{
    for (const char *text :
         {"{}", "[]", R"({"data":[{"type":"drill","Guid":"a"}],"version":1})", R"([1,[{"a":null}]])"})
        EXPECT_EQ(GuidRegenerator::regenerateGuids(json(text)), json(text)) << text;
}

TEST(GuidRegenerator, ADocumentWithoutARootIsAProgrammingError)
{
    EXPECT_TRUE(GuidRegenerator::regenerateGuids(QJsonDocument()).isNull());

    const TestSupport::Asserts asserts;
    EXPECT_TRUE(GuidRegenerator::regenerateGuids(QJsonDocument()).isNull());
    EXPECT_THAT(asserts.messages(),
                ElementsAre("document.isArray() || document.isObject()", "json.isArray() || json.isObject()"));
}

TEST(GuidRegenerator, AGoodDocumentAssertsNothing)
{
    const TestSupport::Asserts asserts;
    GuidRegenerator::regenerateGuids(json(library));
    GuidRegenerator::regenerateGuids(json("[]"));
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

#include "platform/tool/LibraryMetadata.h"

#include "platform/tool/Exception.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <type_traits>

namespace Varn::ToolLibraries {

namespace {

using Type = LibraryMetadata::Type;

std::string refusal(const std::string &json)
{
    try {
        LibraryMetadata::fromJson(json);
    } catch (const InvalidInput &e) {
        return e.what();
    }
    return "read";
}

/// A node of a host with something to add.
class MarkedMetadata : public LibraryMetadata
{
public:
    using LibraryMetadata::LibraryMetadata;

protected:
    void fillJson(Json::Value &object) const override
    {
        LibraryMetadata::fillJson(object);
        object["activeDocument"] = true;
    }
};

} // namespace

TEST(LibraryMetadataTest, KeepsWhatItIsBuiltFrom)
{
    const ToolLibraryLocator url(L"toollibraryroot://Local/Mills.json");
    const ToolLibraryLocator parent(L"toollibraryroot://Local");
    LibraryMetadata metadata(L"Mills", Type::Library, url, parent, false);
    EXPECT_EQ(metadata.name(), L"Mills");
    EXPECT_EQ(metadata.type(), Type::Library);
    EXPECT_EQ(metadata.url(), url);
    EXPECT_EQ(metadata.parent(), parent);
    EXPECT_EQ(metadata.readOnly(), false);
    EXPECT_EQ(metadata.folderId(), std::nullopt);
    EXPECT_TRUE(metadata.errors().empty());
}

TEST(LibraryMetadataTest, SettersReplace)
{
    LibraryMetadata metadata(L"", Type::Folder, ToolLibraryLocator(L"hub://a"), std::nullopt, std::nullopt);
    metadata.setParent(ToolLibraryLocator::HubsFolder);
    metadata.setFolderId("urn:1");
    metadata.setErrors({2201, 4294967295U});
    EXPECT_EQ(metadata.parent(), ToolLibraryLocator::HubsFolder);
    EXPECT_EQ(metadata.folderId(), "urn:1");
    EXPECT_THAT(metadata.errors(), testing::ElementsAre(2201, 4294967295U));
    metadata.setFolderId(std::nullopt);
    metadata.setErrors({});
    EXPECT_EQ(metadata.folderId(), std::nullopt);
    EXPECT_TRUE(metadata.errors().empty());
}

TEST(LibraryMetadataTest, TypesHaveTheNumbersThatHostsKnow)
{
    EXPECT_EQ(int(Type::Document), 0);
    EXPECT_EQ(int(Type::Folder), 1);
    EXPECT_EQ(int(Type::Library), 2);
}

TEST(LibraryMetadataTest, PrintsAllMembers)
{
    LibraryMetadata metadata(L"K\u00e4se \U0001F9C0", Type::Folder, ToolLibraryLocator(L"hub://a/"),
                             ToolLibraryLocator::HubsFolder, true);
    metadata.setFolderId("urn:1");
    metadata.setErrors({1, 2310});
    EXPECT_EQ(metadata.toJson(), "{\"errors\":[1,2310],\"folderId\":\"urn:1\",\"name\":\"K\u00e4se \U0001F9C0\","
                                 "\"parent\":\"hub://\",\"readonly\":true,\"type\":\"folder\",\"url\":\"hub://a/\"}");
}

TEST(LibraryMetadataTest, LeavesAbsentMembersOut)
{
    const LibraryMetadata metadata(L"", Type::Document, ToolLibraryLocator::fromFilePath(L"/tmp/a"), std::nullopt,
                                   std::nullopt);
    EXPECT_EQ(metadata.toJson(), R"({"name":"","type":"document","url":{"path":"/tmp/a"}})");
}

TEST(LibraryMetadataTest, ReadsWhatItPrints)
{
    const char *const texts[] = {
        R"({"name":"a","type":"library","url":"u"})",
        R"({"name":"a","parent":"p","readonly":false,"type":"folder","url":"u"})",
        R"({"name":"a","parent":{"path":"/p"},"type":"folder","url":{"path":"/u"}})",
        R"({"errors":[1,2],"folderId":"","name":"","parent":"","readonly":true,"type":"document","url":""})",
    };
    for (const char *text : texts)
        EXPECT_EQ(LibraryMetadata::fromJson(text)->toJson(), text);
}

TEST(LibraryMetadataTest, KeepsMembersThatMeanNothingHere)
{
    const std::string text = R"({"":0,"a\u0000b":null,"activeDocument":true,"name":"n","oldUrl":"o",)"
                             R"("setups":[{"name":"s","x":1.5}],"type":"library","url":"u"})";
    const auto metadata = LibraryMetadata::fromJson(text);
    EXPECT_EQ(metadata->toJson(), text);
    metadata->setErrors({7});
    EXPECT_THAT(metadata->toJson(), testing::HasSubstr(R"("errors":[7])"));
    EXPECT_THAT(metadata->toJson(), testing::HasSubstr(R"("oldUrl":"o")"));
}

TEST(LibraryMetadataTest, NullAndEmptyCountAsAbsent)
{
    const auto metadata = LibraryMetadata::fromJson(
        R"({"errors":null,"folderId":null,"name":null,"parent":null,"readonly":null,"type":"folder","url":"u"})");
    EXPECT_EQ(metadata->toJson(), R"({"name":"","type":"folder","url":"u"})");
    EXPECT_EQ(LibraryMetadata::fromJson(R"({"errors":[],"type":"folder","url":"u"})")->toJson(),
              R"({"name":"","type":"folder","url":"u"})");
}

TEST(LibraryMetadataTest, WholeDoublesAreErrorCodesToo)
{
    const auto metadata = LibraryMetadata::fromJson(R"({"errors":[2310.0],"type":"folder","url":"u"})");
    EXPECT_THAT(metadata->errors(), testing::ElementsAre(2310));
}

TEST(LibraryMetadataTest, RefusesABadTextAndSaysWhy)
{
    struct Row {
        const char *json;
        std::string reason;
    };
    const std::string us = "Library metadata: ";
    const std::string bad = us + "not valid JSON: ";
    // clang-format off
    const Row rows[] = {
        { "",                                                  bad + "The document is empty. At byte 0." },
        { "{",                                                 bad + "Missing a name for object member. At byte 1." },
        { "[]",                                                us + "not a JSON object" },
        { "null",                                              us + "not a JSON object" },
        { "\"library\"",                                       us + "not a JSON object" },
        { R"({"name":"n","type":"library"})",                  "No library URL" },
        { R"({"type":"library","url":null})",                  "No library URL" },
        { R"({"type":"library","url":1})",                     R"(A library is named by a URL or by {"path": FILE})" },
        { R"({"type":"library","url":{}})",                    R"(A library is named by a URL or by {"path": FILE})" },
        { R"({"type":"library","url":"u","parent":false})",    R"(A library is named by a URL or by {"path": FILE})" },
        { R"({"url":"u"})",                                    us + "no \"type\"" },
        { R"({"url":"u","type":2})",                           us + "\"type\" is not a text" },
        { R"({"url":"u","type":"Library"})",                   us + "unknown type \"Library\"" },
        { R"({"url":"u","type":"library\u0000"})",             us + "unknown type \"library" },
        { R"({"url":"u","type":"library","name":1})",          us + "\"name\" is not a text" },
        { R"({"url":"u","type":"library","readonly":"true"})", us + "\"readonly\" is neither true nor false" },
        { R"({"url":"u","type":"library","folderId":1})",      us + "\"folderId\" is not a text" },
        { R"({"url":"u","type":"library","errors":{}})",       us + "\"errors\" is not a list" },
        { R"({"url":"u","type":"library","errors":"1"})",      us + "\"errors\" is not a list" },
        { R"({"url":"u","type":"library","errors":[-1]})",     us + "\"errors\" holds what is not an error code" },
        { R"({"url":"u","type":"library","errors":[1.5]})",    us + "\"errors\" holds what is not an error code" },
        { R"({"url":"u","type":"library","errors":[1e10]})",   us + "\"errors\" holds what is not an error code" },
        { R"({"url":"u","type":"library","errors":["1"]})",    us + "\"errors\" holds what is not an error code" },
        { R"({"url":"u","type":"library","errors":[null]})",   us + "\"errors\" holds what is not an error code" },
    };
    // clang-format on
    for (const Row &row : rows)
        EXPECT_EQ(refusal(row.json), row.reason) << row.json;
}

TEST(LibraryMetadataTest, DeepTextsAreRefused)
{
    const std::string deep = R"({"url":"u","type":"library","x":)" + std::string(100000, '[');
    EXPECT_THAT(refusal(deep), testing::HasSubstr("Nested deeper than 1000 levels."));
}

TEST(LibraryMetadataTest, AnotherKindOfNodeAddsToTheJson)
{
    const std::shared_ptr<LibraryMetadata> metadata = std::make_shared<MarkedMetadata>(
        L"Part", Type::Document, ToolLibraryLocator(L"document://1"), std::nullopt, std::nullopt);
    EXPECT_EQ(metadata->toJson(), R"({"activeDocument":true,"name":"Part","type":"document","url":"document://1"})");
    EXPECT_TRUE(metadata->toJsonValue()["activeDocument"].asBool());
}

TEST(LibraryMetadataTest, TheUrlCannotBeAssignedAway)
{
    EXPECT_TRUE(std::is_copy_constructible_v<LibraryMetadata>);
    EXPECT_FALSE(std::is_copy_assignable_v<LibraryMetadata>);
}

} // namespace Varn::ToolLibraries

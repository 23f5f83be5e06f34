#include "platform/tool/ToolLibraryLocator.h"
#include "platform/tool/Exception.h"
#include "platform/tool/JsonText.h"

#include <gtest/gtest.h>

#include <unordered_set>

namespace Varn::ToolLibraries {

namespace {

ToolLibraryLocator fromText(const std::string &json)
{
    return ToolLibraryLocator::fromJson(*JsonText::parse(json));
}

} // namespace

TEST(ToolLibraryLocatorTest, IsAUrlOrAPath)
{
    const ToolLibraryLocator url(L"toollibraryroot://Local/\u00e4.json");
    EXPECT_EQ(url.url(), L"toollibraryroot://Local/\u00e4.json");
    EXPECT_FALSE(url.isFilePath());
    const ToolLibraryLocator path = ToolLibraryLocator::fromFilePath(L"/tmp/a b.json");
    EXPECT_EQ(path.url(), L"/tmp/a b.json");
    EXPECT_TRUE(path.isFilePath());
    EXPECT_FALSE(ToolLibraryLocator(L"/tmp/a.json").isFilePath()) << "any text is taken";
}

TEST(ToolLibraryLocatorTest, IsEqualWhereKindAndTextAre)
{
    const ToolLibraryLocator url(L"a");
    const ToolLibraryLocator path = ToolLibraryLocator::fromFilePath(L"a");
    EXPECT_EQ(url, ToolLibraryLocator(L"a"));
    EXPECT_EQ(path, ToolLibraryLocator::fromFilePath(L"a"));
    EXPECT_FALSE(url == path);
    EXPECT_FALSE(url == ToolLibraryLocator(L"A"));
    ToolLibraryLocator copy(url);
    EXPECT_EQ(copy, url);
    copy = path;
    EXPECT_EQ(copy, path);
    EXPECT_EQ((std::unordered_set<ToolLibraryLocator>{url, path, copy, ToolLibraryLocator(L"a")}.size()), 2U);
}

TEST(ToolLibraryLocatorTest, TheRootsOfTheTree)
{
    EXPECT_EQ(ToolLibraryLocator::UserLibrariesFolder, ToolLibraryLocator(L"all://"));
    EXPECT_EQ(ToolLibraryLocator::DocumentsFolder, ToolLibraryLocator(L"document://"));
    EXPECT_EQ(ToolLibraryLocator::HubsFolder, ToolLibraryLocator(L"hub://"));
}

TEST(ToolLibraryLocatorTest, PrintsAndReadsBothForms)
{
    struct Row {
        ToolLibraryLocator locator;
        const char *json;
    };
    const Row rows[] = {
        {ToolLibraryLocator(L"all://"), R"("all://")"},
        {ToolLibraryLocator(L""), R"("")"},
        {ToolLibraryLocator(L"\"\u00e4\U0001F527\\"), "\"\\\"\u00e4\U0001F527\\\\\""},
        {ToolLibraryLocator::fromFilePath(L"/tmp/\u00e4\n.json"), "{\"path\":\"/tmp/\u00e4\\n.json\"}"},
        {ToolLibraryLocator::fromFilePath(L""), R"({"path":""})"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(row.locator.toJson(), row.json);
        EXPECT_EQ(JsonText::print(row.locator.toJsonValue()), row.json);
        EXPECT_EQ(fromText(row.json), row.locator) << row.json;
    }
}

TEST(ToolLibraryLocatorTest, AnythingElseNamesNoLibrary)
{
    for (const char *json : {"null", "5", "true", "[]", R"(["all://"])", "{}", R"({"path":5})", R"({"path":null})",
                             R"({"url":"all://"})", R"({"path":"a","url":"b"})", R"({"Path":"a"})"}) {
        try {
            fromText(json);
            ADD_FAILURE() << json;
        } catch (const InvalidInput &failure) {
            EXPECT_STREQ(failure.what(), R"(A library is named by a URL or by {"path": FILE})") << json;
        }
    }
}

} // namespace Varn::ToolLibraries

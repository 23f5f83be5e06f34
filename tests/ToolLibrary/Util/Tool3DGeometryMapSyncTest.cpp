// Tool3DGeometryMap::syncLibraries: what it keeps, what it removes, and what it must never touch.
#include "ToolLibrary/Util/Tool3DGeometryMap.h"

#include "support/Asserts.h"
#include "support/GeometryTest.h"

#include <gmock/gmock.h>

#include <cstdlib>

#include <sys/stat.h>
#include <unistd.h>

using namespace TestSupport;
using namespace Varn;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace fs = std::filesystem;

namespace {

/// Permissions do not stop root: while this lives, the process is somebody else.
class AsNobody
{
public:
    AsNobody()
    {
        if (m_wasRoot && seteuid(65534) != 0)
            throw std::runtime_error("A test could not become nobody");
    }
    ~AsNobody()
    {
        if (m_wasRoot && seteuid(0) != 0)
            std::abort();
    }

private:
    const bool m_wasRoot = geteuid() == 0;
};

class Tool3DGeometryMapSyncTest : public GeometryTest
{
protected:
    /// Files of those ids in the folder of a library, which the table learns.
    void have(const Url &url, const std::vector<std::wstring> &ids)
    {
        for (const std::wstring &id : ids)
            put(fileOf(url, id));
        Map::populateFromLibraryUrl(url);
    }
};

} // namespace

TEST_F(Tool3DGeometryMapSyncTest, WhatNoToolUsesIsRemoved)
{
    have(local, {L"used", L"unused", L"\u5de5\u5177"});
    Map::syncLibraries({{local, {L"used"}}});
    EXPECT_THAT(namesIn(folderOf(local)), ElementsAre("sub", "used.3DTool"));
    EXPECT_TRUE(Map::has(L"used"));
    EXPECT_FALSE(Map::has(L"unused"));
}

TEST_F(Tool3DGeometryMapSyncTest, EveryIdInUseKeepsItsFile)
{
    const std::set<std::wstring> all(std::begin(geometryIds), std::end(geometryIds));
    have(local, {all.begin(), all.end()});
    Map::syncLibraries({{local, all}});
    EXPECT_EQ(namesIn(folderOf(local)).size(), all.size() + 1);
}

TEST_F(Tool3DGeometryMapSyncTest, AnotherLibraryOfTheFolderKeepsAFile)
{
    have(local, {L"a", L"b", L"c"});
    Map::populateFromLibraryUrl(sameFolder);
    Map::syncLibraries({{local, {L"a"}}, {sameFolder, {L"b"}}});
    EXPECT_THAT(namesIn(folderOf(local)), ElementsAre("a.3DTool", "b.3DTool", "sub"));
    EXPECT_THAT(Map::getLocations(L"a"), ElementsAre(local));
    EXPECT_THAT(Map::getLocations(L"b"), ElementsAre(sameFolder));
}

TEST_F(Tool3DGeometryMapSyncTest, ALibraryOfAnotherFolderKeepsNoFileHere)
{
    have(local, {L"id"});
    have(cloud, {L"id"});
    Map::syncLibraries({{local, {}}, {cloud, {L"id"}}});
    EXPECT_FALSE(fs::exists(fileOf(local, L"id")));
    EXPECT_TRUE(fs::exists(fileOf(cloud, L"id")));
    EXPECT_THAT(Map::getLocations(L"id"), ElementsAre(cloud));
}

TEST_F(Tool3DGeometryMapSyncTest, AFolderOfWhichNothingWasKnownIsNotSwept)
{
    put(fileOf(local, L"unused"));
    have(cloud, {L"x"});
    Map::syncLibraries({{local, {L"used"}}});
    EXPECT_TRUE(fs::exists(fileOf(local, L"unused")));
    Map::syncLibraries({{local, {L"used"}}});
    EXPECT_FALSE(fs::exists(fileOf(local, L"unused"))) << "now the library is one of the table";
}

TEST_F(Tool3DGeometryMapSyncTest, AFolderWhoseLibrariesAreGoneIsSwept)
{
    have(local, {L"a"});
    Map::syncLibraries({});
    EXPECT_FALSE(fs::exists(fileOf(local, L"a")));
    EXPECT_TRUE(Map::isEmpty());
}

TEST_F(Tool3DGeometryMapSyncTest, NothingElseIsEverRemoved)
{
    const Path folder = folderOf(local);
    have(local, {L"unused"});
    put(loose("outside/target.3DTool"));
    fs::create_symlink(loose("outside/target.3DTool"), folder / "link.3DTool");
    fs::create_directory_symlink(loose("outside"), folder / "linked.3DTool");
    fs::create_symlink("nowhere", folder / "dangling.3DTool");
    fs::create_directory(folder / "folder.3DTool");
    put(folder / "folder.3DTool/inner.3DTool");
    put(fileOf(otherFolder, L"below"));
    ASSERT_EQ(mkfifo((folder / "pipe.3DTool").c_str(), 0600), 0);
    const std::set<std::string> others{"a.json",       "b.tools",     "a.3dtool",    "a.3DTOOL",
                                       "a.3DTool.bak", "a.3DTool~",   "3DTool",      ".3DTool",
                                       "a\\b.3DTool",  "a\nb.3DTool", "\xff.3DTool", "x.3DTool.part"};
    for (const std::string &name : others)
        std::ofstream(folder / name) << "x";
    std::set<std::string> expected = others;
    expected.insert({"linked.3DTool", "dangling.3DTool", "folder.3DTool", "pipe.3DTool", "sub"});
    Map::syncLibraries({{local, {}}});
    EXPECT_EQ(namesIn(folder), expected);
    EXPECT_TRUE(fs::exists(loose("outside/target.3DTool"))) << "the link went, not what it leads to";
    EXPECT_TRUE(fs::exists(folder / "folder.3DTool/inner.3DTool"));
    EXPECT_TRUE(fs::exists(fileOf(otherFolder, L"below")));
}

TEST_F(Tool3DGeometryMapSyncTest, AnIdThatLeadsElsewhereKeepsAndRemovesNothingThere)
{
    have(otherFolder, {L"x"});
    put(fileOf(local, L"x"));
    put(folderOf(local) / ".3DTool");
    Map::syncLibraries({{otherFolder, {L"../x", L"/x", L"..", std::wstring(L"x\0y", 3)}}});
    EXPECT_FALSE(fs::exists(fileOf(otherFolder, L"x")));
    EXPECT_TRUE(fs::exists(fileOf(local, L"x")));
    EXPECT_TRUE(Map::has(L"../x")) << "a tool names it, though it has no file";
    EXPECT_EQ(Map::getLoaded3DGeometry(L"../x"), nullptr);
}

TEST_F(Tool3DGeometryMapSyncTest, AFolderReachedOnTwoWaysIsOneFolder)
{
    fs::create_directory_symlink(folderOf(local), loose("way"));
    const Url other(QStringLiteral("custom://") + QString::fromStdString(loose("way/c.json").string()));
    const Url dotted(QStringLiteral("custom://") +
                     QString::fromStdString((folderOf(otherFolder) / "../d.json").string()));
    have(local, {L"a", L"b", L"c", L"d"});
    Map::populateFromLibraryUrl(other);
    Map::populateFromLibraryUrl(dotted);
    Map::syncLibraries({{local, {L"a"}}, {other, {L"b"}}, {dotted, {L"c"}}});
    EXPECT_THAT(namesIn(folderOf(local)), ElementsAre("a.3DTool", "b.3DTool", "c.3DTool", "sub"));
}

TEST_F(Tool3DGeometryMapSyncTest, GeometriesAreTakenOver)
{
    have(local, {L"learnt"});
    const auto loaded = makeGeometry(L"loaded");
    Map::emplace(L"loaded", loaded, local);
    Map::syncLibraries({{cloud, {L"loaded", L"learnt", L"new"}}, {document, {L"loaded"}}});
    EXPECT_EQ(Map::getLoaded3DGeometry(L"loaded"), loaded);
    EXPECT_THAT(Map::getLocations(L"loaded"), ElementsAre(cloud, document));
    EXPECT_THAT(Map::getLocations(L"new"), ElementsAre(cloud));
    EXPECT_EQ(Map::getLoaded3DGeometry(L"new"), nullptr) << "a placeholder without a file";
    EXPECT_EQ(Map::getLoaded3DGeometry(L"learnt"), nullptr) << "its library is listed no more";
}

TEST_F(Tool3DGeometryMapSyncTest, LibrariesWithoutFilesAreListedToo)
{
    const Asserts asserts;
    Map::emplace(L"a", makeGeometry(L"a"), document);
    Map::syncLibraries({{document, {L"a"}}, {hub, {L"b"}}});
    Map::syncLibraries({{document, {L"a"}}, {hub, {L"b"}}});
    EXPECT_THAT(Map::getLocations(L"b"), ElementsAre(hub));
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST_F(Tool3DGeometryMapSyncTest, AFolderThatHasVanishedIsLeftAlone)
{
    have(otherFolder, {L"a"});
    have(cloud, {L"b"});
    fs::remove_all(folderOf(otherFolder));
    Map::syncLibraries({});
    EXPECT_FALSE(fs::exists(fileOf(cloud, L"b"))) << "the others are swept";
}

TEST_F(Tool3DGeometryMapSyncTest, AFailedRemovalIsRaisedBehindTheRest)
{
    have(cloud, {L"a"});
    have(local, {L"b"});
    fs::permissions(loose(""), fs::perms::all);
    fs::permissions(folderOf(local), fs::perms::all);
    fs::permissions(folderOf(cloud),
                    fs::perms::all & ~(fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write));
    {
        const AsNobody nobody;
        try {
            Map::syncLibraries({});
            ADD_FAILURE();
        } catch (const fs::filesystem_error &error) {
            EXPECT_THAT(error.what(), HasSubstr("remove"));
            EXPECT_EQ(error.path1(), fileOf(cloud, L"a"));
            EXPECT_EQ(error.code(), std::errc::permission_denied);
        }
    }
    EXPECT_FALSE(fs::exists(fileOf(local, L"b")));
    EXPECT_TRUE(Map::isEmpty());
    fs::permissions(folderOf(cloud), fs::perms::owner_all);
}

TEST_F(Tool3DGeometryMapSyncTest, TheTemporaryFolderIsNoFolderOfALibrary)
{
    // A folder of its own for temporary files, so that the test sweeps nothing else.
    const Path temporary = folderOf(cloud);
    const std::string before = getenv("TMPDIR") ? getenv("TMPDIR") : "";
    setenv("TMPDIR", temporary.c_str(), 1);
    std::vector<std::string> messages;
    {
        const Asserts asserts;
        have(cloud, {L"a"});
        Map::syncLibraries({});
        messages = asserts.messages();
    }
    before.empty() ? unsetenv("TMPDIR") : setenv("TMPDIR", before.c_str(), 1);
    EXPECT_THAT(messages, ElementsAre("Don't test with $TEMP as we'll clear runtime 3DTool files (see ToolSLDGeometry) "
                                      "here instead of only persistent ones"));
}

TEST_F(Tool3DGeometryMapSyncTest, ManyIdsAreSweptInOneWalk)
{
    std::set<std::wstring> used;
    for (int i = 0; i < 2000; ++i) {
        const std::wstring id = std::to_wstring(i);
        std::ofstream(fileOf(local, id)) << "x";
        if (i % 2 == 0)
            used.insert(id);
    }
    Map::populateFromLibraryUrl(local);
    Map::syncLibraries({{local, used}});
    EXPECT_EQ(namesIn(folderOf(local)).size(), 1001U);
}

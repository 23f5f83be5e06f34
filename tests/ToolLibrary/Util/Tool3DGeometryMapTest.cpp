#include "ToolLibrary/Util/Tool3DGeometryMap.h"

#include "support/Asserts.h"
#include "support/GeometryTest.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

using namespace TestSupport;
using namespace Varn;
using testing::ElementsAre;
using testing::IsEmpty;

namespace fs = std::filesystem;

namespace {

using Tool3DGeometryMapTest = GeometryTest;

} // namespace

TEST_F(Tool3DGeometryMapTest, AnEmptyTableKnowsNothing)
{
    EXPECT_TRUE(Map::isEmpty());
    EXPECT_FALSE(Map::has(L"id"));
}

TEST_F(Tool3DGeometryMapTest, ANewIdGetsItsGeometryAndLocation)
{
    const auto geometry = makeGeometry(L"id");
    Map::emplace(L"id", geometry, local);
    EXPECT_FALSE(Map::isEmpty());
    EXPECT_TRUE(Map::has(L"id"));
    EXPECT_FALSE(Map::has(L"ID"));
    EXPECT_EQ(Map::getLoaded3DGeometry(L"id"), geometry);
    EXPECT_THAT(Map::getLocations(L"id"), ElementsAre(local));
}

TEST_F(Tool3DGeometryMapTest, TwoLibrariesOfOneFolderAreTwoLocationsOfOneFile)
{
    put(fileOf(local, L"id"));
    Map::populateFromLibraryUrl(local);
    Map::populateFromLibraryUrl(sameFolder);
    EXPECT_THAT(Map::getLocations(L"id"), ElementsAre(local, sameFolder));
}

TEST_F(Tool3DGeometryMapTest, AFolderThatWasWalkedIsWalkedAgainOnceItChanges)
{
    const auto longAgo = fs::file_time_type::clock::now() - std::chrono::hours(1);
    put(fileOf(local, L"first"));
    const fs::path folder = fs::path(fileOf(local, L"first")).parent_path();
    fs::last_write_time(folder, longAgo);
    Map::populateFromLibraryUrl(local);
    EXPECT_TRUE(Map::has(L"first"));

    put(fileOf(local, L"second"));
    fs::last_write_time(folder, longAgo); // as if nothing had changed: it is remembered
    Map::populateFromLibraryUrl(local);
    EXPECT_FALSE(Map::has(L"second"));

    fs::last_write_time(folder, longAgo + std::chrono::seconds(1));
    Map::populateFromLibraryUrl(local);
    EXPECT_TRUE(Map::has(L"second"));

    fs::remove(fileOf(local, L"second"));
    fs::last_write_time(folder, longAgo + std::chrono::seconds(1));
    Map::syncLibraries({{local, {L"first"}}});
    put(fileOf(local, L"third"));
    fs::last_write_time(folder, longAgo + std::chrono::seconds(1));
    Map::populateFromLibraryUrl(local); // a sync makes the table anew
    EXPECT_TRUE(Map::has(L"third"));
}

TEST_F(Tool3DGeometryMapTest, ALoadedGeometryStays)
{
    const auto first = makeGeometry(L"id", "first");
    Map::emplace(L"id", first, local);
    Map::emplace(L"id", makeGeometry(L"id", "second"), cloud);
    Map::emplace(L"id", placeholder(L"id"), mine);
    EXPECT_EQ(Map::getLoaded3DGeometry(L"id"), first);
    EXPECT_THAT(Map::getLocations(L"id"), ElementsAre(cloud, mine, local));
}

TEST_F(Tool3DGeometryMapTest, APlaceholderMakesRoomForAGeometry)
{
    Map::emplace(L"id", placeholder(L"id"), local);
    const auto geometry = makeGeometry(L"id");
    Map::emplace(L"id", geometry, cloud);
    EXPECT_EQ(Map::getLoaded3DGeometry(L"id"), geometry);
}

TEST_F(Tool3DGeometryMapTest, APlaceholderIsLoadedAtTheFirstQuestion)
{
    put(fileOf(local, L"id"));
    Map::populateFromLibraryUrl(local);
    const auto loaded = Map::getLoaded3DGeometry(L"id");
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->id(), L"id");
    EXPECT_EQ(loaded->solidBytes(), "solid");
    fs::remove(fileOf(local, L"id"));
    EXPECT_EQ(Map::getLoaded3DGeometry(L"id"), loaded) << "remembered";
}

TEST_F(Tool3DGeometryMapTest, AFileThatCannotBeReadIsNull)
{
    put(fileOf(local, L"broken"), "no solid");
    Map::populateFromLibraryUrl(local);
    Map::emplace(L"missing", placeholder(L"missing"), local);
    Map::emplace(L"../x", placeholder(L"../x"), local);
    for (const wchar_t *id : {L"broken", L"missing", L"../x"}) {
        EXPECT_EQ(Map::getLoaded3DGeometry(id), nullptr);
        EXPECT_TRUE(Map::has(id));
    }
    put(fileOf(local, L"missing"));
    EXPECT_TRUE(Map::getLoaded3DGeometry(L"missing")) << "the next question tries again";
}

TEST_F(Tool3DGeometryMapTest, NoOtherLocationIsTried)
{
    put(fileOf(local, L"id"));
    Map::emplace(L"id", placeholder(L"id"), cloud);
    Map::emplace(L"id", placeholder(L"id"), local);
    EXPECT_EQ(Map::getLoaded3DGeometry(L"id"), nullptr) << "the cloud comes first, and lacks the file";
}

TEST_F(Tool3DGeometryMapTest, ADocumentHasNoFileToRead)
{
    Map::emplace(L"id", placeholder(L"id"), document);
    const Asserts asserts;
    EXPECT_EQ(Map::getLoaded3DGeometry(L"id"), nullptr);
    put(fileOf(local, L"id"));
    Map::emplace(L"id", placeholder(L"id"), local);
    EXPECT_TRUE(Map::getLoaded3DGeometry(L"id")) << "the first library that keeps files";
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST_F(Tool3DGeometryMapTest, EveryIdOfAFolderIsLearnt)
{
    for (const std::wstring &id : geometryIds)
        put(fileOf(local, id));
    Map::populateFromLibraryUrl(local);
    for (const std::wstring &id : geometryIds) {
        EXPECT_TRUE(Map::has(id));
        EXPECT_TRUE(Map::getLoaded3DGeometry(id));
    }
}

TEST_F(Tool3DGeometryMapTest, WhatIsNoGeometryFileIsNotLearnt)
{
    const Path folder = folderOf(local);
    for (const char *name : {"a.json", "a.3dtool", "a.3DTOOL", "a.3DTool.bak", "a.3DTool~", "3DTool", ".3DTool",
                             "a\\b.3DTool", "a\nb.3DTool", "\xff.3DTool"})
        std::ofstream(folder / name) << "x";
    fs::create_directory(folder / "folder.3DTool");
    ASSERT_EQ(mkfifo((folder / "pipe.3DTool").c_str(), 0600), 0);
    fs::create_symlink("nowhere", folder / "dangling.3DTool");
    put(fileOf(otherFolder, L"below"));
    Map::populateFromLibraryUrl(local);
    EXPECT_TRUE(Map::isEmpty());
}

TEST_F(Tool3DGeometryMapTest, ALinkToAFileIsAFile)
{
    put(loose("elsewhere"));
    fs::create_symlink(loose("elsewhere"), fileOf(local, L"id"));
    Map::populateFromLibraryUrl(local);
    EXPECT_TRUE(Map::getLoaded3DGeometry(L"id"));
}

TEST_F(Tool3DGeometryMapTest, AFolderThatIsNotThereHasNoFiles)
{
    Map::populateFromLibraryUrl(Url(QStringLiteral("custom:///no/such/folder/a.json")));
    EXPECT_TRUE(Map::isEmpty());
}

TEST_F(Tool3DGeometryMapTest, ALearntFileDoesNotReplaceALoadedOne)
{
    const auto geometry = makeGeometry(L"id", "loaded");
    Map::emplace(L"id", geometry, document);
    put(fileOf(local, L"id"));
    Map::populateFromLibraryUrl(local);
    EXPECT_EQ(Map::getLoaded3DGeometry(L"id"), geometry);
    EXPECT_THAT(Map::getLocations(L"id"), ElementsAre(document, local));
}

TEST_F(Tool3DGeometryMapTest, AnIdAndAGeometryAreExpected)
{
    const Asserts asserts;
    EXPECT_FALSE(Map::has(L""));
    Map::emplace(L"", makeGeometry(L""), local);
    Map::emplace(L"id", nullptr, local);
    EXPECT_THAT(asserts.messages(), ElementsAre("EXPECTS:!id.empty()", "EXPECTS:!id.empty()", "EXPECTS:geometry"));
    EXPECT_TRUE(Map::isEmpty());
}

TEST_F(Tool3DGeometryMapTest, AnUnknownIdHasNoLocationsAndNoGeometry)
{
    const Asserts asserts;
    EXPECT_THAT(Map::getLocations(L"id"), IsEmpty());
    EXPECT_EQ(Map::getLoaded3DGeometry(L"id"), nullptr);
    EXPECT_THAT(asserts.messages(), ElementsAre("EXPECTS:has(id)", "ENSURES:!locations.empty()", "EXPECTS:has(id)"));
}

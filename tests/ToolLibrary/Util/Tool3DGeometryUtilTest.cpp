#include "ToolLibrary/Util/Tool3DGeometryUtil.h"

#include "platform/ox/TemporaryFolder.h"
#include "platform/utils/Messages.h"
#include "support/Asserts.h"
#include "support/Failure.h"
#include "support/GeometryTest.h"

#include <QDir>

#include <gmock/gmock.h>

#include <chrono>

#include <sys/stat.h>

using namespace TestSupport;
using namespace Varn::Tools;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace fs = std::filesystem;

namespace {

using Tool3DGeometryUtilTest = GeometryTest;

const std::string solidFile = geometryFile("solid");

constexpr const char *needsGeometry = "EXPECTS:requiresLocal3DGeometry(libraryUrl)";

} // namespace

TEST_F(Tool3DGeometryUtilTest, LocalCustomAndCloudNodesKeepTheirSolidsInFiles)
{
    struct Row {
        const char *url;
        bool answer;
    };
    const Row rows[] = {
        {"toollibraryroot://Local/a.json", true},
        {"custom://a.json", true},
        {"cloud://a.json", true},
        {"hub://p/a.hub", false},
        {"vendor://a.json", false},
        {"document://a", false},
        {"systemlibraryroot://Samples/a.json", false},
        {"/home/me/a.json", false},
    };
    for (const Row &row : rows)
        EXPECT_EQ(Tool3DGeometryUtil::requiresLocal3DGeometry(ToolLibraryUrl(QString::fromLatin1(row.url))), row.answer)
            << row.url;
}

TEST_F(Tool3DGeometryUtilTest, AFileLiesBesideTheLibraryUnderItsId)
{
    EXPECT_EQ(Util::extension, ".3DTool");
    for (const Url &url : {local, sameFolder, otherFolder, cloud, mine}) {
        EXPECT_EQ(Util::getLocal3DGeometryFolder(url), folderOf(url)) << url.url().toStdString();
        EXPECT_EQ(Util::getLocal3DGeometryPath(L"\u5de5\u5177", url), fileOf(url, L"\u5de5\u5177"));
    }
    EXPECT_EQ(Util::getLocal3DGeometryPath(L"x", local), Util::getLocal3DGeometryPath(L"x", sameFolder));
    EXPECT_EQ(Util::getLocal3DGeometryPath(L"id", local).native(), folderOf(local).native() + "/id.3DTool");
}

TEST_F(Tool3DGeometryUtilTest, TheFolderIsAbsoluteForARelativePath)
{
    EXPECT_EQ(Util::getLocal3DGeometryFolder(Url(QStringLiteral("custom://some/a.json"))), fs::current_path() / "some");
}

TEST_F(Tool3DGeometryUtilTest, TheFolderMayBearANameThatIsNoUtf8)
{
    const std::wstring folder = Varn::FileSystem::fromPath(loose("custom")) + L"/byte " + static_cast<wchar_t>(0xDCFF);
    const Url url("custom://" + QString::fromStdWString(folder + L"/a.json"));
    EXPECT_EQ(Util::getLocal3DGeometryFolder(url), Varn::FileSystem::toPath(folder));
}

TEST_F(Tool3DGeometryUtilTest, OtherLibrariesHaveNoFolder)
{
    const Asserts asserts;
    Util::getLocal3DGeometryFolder(hub);
    Util::getLocal3DGeometryPath(L"id", document);
    EXPECT_THAT(asserts.messages(), ElementsAre(needsGeometry, needsGeometry));
}

TEST_F(Tool3DGeometryUtilTest, NoIdLeadsOutOfTheFolder)
{
    for (const std::wstring &id : geometryIds) {
        EXPECT_TRUE(Util::isValidId(id));
        EXPECT_EQ(Util::getLocal3DGeometryPath(id, local).lexically_normal().parent_path(), folderOf(local));
    }
    put(folderOf(local) / ".3DTool");
    put(loose("local/x.3DTool"));
    for (const std::wstring &id : impossibleIds) {
        const std::string text = Varn::Messages::fromWideUnicodeToUTF8(id);
        EXPECT_FALSE(Util::isValidId(id)) << text;
        EXPECT_EQ(failureOf([&] { Util::getLocal3DGeometryPath(id, local); }),
                  "InvalidInput: No file can have the 3D geometry id " + text.substr(0, text.find('\0')));
        EXPECT_FALSE(Util::local3DGeometryExists(id, local)) << text;
        EXPECT_EQ(failureOf([&] { Util::load(id, local); }), "IOError: Unable to load local 3D geometry");
        EXPECT_EQ(failureOf([&] { Util::save(id, makeGeometry(id), local); }), "Exception: Unable to save 3D geometry");
        EXPECT_EQ(failureOf([&] { Util::export3DGeometryFromId(id, local, loose("out")); }),
                  "Exception: Cannot find 3D geometry");
        EXPECT_THAT(failureOf([&] { Util::import3DGeometry(id, local, loose("local/x.3DTool")); }),
                    StartsWith("InvalidInput: No file can have the 3D geometry id "));
        EXPECT_FALSE(Map::has(id)) << text;
    }
    EXPECT_FALSE(Util::isValidId(L""));
    EXPECT_FALSE(Util::local3DGeometryExists(L"../x", otherFolder));
    EXPECT_THAT(namesIn(folderOf(local)), ElementsAre(".3DTool", "sub"));
    EXPECT_FALSE(fs::exists(loose("out")));
}

TEST_F(Tool3DGeometryUtilTest, EveryIdIsSavedFoundAndLoaded)
{
    for (const std::wstring &id : geometryIds) {
        EXPECT_FALSE(Util::local3DGeometryExists(id, local));
        Util::save(id, makeGeometry(id, "first"), local);
        EXPECT_TRUE(Util::local3DGeometryExists(id, local));
        EXPECT_EQ(get(fileOf(local, id)), geometryFile("first"));
        Util::save(makeGeometry(id, "second"), sameFolder);
        const auto loaded = Util::load(id, local);
        EXPECT_EQ(loaded->id(), id);
        EXPECT_EQ(loaded->solidBytes(), "second");
    }
    EXPECT_EQ(namesIn(folderOf(local)).size(), std::size(geometryIds) + 1) << "one file each, and the folder sub";
    EXPECT_TRUE(Map::isEmpty());
}

TEST_F(Tool3DGeometryUtilTest, WhatCannotBeOpenedIsNotLoaded)
{
    fs::create_directory(fileOf(local, L"folder"));
    ASSERT_EQ(mkfifo(fileOf(local, L"pipe").c_str(), 0600), 0);
    fs::create_symlink("nowhere", fileOf(local, L"dangling"));
    fs::create_symlink(fileOf(local, L"circle"), fileOf(local, L"circle"));
    for (const wchar_t *id : {L"missing", L"folder", L"pipe", L"dangling", L"circle"})
        EXPECT_EQ(failureOf([&] { Util::load(id, local); }), "IOError: Unable to load local 3D geometry");
    EXPECT_EQ(failureOf([&] { Util::load(L"x", Url(QStringLiteral("custom:///no/such/folder/a.json"))); }),
              "IOError: Unable to load local 3D geometry");
}

TEST_F(Tool3DGeometryUtilTest, ABrokenFileSaysWhatIsWrong)
{
    put(fileOf(local, L"broken"), solidFile + "more");
    EXPECT_EQ(failureOf([&] { Util::load(L"broken", local); }),
              "IOError: 3D geometry broken: there is more behind the solid");
}

TEST_F(Tool3DGeometryUtilTest, AFileThatCannotBeWrittenIsAFailure)
{
    const Url nowhere(QStringLiteral("custom:///no/such/folder/a.json"));
    EXPECT_EQ(failureOf([&] { Util::save(makeGeometry(L"a"), nowhere); }), "Exception: Unable to save 3D geometry");
    fs::create_directory(fileOf(local, L"a"));
    EXPECT_EQ(failureOf([&] { Util::save(makeGeometry(L"a"), local); }), "Exception: Unable to save 3D geometry");
    EXPECT_EQ(failureOf([&] { Util::exportToolSLDGeometry(makeGeometry(L"a"), "/dev/full"); }),
              "Exception: Unable to save 3D geometry");
    EXPECT_THAT(namesIn(folderOf(local)), ElementsAre("a.3DTool", "sub")) << "nothing is left beside it";
}

TEST_F(Tool3DGeometryUtilTest, ASaveWantsAnIdAGeometryAndALibraryWithFiles)
{
    const Asserts asserts;
    EXPECT_EQ(failureOf([&] { Util::save(L"", makeGeometry(L"a"), local); }), "Exception: Unable to save 3D geometry");
    EXPECT_EQ(failureOf([&] { Util::save(L"a", nullptr, local); }), "Exception: Unable to save 3D geometry");
    EXPECT_EQ(failureOf([&] { Util::saveTemporary(nullptr); }), "Exception: Unable to save 3D geometry");
    EXPECT_EQ(failureOf([&] { Util::exportToolSLDGeometry(nullptr, ""); }), "Exception: Unable to save 3D geometry");
    EXPECT_THAT(asserts.messages(), ElementsAre("EXPECTS:!geometryId.empty()", "EXPECTS:geometry", "EXPECTS:geometry",
                                                "EXPECTS:geometry", "EXPECTS:!filePath.empty()"));
}

TEST_F(Tool3DGeometryUtilTest, ATemporaryFileLivesAsLongAsItsObject)
{
    auto file = Util::saveTemporary(makeGeometry(L"../a"));
    const Path path = Varn::FileSystem::toPath(file->filePath());
    EXPECT_EQ(path.extension(), ".3DTool");
    EXPECT_EQ(path.parent_path(), Varn::FileSystem::toPath(Ox::TemporaryFolder::systemFolder()));
    EXPECT_EQ(get(path), solidFile);
    file.reset();
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(Tool3DGeometryUtilTest, AToolsGeometryIsWrittenOnceAndKnown)
{
    const auto geometry = makeGeometry(L"id");
    EXPECT_TRUE(Util::saveToolGeometry(geometry, local));
    EXPECT_EQ(get(fileOf(local, L"id")), solidFile);
    EXPECT_EQ(Map::getLoaded3DGeometry(L"id"), geometry);
    EXPECT_FALSE(Util::saveToolGeometry(makeGeometry(L"id", "other"), sameFolder)) << "the folder has it";
    EXPECT_EQ(get(fileOf(local, L"id")), solidFile);
    EXPECT_THAT(Map::getLocations(L"id"), ElementsAre(local));
    EXPECT_TRUE(Util::saveToolGeometry(geometry, otherFolder));
    EXPECT_THAT(Map::getLocations(L"id"), ElementsAre(local, otherFolder));
}

TEST_F(Tool3DGeometryUtilTest, ALibraryWithoutFilesTakesNoGeometry)
{
    EXPECT_FALSE(Util::saveToolGeometry(makeGeometry(L"id"), hub));
    EXPECT_FALSE(Util::saveToolGeometry(makeGeometry(L"id"), document));
    EXPECT_TRUE(Map::isEmpty());
}

TEST_F(Tool3DGeometryUtilTest, AnExportIsACopyOfNow)
{
    put(fileOf(local, L"id"));
    fs::last_write_time(fileOf(local, L"id"), fs::file_time_type::clock::now() - std::chrono::hours(100));
    put(loose("out.3DTool"), "old");
    Util::export3DGeometryFromId(L"id", local, loose("out.3DTool"));
    EXPECT_EQ(get(loose("out.3DTool")), solidFile);
    EXPECT_LT(fs::file_time_type::clock::now() - fs::last_write_time(loose("out.3DTool")), std::chrono::hours(1));
}

TEST_F(Tool3DGeometryUtilTest, AnExportOntoItselfKeepsTheFile)
{
    put(fileOf(local, L"id"));
    Util::export3DGeometryFromId(L"id", local, fileOf(local, L"id"));
    EXPECT_EQ(get(fileOf(local, L"id")), solidFile);
}

TEST_F(Tool3DGeometryUtilTest, AnExportThatFailsSaysWhere)
{
    EXPECT_EQ(failureOf([&] { Util::export3DGeometryFromId(L"id", local, loose("out")); }),
              "Exception: Cannot find 3D geometry");
    put(fileOf(local, L"id"));
    try {
        Util::export3DGeometryFromId(L"id", local, loose("no/such/out"));
        FAIL();
    } catch (const fs::filesystem_error &error) {
        EXPECT_THAT(error.what(), HasSubstr("copy"));
        EXPECT_EQ(error.path1(), fileOf(local, L"id"));
        EXPECT_EQ(error.path2(), loose("no/such/out"));
        EXPECT_EQ(error.code(), std::errc::no_such_file_or_directory);
    }
    fs::create_directory(fileOf(local, L"folder"));
    EXPECT_THAT(failureOf([&] { Util::export3DGeometryFromId(L"folder", local, loose("out")); }), HasSubstr("copy"));
    EXPECT_FALSE(fs::exists(loose("out")));
}

TEST_F(Tool3DGeometryUtilTest, AnExportOfAGeometryIsItsFile)
{
    put(loose("out"), "old and longer than what comes, by far, so that a rest of it would show behind the new one");
    Util::exportToolSLDGeometry(makeGeometry(L"id"), loose("out"));
    EXPECT_EQ(get(loose("out")), solidFile);
}

TEST_F(Tool3DGeometryUtilTest, AnImportCopiesTheFileAndLetsTheMapKnow)
{
    put(loose("in.3DTool"), std::string(200'000, 'x'));
    Util::import3DGeometry(L"id", local, loose("in.3DTool"));
    EXPECT_EQ(get(fileOf(local, L"id")), std::string(200'000, 'x'));
    EXPECT_THAT(Map::getLocations(L"id"), ElementsAre(local));
}

TEST_F(Tool3DGeometryUtilTest, AnImportFromAFolderTakesTheFileOfThatId)
{
    put(loose("in/id.3DTool"));
    put(loose("in/other.3DTool"), "other");
    Util::import3DGeometry(L"id", local, loose("in"));
    EXPECT_EQ(get(fileOf(local, L"id")), solidFile);
    Util::import3DGeometry(L"id", document, loose("in"));
    EXPECT_THAT(failureOf([&] { Util::import3DGeometry(L"missing", local, loose("in")); }), HasSubstr("copy_file"));
}

TEST_F(Tool3DGeometryUtilTest, AnImportKeepsAFileThatIsThere)
{
    put(fileOf(local, L"id"), "mine");
    put(loose("in.3DTool"));
    Util::import3DGeometry(L"id", local, loose("in.3DTool"));
    EXPECT_EQ(get(fileOf(local, L"id")), "mine");
    EXPECT_TRUE(Map::has(L"id"));
}

TEST_F(Tool3DGeometryUtilTest, AnImportThatFailsSaysWhere)
{
    try {
        Util::import3DGeometry(L"id", local, loose("missing"));
        FAIL();
    } catch (const fs::filesystem_error &error) {
        EXPECT_THAT(error.what(), HasSubstr("copy_file"));
        EXPECT_EQ(error.path1(), loose("missing"));
        EXPECT_EQ(error.code(), std::errc::no_such_file_or_directory);
    }
    EXPECT_TRUE(Map::isEmpty());
    EXPECT_THAT(namesIn(folderOf(local)), ElementsAre("sub"));
}

TEST_F(Tool3DGeometryUtilTest, AnImportIntoADocumentGoesIntoTheMapAlone)
{
    put(loose("in.3DTool"));
    Util::import3DGeometry(L"id", document, loose("in.3DTool"));
    ASSERT_TRUE(Map::has(L"id"));
    EXPECT_EQ(Map::getLoaded3DGeometry(L"id")->solidBytes(), "solid");
    Util::import3DGeometry(L"id", otherDocument, loose("missing"));
    EXPECT_THAT(Map::getLocations(L"id"), ElementsAre(document)) << "an id that is known is left alone";
    EXPECT_EQ(failureOf([&] { Util::import3DGeometry(L"b", document, loose("missing")); }),
              "IOError: Unable to load local 3D geometry");
    put(loose("broken"), "x");
    EXPECT_EQ(failureOf([&] { Util::import3DGeometry(L"b", document, loose("broken")); }),
              "IOError: 3D geometry b: this is no 3D geometry file");
    EXPECT_FALSE(Map::has(L"b"));
}

TEST_F(Tool3DGeometryUtilTest, ACopyOfAFileWantsAnIdAndAPath)
{
    const Asserts asserts;
    failureOf([&] { Util::export3DGeometryFromId(L"", local, ""); });
    failureOf([&] { Util::import3DGeometry(L"", local, ""); });
    EXPECT_THAT(asserts.messages(), ElementsAre("EXPECTS:!geometryId.empty()", "EXPECTS:!outputPath.empty()",
                                                "EXPECTS:!geometryId.empty()", "EXPECTS:!importPath.empty()"));
}

TEST_F(Tool3DGeometryUtilTest, ACopyIsRequiredBetweenFolders)
{
    const Url custom(QStringLiteral("custom://") + QString::fromStdString((folderOf(local) / "c.json").string()));
    const Url sameCustom(QStringLiteral("custom://") +
                         QString::fromStdString((folderOf(local) / "sub/../d.json").string()));
    const Url cloudToo(QStringLiteral("cloud://team/b.json"));
    const Url otherCloud(QStringLiteral("cloud://b.json"));
    struct Row {
        const char *what;
        Url origin, target;
        bool required;
    };
    const Row rows[] = {
        {"one library", local, local, false},
        {"two of one folder", local, sameFolder, false},
        {"a folder below", local, otherFolder, true},
        {"a folder above", otherFolder, local, true},
        {"cloud, one folder", cloud, cloudToo, false},
        {"cloud, two folders", cloud, otherCloud, true},
        {"custom, one folder", custom, sameCustom, false},
        {"custom, two folders", custom, mine, true},
        {"local and custom of one folder", local, custom, true},
        {"local to cloud", local, cloud, true},
        {"document to local", document, local, true},
        {"local to document", local, document, true},
        {"documents", document, otherDocument, false},
        {"one document", document, document, false},
    };
    const Asserts asserts;
    for (const Row &row : rows)
        EXPECT_EQ(Util::is3DGeometryCopyRequired(row.origin, row.target), row.required) << row.what;
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST_F(Tool3DGeometryUtilTest, OneOriginInTheFolderIsEnough)
{
    EXPECT_FALSE(Util::is3DGeometryCopyRequired(std::set{cloud, otherFolder, sameFolder}, local));
    EXPECT_TRUE(Util::is3DGeometryCopyRequired(std::set{cloud, otherFolder, mine}, local));
    EXPECT_FALSE(Util::is3DGeometryCopyRequired(std::set{local, otherDocument}, document));
}

TEST_F(Tool3DGeometryUtilTest, ACopyWantsLibrariesThatHaveGeometry)
{
    const Asserts asserts;
    EXPECT_TRUE(Util::is3DGeometryCopyRequired(std::set<Url>(), local));
    Util::is3DGeometryCopyRequired(hub, hub);
    EXPECT_THAT(asserts.messages(),
                ElementsAre("EXPECTS:!originLibraries.empty()",
                            "EXPECTS:requiresLocal3DGeometry(originLibrary) || originLibrary.isDocumentLibrary()",
                            "EXPECTS:requiresLocal3DGeometry(targetLibrary) || targetLibrary.isDocumentLibrary()",
                            "Should have different library types at this point"));
}

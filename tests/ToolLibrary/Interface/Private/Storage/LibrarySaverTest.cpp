#include "ToolLibrary/Interface/Private/Storage/LibrarySaver.h"
#include "ToolLibrary/IO/ZipToolFormat.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidjsonToolLibrary.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSourceLoader.h"
#include "platform/tool/Tool.h"
#include "platform/utils/Abortable.h"
#include "platform/utils/FileSystem.h"
#include "support/Asserts.h"
#include "support/CloudEvents.h"
#include "support/Failure.h"
#include "support/FileContent.h"
#include "support/LibraryFile.h"
#include "support/LibraryGenerator.h"
#include "support/TestPaths.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using namespace Varn::ToolLibraries;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Varn::AbortableImpl;
using Varn::Tools::ToolLibraryUrl;
using Varn::Tools::ZipToolFormat;

namespace {

const std::string text = libraryText({toolText(2, R"("unit":"inches")"), toolText(1)});
const ToolLibraryUrl localUrl("toollibraryroot://Local/a.json");
const ToolLibraryUrl documentUrl("document://11111111-2222-4333-8444-000000000009");

std::shared_ptr<RapidjsonToolLibrary> libraryOf(const std::string &json)
{
    return RapidjsonToolLibrary::fromString(json, AbortableImpl());
}

std::string failureOfSave(const ToolLibraryUrl &url, const QString &path)
{
    return failureOf([&] { LibrarySaver::saveLibrary(url, path, *libraryOf(text)); });
}

std::shared_ptr<ToolSource> load(const QString &path)
{
    return ToolSourceLoader::load(ToolLibraryLocator::fromFilePath(path.toStdWString()), AbortableImpl());
}

void putArchive(const QString &path)
{
    ZipToolFormat archive(path);
    EXPECT_TRUE(archive.addFile("tools.json", QByteArray::fromStdString(text)));
    EXPECT_TRUE(archive.addFile("a.3DTool", "solid"));
    EXPECT_TRUE(archive.write());
}

} // namespace

TEST(LibrarySaver, WhatIsSavedLoadsAgain)
{
    const TestPaths paths;
    for (const char16_t *name :
         {u"a.json", u"a.tools", u".json", u"W\u00e4rkzeug \U0001F6E0.tools", u"a.zetlib.json"}) {
        LibrarySaver::saveLibrary(localUrl, paths.loose(name), *libraryOf(text));
        const auto source = load(paths.loose(name));
        EXPECT_THAT(source->getToolIds(), ElementsAre(ToolId(guidOf(2)), ToolId(guidOf(1))));
        EXPECT_EQ(source->getVersion(), 36);
        EXPECT_THAT(source->toJson(), testing::HasSubstr(R"("unit":"inches")"));
    }
}

TEST(LibrarySaver, AnythingElseIsNoFormatOfALibrary)
{
    const TestPaths paths;
    writeFile(paths.loose(u"old.txt"), "old");
    for (const char16_t *name :
         {u"a.JSON", u"a.Tools", u"old.txt", u"a", u"", u"a.json ", u"a.zip", u"a.tsv", u"a.json/"})
        EXPECT_EQ(failureOfSave(localUrl, paths.loose(name)), "UnknownError: Invalid file format");
    EXPECT_EQ(failureOfSave(localUrl, QString()), "UnknownError: Invalid file format");
    EXPECT_THAT(filesBeside(paths.loose(u"old.txt")), ElementsAre("old.txt"));
    EXPECT_EQ(contentOf(paths.loose(u"old.txt")), "old");
}

TEST(LibrarySaver, AHubLibraryHasNoFile)
{
    const TestPaths paths;
    const Asserts asserts;
    EXPECT_EQ(failureOfSave(localUrl, paths.loose(u"x.hub")), "UnknownError: Invalid file format");
    EXPECT_THAT(asserts.messages(), ElementsAre("EXPECTS:!fileName.endsWith(ToolLibraryUrl::libraryHubExtension)"));
}

TEST(LibrarySaver, FormatsWithoutAWriterTouchNoFile)
{
    const TestPaths paths;
    writeFile(paths.loose(u"old.csv"), "old");
    const Asserts asserts;
    for (const char16_t *name : {u"old.csv", u"new.csv", u"new.zetlib"})
        EXPECT_EQ(failureOfSave(localUrl, paths.loose(name)), "NotSupportedError: Not yet supported");
    EXPECT_THAT(filesBeside(paths.loose(u"old.csv")), ElementsAre("old.csv"));
    EXPECT_EQ(contentOf(paths.loose(u"old.csv")), "old");
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(LibrarySaver, AFileMayBearANameThatIsNoUtf8)
{
    const TestPaths paths;
    for (const wchar_t *extension : {L".json", L".tools"}) {
        const std::wstring path =
            Varn::FileSystem::fromQString(paths.loose(u"byte ")) + static_cast<wchar_t>(0xDCFF) + extension;
        const QString name = QString::fromStdWString(path);
        EXPECT_EQ(failureOfSave(ToolLibraryUrl(name, ToolLibraryUrl::Custom), name), "none");
        EXPECT_TRUE(Varn::FileSystem::isFile(path));
        EXPECT_FALSE(Varn::FileSystem::remove(path)); // the temporary folder does not find every name
    }
}

TEST(LibrarySaver, AFailureSaysWhatFailed)
{
    const TestPaths paths;
    EXPECT_EQ(failureOfSave(localUrl, paths.loose(u"none/a.json")),
              "IOError: Cannot open JSON file for writing: " + paths.loose(u"none/a.json").toStdString());
    EXPECT_EQ(failureOfSave(localUrl, paths.loose(u"none/a.tools")), "IOError: Failed to export library");
    QDir().mkpath(paths.loose(u"folder.tools"));
    EXPECT_EQ(failureOfSave(localUrl, paths.loose(u"folder.tools")), "IOError: Failed to export library");
}

TEST(LibrarySaver, ToolsThatLeaveADocumentGetNewGuids)
{
    const TestPaths paths;
    const QString path = paths.loose(u"a.json");
    const auto library = libraryOf(libraryText(
        {toolText(2, R"("_document_tool_id":1,"_document_tool_reference_guid":"r","number":2)"), toolText(1)}));
    for (const ToolLibraryUrl &url : {documentUrl, ToolLibraryUrl(documentUrl.url() + "/Setup 1")})
        for (const QString &file : {path, paths.loose(u"a.tools")}) {
            LibrarySaver::saveLibrary(url, file, *library);
            const auto saved = load(file);
            ASSERT_EQ(saved->numberOfTools(), 2u);
            for (const ToolId &id : saved->getToolIds()) {
                EXPECT_NE(id, ToolId(guidOf(1)));
                EXPECT_NE(id, ToolId(guidOf(2)));
            }
            const std::string first = (*saved->get(saved->getToolIds().front()))->toJson();
            EXPECT_THAT(first, testing::HasSubstr("\"number\":2")) << "the order stays";
            EXPECT_THAT(first, testing::Not(testing::HasSubstr("_document")));
        }
    LibrarySaver::saveLibrary(localUrl, path, *library);
    EXPECT_THAT(load(path)->getToolIds(), ElementsAre(ToolId(guidOf(2)), ToolId(guidOf(1)))) << "others keep theirs";
}

TEST(LibrarySaver, OnlyItsOwnArchiveKeepsTheGeometries)
{
    const TestPaths paths;
    QDir().mkpath(paths.local(u"Local"));
    const ToolLibraryUrl url("toollibraryroot://Local/a.tools");
    const QString own = paths.local(u"Local/a.tools");
    putArchive(own);
    LibrarySaver::saveLibrary(url, own, *libraryOf(text));
    EXPECT_THAT(ZipToolFormat(own).getFileNames(), UnorderedElementsAre("tools.json", "a.3DTool"));
    LibrarySaver::saveLibrary(url, paths.local(u"Local/../Local/a.tools"), *libraryOf(text));
    EXPECT_THAT(ZipToolFormat(own).getFileNames(), testing::SizeIs(2)) << "the same file by another path";
    const QString foreign = paths.loose(u"foreign.tools");
    putArchive(foreign);
    LibrarySaver::saveLibrary(url, foreign, *libraryOf(text));
    EXPECT_THAT(ZipToolFormat(foreign).getFileNames(), ElementsAre("tools.json"));
    EXPECT_THAT(ZipToolFormat(own).getFileNames(), testing::SizeIs(2));
    putArchive(foreign);
    LibrarySaver::saveLibrary(documentUrl, foreign, *libraryOf(text));
    EXPECT_THAT(ZipToolFormat(foreign).getFileNames(), ElementsAre("tools.json")) << "a document has no file";
}

TEST(LibrarySaver, ALibraryOfTheCloudIsAnnounced)
{
    const TestPaths paths;
    QDir().mkpath(paths.cloud(u"folder"));
    const CloudEvents events(paths.cloud(u"").toStdWString());
    const ToolLibraryUrl url("cloud://folder/a.json");
    LibrarySaver::saveLibrary(url, url.fullFilePath(), *libraryOf(text));
    LibrarySaver::saveLibrary(localUrl, paths.loose(u"a.json"), *libraryOf(text));
    EXPECT_THAT(events.texts(), ElementsAre("uploaded " + url.fullFilePath().toStdString()));
}

TEST(LibrarySaver, AGeneratedLibrarySavesToTheBytesOfTheLongWay)
{
    const TestPaths paths;
    const LibraryGenerator generator({"--count", "300", "--seed", "3"});
    const auto library = libraryOf(generator.text());
    LibrarySaver::saveLibrary(localUrl, paths.loose(u"a.json"), *library);
    const std::string expected = QJsonDocument::fromVariant(library->toQVariantMap()).toJson().toStdString();
    EXPECT_TRUE(contentOf(paths.loose(u"a.json")) == expected);
    LibrarySaver::saveLibrary(localUrl, paths.loose(u"a.tools"), *library);
    QByteArray document;
    ASSERT_TRUE(ZipToolFormat(paths.loose(u"a.tools")).getData("tools.json", document));
    EXPECT_TRUE(document.toStdString() == expected);
    EXPECT_EQ(load(paths.loose(u"a.tools"))->toJson(), load(paths.loose(u"a.json"))->toJson());
}

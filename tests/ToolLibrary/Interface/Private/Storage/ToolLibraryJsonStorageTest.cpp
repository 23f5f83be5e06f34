#include "ToolLibrary/Interface/Private/Storage/ToolLibraryJsonStorage.h"
#include "ToolLibrary/IO/ZipToolFormat.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/GuidUtil.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidjsonToolLibrary.h"
#include "platform/core/CloudLibraries.h"
#include "platform/utils/Abortable.h"
#include "support/Asserts.h"
#include "support/CloudEvents.h"
#include "support/Failure.h"
#include "support/FileContent.h"
#include "support/LibraryFile.h"
#include "support/Rights.h"
#include "support/TestPaths.h"

#include <QJsonDocument>

#include <gmock/gmock.h>

using namespace TestSupport;
using namespace Varn::Tools;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using Varn::AbortableImpl;
using Varn::ToolLibraries::ExportableLibrary;
using Varn::ToolLibraries::RapidjsonToolLibrary;
using OtherEntries = ToolLibraryJsonStorage::OtherEntries;

namespace {

const std::string text = libraryText({toolText(2, R"("unit":"inches","number":7)"), toolText(1)});

std::shared_ptr<RapidjsonToolLibrary> libraryOf(const std::string &json)
{
    return RapidjsonToolLibrary::fromString(json, AbortableImpl());
}

QVariantMap mapOf(const std::string &json)
{
    return QJsonDocument::fromJson(QByteArray::fromStdString(json)).toVariant().toMap();
}

std::string indented(const std::string &json)
{
    return QJsonDocument::fromVariant(mapOf(json)).toJson(QJsonDocument::Indented).toStdString();
}

/// A library that is no document in memory.
class OtherLibrary : public ExportableLibrary
{
public:
    explicit OtherLibrary(const std::string &json) : m_map(mapOf(json)) {}
    QMap<QString, QVariant> toQVariantMap() const override { return m_map; }

private:
    QVariantMap m_map;
};

class StorageTest : public testing::Test
{
protected:
    StorageTest() { QDir().mkpath(m_paths.local(u"Local")); }

    static std::string documentIn(const QString &path)
    {
        QByteArray bytes;
        return ZipToolFormat(path).getData("tools.json", bytes) ? bytes.toStdString() : "no document";
    }

    void putArchive(const QString &path) const
    {
        ZipToolFormat archive(path);
        ASSERT_TRUE(archive.addFile("tools.json", "old"));
        ASSERT_TRUE(archive.addFile("a.3DTool", "solid"));
        ASSERT_TRUE(archive.addFile("notes/read me.txt", "note"));
        ASSERT_TRUE(archive.write());
    }

    TestPaths m_paths;
    const QString m_json = m_paths.local(u"Local/a.json");
    const QString m_tools = m_paths.local(u"Local/a.tools");
    const ToolLibraryUrl m_jsonUrl{"toollibraryroot://Local/a.json"};
    const ToolLibraryUrl m_toolsUrl{"toollibraryroot://Local/a.tools"};
};

} // namespace

TEST_F(StorageTest, AJsonLibraryIsTheIndentedDocument)
{
    EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(m_jsonUrl, mapOf(text), false));
    EXPECT_EQ(contentOf(m_json), indented(text));
    EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(m_jsonUrl, {}, false));
    EXPECT_EQ(contentOf(m_json), "{\n}\n");
    EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(m_jsonUrl, *libraryOf(text), false));
    EXPECT_EQ(contentOf(m_json), indented(text));
    EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(m_jsonUrl, OtherLibrary(text), false));
    EXPECT_EQ(contentOf(m_json), indented(text));
    EXPECT_THAT(filesBeside(m_json), ElementsAre("a.json"));
}

TEST_F(StorageTest, AToolsLibraryHoldsTheSameDocument)
{
    EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(m_toolsUrl, mapOf(text), false));
    EXPECT_EQ(documentIn(m_tools), indented(text));
    EXPECT_THAT(ZipToolFormat(m_tools).getFileNames(), ElementsAre("tools.json"));
    const std::string archive = contentOf(m_tools);
    QFile::remove(m_tools);
    EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(m_toolsUrl, *libraryOf(text), false));
    EXPECT_EQ(contentOf(m_tools), archive);
    EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(m_toolsUrl, OtherLibrary(text), false));
    EXPECT_EQ(documentIn(m_tools), indented(text));
    EXPECT_THAT(filesBeside(m_tools), ElementsAre("a.tools"));
}

TEST_F(StorageTest, TheOtherEntriesOfAnArchiveStayUnlessItIsAnotherLibrarys)
{
    for (const std::string &json : {text, libraryText({})}) {
        putArchive(m_tools);
        EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(m_toolsUrl, *libraryOf(json), false));
        EXPECT_THAT(ZipToolFormat(m_tools).getFileNames(),
                    testing::UnorderedElementsAre("a.3DTool", "notes/read me.txt", "tools.json"));
        EXPECT_EQ(documentIn(m_tools), indented(json));
        QByteArray solid;
        EXPECT_TRUE(ZipToolFormat(m_tools).getData("a.3DTool", solid));
        EXPECT_EQ(solid, "solid");
    }
    EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(m_toolsUrl, mapOf(text), false));
    EXPECT_THAT(ZipToolFormat(m_tools).getFileNames(), testing::SizeIs(3)) << "a map too";
    EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(m_toolsUrl, *libraryOf(text), false, OtherEntries::Drop));
    EXPECT_THAT(ZipToolFormat(m_tools).getFileNames(), ElementsAre("tools.json"));
}

TEST_F(StorageTest, AFileThatIsNoArchiveBecomesOne)
{
    for (const std::string &old : {text, std::string(), std::string("PK")}) {
        writeFile(m_tools, old);
        EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(m_toolsUrl, *libraryOf(text), false));
        EXPECT_EQ(documentIn(m_tools), indented(text));
    }
}

TEST_F(StorageTest, AnArchiveThatCannotBeReadIsNotReplaced)
{
    putArchive(m_tools);
    const std::string good = contentOf(m_tools);
    writeFile(m_tools, good.substr(0, good.size() - 1));
    EXPECT_FALSE(ToolLibraryJsonStorage::saveLibrary(m_toolsUrl, *libraryOf(text), false)) << "its geometries would go";
    EXPECT_EQ(contentOf(m_tools), good.substr(0, good.size() - 1));
    EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(m_toolsUrl, *libraryOf(text), false, OtherEntries::Drop));
    EXPECT_EQ(documentIn(m_tools), indented(text));
}

TEST_F(StorageTest, AnArchiveThatCannotBeLookedIntoIsNotReplaced)
{
    putArchive(m_tools);
    const std::string before = contentOf(m_tools);
    letEveryoneIn({m_paths.loose(u""), m_paths.local(u""), m_paths.local(u"Local")});
    {
        const AsNobody nobody({m_tools});
        ASSERT_EQ(chmod(m_tools.toStdString().c_str(), 0200), 0);
        EXPECT_FALSE(ToolLibraryJsonStorage::saveLibrary(m_toolsUrl, *libraryOf(text), false));
        ASSERT_EQ(chmod(m_tools.toStdString().c_str(), 0600), 0);
    }
    EXPECT_EQ(contentOf(m_tools), before);
}

TEST_F(StorageTest, AnArchiveGetsItsCompanionsAtTheSameMoment)
{
    putArchive(m_tools);
    EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(m_toolsUrl, *libraryOf(text), false, OtherEntries::Keep,
                                                    {{"a.3DTool", "better"}, {"b.3DTool", "new"}}));
    EXPECT_THAT(ZipToolFormat(m_tools).getFileNames(),
                testing::UnorderedElementsAre("a.3DTool", "b.3DTool", "notes/read me.txt", "tools.json"));
    QByteArray solid;
    EXPECT_TRUE(ZipToolFormat(m_tools).getData("a.3DTool", solid));
    EXPECT_EQ(solid, "better");
    EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(m_toolsUrl, *libraryOf(text), false, OtherEntries::Drop,
                                                    {{"b.3DTool", "new"}}));
    EXPECT_THAT(ZipToolFormat(m_tools).getFileNames(), ElementsAre("b.3DTool", "tools.json"));
    const std::string before = contentOf(m_tools);
    EXPECT_FALSE(ToolLibraryJsonStorage::saveLibrary(m_toolsUrl, *libraryOf(text), false, OtherEntries::Drop,
                                                     {{"../b.3DTool", "new"}}));
    EXPECT_EQ(contentOf(m_tools), before);
}

TEST_F(StorageTest, AReadOnlyArchiveIsWrittenAndAReadOnlyDocumentIsNot)
{
    putArchive(m_tools);
    writeFile(m_json, "old");
    letEveryoneIn({m_paths.loose(u""), m_paths.local(u""), m_paths.local(u"Local")});
    makeReadOnly(m_json);
    makeReadOnly(m_tools);
    const AsNobody nobody({m_json, m_tools});
    EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(m_toolsUrl, *libraryOf(text), false));
    EXPECT_EQ(documentIn(m_tools), indented(text));
    EXPECT_TRUE(QFileInfo(m_tools).permissions() & QFileDevice::WriteOwner);
    EXPECT_EQ(failureOf([&] { ToolLibraryJsonStorage::saveLibrary(m_jsonUrl, *libraryOf(text), false); }),
              "IOError: Cannot open JSON file for writing: " + m_json.toStdString());
    EXPECT_EQ(contentOf(m_json), "old");
}

TEST_F(StorageTest, AFailedSaveLeavesTheOldFile)
{
    std::vector<std::string> tools;
    for (unsigned i = 1; i <= 2000; ++i)
        tools.push_back(toolText(i));
    const auto large = libraryOf(libraryText(tools));
    writeFile(m_json, "old");
    putArchive(m_tools);
    const std::string archive = contentOf(m_tools);
    std::string failure;
    bool saved = true;
    {
        const FullDisk disk(2000);
        failure = failureOf([&] { ToolLibraryJsonStorage::saveLibrary(m_jsonUrl, *large, false); });
        saved = ToolLibraryJsonStorage::saveLibrary(m_toolsUrl, *large, false);
    }
    EXPECT_EQ(failure, "IOError: Could not write data to JSON file: " + m_json.toStdString());
    EXPECT_FALSE(saved);
    EXPECT_EQ(contentOf(m_json), "old");
    EXPECT_EQ(contentOf(m_tools), archive);
    EXPECT_THAT(filesBeside(m_json), ElementsAre("a.json", "a.tools"));
}

TEST_F(StorageTest, AMissingFolderIsAFailure)
{
    const ToolLibraryUrl json("toollibraryroot://Local/none/a.json");
    const ToolLibraryUrl tools("toollibraryroot://Local/none/a.tools");
    EXPECT_EQ(failureOf([&] { ToolLibraryJsonStorage::saveLibrary(json, mapOf(text), false); }),
              "IOError: Cannot open JSON file for writing: " + m_paths.local(u"Local/none/a.json").toStdString());
    EXPECT_FALSE(ToolLibraryJsonStorage::saveLibrary(tools, mapOf(text), false));
}

TEST_F(StorageTest, AnOlderFormMovesOnAndItsFileGoes)
{
    const QString old = m_paths.local(u"Local/a.zetlib");
    writeFile(old, "old");
    EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(ToolLibraryUrl("toollibraryroot://Local/a.zetlib"),
                                                    *libraryOf(text), false));
    EXPECT_THAT(filesBeside(m_json), ElementsAre("a.json"));
    EXPECT_EQ(contentOf(m_json), indented(text));
    EXPECT_TRUE(
        ToolLibraryJsonStorage::saveLibrary(ToolLibraryUrl("toollibraryroot://Local/a.zetlib"), mapOf(text), false))
        << "no old file is fine";
}

TEST_F(StorageTest, AnOlderFormThatTheNewNameLeadsToIsTheLibrary)
{
    const QString old = m_paths.local(u"Local/a.zetlib");
    const ToolLibraryUrl url("toollibraryroot://Local/a.zetlib");
    writeFile(old, "old");
    ASSERT_TRUE(QFile::link("a.zetlib", m_json));
    EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(url, *libraryOf(text), false));
    EXPECT_EQ(contentOf(m_json), indented(text)) << "its file was removed";
    QFile::remove(m_json);
    QFile::remove(old);
    writeFile(m_json, "old");
    ASSERT_TRUE(QFile::link("a.json", old));
    EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(url, *libraryOf(text), false));
    EXPECT_EQ(contentOf(m_json), indented(text));
    EXPECT_THAT(filesBeside(m_json), ElementsAre("a.json")) << "a link to the new file goes";
}

TEST_F(StorageTest, AFailedUpgradeLeavesTheOldFile)
{
    const QString old = m_paths.local(u"Local/a.zetlib");
    writeFile(old, "old");
    QDir().mkpath(m_json); // a folder in the way
    EXPECT_EQ(failureOf([&] {
                  ToolLibraryJsonStorage::saveLibrary(ToolLibraryUrl("toollibraryroot://Local/a.zetlib"), mapOf(text),
                                                      false);
              }),
              "IOError: Cannot open JSON file for writing: " + m_json.toStdString());
    EXPECT_EQ(contentOf(old), "old");
}

TEST_F(StorageTest, AUrlOfNoSuchFileIsRefused)
{
    for (const char *url :
         {"hub://folder/a.hub", "toollibraryroot://Local/a.txt", "toollibraryroot://Local", "", "vendor://a"}) {
        const Asserts asserts;
        EXPECT_FALSE(ToolLibraryJsonStorage::saveLibrary(ToolLibraryUrl(url), mapOf(text), false)) << url;
        EXPECT_FALSE(ToolLibraryJsonStorage::saveLibrary(ToolLibraryUrl(url), *libraryOf(text), false)) << url;
        EXPECT_THAT(asserts.messages(), ElementsAre("Restricted flow", "Restricted flow")) << url;
    }
    EXPECT_THAT(filesBeside(m_json), IsEmpty());
}

TEST_F(StorageTest, ToolsThatLeaveADocumentGetNewGuidsInTheirOrder)
{
    const std::string json = libraryText(
        {toolText(2, R"("_document_tool_id":1,"_document_tool_reference_guid":"r","n":2)"), toolText(1, R"("n":1)")});
    const auto library = libraryOf(json);
    const auto saved = [&] {
        const QVariantList tools = mapOf(contentOf(m_json)).value("data").toList();
        EXPECT_EQ(tools.size(), 2);
        std::vector<std::string> guids;
        for (const QVariant &tool : tools) {
            guids.push_back(tool.toMap().value("guid").toString().toStdString());
            EXPECT_EQ(tool.toMap().keys(), QStringList({"guid", "n"}));
        }
        EXPECT_EQ(tools[0].toMap().value("n"), 2);
        return guids;
    };
    ASSERT_TRUE(ToolLibraryJsonStorage::saveLibrary(m_jsonUrl, *library, true));
    const std::vector<std::string> first = saved();
    ASSERT_TRUE(ToolLibraryJsonStorage::saveLibrary(m_jsonUrl, mapOf(json), true));
    const std::vector<std::string> second = saved();
    ASSERT_TRUE(ToolLibraryJsonStorage::saveLibrary(m_jsonUrl, OtherLibrary(json), true));
    const std::vector<std::string> third = saved();
    std::set<std::string> all{guidOf(1), guidOf(2)};
    for (const auto &guids : {first, second, third})
        all.insert(guids.begin(), guids.end());
    EXPECT_EQ(all.size(), 8u) << "no tool keeps its GUID, and no two have one";
    EXPECT_EQ(library->toJson(), json) << "the library in memory stays";
}

TEST_F(StorageTest, ALibraryOfTheCloudIsAnnouncedOnceItIsThere)
{
    const QString path = m_paths.cloud(u"folder/a.json");
    QDir().mkpath(m_paths.cloud(u"folder"));
    bool wasThere = false;
    const CloudEvents events(m_paths.cloud(u"").toStdWString(), [&] { wasThere = QFile::exists(path); });
    EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(ToolLibraryUrl("cloud://folder/a.json"), mapOf(text), false));
    EXPECT_TRUE(wasThere);
    EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(ToolLibraryUrl("cloud://folder/a.tools"), mapOf(text), false));
    EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(m_jsonUrl, mapOf(text), false)) << "a local one is not";
    failureOf([&] { ToolLibraryJsonStorage::saveLibrary(ToolLibraryUrl("cloud://none/a.json"), mapOf(text), false); });
    EXPECT_FALSE(ToolLibraryJsonStorage::saveLibrary(ToolLibraryUrl("cloud://none/a.tools"), mapOf(text), false));
    EXPECT_THAT(events.texts(), ElementsAre("uploaded " + path.toStdString(),
                                            "uploaded " + m_paths.cloud(u"folder/a.tools").toStdString()));
}

TEST_F(StorageTest, AnUpgradeInTheCloudMarksTheOldFile)
{
    const QString old = m_paths.cloud(u"folder/\U0001F6E0.zetlib");
    writeFile(old, "old");
    const CloudEvents events(m_paths.cloud(u"").toStdWString());
    EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(ToolLibraryUrl(QStringLiteral("cloud://folder/\U0001F6E0.zetlib")),
                                                    mapOf(text), false));
    EXPECT_THAT(events.texts(), ElementsAre("uploaded " + m_paths.cloud(u"folder/\U0001F6E0.json").toStdString(),
                                            "marked as deleted " + old.toStdString()));
    EXPECT_FALSE(QFile::exists(old));
}

TEST_F(StorageTest, WithoutAConfiguredCloudTheFilesAreWrittenAllTheSame)
{
    const Asserts asserts;
    writeFile(m_paths.cloud(u"a.zetlib"), "old");
    EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(ToolLibraryUrl("cloud://a.zetlib"), mapOf(text), false));
    EXPECT_EQ(contentOf(m_paths.cloud(u"a.json")), indented(text));
    EXPECT_FALSE(QFile::exists(m_paths.cloud(u"a.zetlib")));
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST_F(StorageTest, TheDefaultLibraryIsMadeOnce)
{
    const Asserts asserts;
    QDir(m_paths.local(u"")).removeRecursively();
    ToolLibraryJsonStorage::makeDefaultLocalLibrary();
    const QString path = m_paths.local(u"Local/Library.json");
    EXPECT_EQ(contentOf(path), "{\n    \"data\": [\n    ]\n}\n");
    writeFile(path, "a person's own");
    ToolLibraryJsonStorage::makeDefaultLocalLibrary();
    EXPECT_EQ(contentOf(path), "a person's own");
    EXPECT_THAT(filesBeside(path), ElementsAre("Library.json"));
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST_F(StorageTest, AFolderThatCannotBeMadeSaysSo)
{
    QDir(m_paths.local(u"")).removeRecursively();
    writeFile(m_paths.loose(u"local"), "a file in the way");
    const Asserts asserts;
    EXPECT_EQ(failureOf([] { ToolLibraryJsonStorage::makeDefaultLocalLibrary(); }),
              "IOError: Cannot open JSON file for writing: " + m_paths.local(u"Local/Library.json").toStdString());
    EXPECT_THAT(asserts.messages(), ElementsAre("localDir.mkpath(\".\")"));
}

TEST_F(StorageTest, EveryNameOfALibraryIsWritten)
{
    for (const QString &name : {QStringLiteral("W\u00e4rkzeug \u5de5\u5177 \U0001F6E0"), QStringLiteral("a%20b \"c\"")})
        for (const char *extension : {".json", ".tools"}) {
            const ToolLibraryUrl url("toollibraryroot://Local/" + name + extension);
            EXPECT_TRUE(ToolLibraryJsonStorage::saveLibrary(url, *libraryOf(text), false));
            EXPECT_TRUE(QFile::exists(m_paths.local(u"Local/") + name + extension)) << name.toStdString() << extension;
        }
}

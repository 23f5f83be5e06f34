#include "HandMadeZip.h"
#include "ZipTestSupport.h"
#include "platform/utils/FileSystem.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace TestSupport;
using namespace Varn;
using testing::ElementsAre;
using testing::IsEmpty;
using Cause = CZipException::Cause;

namespace {

/// Archives on the disk, and what comes out of them in a folder of its own.
class CZipArchiveExtractTest : public testing::Test
{
protected:
    CZipArchiveExtractTest() { QDir(m_folder.path()).mkdir("out"); }

    std::wstring at(const char *name) const { return m_folder.filePath(name).toStdWString(); }

    void put(const char *name, const std::string &bytes) const
    {
        QFile file(m_folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray::fromStdString(bytes));
    }

    std::string get(const char *name) const
    {
        QFile file(m_folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "no file";
    }

    /// All that lies in the temporary folder, by its path there.
    std::vector<std::string> files() const
    {
        std::vector<std::string> names;
        for (QDirIterator it(m_folder.path(), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                             QDirIterator::Subdirectories);
             it.hasNext();)
            names.push_back(it.next().mid(m_folder.path().size() + 1).toStdString());
        std::ranges::sort(names);
        return names;
    }

    QTemporaryDir m_folder;
};

} // namespace

TEST_F(CZipArchiveExtractTest, AnArchiveOnTheDiskOpensAndIsLetGo)
{
    put("a.zip", zipOf({{L"a", "content"}}));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(at("a.zip"), CZipArchive::ReadOnly)) << archive.GetOpenError();
    ASSERT_TRUE(QFile::remove(m_folder.filePath("a.zip")));
    EXPECT_EQ(contentOf(archive, 0), "content");
    archive.Close();
    EXPECT_TRUE(archive.IsClosed());
}

TEST_F(CZipArchiveExtractTest, WhatIsNoArchiveOnTheDiskDoesNotOpen)
{
    put("empty.zip", "");
    put("text.zip", "{\"data\":[]}");
    struct Row {
        std::wstring path;
        std::string error;
    };
    const std::string folder = m_folder.path().toStdString();
    const Row rows[] = {
        {at("missing.zip"), folder + "/missing.zip: the file could not be opened"},
        {at("out"), folder + "/out: the file could not be opened"},
        {L"/dev/zero", "/dev/zero: the file could not be opened"},
        {at("empty.zip"), "archive: no zip archive, or a truncated one"},
        {at("text.zip"), "archive: no zip archive, or a truncated one"},
    };
    for (const Row &row : rows) {
        CZipArchive archive;
        EXPECT_FALSE(archive.Open(row.path));
        EXPECT_EQ(archive.GetOpenError(), row.error);
        EXPECT_TRUE(archive.IsClosed());
    }
}

TEST_F(CZipArchiveExtractTest, AFileLargerThanTheLimitIsNotRead)
{
    put("large.zip", "PK");
    ASSERT_TRUE(QFile::resize(m_folder.filePath("large.zip"), qint64{1} << 31));
    CZipArchive archive;
    EXPECT_FALSE(archive.Open(at("large.zip")));
    EXPECT_EQ(archive.GetOpenError(), "archive: larger than 2147483647 bytes");
}

TEST_F(CZipArchiveExtractTest, AnArchiveOnTheDiskIsToBeReadAlone)
{
    put("a.zip", zipOf({{L"a", "content"}}));
    CZipArchive archive;
    EXPECT_FALSE(archive.Open(at("a.zip"), CZipArchive::Existing));
    EXPECT_FALSE(archive.Open(at("b.zip"), CZipArchive::Create));
    EXPECT_EQ(get("b.zip"), "no file");
}

TEST_F(CZipArchiveExtractTest, EntriesGoUnderTheirPathsIntoTheFolder)
{
    put("a.zip", zipOf({{L"data/", ""}, {L"data/x/a.p21", "1"}, {L"b.xml", "2"}, {L"empty/", ""}}));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(at("a.zip")));
    for (int i = 0; i < archive.GetCount(); ++i)
        archive.ExtractFile(i, at("out/new"));
    EXPECT_THAT(files(), ElementsAre("a.zip", "out", "out/new", "out/new/b.xml", "out/new/data", "out/new/data/x",
                                     "out/new/data/x/a.p21", "out/new/empty"));
    EXPECT_EQ(get("out/new/data/x/a.p21"), "1");
    EXPECT_EQ(get("out/new/b.xml"), "2");
}

TEST_F(CZipArchiveExtractTest, AnEntryMayGoUnderItsLastPartOrAnotherName)
{
    put("a.zip", zipOf({{L"data/x/a.p21", "1"}, {L"data/folder/", ""}}));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(at("a.zip")));
    archive.ExtractFile(0, at("out"), false);
    archive.ExtractFile(0, at("out"), true, L"other");
    archive.ExtractFile(1, at("out"), false);
    EXPECT_THAT(files(), ElementsAre("a.zip", "out", "out/a.p21", "out/folder", "out/other"));
    EXPECT_EQ(get("out/other"), "1");
}

TEST_F(CZipArchiveExtractTest, AnOldFileIsOverwritten)
{
    put("a.zip", zipOf({{L"a", "new"}}));
    put("out/a", "old and longer");
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(at("a.zip")));
    archive.ExtractFile(0, at("out"));
    EXPECT_EQ(get("out/a"), "new");
}

TEST_F(CZipArchiveExtractTest, NoNameLeavesTheFolder)
{
    for (const std::string name : {"../evil", "out/../../evil", "/tmp/quillon-evil", "..\\evil", "a\\..\\..\\evil",
                                   "C:/evil", "c:evil", "", "..", ".", "./evil", "a//evil", "a/../evil", "../", "/"}) {
        put("a.zip", handMadeZip({{name, name.ends_with('/') ? "" : "content"}}));
        CZipArchive archive;
        ASSERT_TRUE(archive.Open(at("a.zip"))) << name;
        EXPECT_EQ(causeOf([&] { archive.ExtractFile(0, at("out")); }), Cause::BadName) << name;
        EXPECT_EQ(causeOf([&] { archive.ExtractFile(0, at("out"), false); }), Cause::BadName) << name;
        EXPECT_THAT(files(), ElementsAre("a.zip", "out")) << name;
        EXPECT_FALSE(QFile::exists("/tmp/quillon-evil"));
    }
}

TEST_F(CZipArchiveExtractTest, AnEntryWithABadNameCanGoUnderAnother)
{
    put("a.zip", handMadeZip({{"../evil", "content"}}));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(at("a.zip")));
    archive.ExtractFile(0, at("out"), true, L"good");
    EXPECT_THAT(files(), ElementsAre("a.zip", "out", "out/good"));
}

TEST_F(CZipArchiveExtractTest, ALinkBecomesAPlainFile)
{
    std::string bytes = handMadeZip({{"link", "/etc/passwd"}});
    const std::size_t attributes = bytes.find("PK\1\2") + 38;
    bytes.replace(attributes, 4, number(0120777U << 16, 4));
    bytes[bytes.find("PK\1\2") + 5] = 3; // made by Unix
    put("a.zip", bytes);
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(at("a.zip")));
    archive.ExtractFile(0, at("out"));
    EXPECT_FALSE(QFileInfo(m_folder.filePath("out/link")).isSymLink());
    EXPECT_EQ(get("out/link"), "/etc/passwd");
}

TEST_F(CZipArchiveExtractTest, ADamagedEntryTouchesNothing)
{
    put("a.zip", handMadeZip({{.name = "x/a", .content = "content", .crc = 1}}));
    put("out/old", "old");
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(at("a.zip")));
    EXPECT_EQ(causeOf([&] { archive.ExtractFile(0, at("out")); }), Cause::Damaged);
    EXPECT_EQ(causeOf([&] { archive.ExtractFile(0, at("out"), true, L"old"); }), Cause::Damaged);
    EXPECT_EQ(get("out/old"), "old");
    EXPECT_THAT(files(), ElementsAre("a.zip", "out", "out/old"));
}

TEST_F(CZipArchiveExtractTest, AnAbortTouchesNothing)
{
    put("a.zip", zipOf({{L"a", "content"}}));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(at("a.zip")));
    AbortableImpl abortable;
    abortable.abort();
    EXPECT_EQ(causeOf([&] { archive.ExtractFile(0, at("out"), true, {}, abortable); }), Cause::Aborted);
    EXPECT_THAT(files(), ElementsAre("a.zip", "out"));
}

TEST_F(CZipArchiveExtractTest, AFileThatCannotBeMadeIsAFailureThatNamesIt)
{
    put("a.zip", zipOf({{L"x/a", "content"}, {L"x/", ""}, {L"full", "content"}}));
    put("out/x", "a file where a folder should be");
    QFile::link("/dev/full", m_folder.filePath("out/full"));
    CZipArchive archive;
    ASSERT_TRUE(archive.Open(at("a.zip")));
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(causeOf([&] { archive.ExtractFile(i, at("out")); }), Cause::FileError) << i;
    try {
        archive.ExtractFile(2, at("out"));
    } catch (const CZipException &error) {
        EXPECT_EQ(error.what(), m_folder.path().toStdString() + "/out/full: the file could not be opened");
    }
}

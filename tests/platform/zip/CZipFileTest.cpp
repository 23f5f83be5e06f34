#include "platform/zip/CZipFile.h"
#include "platform/utils/FileSystem.h"
#include "platform/zip/CZipException.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>

#include <sys/stat.h>

using Varn::CZipException;
using Varn::CZipFile;
using Varn::FileSystem;
using OpenMode = Varn::CZipFile::OpenMode;

namespace {

class CZipFileTest : public testing::Test
{
protected:
    std::wstring at(std::wstring_view name) const { return FileSystem::combine(m_folder.path().toStdWString(), name); }

    void put(std::wstring_view name, const QByteArray &bytes) const
    {
        QFile file(QString::fromStdWString(at(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QByteArray get(std::wstring_view name) const
    {
        QFile file(QString::fromStdWString(at(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }

    QTemporaryDir m_folder;
};

std::string read(CZipFile &file, std::size_t size)
{
    std::string bytes(size, '\0');
    bytes.resize(file.Read(bytes.data(), size));
    return bytes;
}

} // namespace

TEST_F(CZipFileTest, ReadsWhatIsThere)
{
    put(L"\u5de5\u5177", "abcdef");
    CZipFile file;
    EXPECT_TRUE(file.IsClosed());
    ASSERT_TRUE(file.Open(at(L"\u5de5\u5177"), OpenMode::Read));
    EXPECT_FALSE(file.IsClosed());
    EXPECT_EQ(file.GetLength(), 6U);
    EXPECT_EQ(read(file, 4), "abcd");
    EXPECT_EQ(file.GetPosition(), 4U);
    EXPECT_EQ(read(file, 4), "ef");
    EXPECT_EQ(read(file, 4), "");
    file.Seek(1);
    EXPECT_EQ(read(file, 2), "bc");
    EXPECT_THROW(file.Write("x", 1), CZipException);
    file.Close();
    EXPECT_TRUE(file.IsClosed());
    EXPECT_EQ(get(L"\u5de5\u5177"), "abcdef");
}

TEST_F(CZipFileTest, ReadsAndWritesWhatIsThere)
{
    put(L"a", "abcdef");
    CZipFile file;
    ASSERT_TRUE(file.Open(at(L"a"), OpenMode::ReadWrite));
    EXPECT_EQ(read(file, 2), "ab");
    file.Write("CD", 2);
    EXPECT_EQ(read(file, 2), "ef");
    file.SetLength(5);
    EXPECT_EQ(file.GetLength(), 5U);
    file.Seek(7);
    file.Write("x", 1);
    file.Close();
    EXPECT_EQ(get(L"a"), QByteArray("abCDe\0\0x", 8));
}

TEST_F(CZipFileTest, CreatesAndEmpties)
{
    put(L"old", "abcdef");
    for (const wchar_t *name : {L"old", L"new"}) {
        CZipFile file;
        ASSERT_TRUE(file.Open(at(name), OpenMode::Create));
        file.Write("xy", 2);
        file.Seek(0);
        EXPECT_EQ(read(file, 2), "xy");
        file.Close();
        EXPECT_EQ(get(name), "xy");
    }
}

TEST_F(CZipFileTest, WhatIsNoRegularFileDoesNotOpen)
{
    ASSERT_EQ(mkfifo(FileSystem::toPath(at(L"pipe")).c_str(), 0600), 0);
    const std::wstring rows[] = {at(L"missing"), at(L""), at(L"pipe"), L"/dev/null", L"", at(L"missing/a")};
    for (const std::wstring &path : rows)
        for (const OpenMode mode : {OpenMode::Read, OpenMode::ReadWrite}) {
            CZipFile file;
            EXPECT_FALSE(file.Open(path, mode)) << FileSystem::toPath(path);
            EXPECT_TRUE(file.IsClosed());
        }
    for (const std::wstring &path : {at(L""), at(L"pipe"), std::wstring(L"/dev/null"), at(L"missing/a")})
        EXPECT_FALSE(CZipFile().Open(path, OpenMode::Create)) << FileSystem::toPath(path);
    EXPECT_FALSE(FileSystem::exists(at(L"missing")));
}

TEST_F(CZipFileTest, AFailedOpenClosesTheFileThatWasOpen)
{
    put(L"a", "abc");
    CZipFile file;
    ASSERT_TRUE(file.Open(at(L"a"), OpenMode::Read));
    EXPECT_FALSE(file.Open(at(L"missing"), OpenMode::Read));
    EXPECT_TRUE(file.IsClosed());
}

TEST_F(CZipFileTest, EveryCallOnAClosedFileFailsButClose)
{
    CZipFile file;
    char byte = 0;
    EXPECT_THROW(file.Read(&byte, 1), CZipException);
    EXPECT_THROW(file.Write(&byte, 1), CZipException);
    EXPECT_THROW(file.Seek(0), CZipException);
    EXPECT_THROW(file.GetPosition(), CZipException);
    EXPECT_THROW(file.GetLength(), CZipException);
    EXPECT_THROW(file.SetLength(1), CZipException);
    EXPECT_NO_THROW(file.Close());
}

TEST_F(CZipFileTest, AFailureNamesTheFile)
{
    put(L"a\u00e9", "abc");
    CZipFile file;
    ASSERT_TRUE(file.Open(at(L"a\u00e9"), OpenMode::Read));
    try {
        file.Write("x", 1);
        FAIL() << "written";
    } catch (const CZipException &error) {
        EXPECT_EQ(error.cause(), CZipException::Cause::FileError);
        EXPECT_EQ(error.what(), m_folder.path().toStdString() + "/a\u00e9: the file could not be written");
    }
}

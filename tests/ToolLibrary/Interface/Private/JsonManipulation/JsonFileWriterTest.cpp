#include "ToolLibrary/Interface/Private/JsonManipulation/JsonFileWriter.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/JsonFileReader.h"
#include "platform/tool/Exception.h"
#include "platform/utils/FileSystem.h"
#include "platform/utils/Messages.h"
#include "support/Rights.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include <sys/stat.h>
#include <unistd.h>

using namespace std::string_literals;
using namespace Varn::ToolLibraries;
using TestSupport::AsNobody;
using TestSupport::FullDisk;
using Varn::FileSystem;
using Varn::Messages;

namespace {

class JsonFileWriterTest : public testing::Test
{
protected:
    JsonFileWriterTest() { chmod(m_folder.path().toStdString().c_str(), 0755); }

    std::wstring at(std::wstring_view name) const { return FileSystem::combine(m_folder.path().toStdWString(), name); }
    QStringList files() const
    {
        return QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    static std::string contentOf(const std::wstring &path)
    {
        std::ostringstream content;
        content << std::ifstream(FileSystem::toPath(path), std::ios::binary).rdbuf();
        return content.str();
    }

    QTemporaryDir m_folder;
};

std::string failureOf(const std::wstring &path, const QByteArray &bytes)
{
    try {
        JsonFileWriter::writeFile(path, bytes);
        return "none";
    } catch (const IOError &failure) {
        EXPECT_EQ(failure.translatedWhat(), std::nullopt);
        return failure.what();
    }
}

std::string cannotOpen(const std::wstring &path)
{
    return "Cannot open JSON file for writing: " + Messages::fromWideUnicodeToUTF8(path);
}

std::string couldNotWrite(const std::wstring &path)
{
    return "Could not write data to JSON file: " + Messages::fromWideUnicodeToUTF8(path);
}

} // namespace

TEST_F(JsonFileWriterTest, TheBytesAreTheFile)
{
    for (const QByteArray &bytes : {QByteArray("{}\r\n\0\xFF x", 9), QByteArray(), QByteArray("longer than before"),
                                    QByteArray("short"), QByteArray(3'000'000, 'x')}) {
        JsonFileWriter::writeFile(at(L"a.json"), bytes);
        EXPECT_TRUE(contentOf(at(L"a.json")) == bytes.toStdString());
        EXPECT_EQ(files(), QStringList{"a.json"});
    }
}

TEST_F(JsonFileWriterTest, ADocumentIsIndented)
{
    JsonFileWriter::writeDocument(at(L"a.json"), QJsonDocument(QJsonObject{{"b", QJsonArray{1, 2.5}}, {"a", "x"}}));
    EXPECT_EQ(contentOf(at(L"a.json")), "{\n    \"a\": \"x\",\n    \"b\": [\n        1,\n        2.5\n    ]\n}\n");
    JsonFileWriter::writeDocument(at(L"a.json"), QJsonDocument());
    EXPECT_EQ(contentOf(at(L"a.json")), "");
}

TEST_F(JsonFileWriterTest, WhatIsWrittenReadsBackUnderEveryName)
{
    const QJsonDocument document(QJsonObject{{"\u00e4", QString::fromStdWString(L"\u20ac\U0001F527\n")}, {"n", -0.1}});
    const std::wstring names[] = {
        L"new\nline.json",
        L"\"q\" \\.json",
        L"\u5de5\u5177 \U0001F527.json",
        L" .json",
        std::wstring(250, L'n') + L".json",
        std::wstring(L"byte ") + static_cast<wchar_t>(0xDCFF) + L".json", // a name that is no UTF-8
    };
    for (const std::wstring &name : names) {
        JsonFileWriter::writeDocument(at(name), document);
        EXPECT_EQ(JsonFileReader::readDocument(at(name)), document) << FileSystem::toPath(name);
    }
    std::size_t count = 0;
    for (const auto &entry : std::filesystem::directory_iterator(m_folder.path().toStdString())) {
        std::filesystem::remove(entry.path()); // the folder does not find every name when it dies
        ++count;
    }
    EXPECT_EQ(count, std::size(names)) << "nothing stays beside the files";
}

TEST_F(JsonFileWriterTest, WhatCannotBeOpenedSaysSo)
{
    ASSERT_EQ(mkdir(FileSystem::toPath(at(L"folder.json")).c_str(), 0755), 0);
    ASSERT_EQ(mkfifo(FileSystem::toPath(at(L"pipe.json")).c_str(), 0600), 0);
    ASSERT_EQ(symlink("self", FileSystem::toPath(at(L"self")).c_str()), 0);
    const std::wstring paths[] = {
        at(L"no folder/\u00fc.json"), at(L"folder.json"), at(L"pipe.json"),
        at(L"pipe.json/a.json"),      at(L"self"),        at(L""),
        at(std::wstring(256, L'n')),  at(L"new/"),        L"",
    };
    const QStringList before = files();
    for (const std::wstring &path : paths)
        EXPECT_EQ(failureOf(path, "{}"), cannotOpen(path));
    EXPECT_EQ(files(), before);
}

TEST_F(JsonFileWriterTest, AReadOnlyFileStaysAsItIs)
{
    const std::wstring path = at(L"a.json");
    JsonFileWriter::writeFile(path, "old");
    ASSERT_EQ(chmod(m_folder.path().toStdString().c_str(), 0777), 0);
    ASSERT_EQ(chmod(FileSystem::toPath(path).c_str(), 0444), 0);
    {
        const AsNobody nobody;
        EXPECT_EQ(failureOf(path, "new"), cannotOpen(path));
    }
    EXPECT_EQ(contentOf(path), "old");
    EXPECT_EQ(files(), QStringList{"a.json"});
}

TEST_F(JsonFileWriterTest, AReadOnlyFolderTakesNoNewFile)
{
    ASSERT_EQ(chmod(m_folder.path().toStdString().c_str(), 0555), 0);
    {
        const AsNobody nobody;
        EXPECT_EQ(failureOf(at(L"a.json"), "new"), cannotOpen(at(L"a.json")));
    }
    EXPECT_TRUE(files().empty());
}

TEST_F(JsonFileWriterTest, AFullDiskLeavesTheOldFile)
{
    const std::wstring path = at(L"d\u00fc.json");
    JsonFileWriter::writeFile(path, "old");
    std::string failure;
    std::string newFailure;
    {
        const FullDisk disk(1000);
        failure = failureOf(path, QByteArray(5000, 'x'));
        newFailure = failureOf(at(L"new.json"), QByteArray(5000, 'x'));
    }
    EXPECT_EQ(failure, couldNotWrite(path));
    EXPECT_EQ(newFailure, couldNotWrite(at(L"new.json")));
    EXPECT_EQ(contentOf(path), "old");
    EXPECT_EQ(files(), QStringList{QString::fromStdWString(L"d\u00fc.json")});
}

TEST_F(JsonFileWriterTest, ATextMayComeInBlocks)
{
    const std::wstring path = at(L"a.json");
    JsonFileWriter::writeText(path, [](const JsonFileWriter::Sink &sink) {
        for (int i = 0; i < 1000; ++i)
            if (!sink("a block of text "))
                return false;
        return sink("");
    });
    EXPECT_EQ(contentOf(path).size(), 16000u);
    EXPECT_EQ(files(), QStringList{"a.json"});
}

TEST_F(JsonFileWriterTest, ATextThatBreaksOffLeavesTheOldFile)
{
    const std::wstring path = at(L"a.json");
    JsonFileWriter::writeFile(path, "old");
    std::string failure;
    try {
        JsonFileWriter::writeText(path, [](const JsonFileWriter::Sink &sink) { return sink("new") && false; });
    } catch (const IOError &error) {
        failure = error.what();
    }
    EXPECT_EQ(failure, couldNotWrite(path));
    EXPECT_THROW(JsonFileWriter::writeText(path,
                                           [](const JsonFileWriter::Sink &sink) -> bool {
                                               sink("new");
                                               throw std::runtime_error("in the middle");
                                           }),
                 std::runtime_error);
    EXPECT_EQ(contentOf(path), "old");
    EXPECT_EQ(files(), QStringList{"a.json"});
}

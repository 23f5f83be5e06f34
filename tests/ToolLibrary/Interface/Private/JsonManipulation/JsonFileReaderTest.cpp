#include "ToolLibrary/Interface/Private/JsonManipulation/JsonFileReader.h"
#include "platform/tool/Exception.h"
#include "platform/utils/FileSystem.h"
#include "platform/utils/Messages.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <sys/stat.h>
#include <unistd.h>

using namespace std::string_literals;
using namespace Varn::ToolLibraries;
using Varn::FileSystem;
using Varn::Messages;

namespace {

/// Takes the rights of an administrator away while it lives: nothing is unreadable for one.
class AsNobody
{
public:
    AsNobody() : m_user(geteuid())
    {
        if (m_user == 0) {
            EXPECT_EQ(seteuid(65534), 0);
        }
    }
    ~AsNobody() { EXPECT_EQ(seteuid(m_user), 0); }

private:
    uid_t m_user;
};

class JsonFileReaderTest : public testing::Test
{
protected:
    JsonFileReaderTest() { chmod(m_folder.path().toStdString().c_str(), 0755); }

    std::wstring at(std::wstring_view name) const { return FileSystem::combine(m_folder.path().toStdWString(), name); }

    std::wstring file(std::wstring_view name, const std::string &bytes) const
    {
        std::ofstream(FileSystem::toPath(at(name)), std::ios::binary) << bytes;
        return at(name);
    }

    QTemporaryDir m_folder;
};

template <typename Failure>
std::string failureOf(QByteArray (*read)(const std::wstring &), const std::wstring &path)
{
    try {
        read(path);
        return "none";
    } catch (const Failure &failure) {
        EXPECT_EQ(failure.translatedWhat(), std::nullopt);
        return failure.what();
    } catch (const std::exception &other) {
        return "another class: "s + other.what();
    }
}

template <typename Failure>
std::string failureOfFile(const std::wstring &path)
{
    return failureOf<Failure>(&JsonFileReader::readFile, path);
}

template <typename Failure>
std::string failureOfDocument(const std::wstring &path)
{
    return failureOf<Failure>([](const std::wstring &p) { return JsonFileReader::readDocument(p).toJson(); }, path);
}

std::string nested(std::size_t levels)
{
    return std::string(levels, '[') + std::string(levels, ']');
}

} // namespace

TEST_F(JsonFileReaderTest, AllBytesAreRead)
{
    EXPECT_EQ(JsonFileReader::readFile(file(L"a.json", "no JSON \xFF\0 at all\n"s)),
              QByteArray("no JSON \xFF\0 at all\n", 18));
    EXPECT_EQ(JsonFileReader::readFile(file(L"empty.json", "")), QByteArray());
    const std::string large(3'000'000, 'x');
    EXPECT_EQ(JsonFileReader::readFile(file(L"large.json", large)).toStdString(), large);
}

TEST_F(JsonFileReaderTest, LineEndsOfAnotherSystemAreThoseOfText)
{
    EXPECT_EQ(JsonFileReader::readFile(file(L"a.json", "{\r\n}\r\n")), "{\n}\n");
}

TEST_F(JsonFileReaderTest, AMissingFileIsAMissingLibrary)
{
    const std::wstring path = at(L"d\u00fc\U0001F527.json");
    const std::string text = "JSON file doesn't exist: " + Messages::fromWideUnicodeToUTF8(path);
    EXPECT_EQ(failureOfFile<LibraryMissing>(path), text);
    EXPECT_EQ(failureOfDocument<LibraryMissing>(path), text);
    EXPECT_EQ(failureOfFile<LibraryMissing>(at(L"no folder/a.json")),
              "JSON file doesn't exist: " + Messages::fromWideUnicodeToUTF8(at(L"no folder/a.json")));
    EXPECT_EQ(failureOfFile<LibraryMissing>(L""), "JSON file doesn't exist: ");
    ASSERT_EQ(symlink("nowhere", FileSystem::toPath(at(L"dangling.json")).c_str()), 0);
    EXPECT_EQ(failureOfFile<LibraryMissing>(at(L"dangling.json")),
              "JSON file doesn't exist: " + Messages::fromWideUnicodeToUTF8(at(L"dangling.json")));
}

TEST_F(JsonFileReaderTest, WhatIsNoPlainFileIsNotReadable)
{
    ASSERT_EQ(mkfifo(FileSystem::toPath(at(L"pipe.json")).c_str(), 0600), 0);
    ASSERT_EQ(mkdir(FileSystem::toPath(at(L"folder.json")).c_str(), 0755), 0);
    for (const std::wstring &path : {at(L"pipe.json"), at(L"folder.json"), std::wstring(L"/dev/zero")}) {
        const std::string text = "JSON file exists but is not readable: " + Messages::fromWideUnicodeToUTF8(path);
        EXPECT_EQ(failureOfFile<LibraryLoadError>(path), text);
        EXPECT_EQ(failureOfDocument<LibraryLoadError>(path), text);
    }
}

TEST_F(JsonFileReaderTest, AFileWithoutPermissionIsNotReadable)
{
    const std::wstring path = file(L"secret.json", "{}");
    ASSERT_EQ(chmod(FileSystem::toPath(path).c_str(), 0), 0);
    const AsNobody nobody;
    EXPECT_EQ(failureOfFile<LibraryLoadError>(path),
              "JSON file exists but is not readable: " + Messages::fromWideUnicodeToUTF8(path));
}

TEST_F(JsonFileReaderTest, ADocumentIsParsed)
{
    EXPECT_EQ(JsonFileReader::readDocument(file(L"a.json", " {\r\n\"a\": [1]} ")),
              QJsonDocument(QJsonObject{{"a", QJsonArray{1}}}));
    EXPECT_EQ(JsonFileReader::readDocument(file(L"b.json", "\xEF\xBB\xBF[]")), QJsonDocument(QJsonArray()));
}

TEST_F(JsonFileReaderTest, WhatIsNoDocumentCannotBeParsed)
{
    const std::string texts[] = {"", "{", "[1,]", "5", "null", "{} x", "[\"\xFF\"]", "// a\n[]", "\xFF\xFE[\0]\0"s};
    for (const std::string &text : texts) {
        const std::wstring path = file(L"bad \u00fc.json", text);
        EXPECT_EQ(failureOfDocument<LibraryFormatError>(path),
                  "File exists but cannot be parsed: " + Messages::fromWideUnicodeToUTF8(path))
            << text;
    }
}

TEST_F(JsonFileReaderTest, ADocumentDeeperThanAThousandLevelsCannotBeParsed)
{
    EXPECT_FALSE(JsonFileReader::readDocument(file(L"a.json", nested(1000))).isNull());
    const std::string manyBrackets =
        R"(["\"{)" + std::string(5000, '[') + R"(\"{", [{"{{":"\\"}], "\\\")" + std::string(5000, '{') + "\"]";
    EXPECT_FALSE(JsonFileReader::readDocument(file(L"b.json", manyBrackets)).isNull()) << "brackets within texts";
    const std::wstring path = file(L"behind.json", R"(["\\", ")" + std::string(10, ']') + "\"," + nested(1000) + "]");
    EXPECT_EQ(failureOfDocument<LibraryFormatError>(path),
              "File exists but cannot be parsed: " + Messages::fromWideUnicodeToUTF8(path))
        << "behind texts that end in a backslash or hold closing brackets";
    std::string wide = "[[]";
    for (int i = 0; i < 5000; ++i)
        wide += ",[{}]";
    EXPECT_FALSE(JsonFileReader::readDocument(file(L"c.json", wide + "]")).isNull()) << "side by side";
    for (const std::size_t levels : {1001, 1010, 1024, 1025, 1'000'000}) {
        const std::wstring deep = file(L"deep.json", nested(levels));
        EXPECT_EQ(failureOfDocument<LibraryFormatError>(deep),
                  "File exists but cannot be parsed: " + Messages::fromWideUnicodeToUTF8(deep))
            << levels;
    }
}

TEST_F(JsonFileReaderTest, EveryNameThatAFileCanHaveIsRead)
{
    const std::wstring names[] = {
        L"new\nline.json",
        L"\"quoted\" 'name' \\.json",
        L"\u5de5\u5177 \U0001F527.json",
        L" .json",
        L"%1 %%s.json",
        std::wstring(L"byte ") + static_cast<wchar_t>(0xDCFF) + L".json", // a name that is no UTF-8
    };
    for (const std::wstring &name : names) {
        file(name, "[1]");
        EXPECT_EQ(JsonFileReader::readFile(at(name)), "[1]") << FileSystem::toPath(name);
        EXPECT_EQ(JsonFileReader::readDocument(at(name)), QJsonDocument(QJsonArray{1})) << FileSystem::toPath(name);
        std::filesystem::remove(FileSystem::toPath(at(name))); // the folder does not find every name when it dies
    }
}

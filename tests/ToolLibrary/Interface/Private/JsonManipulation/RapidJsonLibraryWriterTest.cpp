#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonLibraryWriter.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonConvert.h"
#include "platform/utils/Abortable.h"
#include "platform/utils/FileSystem.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <sys/stat.h>
#include <unistd.h>

using namespace std::string_literals;
using namespace Varn::ToolLibraries;
using Varn::Abortable;
using Varn::AbortableImpl;
using Varn::FileSystem;

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

/// Says from the \a n-th question on that the work is aborted.
class AbortedFrom : public Abortable
{
public:
    explicit AbortedFrom(int n) : m_from(n) {}
    bool isAborted() const override { return ++m_asked >= m_from; }
    void abort() override { m_from = 0; }
    int asked() const { return m_asked; }

private:
    int m_from;
    mutable int m_asked = 0;
};

constexpr int never = 1 << 30;

class RapidJsonLibraryWriterTest : public testing::Test
{
protected:
    RapidJsonLibraryWriterTest() { chmod(m_folder.path().toStdString().c_str(), 0755); }

    std::wstring at(std::wstring_view name) const { return FileSystem::combine(m_folder.path().toStdWString(), name); }

    std::wstring file(const std::string &bytes, std::wstring_view name = L"library.json") const
    {
        std::ofstream(FileSystem::toPath(at(name)), std::ios::binary) << bytes;
        return at(name);
    }

    bool acceptFile(const std::string &bytes) { return m_writer.acceptJsonFile(file(bytes), m_abortable); }
    bool acceptBytes(const std::string &bytes)
    {
        return m_writer.acceptJsonBytes(QByteArray::fromStdString(bytes), m_abortable);
    }
    bool acceptString(const std::string &text) { return m_writer.acceptJsonString(text, m_abortable); }

    std::string held() const { return RapidJsonConvert::toString(m_document); }

    QTemporaryDir m_folder;
    rapidjson::Document m_document;
    const RapidJsonLibraryWriter m_writer{&m_document};
    AbortableImpl m_abortable;
};

std::string nested(std::size_t levels, const char *open = "[", const char *close = "]")
{
    std::string text;
    for (std::size_t i = 0; i < levels; ++i)
        text += open;
    for (std::size_t i = 0; i < levels; ++i)
        text += close;
    return text;
}

std::size_t openFiles()
{
    const auto at = std::filesystem::directory_iterator("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(at), end(at)));
}

} // namespace

TEST_F(RapidJsonLibraryWriterTest, ADocumentHasOnlySoManyValues)
{
    const struct {
        const char *text;
        std::size_t values;
    } rows[] = {
        {"0", 1},
        {"[0,-1,2.5,5000000000,-5000000000,10000000000000000000,null,true,false,\"\"]", 11},
        {R"({"":0,"a":{},"b":[]})", 7},
        {"[[],[],[]]", 4},
    };
    for (const auto &row : rows)
        for (const std::size_t most : {row.values, row.values - 1}) {
            rapidjson::Document document;
            const RapidJsonLibraryWriter writer(&document, most);
            const bool fits = most == row.values;
            EXPECT_EQ(writer.acceptJsonBytes(row.text, m_abortable), fits) << row.text;
            EXPECT_EQ(writer.acceptJsonString(row.text, m_abortable), fits) << row.text;
            EXPECT_EQ(writer.acceptJsonFile(file(row.text), m_abortable), fits) << row.text;
            EXPECT_EQ(writer.acceptJsonFile(file("\xEF\xBB\xBF"s + row.text), m_abortable), fits) << row.text;
        }
}

TEST_F(RapidJsonLibraryWriterTest, EachFormReadsStrictJson)
{
    struct Row {
        std::string text;
        const char *held; // null for what is refused
    };
    const Row rows[] = {
        {R"({"data":[],"version":36})", R"({"data":[],"version":36})"},
        {" \t\r\n{ \"a\" : [ 1 , 2.0 ] } \n", R"({"a":[1,2.0]})"},
        {"null", "null"},
        {"5", "5"},
        {R"("a")", R"("a")"},
        {"true", "true"},
        {"[]", "[]"},
        {"{}", "{}"},
        {R"({"a":1,"a":2})", R"({"a":1,"a":2})"},
        {R"(["\u00e4\ud83d\udd27\u0000\/\b"])", "[\"\u00e4\U0001F527\\u0000/\\b\"]"},
        {"[1e308,-1E-5,5e-324]", "[1e308,-0.00001,5e-324]"},
        {"[18446744073709551615,-9223372036854775808]", "[18446744073709551615,-9223372036854775808]"},
        {"", nullptr},
        {" \n", nullptr},
        {"{", nullptr},
        {"[", nullptr},
        {"[1", nullptr},
        {"[1,]", nullptr},
        {R"({"a":1,})", nullptr},
        {"[,1]", nullptr},
        {"[1 2]", nullptr},
        {R"({"a" 1})", nullptr},
        {R"({"a"})", nullptr},
        {"{a:1}", nullptr},
        {"{1:1}", nullptr},
        {"['a']", nullptr},
        {"[1]//", nullptr},
        {"[1]/**/", nullptr},
        {"/**/[1]", nullptr},
        {"# a\n[]", nullptr},
        {"[NaN]", nullptr},
        {"[nan]", nullptr},
        {"[Inf]", nullptr},
        {"[Infinity]", nullptr},
        {"[-Infinity]", nullptr},
        {"[1e400]", nullptr},
        {"[-1e400]", nullptr},
        {"[1" + std::string(400, '0') + "]", nullptr},
        {"[01]", nullptr},
        {"[+1]", nullptr},
        {"[.5]", nullptr},
        {"[1.]", nullptr},
        {"[1e]", nullptr},
        {"[-]", nullptr},
        {"[0x10]", nullptr},
        {"[True]", nullptr},
        {"[nul]", nullptr},
        {"{}{}", nullptr},
        {"{} x", nullptr},
        {"]", nullptr},
        {"[\"a\tb\"]", nullptr},
        {"[\"a\nb\"]", nullptr},
        {R"(["\x41"])", nullptr},
        {R"(["\u00g0"])", nullptr},
        {R"(["\ud800"])", nullptr},
        {R"(["\ud800\u0041"])", nullptr},
        {R"(["a)", nullptr},
        {"[\"\\", nullptr},
        {"[\"\0\"]"s, nullptr},
        {"[1\0]"s, nullptr},
        {"\0{}"s, nullptr},
        {"{}\0x"s, "{}"}, // as everywhere, a NUL ends the text
        {"{} \0{"s, "{}"},
    };
    for (const Row &row : rows) {
        const auto check = [&](const char *form, bool accepted) {
            EXPECT_EQ(accepted, row.held != nullptr) << form << ": " << row.text;
            if (row.held && accepted) {
                EXPECT_EQ(held(), row.held) << form;
            }
        };
        check("file", acceptFile(row.text));
        check("bytes", acceptBytes(row.text));
        check("string", acceptString(row.text));
    }
}

TEST_F(RapidJsonLibraryWriterTest, ADocumentReplacesWhatTheTargetHeld)
{
    for (const char *text : {"{\"a\":\"a text longer than fits into the value\"}", "[2]", "{}"}) {
        EXPECT_TRUE(acceptString(text));
        EXPECT_EQ(held(), text);
        EXPECT_FALSE(acceptString("{\"broken\":[1,{\"x\":\"y\"}"));
    }
}

TEST_F(RapidJsonLibraryWriterTest, AThousandLevelsAreRead)
{
    const auto check = [&](const std::string &text, bool accepted) {
        EXPECT_EQ(acceptFile(text), accepted) << text.size();
        EXPECT_EQ(acceptBytes(text), accepted) << text.size();
        EXPECT_EQ(acceptString(text), accepted) << text.size();
    };
    check(nested(1000), true);
    check(nested(1001), false);
    check(nested(500, R"([{"a":)", "}]").insert(500 * 6, "1"), true);
    check(nested(500, R"({"a":[)", "]}"), true);
    check("[" + nested(500, R"({"a":[)", "]}") + "]", false);
    check("[" + nested(999) + "," + nested(999) + "]", true);
    check("[" + nested(999) + "," + nested(1000) + "]", false);
    std::string wide = "[{}";
    for (int i = 0; i < 3000; ++i)
        wide += ",[{}]";
    check(wide + "]", true);
    for (const char *open : {"[", "{\"a\":", "[{\"a\":"})
        check(nested(1'000'000, open, ""), false);
    check(nested(1'000'000), false);
}

TEST_F(RapidJsonLibraryWriterTest, AnAbortIsSeenAtTheEndOfEachObject)
{
    const auto accepts = [&](const char *text, const Abortable &abortable, int form) {
        if (form == 0)
            return m_writer.acceptJsonFile(file(text), abortable);
        if (form == 1)
            return m_writer.acceptJsonBytes(text, abortable);
        return m_writer.acceptJsonString(text, abortable);
    };
    struct Row {
        const char *text;
        int abortedFrom;
        bool accepted;
        int asked;
    };
    const Row rows[] = {
        {R"({"a":{"b":{}},"c":[{}]})", 1, false, 1},
        {R"({"a":{"b":{}},"c":[{}]})", 3, false, 3},
        {R"({"a":{"b":{}},"c":[{}]})", never, true, 4},
        {R"({"a":{"b":{}},"c":[{}]})", 4, false, 4},
        {"{}", 1, false, 1},
        {"[{},{},{}]", 2, false, 2},
        {"[1,2]", 1, true, 0},
        {"[[[]],\"{}\"]", 1, true, 0},
        {"5", 1, true, 0},
    };
    for (const Row &row : rows) {
        for (const int form : {0, 1, 2}) {
            const AbortedFrom abortable(row.abortedFrom);
            EXPECT_EQ(accepts(row.text, abortable, form), row.accepted) << row.text << " from " << row.abortedFrom;
            EXPECT_EQ(abortable.asked(), row.asked) << row.text << " from " << row.abortedFrom;
        }
    }
    m_abortable.abort();
    EXPECT_FALSE(acceptFile(R"({"data":[]})"));
    EXPECT_TRUE(acceptFile("[1,2]"));
}

TEST_F(RapidJsonLibraryWriterTest, WhatIsNoReadableFileIsRefusedWithoutAnException)
{
    ASSERT_EQ(mkfifo(FileSystem::toPath(at(L"pipe.json")).c_str(), 0600), 0);
    ASSERT_EQ(symlink("nowhere", FileSystem::toPath(at(L"dangling.json")).c_str()), 0);
    ASSERT_EQ(symlink("self", FileSystem::toPath(at(L"self")).c_str()), 0);
    const std::wstring paths[] = {at(L"missing.json"),
                                  at(L"no folder/a.json"),
                                  at(L""),
                                  m_folder.path().toStdWString(),
                                  at(L"pipe.json"),
                                  at(L"dangling.json"),
                                  at(L"self"),
                                  L"",
                                  L"/dev/null",
                                  L"/dev/zero",
                                  at(L"nul\0.json")};
    for (const std::wstring &path : paths)
        EXPECT_FALSE(m_writer.acceptJsonFile(path, m_abortable)) << FileSystem::toPath(path);
    EXPECT_FALSE(acceptFile(""));
}

TEST_F(RapidJsonLibraryWriterTest, AFileWithoutPermissionIsRefused)
{
    const std::wstring path = file("{}");
    ASSERT_EQ(chmod(FileSystem::toPath(path).c_str(), 0), 0);
    const AsNobody nobody;
    EXPECT_FALSE(m_writer.acceptJsonFile(path, m_abortable));
}

TEST_F(RapidJsonLibraryWriterTest, EveryNameThatAFileCanHaveIsOpened)
{
    const std::wstring names[] = {
        L"new\nline.json",
        L"\"quoted\" \\.json",
        L"\u5de5\u5177 \U0001F527.json",
        L" ",
        L"%s%n.json",
        std::wstring(L"byte ") + static_cast<wchar_t>(0xDCFF) + L".json", // a name that is no UTF-8
    };
    for (const std::wstring &name : names) {
        EXPECT_TRUE(m_writer.acceptJsonFile(file("{}", name), m_abortable)) << FileSystem::toPath(name);
        std::filesystem::remove(FileSystem::toPath(at(name))); // the folder does not find every name when it dies
    }
}

TEST_F(RapidJsonLibraryWriterTest, TheFileIsClosedAgain)
{
    const std::size_t before = openFiles();
    acceptFile("{}");
    acceptFile("[1,");
    acceptFile("[\"\xFF\"]");
    acceptFile("\xFF\xFE[\0]\0"s);
    m_abortable.abort();
    acceptFile("{}");
    m_writer.acceptJsonFile(m_folder.path().toStdWString(), m_abortable);
    EXPECT_EQ(openFiles(), before);
}

TEST_F(RapidJsonLibraryWriterTest, LongTextsAndLongBlanksAreRead)
{
    const std::string text = "{\"" + std::string(200'000, 'k') + "\":\"" + std::string(3'000'000, 'x') + "\u20ac\"}";
    EXPECT_TRUE(acceptFile(text));
    EXPECT_TRUE(held() == text);
    EXPECT_TRUE(acceptFile(std::string(1'000'000, ' ') + "[" + std::string(200'001, '\n') + "1" +
                           std::string(65536, '\t') + "]" + std::string(131072, ' ')));
    EXPECT_EQ(held(), "[1]");
    EXPECT_TRUE(acceptFile("[0." + std::string(200'000, '0') + "1]"));
    EXPECT_FALSE(acceptFile(std::string(300'000, ' ')));
    EXPECT_FALSE(acceptFile("[\"" + std::string(300'000, 'x')));
    EXPECT_FALSE(acceptFile(std::string(300'000, '\0')));
}

TEST_F(RapidJsonLibraryWriterTest, AMapBecomesTheDocument)
{
    EXPECT_TRUE(acceptString("[\"old\"]"));
    m_writer.acceptQVariantMap(
        {{"version", 36}, {"data", QVariantList{QVariantMap{{"n", 2.0}}, QVariant()}}, {"inf", HUGE_VAL}});
    EXPECT_EQ(held(), R"({"data":[{"n":2.0},null],"inf":null,"version":36})");
    m_writer.acceptQVariantMap({});
    EXPECT_EQ(held(), "{}");
}

TEST_F(RapidJsonLibraryWriterTest, TheNumbersOfAnotherCountryAreNotThoseOfJson)
{
    EXPECT_TRUE(acceptString("[2.5]"));
    EXPECT_EQ(m_document[0].GetDouble(), 2.5);
    EXPECT_FALSE(acceptString("[{\"a\":2,5}]"));
}

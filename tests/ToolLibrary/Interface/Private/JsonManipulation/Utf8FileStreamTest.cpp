#include "ToolLibrary/Interface/Private/JsonManipulation/Utf8FileStream.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonConvert.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonLibraryWriter.h"
#include "platform/utils/Abortable.h"
#include "platform/utils/FileSystem.h"

#include <QString>

#include <rapidjson/encodedstream.h>
#include <rapidjson/filereadstream.h>

#include <gtest/gtest.h>

#include <random>

#include <sys/mman.h>
#include <unistd.h>

using namespace std::string_literals;
using namespace Varn::ToolLibraries;
using Varn::FileSystem;

namespace {

constexpr std::size_t block = 65536;

/// The tests write one file again and again: it lies in memory.
class Utf8FileStreamTest : public testing::Test
{
protected:
    Utf8FileStreamTest() : m_memory(memfd_create("text", MFD_CLOEXEC)) { EXPECT_GE(m_memory, 0); }
    ~Utf8FileStreamTest() override { close(m_memory); }

    std::wstring path() const { return L"/proc/self/fd/" + std::to_wstring(m_memory); }

    void write(const std::string &bytes) const
    {
        ASSERT_EQ(ftruncate(m_memory, 0), 0);
        ASSERT_EQ(pwrite(m_memory, bytes.data(), bytes.size(), 0), static_cast<ssize_t>(bytes.size()));
    }

    FileSystem::File open(const std::string &bytes) const
    {
        write(bytes);
        return FileSystem::openForReading(path());
    }

    /// What the stream hands out before its end, and whether it says that the text is broken there.
    std::pair<std::string, bool> read(const std::string &bytes) const
    {
        const FileSystem::File file = open(bytes);
        Utf8FileStream stream(file.get());
        std::string text;
        while (text.size() < bytes.size() && !(stream.Peek() == '\0' && bytes[text.size()] != '\0')) {
            EXPECT_EQ(stream.Tell(), text.size());
            text += stream.Take();
        }
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(stream.Take(), '\0');
        return {text, stream.atInvalidText()};
    }

    /// The file as RapidJSON's own stream for every encoding reads it: its text, or "refused".
    std::string readPlainly() const
    {
        const FileSystem::File file = FileSystem::openForReading(path());
        std::array<char, block> buffer;
        rapidjson::FileReadStream bytes(file.get(), buffer.data(), buffer.size());
        rapidjson::AutoUTFInputStream<unsigned, rapidjson::FileReadStream> stream(bytes);
        rapidjson::Document document;
        document.ParseStream<rapidjson::kParseDefaultFlags, rapidjson::AutoUTF<unsigned>>(stream);
        return document.HasParseError() ? "refused" : RapidJsonConvert::toString(document);
    }

    std::string readByTheWriter() const
    {
        rapidjson::Document document;
        if (!RapidJsonLibraryWriter(&document).acceptJsonFile(path(), Varn::AbortableImpl()))
            return "refused";
        return RapidJsonConvert::toString(document);
    }

private:
    int m_memory;
};

std::string character(char32_t c)
{
    return QString::fromUcs4(&c, 1).toStdString();
}

const std::string characters[] = {"x", "\u00e4", "\u20ac", "\U0001F527"};

} // namespace

TEST_F(Utf8FileStreamTest, TextOfEveryLengthComesWhole)
{
    for (const std::size_t length : {std::size_t{0}, std::size_t{1}, std::size_t{7}, block - 1, block, block + 1,
                                     2 * block - 1, 2 * block, 2 * block + 1, 3 * block}) {
        std::string text(length, ' ');
        for (std::size_t i = 0; i < length; ++i)
            text[i] = static_cast<char>('a' + i % 26);
        const auto [handedOut, broken] = read(text);
        EXPECT_TRUE(handedOut == text) << length;
        EXPECT_FALSE(broken) << length;
    }
}

TEST_F(Utf8FileStreamTest, ACharacterAcrossTheBorderOfABlockComesWhole)
{
    for (const std::string &c : characters) {
        for (std::size_t before = block - 5; before <= block + 1; ++before) {
            const std::string text = std::string(before, 'a') + c + c + std::string(block - 3, 'b') + c + "z";
            const auto [handedOut, broken] = read(text);
            EXPECT_TRUE(handedOut == text) << c << " at " << before;
            EXPECT_FALSE(broken) << c << " at " << before;
        }
    }
}

TEST_F(Utf8FileStreamTest, BrokenTextEndsTheStreamWhereItBreaks)
{
    for (const char *bad :
         {"\xFF", "\x80", "\xC3", "\xE2\x82", "\xF0\x9F\x94", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80"}) {
        for (const std::size_t before :
             {std::size_t{0}, std::size_t{1}, block - 4, block - 3, block - 2, block - 1, block, block + 1}) {
            for (const std::string &after : {""s, "z"s, std::string(block, 'z')}) {
                const auto [handedOut, broken] = read(std::string(before, 'a') + bad + after);
                EXPECT_TRUE(handedOut == std::string(before, 'a')) << bad << " at " << before;
                EXPECT_TRUE(broken) << bad << " at " << before;
            }
        }
    }
}

TEST_F(Utf8FileStreamTest, BrokenTextIsNotReportedBeforeItIsReached)
{
    const FileSystem::File file = open("ab\xFF");
    Utf8FileStream stream(file.get());
    EXPECT_FALSE(stream.atInvalidText());
    EXPECT_EQ(stream.Take(), 'a');
    EXPECT_FALSE(stream.atInvalidText());
    EXPECT_EQ(stream.Take(), 'b');
    EXPECT_TRUE(stream.atInvalidText());
    EXPECT_EQ(stream.Peek(), '\0');
    EXPECT_EQ(stream.Tell(), 2U);
}

TEST_F(Utf8FileStreamTest, BlanksAreSteppedOver)
{
    for (const std::size_t length : {0, 1, 7, 8, 9, 15, 16, 17, 65530, 65535, 65536, 65537, 131080}) {
        for (const char blank : {' ', '\n', '\t', '\r'}) {
            const FileSystem::File file = open(std::string(length, blank) + "x ");
            Utf8FileStream stream(file.get());
            rapidjson::SkipWhitespace(stream);
            EXPECT_EQ(stream.Tell(), length);
            EXPECT_EQ(stream.Take(), 'x');
            rapidjson::SkipWhitespace(stream);
            EXPECT_EQ(stream.Peek(), '\0');
            EXPECT_EQ(stream.Tell(), length + 2);
        }
    }
}

TEST_F(Utf8FileStreamTest, WholeFilesReadAsThePlainStreamReadsThem)
{
    std::mt19937 random(1);
    for (int turn = 0; turn < 60; ++turn) {
        std::string text = "[\"";
        const std::size_t border = block * (1 + turn % 2);
        const std::size_t length = border - 12 + random() % 16;
        while (text.size() < length) {
            // Mostly long runs, and in the end characters of every width around the border.
            if (text.size() + 64 < border)
                text += std::string(border - text.size() - 40, 'a');
            char32_t c = random() % (1U << (random() % 21 + 1));
            c = c < 0x20 || c == '"' || c == '\\' || (c >= 0xD800 && c < 0xE000) || c > 0x10FFFF ? U'\n' : c;
            text += c == U'\n' ? "\\n" : character(c);
        }
        text += random() % 3 ? "\"]" : "\",1,{\"a\":2.5}]" + std::string(random() % 5000, ' ');
        write(text);
        const std::string expected = readPlainly();
        ASSERT_NE(expected, "refused");
        ASSERT_TRUE(readByTheWriter() == expected) << turn;
    }
}

TEST_F(Utf8FileStreamTest, BrokenFilesAreRefusedWhereThePlainStreamRefusesThem)
{
    std::mt19937 random(2);
    const std::string pieces[] = {"\xC3", "\xE2",   "\xF0",   "\x80",       "\xBF", "\xED\xA0",    "\xFF",
                                  "\0"s,  "\u00e4", "\u20ac", "\U0001F527", "x",    "\"",          "\\u00e4",
                                  "\\",   " ",      "\"]",    "\",\"",      "[",    "\xEF\xBB\xBF"};
    int refused = 0;
    int accepted = 0;
    for (int turn = 0; turn < 200; ++turn) {
        const std::size_t border = block * static_cast<std::size_t>(turn % 3); // near the beginning, too
        std::string text = "[\"";
        if (border > 0)
            text += std::string(border - 2 - random() % 12, 'a');
        for (unsigned i = random() % 8; i > 0; --i)
            text += pieces[random() % std::size(pieces)];
        text += random() % 2 ? "\"]"
                             : "\"]" + pieces[random() % std::size(pieces)] + std::string(random() % 2 * block, ' ');
        write(text);
        const std::string expected = readPlainly();
        ASSERT_TRUE(readByTheWriter() == expected) << turn << ": " << text.substr(border > 20 ? border - 20 : 0, 60);
        ++(expected == "refused" ? refused : accepted);
    }
    EXPECT_GT(refused, 40);
    EXPECT_GT(accepted, 20);
}

TEST_F(Utf8FileStreamTest, RandomBytesReadAsThePlainStreamReadsThem)
{
    std::mt19937 random(3);
    const std::string alphabet = "{}[]\",:\\ \n0123456789.eE+-truefalsnu\xEF\xBB\xBF\xFE\xFF\x80\xC3"s + '\0';
    for (int turn = 0; turn < 1500; ++turn) {
        std::string text;
        for (unsigned i = random() % 12; i > 0; --i)
            text += alphabet[random() % alphabet.size()];
        write(text);
        ASSERT_EQ(readByTheWriter(), readPlainly()) << text;
    }
}

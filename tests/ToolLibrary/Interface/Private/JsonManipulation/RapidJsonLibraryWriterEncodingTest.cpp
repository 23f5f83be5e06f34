#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonConvert.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonLibraryWriter.h"
#include "platform/utils/Abortable.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>

using namespace std::string_literals;
using namespace Varn::ToolLibraries;

namespace {

/// What the reader makes of the bytes of a text; its other promises have tests of their own.
class RapidJsonLibraryWriterEncodingTest : public testing::Test
{
protected:
    bool acceptFile(const std::string &bytes)
    {
        const QString path = m_folder.filePath("library.json");
        std::ofstream(path.toStdString(), std::ios::binary) << bytes;
        return m_writer.acceptJsonFile(path.toStdWString(), m_abortable);
    }
    bool acceptBytes(const std::string &bytes)
    {
        return m_writer.acceptJsonBytes(QByteArray::fromStdString(bytes), m_abortable);
    }
    bool acceptString(const std::string &text) { return m_writer.acceptJsonString(text, m_abortable); }

    std::string held() const { return RapidJsonConvert::toString(m_document); }

    QTemporaryDir m_folder;
    rapidjson::Document m_document;
    const RapidJsonLibraryWriter m_writer{&m_document};
    const Varn::AbortableImpl m_abortable;
};

enum class Order { Little, Big };

/// \a text in units of two or four bytes.
std::string encoded(const std::u32string &text, int unit, Order order)
{
    std::string bytes;
    const auto put = [&](char32_t value) {
        for (int i = 0; i < unit; ++i)
            bytes += static_cast<char>(value >> 8 * (order == Order::Little ? i : unit - 1 - i));
    };
    for (const char32_t c : text) {
        if (unit == 2 && c > 0xFFFF) {
            put(0xD800 + ((c - 0x10000) >> 10));
            put(0xDC00 + ((c - 0x10000) & 0x3FF));
        } else {
            put(c);
        }
    }
    return bytes;
}

struct Wide {
    const char *name;
    int unit;
    Order order;
};

const Wide wideEncodings[] = {
    {"UTF-16 LE", 2, Order::Little},
    {"UTF-16 BE", 2, Order::Big},
    {"UTF-32 LE", 4, Order::Little},
    {"UTF-32 BE", 4, Order::Big},
};

} // namespace

TEST_F(RapidJsonLibraryWriterEncodingTest, EachByteOfAUtf8MarkMayBeMissingFromBytesAndStrings)
{
    struct Row {
        const char *mark;
        bool accepted;
    };
    const Row rows[] = {
        {"\xEF\xBB\xBF", true},
        {"\xBB\xBF", true},
        {"\xEF\xBF", true},
        {"\xEF\xBB", true},
        {"\xEF", true},
        {"\xBB", true},
        {"\xBF", true},
        {"", true},
        {"\xBF\xBB", false},
        {"\xBB\xEF", false},
        {"\xEF\xEF\xBB\xBF", false},
        {"\xEF\xBB\xBF\xEF\xBB\xBF", false},
        {" \xEF\xBB\xBF", false},
        {"\xFE\xFF", false},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(acceptBytes(row.mark + "{\"a\":1}"s), row.accepted) << row.mark;
        EXPECT_EQ(acceptString(row.mark + "{\"a\":1}"s), row.accepted) << row.mark;
        if (row.accepted) {
            EXPECT_EQ(held(), R"({"a":1})");
        }
        EXPECT_FALSE(acceptBytes(row.mark)) << "nothing but a mark";
        EXPECT_FALSE(acceptString(row.mark));
    }
}

TEST_F(RapidJsonLibraryWriterEncodingTest, AFileHasAWholeMarkOrNone)
{
    EXPECT_TRUE(acceptFile("\xEF\xBB\xBF{\"a\":1}"));
    EXPECT_EQ(held(), R"({"a":1})");
    EXPECT_TRUE(acceptFile("\xEF\xBB\xBF"
                           "1"));
    for (const char *mark : {"\xBB\xBF", "\xEF\xBB", "\xEF\xBF", "\xEF", "\xBB", "\xBF", "\xEF\xBB\xBF\xEF\xBB\xBF"})
        EXPECT_FALSE(acceptFile(mark + "{\"a\":1}"s)) << mark;
    for (const char *mark : {"\xEF\xBB\xBF", "\xEF\xBB\xBF ", "\xFF\xFE", "\xFE\xFF", "\xFF\xFE\0\0", "\0\0\xFE\xFF"})
        EXPECT_FALSE(acceptFile(mark)) << mark;
}

TEST_F(RapidJsonLibraryWriterEncodingTest, TheEncodingOfAFileIsToldByItsMarkOrItsFirstBytes)
{
    const std::u32string text = U"{\"\u00e4\u5de5\":[\"\U0001F527\uFFFE\", 1, -2.5, true]}";
    const std::string expected = "{\"\u00e4\u5de5\":[\"\U0001F527\uFFFE\",1,-2.5,true]}";
    for (const Wide &wide : wideEncodings) {
        const std::string mark = encoded(U"\uFEFF", wide.unit, wide.order);
        const std::string bytes = encoded(text, wide.unit, wide.order);
        for (const std::string &start : {mark, ""s}) {
            m_document.SetNull();
            EXPECT_TRUE(acceptFile(start + bytes)) << wide.name << (start.empty() ? "" : " with a mark");
            EXPECT_EQ(held(), expected) << wide.name;
        }
        EXPECT_FALSE(acceptBytes(mark + bytes)) << wide.name << ": bytes are UTF-8";
        EXPECT_FALSE(acceptBytes(bytes)) << wide.name;
    }
}

TEST_F(RapidJsonLibraryWriterEncodingTest, TheShortestFilesAreReadInEachEncoding)
{
    for (const char *text : {"1", "[]", "{}", "\"a\"", "-1"}) {
        EXPECT_TRUE(acceptFile(text)) << text;
        EXPECT_EQ(held(), text);
        for (const Wide &wide : wideEncodings) {
            const std::u32string marked = U"\uFEFF" + std::u32string(text, text + std::strlen(text));
            EXPECT_TRUE(acceptFile(encoded(marked, wide.unit, wide.order))) << text << " in " << wide.name;
            EXPECT_EQ(held(), text) << wide.name;
        }
    }
}

TEST_F(RapidJsonLibraryWriterEncodingTest, AFileIsCheckedForUtf8BytesAreNot)
{
    struct Row {
        const char *name;
        const char *text;
    };
    const Row broken[] = {
        {"a byte that begins nothing", "\xFF"},
        {"a lone continuation", "\x80"},
        {"a cut character of two", "\xC3"},
        {"a cut character of three", "\xE2\x82"},
        {"a cut character of four", "\xF0\x9F\x94"},
        {"an overlong slash", "\xC0\xAF"},
        {"an overlong NUL", "\xC0\x80"},
        {"overlong in three bytes", "\xE0\x9F\xBF"},
        {"overlong in four bytes", "\xF0\x8F\xBF\xBF"},
        {"half of a surrogate pair", "\xED\xA0\x80"},
        {"a pair of surrogates", "\xED\xA0\xBD\xED\xB4\xA7"},
        {"beyond Unicode", "\xF4\x90\x80\x80"},
        {"five bytes", "\xF8\x88\x80\x80\x80"},
        {"Latin 1", "Fr\xE4ser"},
    };
    for (const Row &row : broken) {
        for (const auto &[before, after] : {std::pair("[\"", "\"]"), std::pair("{\"", "\":1}")}) {
            const std::string text = std::string(before) + row.text + after;
            EXPECT_FALSE(acceptFile(text)) << row.name;
            EXPECT_TRUE(acceptBytes(text)) << row.name;
            EXPECT_EQ(held(), text) << row.name;
            EXPECT_TRUE(acceptString(text)) << row.name;
        }
        EXPECT_FALSE(acceptFile(row.text)) << row.name;
        EXPECT_FALSE(acceptFile("{}"s + row.text)) << row.name;
        EXPECT_FALSE(acceptFile("5"s + row.text)) << row.name;
        EXPECT_FALSE(acceptFile("{} "s + row.text)) << row.name;
        EXPECT_FALSE(acceptBytes("{}"s + row.text)) << row.name;
        EXPECT_TRUE(acceptFile("{}\0"s + row.text)) << row.name << ", behind the end of the text";
    }
    for (const char *good : {"\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
                             "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF", "\xEF\xBB\xBF"}) {
        const std::string text = "[\""s + good + "\"]";
        EXPECT_TRUE(acceptFile(text)) << text;
        EXPECT_EQ(held(), text);
    }
}

TEST_F(RapidJsonLibraryWriterEncodingTest, AnEscapedHalfOfASurrogatePairIsRefusedOnlyIfItIsTheFirst)
{
    EXPECT_FALSE(acceptFile(R"(["\ud83d"])"));
    EXPECT_TRUE(acceptFile(R"(["\udc00"])"));
    EXPECT_EQ(held(), "[\"\xED\xB0\x80\"]");
}

TEST_F(RapidJsonLibraryWriterEncodingTest, BrokenWideTextIsRefused)
{
    for (const Order order : {Order::Little, Order::Big}) {
        const auto two = [&](const std::u32string &text) { return encoded(text, 2, order); };
        const auto four = [&](const std::u32string &text) { return encoded(text, 4, order); };
        EXPECT_FALSE(acceptFile(two({U'[', U'"', 0xD800, U'"', U']'}))) << "a first half alone";
        EXPECT_FALSE(acceptFile(two({U'[', U'"', 0xDC00, U'"', U']'}))) << "a second half alone";
        EXPECT_FALSE(acceptFile(four({U'[', U'"', 0x110000, U'"', U']'})));
        EXPECT_FALSE(acceptFile(four({U'[', U'"', 0xFFFFFFFF, U'"', U']'})));
        EXPECT_FALSE(acceptFile(two(U"[\"a")));
        EXPECT_FALSE(acceptFile(four(U"[\"a")));
        const std::string list = two(U"[1234]");
        EXPECT_FALSE(acceptFile(list.substr(0, list.size() - 2)));
        const std::string wide = four(U"[1234]");
        EXPECT_FALSE(acceptFile(wide.substr(0, wide.size() - 4)));
    }
}

TEST_F(RapidJsonLibraryWriterEncodingTest, AThousandLevelsAreReadInEachEncoding)
{
    const std::u32string deep = std::u32string(1001, U'[') + std::u32string(1001, U']');
    for (const Wide &wide : wideEncodings) {
        EXPECT_TRUE(acceptFile(encoded(deep.substr(1, 2000), wide.unit, wide.order))) << wide.name;
        EXPECT_FALSE(acceptFile(encoded(deep, wide.unit, wide.order))) << wide.name;
    }
}

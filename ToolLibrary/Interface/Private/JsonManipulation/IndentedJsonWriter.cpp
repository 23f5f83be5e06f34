#include "ToolLibrary/Interface/Private/JsonManipulation/IndentedJsonWriter.h"

#include "ToolLibrary/DocumentToolVariantMapUtil.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/GuidUtil.h"
#include "util/utility/Assert.h"

#include <QByteArray>
#include <QLocale>
#include <QString>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <forward_list>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace Varn::ToolLibraries {

namespace {

using Value = rapidjson::Value;

constexpr std::uint64_t eachByte = 0x0101010101010101u;
constexpr std::uint64_t highBits = eachByte * 0x80;

constexpr bool isPlain(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x20 && byte != '"' && byte != '\\';
}

/// Whether one of eight bytes is not plain.
constexpr bool hasSpecial(std::uint64_t bytes)
{
    const std::uint64_t quote = bytes ^ (eachByte * '"');
    const std::uint64_t backslash = bytes ^ (eachByte * '\\');
    return (((bytes - eachByte * 0x20) & ~bytes) | ((quote - eachByte) & ~quote) |
            ((backslash - eachByte) & ~backslash)) &
           highBits;
}

std::uint64_t eightBytes(const char *text)
{
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, text, sizeof bytes);
    return bytes;
}

/// How many bytes at the start of \a text need no escape.
std::size_t plainLength(std::string_view text)
{
    std::size_t i = 0;
    while (i + 8 <= text.size() && !hasSpecial(eightBytes(text.data() + i)))
        i += 8;
    while (i < text.size() && isPlain(text[i]))
        ++i;
    return i;
}

bool isAscii(std::string_view text)
{
    std::size_t i = 0;
    for (; i + 8 <= text.size(); i += 8)
        if (eightBytes(text.data() + i) & highBits)
            return false;
    return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(i), text.end(),
                       [](char c) { return static_cast<signed char>(c) >= 0; });
}

/// Whether the text is still the same after it was a QString, which drops a byte order mark at its beginning.
bool survivesQString(std::string_view text)
{
    return isAscii(text) || (!text.starts_with("\xEF\xBB\xBF") &&
                             QUtf8StringView(text.data(), static_cast<qsizetype>(text.size())).isValidUtf8());
}

QByteArray throughQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).toUtf8();
}

/// The order of the texts in UTF-16: there a character beyond U+FFFF, which is two surrogates, comes before U+E000.
bool isLess(std::string_view a, std::string_view b)
{
    const auto [inA, inB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (inA == a.end() || inB == b.end())
        return inA == a.end() && inB != b.end();
    const auto fromA = static_cast<unsigned char>(*inA);
    const auto fromB = static_cast<unsigned char>(*inB);
    constexpr unsigned char firstBehindSurrogates = 0xEE; // leads U+E000
    constexpr unsigned char firstBeyond16Bits = 0xF0;
    if (fromA >= firstBehindSurrogates && fromB >= firstBehindSurrogates &&
        (fromA >= firstBeyond16Bits) != (fromB >= firstBeyond16Bits))
        return fromA > fromB;
    return fromA < fromB;
}

/// A name as its bytes stand, up to a NUL.
std::string_view nameOf(const Value &name)
{
    return name.GetString();
}

/// True for an object whose members can be printed one after the other: plain ASCII names in ascending order.
bool isInOrder(const Value &object)
{
    std::string_view previous;
    bool first = true;
    for (const auto &member : object.GetObject()) {
        const std::string_view name(member.name.GetString(), member.name.GetStringLength());
        if (plainLength(name) < name.size() || !isAscii(name) || (!first && !(previous < name)))
            return false;
        previous = name;
        first = false;
    }
    return true;
}

/// Text on its way to the sink.
class Output
{
public:
    explicit Output(const IndentedJsonWriter::Sink &sink) : m_sink(sink) {}

    bool flush()
    {
        m_good = m_good && m_sink({m_block.data(), m_size});
        m_size = 0;
        return m_good;
    }
    bool isGood() const { return m_good; }

    void put(char c) { *reserve(1) = c, ++m_size; }
    void put(std::string_view text)
    {
        while (text.size() > mostReserved) {
            put(text.substr(0, mostReserved));
            text.remove_prefix(mostReserved);
        }
        if (!text.empty())
            std::memcpy(reserve(text.size()), text.data(), text.size());
        m_size += text.size();
    }
    void putLine(std::size_t depth)
    {
        put('\n');
        for (std::size_t left = 4 * depth; left > 0;) {
            const std::size_t count = std::min(left, mostReserved);
            std::memset(reserve(count), ' ', count);
            m_size += count;
            left -= count;
        }
    }
    template <typename Number>
    void putNumber(Number number)
    {
        char *const begin = reserve(longestNumber);
        m_size += static_cast<std::size_t>(std::to_chars(begin, begin + longestNumber, number).ptr - begin);
    }

private:
    static constexpr std::size_t blockSize = 65536;
    static constexpr std::size_t mostReserved = 1024;
    static constexpr std::size_t longestNumber = 32;

    char *reserve(std::size_t count)
    {
        if (blockSize - m_size < count)
            flush();
        return m_block.data() + m_size;
    }

    const IndentedJsonWriter::Sink &m_sink;
    std::array<char, blockSize> m_block; // left as it is: it is written before it is read
    std::size_t m_size = 0;
    bool m_good = true;
};

void putEscape(Output &output, char c)
{
    switch (c) {
    case '"':
        return output.put("\\\"");
    case '\\':
        return output.put("\\\\");
    case '\b':
        return output.put("\\b");
    case '\f':
        return output.put("\\f");
    case '\n':
        return output.put("\\n");
    case '\r':
        return output.put("\\r");
    case '\t':
        return output.put("\\t");
    default:
        output.put("\\u00");
        output.put(c < 0x10 ? '0' : '1');
        return output.put("0123456789abcdef"[c & 0xF]);
    }
}

/// \a text is UTF-8.
void putUtf8(Output &output, std::string_view text)
{
    output.put('"');
    for (;;) {
        const std::size_t plain = plainLength(text);
        output.put(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty())
            break;
        putEscape(output, text.front());
        text.remove_prefix(1);
    }
    output.put('"');
}

void putText(Output &output, std::string_view text)
{
    if (survivesQString(text))
        return putUtf8(output, text);
    const QByteArray repaired = throughQString(text);
    putUtf8(output, {repaired.constData(), static_cast<std::size_t>(repaired.size())});
}

void putDouble(Output &output, double number)
{
    // Up to here every whole number is a double, and below it the shortest texts of both libraries agree.
    constexpr double mostExact = 9007199254740992;
    if (!std::isfinite(number))
        output.put("null");
    else if (std::abs(number) > mostExact)
        output.put(QByteArray::number(number, 'g', QLocale::FloatingPointShortest).toStdString());
    else if (number == std::trunc(number))
        output.putNumber(static_cast<std::int64_t>(number));
    else
        output.putNumber(number);
}

/// Walks a document down to its last value. A document has at most 1,000 levels, so a walk may recurse.
class Printer
{
public:
    explicit Printer(const IndentedJsonWriter::Sink &sink) : m_output(sink) {}

    bool finish()
    {
        m_output.put('\n');
        return m_output.flush();
    }

    void printObject(const Value &object, std::size_t depth)
    {
        if (!isInOrder(object))
            return printSorted(object, depth);
        m_output.put('{');
        bool first = true;
        for (const auto &member : object.GetObject()) {
            beginElement(first, depth);
            m_output.put('"');
            m_output.put({member.name.GetString(), member.name.GetStringLength()});
            m_output.put("\": ");
            printValue(member.value, depth + 1);
        }
        m_output.putLine(depth);
        m_output.put('}');
    }

    void printLibraryWithNewGuids(const Value &library)
    {
        Members members(*this, library);
        const Value none(rapidjson::kArrayType);
        const Value *tools = members.replace("data", &none);
        m_output.put('{');
        bool first = true;
        for (std::size_t i = members.begin(); i < members.end(); ++i) {
            beginMember(m_members[i].name, first, 0);
            if (m_members[i].name == "data")
                printToolsWithNewGuids(tools && tools->IsArray() ? *tools : none);
            else
                printValue(*m_members[i].value, 1);
        }
        m_output.putLine(0);
        m_output.put('}');
    }

private:
    struct Member {
        std::string_view name;
        const Value *value;
    };

    /// The members of one object in the order of the text, on the stack of all objects that are being printed. An index
    /// stays valid while more come on top.
    class Members
    {
    public:
        Members(Printer &printer, const Value &object) : m_stack(printer.m_members), m_begin(m_stack.size())
        {
            if (object.IsObject())
                for (const auto &member : object.GetObject())
                    m_stack.push_back({readable(nameOf(member.name)), &member.value});
            // The values of an object lie in memory in their order, so that of one name the last comes last.
            std::sort(range().begin(), range().end(), [](const Member &a, const Member &b) {
                return isLess(a.name, b.name) || (a.name == b.name && a.value < b.value);
            });
            keepLastOfEach();
        }
        ~Members() { m_stack.resize(m_begin); }
        Members(const Members &) = delete;
        Members &operator=(const Members &) = delete;

        std::size_t begin() const { return m_begin; }
        std::size_t end() const { return m_begin + m_count; }

        /// Puts \a value in the place of the member of that name, or where one would stand. The old value, or null.
        const Value *replace(std::string_view name, const Value *value)
        {
            const auto at = std::ranges::lower_bound(range(), name, isLess, &Member::name);
            if (at != range().end() && at->name == name)
                return std::exchange(at->value, value);
            const auto position = static_cast<std::ptrdiff_t>(m_begin) + (at - range().begin());
            m_stack.insert(m_stack.begin() + position, {name, value});
            ++m_count;
            return nullptr;
        }

        void remove(std::string_view name)
        {
            const auto kept = std::ranges::remove(range(), name, &Member::name);
            m_count -= kept.size();
            m_stack.resize(end());
        }

    private:
        std::span<Member> range() { return std::span(m_stack).subspan(m_begin); }

        std::string_view readable(std::string_view name)
        {
            if (survivesQString(name))
                return name;
            return m_repaired.emplace_front(throughQString(name).toStdString());
        }

        void keepLastOfEach()
        {
            for (std::size_t i = m_begin; i < m_stack.size(); ++i)
                if (i + 1 == m_stack.size() || m_stack[i].name != m_stack[i + 1].name)
                    m_stack[m_begin + m_count++] = m_stack[i];
            m_stack.resize(end());
        }

        std::vector<Member> &m_stack;
        std::size_t m_begin;
        std::size_t m_count = 0;
        std::forward_list<std::string> m_repaired;
    };

    void beginElement(bool &first, std::size_t depth)
    {
        if (!first)
            m_output.put(',');
        first = false;
        m_output.putLine(depth + 1);
    }

    void beginMember(std::string_view name, bool &first, std::size_t depth)
    {
        beginElement(first, depth);
        putUtf8(m_output, name);
        m_output.put(": ");
    }

    void printSorted(const Value &object, std::size_t depth) { printMembers(Members(*this, object), depth); }

    void printMembers(const Members &members, std::size_t depth)
    {
        m_output.put('{');
        bool first = true;
        for (std::size_t i = members.begin(); i < members.end(); ++i) {
            beginMember(m_members[i].name, first, depth);
            printValue(*m_members[i].value, depth + 1);
        }
        m_output.putLine(depth);
        m_output.put('}');
    }

    template <typename Print>
    void printArray(const Value &array, std::size_t depth, const Print &print)
    {
        m_output.put('[');
        bool first = true;
        for (const Value &element : array.GetArray()) {
            if (!m_output.isGood())
                return; // nobody takes the rest
            beginElement(first, depth);
            print(element);
        }
        m_output.putLine(depth);
        m_output.put(']');
    }

    void printToolsWithNewGuids(const Value &tools)
    {
        printArray(tools, 1, [this](const Value &tool) {
            const std::string guid = GuidUtil::createGuid().toStdString();
            const Value text(rapidjson::StringRef(guid.data(), guid.size()));
            Members members(*this, tool);
            members.replace("guid", &text);
            for (const char *key : Tools::DocumentToolVariantMapUtil::informationKeys())
                members.remove(key);
            printMembers(members, 2);
        });
    }

    void printValue(const Value &value, std::size_t depth)
    {
        switch (value.GetType()) {
        case rapidjson::kNullType:
            return m_output.put("null");
        case rapidjson::kFalseType:
            return m_output.put("false");
        case rapidjson::kTrueType:
            return m_output.put("true");
        case rapidjson::kObjectType:
            return printObject(value, depth);
        case rapidjson::kArrayType:
            return printArray(value, depth, [&](const Value &element) { printValue(element, depth + 1); });
        case rapidjson::kStringType:
            return putText(m_output, {value.GetString(), value.GetStringLength()});
        case rapidjson::kNumberType:
            return value.IsInt() ? m_output.putNumber(value.GetInt()) : putDouble(m_output, value.GetDouble());
        }
    }

    Output m_output;
    std::vector<Member> m_members;
};

} // namespace

bool IndentedJsonWriter::print(const rapidjson::Value &object, const Sink &sink)
{
    VARN_EXPECTS(object.IsObject());
    Printer printer(sink);
    printer.printObject(object, 0);
    return printer.finish();
}

bool IndentedJsonWriter::printWithNewGuids(const rapidjson::Value &library, const Sink &sink)
{
    VARN_EXPECTS(library.IsObject());
    Printer printer(sink);
    printer.printLibraryWithNewGuids(library);
    return printer.finish();
}

} // namespace Varn::ToolLibraries

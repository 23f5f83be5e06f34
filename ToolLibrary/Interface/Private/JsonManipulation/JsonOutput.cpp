#include "ToolLibrary/Interface/Private/JsonManipulation/JsonOutput.h"

#include <QByteArray>
#include <QLocale>
#include <QString>

#include <cmath>
#include <cstdint>

namespace Varn::ToolLibraries {

namespace {

constexpr std::uint64_t eachByte = 0x0101010101010101u;
constexpr std::uint64_t highBits = eachByte * 0x80;
constexpr std::size_t longestSimpleName = 256;

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

} // namespace

bool JsonOutput::isSimple(std::string_view name)
{
    const std::size_t size = name.size();
    if (size < 8)
        return std::ranges::all_of(name, [](char c) { return isPlain(c) && static_cast<signed char>(c) >= 0; });
    const auto isSimpleAt = [&](std::size_t at) {
        const std::uint64_t bytes = eightBytes(name.data() + at);
        return !(hasSpecial(bytes) | (bytes & highBits));
    };
    // The last eight bytes may overlap those before.
    for (std::size_t i = 0; i + 8 < size; i += 8)
        if (!isSimpleAt(i))
            return false;
    return isSimpleAt(size - 8) && size <= longestSimpleName;
}

bool JsonOutput::survivesQString(std::string_view text)
{
    return isAscii(text) || (!text.starts_with("\xEF\xBB\xBF") &&
                             QUtf8StringView(text.data(), static_cast<qsizetype>(text.size())).isValidUtf8());
}

std::string JsonOutput::throughQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).toUtf8().toStdString();
}

void JsonOutput::putEscape(char c)
{
    switch (c) {
    case '"':
        return put("\\\"");
    case '\\':
        return put("\\\\");
    case '\b':
        return put("\\b");
    case '\f':
        return put("\\f");
    case '\n':
        return put("\\n");
    case '\r':
        return put("\\r");
    case '\t':
        return put("\\t");
    default:
        put("\\u00");
        put(c < 0x10 ? '0' : '1');
        return put("0123456789abcdef"[c & 0xF]);
    }
}

void JsonOutput::putUtf8(std::string_view text)
{
    put('"');
    for (;;) {
        const std::size_t plain = plainLength(text);
        put(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty())
            break;
        putEscape(text.front());
        text.remove_prefix(1);
    }
    put('"');
}

void JsonOutput::putText(std::string_view text)
{
    if (survivesQString(text))
        return putUtf8(text);
    putUtf8(throughQString(text));
}

void JsonOutput::putDouble(double number)
{
    // Up to here every whole number is a double, and below it the shortest texts of both libraries agree.
    constexpr double mostExact = 9007199254740992;
    if (!std::isfinite(number))
        put("null");
    else if (std::abs(number) > mostExact)
        put(QByteArray::number(number, 'g', QLocale::FloatingPointShortest).toStdString());
    else if (number == std::trunc(number))
        putNumber(static_cast<std::int64_t>(number));
    else
        putNumber(number);
}

} // namespace Varn::ToolLibraries

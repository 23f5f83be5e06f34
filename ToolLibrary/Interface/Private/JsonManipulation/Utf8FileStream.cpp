#include "ToolLibrary/Interface/Private/JsonManipulation/Utf8FileStream.h"

#include <QUtf8StringView>

#include <algorithm>

namespace Varn::ToolLibraries {

namespace {

bool isValidUtf8(const char *text, std::size_t length)
{
    return QUtf8StringView(text, static_cast<qsizetype>(length)).isValidUtf8();
}

/// How many bytes a character takes that begins with \a lead; 1 for what begins none.
std::size_t sequenceLength(char lead)
{
    const auto byte = static_cast<unsigned char>(lead);
    return byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
}

/// \a length without a character that begins in the last three bytes and ends beyond them.
std::size_t withoutCutCharacter(const char *text, std::size_t length)
{
    for (std::size_t back = 1; back <= std::min<std::size_t>(3, length); ++back)
        if (sequenceLength(text[length - back]) > back)
            return length - back;
    return length;
}

/// The length of the valid beginning of a text that is not valid as a whole.
std::size_t validPrefix(const char *text, std::size_t length)
{
    std::size_t position = 0;
    while (position < length) {
        const std::size_t next = sequenceLength(text[position]);
        if (next > length - position || !isValidUtf8(text + position, next))
            break;
        position += next;
    }
    return position;
}

} // namespace

Utf8FileStream::Utf8FileStream(std::FILE *file) : m_file(file)
{
    refill();
}

void Utf8FileStream::refill()
{
    if (m_ended || m_invalid) {
        m_consumed += m_exposed;
        m_exposed = 0;
        static const char end = '\0';
        m_begin = m_at = &end;
        m_end = m_begin + 1;
        m_ended = true;
        return;
    }
    // A character that the last block cut in two comes first.
    const std::size_t rest = m_filled - m_exposed;
    std::memmove(m_buffer.data(), m_buffer.data() + m_exposed, rest);
    m_consumed += m_exposed;
    const std::size_t read = std::fread(m_buffer.data() + rest, 1, m_buffer.size() - rest, m_file);
    m_filled = rest + read;
    m_exposed = 0;
    const bool last = m_filled < m_buffer.size();
    std::size_t length = last ? m_filled : withoutCutCharacter(m_buffer.data(), m_filled);
    if (!isValidUtf8(m_buffer.data(), length)) {
        length = validPrefix(m_buffer.data(), length);
        m_invalid = true;
    }
    m_invalid = m_invalid || std::ferror(m_file) != 0;
    expose(length);
}

void Utf8FileStream::expose(std::size_t length)
{
    if (length == 0) {
        m_ended = true;
        refill();
        return;
    }
    m_exposed = length;
    m_begin = m_at = m_buffer.data();
    m_end = m_begin + length;
}

} // namespace Varn::ToolLibraries

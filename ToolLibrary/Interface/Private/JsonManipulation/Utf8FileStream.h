// Utf8FileStream.h -- a RapidJSON input stream over a file of UTF-8 that hands out only valid UTF-8. One thread.
//
// RapidJSON's own stream for text of any encoding decodes each character twice. Nearly every library is UTF-8, and
// there the check can run block by block, and blanks can be skipped eight at a time.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <rapidjson/reader.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT Utf8FileStream
{
public:
    using Ch = char; // the name that RapidJSON asks for

    /// Starts at the file's position. \a file must outlive this object.
    explicit Utf8FileStream(std::FILE *file);
    Utf8FileStream(const Utf8FileStream &) = delete;
    Utf8FileStream &operator=(const Utf8FileStream &) = delete;

    Ch Peek() const { return *m_at; }
    Ch Take()
    {
        const Ch character = *m_at++;
        if (m_at == m_end)
            refill();
        return character;
    }
    std::size_t Tell() const { return m_consumed + static_cast<std::size_t>(m_at - m_begin); }

    /// Steps over the blanks of JSON.
    void skipWhitespace();

    /// True when the reader has come to a byte that is no UTF-8, or that could not be read. What it sees there is the
    /// end.
    bool atInvalidText() const { return m_ended && m_invalid; }

    // RapidJSON asks for these of every stream and calls them of none that it only reads.
    Ch *PutBegin() { return nullptr; }
    void Put(Ch) {}
    void Flush() {}
    std::size_t PutEnd(Ch *) { return 0; }

private:
    static constexpr std::size_t blockSize = 65536;

    void refill();
    void expose(std::size_t length);

    std::FILE *m_file;
    std::array<char, blockSize> m_buffer;
    std::size_t m_filled = 0;   // bytes in m_buffer
    std::size_t m_exposed = 0;  // of them, what the reader may see
    std::size_t m_consumed = 0; // bytes of earlier blocks
    const char *m_begin = nullptr;
    const char *m_at = nullptr;
    const char *m_end = nullptr;
    bool m_invalid = false;
    bool m_ended = false;
};

inline void Utf8FileStream::skipWhitespace()
{
    constexpr std::uint64_t eightBlanks = 0x2020202020202020u;
    for (;;) {
        std::uint64_t next = 0;
        while (m_end - m_at > 8 && (std::memcpy(&next, m_at, 8), next == eightBlanks))
            m_at += 8;
        const char character = *m_at;
        if (character != ' ' && character != '\n' && character != '\r' && character != '\t')
            return;
        Take();
    }
}

} // namespace Varn::ToolLibraries

namespace rapidjson {

template <>
inline void SkipWhitespace(Varn::ToolLibraries::Utf8FileStream &stream)
{
    stream.skipWhitespace();
}

} // namespace rapidjson

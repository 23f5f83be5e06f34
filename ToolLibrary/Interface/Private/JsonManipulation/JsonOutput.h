// JsonOutput.h -- JSON text on its way to a sink: lines, names, texts and numbers as QJsonDocument prints them. One
// thread.
#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>

namespace Varn::ToolLibraries {

/// Collects blocks of 64 KiB. Once the sink has refused one, nothing more reaches it.
class JsonOutput
{
public:
    using Sink = std::function<bool(std::string_view)>;

    /// Values each on a line of their own, or without any blanks.
    enum class Form { Indented, Compact };

    /// \a sink must outlive this object.
    JsonOutput(const Sink &sink, Form form) : m_sink(sink), m_isIndented(form == Form::Indented) {}

    /// Hands over what is left; false when the sink has refused anything.
    bool flush()
    {
        m_good = m_good && m_sink({m_block.data(), m_size});
        m_size = 0;
        return m_good;
    }
    bool isGood() const { return m_good; }

    /// Whether a name prints as it stands: at most 256 characters of ASCII without escapes.
    static bool isSimple(std::string_view name);

    /// Whether a text is still the same after it was a QString, which takes UTF-8 alone and drops a byte order mark at
    /// its beginning.
    static bool survivesQString(std::string_view text);

    /// What it is afterwards.
    static std::string throughQString(std::string_view text);

    void put(char c)
    {
        *reserve(1) = c;
        ++m_size;
    }
    void put(std::string_view text)
    {
        while (text.size() > mostReserved) {
            put(text.substr(0, mostReserved));
            text.remove_prefix(mostReserved);
        }
        if (!text.empty())
            copyShort(reserve(text.size()), text);
        m_size += text.size();
    }

    /// The line that ends an object or a list, with four blanks for each of \a depth.
    void putLine(std::size_t depth) { beginLine(depth, true, 0); }

    /// The line of a member up to its value, behind another one for \a first false.
    void putMember(std::string_view simpleName, bool first, std::size_t depth)
    {
        char *at = beginLine(depth, first, simpleName.size() + 4);
        *at++ = '"';
        at = copyShort(at, simpleName);
        std::memcpy(at, "\": ", 3);
        m_size += simpleName.size() + (m_isIndented ? 4 : 3);
    }
    /// What stands between a name and its value.
    void putColon() { put(m_isIndented ? ": " : ":"); }

    /// The line of an element, up to its value.
    void putElement(bool first, std::size_t depth) { beginLine(depth, first, 0); }

    /// As std::to_chars() prints it.
    template <typename Number>
    void putNumber(Number number)
    {
        char *const begin = reserve(longestNumber);
        m_size += static_cast<std::size_t>(std::to_chars(begin, begin + longestNumber, number).ptr - begin);
    }
    void putDouble(double number);           ///< null for what is not finite
    void putUtf8(std::string_view text);     ///< in quotation marks; \a text is UTF-8
    void putText(std::string_view anyBytes); ///< in quotation marks, U+FFFD where the bytes are no UTF-8

private:
    static constexpr std::size_t blockSize = 65536;
    static constexpr std::size_t mostReserved = 1024;
    static constexpr std::size_t longestNumber = 32;
    static constexpr std::string_view blankBlock = "                "; // copied whole, over what follows

    /// Begins a line, behind a comma unless it is the first. Gives where it goes on, with room for \a more bytes.
    char *beginLine(std::size_t depth, bool first, std::size_t more)
    {
        if (!first)
            put(',');
        if (!m_isIndented)
            return reserve(more);
        put('\n');
        std::size_t blanks = 4 * depth;
        for (; blanks > mostReserved; blanks -= mostReserved) {
            std::memset(reserve(mostReserved), ' ', mostReserved);
            m_size += mostReserved;
        }
        char *const at = reserve(blanks + blankBlock.size() + more);
        for (std::size_t i = 0; i < blanks; i += blankBlock.size())
            std::memcpy(at + i, blankBlock.data(), blankBlock.size());
        m_size += blanks;
        return at + blanks;
    }

    /// Faster than std::memcpy() for what is mostly shorter than 16 bytes.
    static char *copyShort(char *to, std::string_view text)
    {
        const std::size_t size = text.size();
        if (size >= 8 && size <= 16) {
            std::memcpy(to, text.data(), 8);
            std::memcpy(to + size - 8, text.data() + size - 8, 8);
        } else if (size >= 4 && size < 8) {
            std::memcpy(to, text.data(), 4);
            std::memcpy(to + size - 4, text.data() + size - 4, 4);
        } else {
            std::memcpy(to, text.data(), size);
        }
        return to + size;
    }

    void putEscape(char c);

    char *reserve(std::size_t count)
    {
        if (blockSize - m_size < count)
            flush();
        return m_block.data() + m_size;
    }

    const Sink &m_sink;
    const bool m_isIndented;
    std::array<char, blockSize> m_block; // left as it is: it is written before it is read
    std::size_t m_size = 0;
    bool m_good = true;
};

} // namespace Varn::ToolLibraries

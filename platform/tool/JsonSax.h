// JsonSax.h -- strict reading of a JSON text as a stream of events, for those who need no tree of values. Any thread.
#pragma once

#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <cstring>
#include <string>
#include <string_view>

namespace Varn::ToolLibraries::JsonSax {

/// A text nested deeper than this many levels of arrays and objects is refused.
inline constexpr int maxDepth = 1000;

/// Passes the events of RapidJSON on to \a Handler and stops the reading where the text breaks a rule that the reader
/// lets pass: too deep, or a lone low surrogate written as \\uDC00 to \\uDFFF, which makes no UTF-8.
template <typename Handler>
class StrictEvents
{
public:
    explicit StrictEvents(Handler &handler) : m_handler(handler) {}

    /// What broke off the reading, when neither the text nor the reader can tell: a rule of ours, or one of the handler
    /// that has an operation failure(); null otherwise.
    const char *failure() const
    {
        if constexpr (requires { m_handler.failure(); })
            return m_failure ? m_failure : m_handler.failure();
        else
            return m_failure;
    }

    bool Null() { return m_handler.Null(); }
    bool Bool(bool value) { return m_handler.Bool(value); }
    bool Int(int value) { return m_handler.Int(value); }
    bool Uint(unsigned value) { return m_handler.Uint(value); }
    bool Int64(int64_t value) { return m_handler.Int64(value); }
    bool Uint64(uint64_t value) { return m_handler.Uint64(value); }
    bool Double(double value) { return m_handler.Double(value); }
    bool RawNumber(const char *text, unsigned length, bool copy) { return m_handler.RawNumber(text, length, copy); }
    bool String(const char *text, unsigned length, bool copy)
    {
        return isUnicode(text, length) && m_handler.String(text, length, copy);
    }
    bool Key(const char *text, unsigned length, bool copy)
    {
        return isUnicode(text, length) && m_handler.Key(text, length, copy);
    }
    bool StartObject() { return enter() && m_handler.StartObject(); }
    bool EndObject(unsigned count) { return leave() && m_handler.EndObject(count); }
    bool StartArray() { return enter() && m_handler.StartArray(); }
    bool EndArray(unsigned count) { return leave() && m_handler.EndArray(count); }

private:
    bool enter()
    {
        if (++m_depth <= maxDepth)
            return true;
        m_failure = "Nested deeper than 1000 levels.";
        return false;
    }
    bool leave()
    {
        --m_depth;
        return true;
    }
    bool isUnicode(const char *text, unsigned length)
    {
        // The bytes were checked already, so that ED A0..BF can only come of an escape.
        const char *const end = text + length;
        for (const char *at = text; (at = static_cast<const char *>(std::memchr(at, 0xED, std::size_t(end - at))));
             ++at) {
            if (at + 1 < end && static_cast<unsigned char>(at[1]) >= 0xA0) {
                m_failure = "The surrogate pair in string is invalid.";
                return false;
            }
        }
        return true;
    }

    Handler &m_handler;
    int m_depth = 0;
    const char *m_failure = nullptr;
};

/// Hands the events of \a text to \a handler, without recursion. Strict: RFC 8259 with nothing before or behind the
/// root but blanks (no byte order mark either), no comments, no trailing commas, valid UTF-8, at most maxDepth levels,
/// numbers within the range of a double. Any value may be the root. A handler that answers false ends the reading.
/// \returns whether the whole text was read; if not, \a error, when given, says what is wrong and at which byte.
template <unsigned flags = rapidjson::kParseNoFlags, typename Handler>
bool read(std::string_view text, Handler &handler, std::string *error)
{
    constexpr unsigned allFlags = flags | rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;
    rapidjson::MemoryStream stream(text.data(), text.size());
    rapidjson::Reader reader;
    StrictEvents<Handler> events(handler);
    const rapidjson::ParseResult result = reader.Parse<allFlags>(stream, events);
    // The reader takes a NUL byte for the end of the text.
    if (!result.IsError() && stream.Tell() == text.size())
        return true;
    if (error) {
        const auto code = result.IsError() ? result.Code() : rapidjson::kParseErrorDocumentRootNotSingular;
        const std::size_t offset = result.IsError() ? result.Offset() : stream.Tell();
        *error = std::string(events.failure() ? events.failure() : rapidjson::GetParseError_En(code)) + " At byte " +
                 std::to_string(offset) + ".";
    }
    return false;
}

} // namespace Varn::ToolLibraries::JsonSax

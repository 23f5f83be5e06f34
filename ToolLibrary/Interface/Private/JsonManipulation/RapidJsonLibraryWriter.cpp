#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonLibraryWriter.h"

#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonConvert.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/Utf8FileStream.h"
#include "platform/utils/Abortable.h"
#include "platform/utils/FileSystem.h"

#include <rapidjson/encodedstream.h>
#include <rapidjson/filereadstream.h>
#include <rapidjson/memorystream.h>

#include <array>
#include <cstdint>
#include <cstring>

namespace Varn::ToolLibraries {

namespace {

/// Bytes in memory, which need not end in a NUL. Unlike RapidJSON's own stream it steps over blanks eight at a time:
/// they are a third of an indented library.
class BytesStream : public rapidjson::MemoryStream
{
public:
    using MemoryStream::MemoryStream;

    void skipWhitespace()
    {
        constexpr std::uint64_t eightBlanks = 0x2020202020202020u;
        for (;;) {
            std::uint64_t next = 0;
            while (end_ - src_ >= 8 && (std::memcpy(&next, src_, 8), next == eightBlanks))
                src_ += 8;
            const char character = Peek();
            if (character != ' ' && character != '\n' && character != '\r' && character != '\t')
                return;
            Take();
        }
    }
};

/// Hands what the reader finds to the document, asks the abortable at the end of each object, counts the values, and
/// keeps the reader, which recurses, from going deeper than a stack holds.
class GuardedHandler
{
public:
    using Ch = char; // the name that RapidJSON asks for
    using Size = rapidjson::SizeType;

    GuardedHandler(rapidjson::Document &document, const Abortable &abortable, std::size_t mostValues)
        : m_document(document), m_abortable(abortable), m_valuesLeft(mostValues)
    {
    }

    bool Null() { return count() && m_document.Null(); }
    bool Bool(bool value) { return count() && m_document.Bool(value); }
    bool Int(int value) { return count() && m_document.Int(value); }
    bool Uint(unsigned value) { return count() && m_document.Uint(value); }
    bool Int64(int64_t value) { return count() && m_document.Int64(value); }
    bool Uint64(uint64_t value) { return count() && m_document.Uint64(value); }
    bool Double(double value) { return count() && m_document.Double(value); }
    bool RawNumber(const Ch *text, Size length, bool copy)
    {
        return count() && m_document.RawNumber(text, length, copy);
    }
    bool String(const Ch *text, Size length, bool copy) { return count() && m_document.String(text, length, copy); }
    bool Key(const Ch *text, Size length, bool copy) { return count() && m_document.Key(text, length, copy); }
    bool StartObject() { return descend() && m_document.StartObject(); }
    bool EndObject(Size members)
    {
        --m_depth;
        return !m_abortable.isAborted() && m_document.EndObject(members);
    }
    bool StartArray() { return descend() && m_document.StartArray(); }
    bool EndArray(Size elements)
    {
        --m_depth;
        return m_document.EndArray(elements);
    }

private:
    static constexpr int maximumDepth = 1000;

    bool count() { return m_valuesLeft-- != 0; }
    bool descend() { return count() && ++m_depth <= maximumDepth; }

    rapidjson::Document &m_document;
    const Abortable &m_abortable;
    std::size_t m_valuesLeft;
    int m_depth = 0;
};

} // namespace

} // namespace Varn::ToolLibraries

namespace rapidjson {

template <>
inline void SkipWhitespace(Varn::ToolLibraries::BytesStream &stream)
{
    stream.skipWhitespace();
}

} // namespace rapidjson

namespace Varn::ToolLibraries {

namespace {

/// Parses \a stream into \a target; false on bad text, an abort, text nested too deeply or of too many values.
template <typename SourceEncoding, typename Stream>
bool parse(Stream &stream, rapidjson::Document &target, const Abortable &abortable, std::size_t mostValues)
{
    bool parsed = false;
    auto generator = [&](rapidjson::Document &document) {
        GuardedHandler handler(document, abortable, mostValues);
        rapidjson::GenericReader<SourceEncoding, rapidjson::UTF8<>> reader;
        parsed = !reader.template Parse<rapidjson::kParseDefaultFlags>(stream, handler).IsError();
        return parsed;
    };
    target.Populate(generator);
    return parsed;
}

/// Steps over a byte order mark, of which each byte may be missing.
template <typename Stream>
void skipByteOrderMark(Stream &stream)
{
    for (const char mark : {'\xEF', '\xBB', '\xBF'})
        if (stream.Peek() == mark)
            stream.Take();
}

struct Encoding {
    bool isUtf8;
    std::size_t markLength;
};

/// What the first bytes of the file tell; the file stands at its beginning afterwards.
Encoding detectEncoding(std::FILE *file)
{
    std::array<char, 4> head{};
    const std::size_t length = std::fread(head.data(), 1, head.size(), file);
    std::rewind(file);
    rapidjson::MemoryStream bytes(head.data(), length);
    const rapidjson::AutoUTFInputStream<unsigned, rapidjson::MemoryStream> probe(bytes);
    return {probe.GetType() == rapidjson::kUTF8, probe.HasBOM() ? std::size_t{3} : 0};
}

} // namespace

bool RapidJsonLibraryWriter::acceptJsonFile(const std::wstring &path, const Abortable &abortable) const
{
    const auto file = FileSystem::openForReading(path);
    if (!file)
        return false;
    const Encoding encoding = detectEncoding(file.get());
    if (encoding.isUtf8) {
        std::fseek(file.get(), static_cast<long>(encoding.markLength), SEEK_SET);
        Utf8FileStream stream(file.get());
        return parse<rapidjson::UTF8<>>(stream, *m_target, abortable, m_mostValues) && !stream.atInvalidText();
    }
    std::array<char, 65536> buffer;
    rapidjson::FileReadStream blocks(file.get(), buffer.data(), buffer.size());
    rapidjson::AutoUTFInputStream<unsigned, rapidjson::FileReadStream> stream(blocks);
    return parse<rapidjson::AutoUTF<unsigned>>(stream, *m_target, abortable, m_mostValues);
}

bool RapidJsonLibraryWriter::acceptJsonBytes(const QByteArray &bytes, const Abortable &abortable) const
{
    BytesStream stream(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    skipByteOrderMark(stream);
    return parse<rapidjson::UTF8<>>(stream, *m_target, abortable, m_mostValues);
}

bool RapidJsonLibraryWriter::acceptJsonString(const std::string &text, const Abortable &abortable) const
{
    rapidjson::StringStream stream(text.c_str());
    skipByteOrderMark(stream);
    return parse<rapidjson::UTF8<>>(stream, *m_target, abortable, m_mostValues);
}

void RapidJsonLibraryWriter::acceptQVariantMap(const QMap<QString, QVariant> &map) const
{
    rapidjson::Value value = RapidJsonConvert::fromQVariant(map, m_target->GetAllocator());
    value.Swap(*m_target);
}

} // namespace Varn::ToolLibraries

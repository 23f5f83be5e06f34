#include "platform/ox/JSONNode.h"

#include <QByteArrayView>

#include <rapidjson/memorystream.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <charconv>
#include <cmath>
#include <utility>
#include <vector>

namespace Ox {

// jsoncpp keeps the values, RapidJSON reads and writes the text: jsoncpp's own reader takes much that is no JSON, and
// both its reader and its writer let the locale of the process into their numbers.

namespace {

template <typename Integer>
std::optional<Json::Value> integerOf(std::string_view digits)
{
    Integer value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc())
        return std::nullopt;
    return Json::Value(value);
}

std::optional<Json::Value> numberOf(std::string_view text)
{
    if (text.find_first_of(".eE") == std::string_view::npos) {
        if (auto value = integerOf<Json::Int64>(text))
            return value;
        if (auto value = integerOf<Json::UInt64>(text))
            return value;
    }
    // What is too small for a double is 0, what is too large an infinity.
    const double value = QByteArrayView(text.data(), static_cast<qsizetype>(text.size())).toDouble();
    if (!std::isfinite(value))
        return std::nullopt;
    return Json::Value(value);
}

// A lone second half of a surrogate pair, "\udc00", which the reader lets pass: in UTF-8 it would begin with ED, A0 to
// BF.
bool hasSurrogate(std::string_view utf8)
{
    for (auto at = utf8.find('\xED'); at != std::string_view::npos; at = utf8.find('\xED', at + 1)) {
        if (at + 1 < utf8.size() && static_cast<unsigned char>(utf8[at + 1]) >= 0xA0)
            return true;
    }
    return false;
}

// Receives the events of the reader; an answer of false ends the reading.
class Builder : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Builder>
{
public:
    bool Null() { return add(Json::Value()); }
    bool Bool(bool value) { return add(Json::Value(value)); }
    bool RawNumber(const char *text, rapidjson::SizeType length, bool)
    {
        auto number = numberOf({text, length});
        return number && add(std::move(*number));
    }
    bool String(const char *text, rapidjson::SizeType length, bool)
    {
        return !hasSurrogate({text, length}) && add(Json::Value(text, text + length));
    }
    bool Key(const char *text, rapidjson::SizeType length, bool)
    {
        m_key.assign(text, length);
        return !hasSurrogate(m_key);
    }
    bool StartObject() { return open(Json::objectValue); }
    bool StartArray() { return open(Json::arrayValue); }
    bool EndObject(rapidjson::SizeType) { return close(); }
    bool EndArray(rapidjson::SizeType) { return close(); }

    Json::Value takeRoot() { return std::move(m_root); }

private:
    Json::Value &place()
    {
        if (m_open.empty())
            return m_root;
        Json::Value &container = *m_open.back();
        return container.isObject() ? container[m_key] : container.append(Json::Value());
    }
    bool add(Json::Value value)
    {
        place() = std::move(value);
        return true;
    }
    bool open(Json::ValueType type)
    {
        if (m_open.size() == JSONNode::maximumDepth)
            return false;
        Json::Value &container = place();
        container = Json::Value(type);
        m_open.push_back(&container);
        return true;
    }
    bool close()
    {
        m_open.pop_back();
        return true;
    }

    Json::Value m_root;
    std::vector<Json::Value *> m_open; // from the root inwards; jsoncpp never moves a value that has its place
    std::string m_key;
};

template <typename Writer>
void writeDouble(double value, Writer &writer)
{
    constexpr int digits = 17; // enough for any double to read back equal
    char buffer[32];
    char *end = std::to_chars(buffer, std::end(buffer), value, std::chars_format::general, digits).ptr;
    if (std::string_view(buffer, end).find_first_of(".e") == std::string_view::npos) {
        *end++ = '.';
        *end++ = '0';
    }
    writer.RawValue(buffer, static_cast<std::size_t>(end - buffer), rapidjson::kNumberType);
}

// Recurses at most JSONNode::maximumDepth deep.
template <typename Writer>
void write(const Json::Value &value, Writer &writer)
{
    const auto length = [](const char *begin, const char *end) {
        return static_cast<rapidjson::SizeType>(end - begin);
    };
    const char *begin = nullptr;
    const char *end = nullptr;
    switch (value.type()) {
    case Json::nullValue:
        writer.Null();
        break;
    case Json::booleanValue:
        writer.Bool(value.asBool());
        break;
    case Json::intValue:
        writer.Int64(value.asInt64());
        break;
    case Json::uintValue:
        writer.Uint64(value.asUInt64());
        break;
    case Json::realValue:
        writeDouble(value.asDouble(), writer);
        break;
    case Json::stringValue:
        value.getString(&begin, &end);
        writer.String(begin, length(begin, end));
        break;
    case Json::arrayValue:
        writer.StartArray();
        for (const Json::Value &element : value)
            write(element, writer);
        writer.EndArray();
        break;
    case Json::objectValue:
        writer.StartObject();
        for (auto member = value.begin(); member != value.end(); ++member) {
            begin = member.memberName(&end);
            writer.Key(begin, length(begin, end));
            write(*member, writer);
        }
        writer.EndObject();
        break;
    }
}

template <typename Writer>
std::string print(const Json::Value &value)
{
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    write(value, writer);
    return std::string(buffer.GetString(), buffer.GetSize());
}

} // namespace

std::shared_ptr<const JSONNode> JSONNode::parse(std::string_view text)
{
    if (text.size() > maximumSize)
        return nullptr;
    constexpr unsigned flags =
        rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag | rapidjson::kParseNumbersAsStringsFlag;
    rapidjson::MemoryStream stream(text.data(), text.size());
    rapidjson::Reader reader;
    Builder builder;
    // The reader takes a NUL behind the root for the end of the text.
    if (!reader.Parse<flags>(stream, builder) || stream.Tell() != text.size())
        return nullptr;
    return std::make_shared<const JSONNode>(Private(), builder.takeRoot());
}

JSONNode::JSONNode(Private, Json::Value root) : m_root(std::move(root)) {}

std::optional<JSONRef> JSONNode::get(std::string_view key) const
{
    const JSONRef whole = root();
    if (!whole.exists(key))
        return std::nullopt;
    return whole[key];
}

JSONRef JSONNode::root() const
{
    return JSONRef(shared_from_this(), m_root);
}

std::string JSONNode::stringify(bool pretty) const
{
    using Compact = rapidjson::Writer<rapidjson::StringBuffer>;
    using Pretty = rapidjson::PrettyWriter<rapidjson::StringBuffer>;
    return pretty ? print<Pretty>(m_root) : print<Compact>(m_root);
}

} // namespace Ox

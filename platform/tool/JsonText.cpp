#include "platform/tool/JsonText.h"

#include "platform/tool/JsonSax.h"

#include <charconv>
#include <cmath>
#include <locale>
#include <sstream>
#include <vector>

namespace Varn::ToolLibraries::JsonText {

namespace {

/// Builds the tree from the events of the reader.
class ValueBuilder
{
public:
    Json::Value takeRoot() { return std::move(m_root); }
    const char *failure() const { return m_failure; }

    bool Null() { return put(Json::Value()); }
    bool Bool(bool value) { return put(Json::Value(value)); }
    bool String(const char *text, unsigned length, bool) { return put(Json::Value(text, text + length)); }
    bool RawNumber(const char *text, unsigned length, bool);
    bool StartObject() { return open(Json::Value(Json::objectValue)); }
    bool StartArray() { return open(Json::Value(Json::arrayValue)); }
    bool EndObject(unsigned) { return close(); }
    bool EndArray(unsigned) { return close(); }
    bool Key(const char *text, unsigned length, bool)
    {
        m_slot = m_open.back()->demand(text, text + length);
        return true;
    }

    // Numbers come as texts.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(int64_t) { return false; }
    bool Uint64(uint64_t) { return false; }
    bool Double(double) { return false; }

private:
    Json::Value &place(Json::Value value)
    {
        if (m_open.empty())
            return m_root = std::move(value);
        if (m_open.back()->isArray())
            return m_open.back()->append(std::move(value));
        return *m_slot = std::move(value);
    }
    bool put(Json::Value value)
    {
        place(std::move(value));
        return true;
    }
    bool open(Json::Value value)
    {
        m_open.push_back(&place(std::move(value)));
        return true;
    }
    bool close()
    {
        m_open.pop_back();
        return true;
    }

    Json::Value m_root;
    std::vector<Json::Value *> m_open; ///< the arrays and objects around the place of reading
    Json::Value *m_slot = nullptr;     ///< where the value of the last key goes
    const char *m_failure = nullptr;
};

/// The whole of [text, end) as a number of type T.
template <typename T>
std::optional<T> readNumber(const char *text, const char *end)
{
    T value = 0;
    const auto [stop, code] = std::from_chars(text, end, value);
    if (code != std::errc() || stop != end)
        return std::nullopt;
    return value;
}

bool ValueBuilder::RawNumber(const char *text, unsigned length, bool)
{
    const char *const end = text + length;
    if (std::string_view(text, length).find_first_of(".eE") == std::string_view::npos) {
        if (const auto value = readNumber<Json::LargestInt>(text, end))
            return put(Json::Value(*value));
        if (const auto value = readNumber<Json::LargestUInt>(text, end))
            return put(Json::Value(*value));
    }
    if (const auto value = readNumber<double>(text, end))
        return put(Json::Value(*value));
    // Out of range on either side; from_chars does not say on which, and a stream of the classic locale does.
    std::istringstream stream(std::string(text, length));
    stream.imbue(std::locale::classic());
    double value = 0;
    if (stream >> value)
        return put(Json::Value(value));
    m_failure = rapidjson::GetParseError_En(rapidjson::kParseErrorNumberTooBig);
    return false;
}

void printDouble(double value, std::string &out)
{
    if (!std::isfinite(value)) {
        out += "null";
        return;
    }
    const double size = std::fabs(value);
    const bool isPlain = size == 0 || (size >= 1e-6 && size < 1e17);
    char text[40];
    const auto end = std::to_chars(text, text + sizeof text, value,
                                   isPlain ? std::chars_format::fixed : std::chars_format::scientific)
                         .ptr;
    const std::string_view written(text, std::size_t(end - text));
    out += written;
    if (written.find_first_of(".e") == std::string_view::npos)
        out += ".0";
}

template <typename T>
void printInteger(T value, std::string &out)
{
    char text[24];
    out.append(text, std::to_chars(text, text + sizeof text, value).ptr);
}

void printScalar(const Json::Value &value, std::string &out)
{
    switch (value.type()) {
    case Json::booleanValue:
        out += value.asBool() ? "true" : "false";
        return;
    case Json::intValue:
        return printInteger(value.asLargestInt(), out);
    case Json::uintValue:
        return printInteger(value.asLargestUInt(), out);
    case Json::realValue:
        return printDouble(value.asDouble(), out);
    case Json::stringValue: {
        const char *begin = nullptr;
        const char *end = nullptr;
        value.getString(&begin, &end);
        return printString(std::string_view(begin, std::size_t(end - begin)), out);
    }
    default:
        out += "null";
    }
}

/// An array or object that is being printed.
struct OpenValue {
    Json::ValueConstIterator next;
    Json::ValueConstIterator end;
    bool isArray;
    Json::ArrayIndex printed = 0;
};

bool isNested(const Json::Value &value)
{
    return value.isArray() || value.isObject();
}

void printKey(const Json::ValueConstIterator &member, std::string &out)
{
    const char *end = nullptr;
    const char *const name = member.memberName(&end);
    printString(std::string_view(name, std::size_t(end - name)), out);
    out += ':';
}

/// Prints the separator and the key of the next value of \a top and returns it; null for a gap of an array, which reads
/// as null.
const Json::Value *nextValue(OpenValue &top, std::string &out)
{
    if (top.printed++ > 0)
        out += ',';
    if (top.isArray && top.next.index() != top.printed - 1)
        return nullptr;
    if (!top.isArray)
        printKey(top.next, out);
    const Json::Value &value = *top.next;
    ++top.next;
    return &value;
}

} // namespace

std::optional<Json::Value> parse(std::string_view text, std::string *error)
{
    ValueBuilder builder;
    std::string reason;
    if (JsonSax::read<rapidjson::kParseNumbersAsStringsFlag>(text, builder, error ? &reason : nullptr))
        return builder.takeRoot();
    if (error)
        *error = std::move(reason);
    return std::nullopt;
}

std::string print(const Json::Value &value)
{
    std::string out;
    print(value, out);
    return out;
}

void print(const Json::Value &value, std::string &out)
{
    std::vector<OpenValue> open;
    const auto begin = [&](const Json::Value &next) {
        if (!isNested(next))
            return printScalar(next, out);
        out += next.isArray() ? '[' : '{';
        open.push_back({next.begin(), next.end(), next.isArray()});
    };
    begin(value);
    while (!open.empty()) {
        OpenValue &top = open.back();
        if (top.next == top.end) {
            out += top.isArray ? ']' : '}';
            open.pop_back();
        } else if (const Json::Value *const next = nextValue(top, out)) {
            begin(*next);
        } else {
            out += "null";
        }
    }
}

void printString(std::string_view text, std::string &out)
{
    constexpr char hex[] = "0123456789abcdef";
    constexpr std::string_view shortEscapes = "\"\"\\\\\bb\ff\nn\rr\tt"; // the character and its letter, in turn
    out += '"';
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte >= 0x20 && byte != '"' && byte != '\\')
            continue;
        out.append(text, begin, i - begin);
        begin = i + 1;
        out += '\\';
        std::size_t escape = 0;
        while (escape < shortEscapes.size() && shortEscapes[escape] != text[i])
            escape += 2;
        if (escape < shortEscapes.size()) {
            out += shortEscapes[escape + 1];
        } else {
            out += "u00";
            out += hex[byte >> 4];
            out += hex[byte & 15];
        }
    }
    out.append(text, begin, text.size() - begin);
    out += '"';
}

} // namespace Varn::ToolLibraries::JsonText

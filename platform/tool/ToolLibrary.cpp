#include "platform/tool/ToolLibrary.h"

#include "platform/tool/Exception.h"
#include "platform/tool/JsonSax.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>

namespace Varn::ToolLibraries {

namespace {

/// Watches the members of the root go by.
class EnvelopeReader
{
public:
    bool isObject() const { return m_isObject; }
    std::optional<std::size_t> numberOfTools() const { return m_numberOfTools; }
    int version() const { return std::max(m_version, 0); }

    bool Null() { return scalar(); }
    bool Bool(bool) { return scalar(); }
    bool Int(int value) { return scalar(value); }
    bool Uint(unsigned value)
    {
        return value <= unsigned(std::numeric_limits<int>::max()) ? scalar(int(value)) : scalar();
    }
    bool Int64(int64_t) { return scalar(); }
    bool Uint64(uint64_t) { return scalar(); }
    bool Double(double) { return scalar(); }
    bool RawNumber(const char *, unsigned, bool) { return scalar(); }
    bool String(const char *, unsigned, bool) { return scalar(); }
    bool Key(const char *text, unsigned length, bool)
    {
        if (m_depth == 1)
            m_member = memberOf(std::string_view(text, length));
        return true;
    }
    bool StartObject()
    {
        if (m_depth++ == 0)
            m_isObject = true;
        else if (m_depth == 2)
            rootMember(noVersion, std::nullopt);
        return true;
    }
    bool StartArray()
    {
        ++m_depth;
        return true;
    }
    bool EndObject(unsigned)
    {
        --m_depth;
        return true;
    }
    bool EndArray(unsigned count)
    {
        if (--m_depth == 1)
            rootMember(noVersion, count);
        return true;
    }

private:
    enum class Member { Other, Data, Version };
    static constexpr int noVersion = 1;

    static Member memberOf(std::string_view name)
    {
        return name == "data" ? Member::Data : name == "version" ? Member::Version : Member::Other;
    }
    bool scalar(int number = noVersion)
    {
        if (m_depth == 1)
            rootMember(number, std::nullopt);
        return true;
    }
    /// The value of the last key, seen as a version and as a list of tools.
    void rootMember(int version, std::optional<std::size_t> listSize)
    {
        if (m_member == Member::Version)
            m_version = version;
        else if (m_member == Member::Data)
            m_numberOfTools = listSize;
    }

    int m_depth = 0;
    bool m_isObject = false;
    Member m_member = Member::Other;
    int m_version = noVersion;
    std::optional<std::size_t> m_numberOfTools;
};

} // namespace

ToolLibrary::ToolLibrary(std::string &&json, int version, std::size_t numberOfTools)
    : m_json(std::move(json)), m_version(version), m_numberOfTools(numberOfTools)
{
}

std::unique_ptr<ToolLibrary> ToolLibrary::fromJson(std::string json)
{
    EnvelopeReader reader;
    std::string error;
    if (!JsonSax::read(json, reader, &error))
        throw InvalidInput("Tool library is not valid JSON: " + error);
    if (!reader.isObject())
        throw InvalidInput("Tool library is not a JSON object");
    const std::optional<std::size_t> numberOfTools = reader.numberOfTools();
    if (!numberOfTools)
        throw InvalidInput("Tool library has no list \"data\"");
    return make(std::move(json), reader.version(), *numberOfTools);
}

std::unique_ptr<ToolLibrary> ToolLibrary::make(std::string json, int version, std::size_t numberOfTools)
{
    return std::unique_ptr<ToolLibrary>(new ToolLibrary(std::move(json), version, numberOfTools));
}

} // namespace Varn::ToolLibraries

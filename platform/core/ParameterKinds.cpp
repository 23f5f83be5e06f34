#include "platform/core/ParameterKinds.h"

#include "platform/tool/JsonSax.h"
#include "platform/utils/Messages.h"

#include <QFile>

#include <rapidjson/document.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace Varn {

namespace {

constexpr Strategy::Type strategies[] = {
    Strategy::UNSPECIFIED, Strategy::ROTATING, Strategy::SHARED, Strategy::TURNING, Strategy::JET, Strategy::DEPOSITING,
};
constexpr unsigned everyStrategy = (1u << std::size(strategies)) - 1;

/// The bit of a strategy, 0 for what is none.
unsigned strategyBit(int strategy)
{
    const auto *found = std::find(std::begin(strategies), std::end(strategies), strategy);
    return found == std::end(strategies) ? 0 : 1u << (found - std::begin(strategies));
}

[[noreturn]] void fail(const std::string &what)
{
    throw std::runtime_error("Parameter definitions: " + what);
}

rapidjson::Document parse(std::string_view json)
{
    std::string error;
    const auto read = [&](rapidjson::Document &document) {
        return ToolLibraries::JsonSax::read(json, document, &error);
    };
    rapidjson::Document document;
    document.Populate(read);
    if (!error.empty())
        fail(error);
    if (!document.IsObject())
        fail("not an object");
    return document;
}

const rapidjson::Value &listOf(const rapidjson::Value &object, const char *name)
{
    const auto member = object.FindMember(name);
    if (member == object.MemberEnd() || !member->value.IsArray())
        fail(std::string("no list \"") + name + "\"");
    return member->value;
}

std::string textOf(const rapidjson::Value &row, const char *name)
{
    if (!row.IsObject())
        fail("a row is not an object");
    const auto member = row.FindMember(name);
    if (member == row.MemberEnd() || !member->value.IsString())
        fail(std::string("a row without \"") + name + "\"");
    return {member->value.GetString(), member->value.GetStringLength()};
}

ParameterTable::Kind kindOf(const rapidjson::Value &row, const std::string &id)
{
    const auto member = row.FindMember("kind");
    if (member == row.MemberEnd() || !member->value.IsInt())
        fail(id + ": no kind");
    const int kind = member->value.GetInt();
    if (kind < ParameterTable::KIND_NONE || kind > ParameterTable::KIND_HARDNESS)
        fail(id + ": unknown kind " + std::to_string(kind));
    return ParameterTable::Kind(kind);
}

unsigned strategiesOf(const rapidjson::Value &row, const std::string &id)
{
    unsigned bits = 0;
    for (const rapidjson::Value &strategy : listOf(row, "strategies").GetArray()) {
        const unsigned bit = strategy.IsInt() ? strategyBit(strategy.GetInt()) : 0;
        if (bit == 0)
            fail(id + ": unknown strategy");
        bits |= bit;
    }
    return bits & strategyBit(Strategy::SHARED) ? everyStrategy : bits;
}

/// A number of a numbered parameter: counted from 1, without leading zeros.
bool isNumber(std::wstring_view text)
{
    const auto isDigit = [](wchar_t c) { return c >= L'0' && c <= L'9'; };
    return !text.empty() && text.front() != L'0' && std::all_of(text.begin(), text.end(), isDigit);
}

} // namespace

ParameterKinds::ParameterKinds(std::string_view json)
{
    const rapidjson::Document document = parse(json);
    for (const rapidjson::Value &row : listOf(document, "parameters").GetArray()) {
        const std::string id = textOf(row, "id");
        const Parameter parameter{kindOf(row, id), strategiesOf(row, id)};
        m_names.push_back(Messages::fromUTF8ToWideUnicode(id));
        if (!m_parameters.emplace(m_names.back(), parameter).second)
            fail(id + ": defined twice");
    }
    for (const rapidjson::Value &row : listOf(document, "dynamicParameters").GetArray()) {
        constexpr std::string_view number = "<n>";
        const std::string pattern = textOf(row, "pattern");
        const std::size_t at = pattern.find(number);
        if (at == std::string::npos)
            fail(pattern + ": no <n>");
        m_patterns.push_back({Messages::fromUTF8ToWideUnicode(pattern.substr(0, at)),
                              Messages::fromUTF8ToWideUnicode(pattern.substr(at + number.size())),
                              kindOf(row, pattern)});
    }
}

const ParameterKinds &ParameterKinds::get()
{
    static const ParameterKinds kinds = [] {
        QFile file(QStringLiteral(":/varn/core/tool-parameters.json"));
        if (!file.open(QIODevice::ReadOnly))
            fail("not in this library");
        const QByteArray json = file.readAll();
        return ParameterKinds({json.data(), static_cast<std::size_t>(json.size())});
    }();
    return kinds;
}

ParameterTable::Kind ParameterKinds::find(std::wstring_view name, Strategy::Type strategy) const
{
    const unsigned bit = strategyBit(strategy);
    if (bit == 0)
        return ParameterTable::KIND_NONE;
    const auto parameter = m_parameters.find(name);
    if (parameter == m_parameters.end())
        return findNumbered(name);
    return parameter->second.strategies & bit ? parameter->second.kind : ParameterTable::KIND_NONE;
}

ParameterTable::Kind ParameterKinds::findNumbered(std::wstring_view name) const
{
    for (const Pattern &pattern : m_patterns) {
        const std::size_t fixed = pattern.prefix.size() + pattern.suffix.size();
        if (name.size() > fixed && name.starts_with(pattern.prefix) && name.ends_with(pattern.suffix) &&
            isNumber(name.substr(pattern.prefix.size(), name.size() - fixed)))
            return pattern.kind;
    }
    return ParameterTable::KIND_NONE;
}

} // namespace Varn

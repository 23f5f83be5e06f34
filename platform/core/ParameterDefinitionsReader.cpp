#include "platform/core/ParameterDefinitionsReader.h"

#include "platform/core/ParameterStrategies.h"
#include "platform/tool/JsonSax.h"
#include "platform/utils/LocaleRegistry.h"
#include "platform/utils/Messages.h"

#include <stdexcept>

namespace Varn {

namespace {

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

/// A member that is there; null for one that is not, or that is null.
const rapidjson::Value *memberOf(const rapidjson::Value &row, const char *name)
{
    if (!row.IsObject())
        fail("a row is not an object");
    const auto member = row.FindMember(name);
    return member == row.MemberEnd() || member->value.IsNull() ? nullptr : &member->value;
}

const rapidjson::Value &listOf(const rapidjson::Value &object, const char *name)
{
    const rapidjson::Value *member = memberOf(object, name);
    if (!member || !member->IsArray())
        fail(std::string("no list \"") + name + "\"");
    return *member;
}

/// An empty list where there is none.
const rapidjson::Value &optionalListOf(const rapidjson::Value &object, const char *name)
{
    static const rapidjson::Value none(rapidjson::kArrayType);
    return memberOf(object, name) ? listOf(object, name) : none;
}

std::string textOf(const rapidjson::Value &row, const char *name)
{
    const rapidjson::Value *member = memberOf(row, name);
    if (!member || !member->IsString())
        fail(std::string("a row without \"") + name + "\"");
    return {member->GetString(), member->GetStringLength()};
}

std::wstring wideTextOf(const rapidjson::Value &row, const char *name)
{
    return Messages::fromUTF8ToWideUnicode(textOf(row, name));
}

/// The text of a member, nothing where there is none.
std::optional<std::wstring> optionalTextOf(const rapidjson::Value &row, const char *name)
{
    if (!memberOf(row, name))
        return std::nullopt;
    return wideTextOf(row, name);
}

std::optional<LocalizedMessage> messageOf(const rapidjson::Value &row, const char *name)
{
    if (!memberOf(row, name))
        return std::nullopt;
    const std::string text = textOf(row, name);
    return LocaleRegistry::registerMessage(text);
}

int numberOf(const rapidjson::Value &row, const char *name, int fallback)
{
    const rapidjson::Value *member = memberOf(row, name);
    return member && member->IsInt() ? member->GetInt() : fallback;
}

ParameterTable::Kind kindOf(const rapidjson::Value &row, const std::string &id)
{
    const rapidjson::Value *member = memberOf(row, "kind");
    if (!member || !member->IsInt())
        fail(id + ": no kind");
    const int kind = member->GetInt();
    if (kind < ParameterTable::KIND_NONE || kind > ParameterTable::KIND_HARDNESS)
        fail(id + ": unknown kind " + std::to_string(kind));
    return ParameterTable::Kind(kind);
}

ParameterTable::Type typeOf(const rapidjson::Value &row, const std::string &id)
{
    const int type = numberOf(row, "valueType", ParameterTable::TYPE_FLOAT);
    switch (type) {
    case ParameterTable::TYPE_BOOLEAN:
    case ParameterTable::TYPE_INTEGER:
    case ParameterTable::TYPE_FLOAT:
    case ParameterTable::TYPE_STRING:
    case ParameterTable::TYPE_ENUM:
        return ParameterTable::Type(type);
    default:
        fail(id + ": unknown value type " + std::to_string(type));
    }
}

unsigned strategiesOf(const rapidjson::Value &row, const std::string &id)
{
    unsigned bits = 0;
    for (const rapidjson::Value &strategy : listOf(row, "strategies").GetArray()) {
        const unsigned bit = strategy.IsInt() ? ParameterStrategies::bitOf(strategy.GetInt()) : 0;
        if (bit == 0)
            fail(id + ": unknown strategy");
        bits |= bit;
    }
    return bits & ParameterStrategies::bitOf(Strategy::SHARED) ? ParameterStrategies::every : bits;
}

std::vector<int> flagsOf(const rapidjson::Value &row, const std::string &id)
{
    std::vector<int> flags;
    for (const rapidjson::Value &flag : optionalListOf(row, "flags").GetArray()) {
        if (!flag.IsInt())
            fail(id + ": a flag is no number");
        flags.push_back(flag.GetInt());
    }
    return flags;
}

std::optional<std::vector<ParameterTable::Constraint>> constraintsOf(const rapidjson::Value &row, const char *name)
{
    if (!memberOf(row, name))
        return std::nullopt;
    std::vector<ParameterTable::Constraint> constraints;
    for (const rapidjson::Value &constraint : listOf(row, name).GetArray()) {
        const std::string text = textOf(constraint, "message");
        constraints.push_back({wideTextOf(constraint, "expression"), LocaleRegistry::registerMessage(text)});
    }
    return constraints;
}

/// The default expression of a system, "metric" or "inch".
std::optional<std::wstring> defaultOf(const rapidjson::Value &row, const char *system)
{
    const rapidjson::Value *both = memberOf(row, "defaultExp");
    return both ? std::optional(wideTextOf(*both, system)) : std::nullopt;
}

} // namespace

ParameterDefinitions::Reader::Reader(ParameterDefinitions &target, std::string_view json)
    : m_target(target), m_document(parse(json))
{
}

void ParameterDefinitions::Reader::readAll()
{
    for (const rapidjson::Value &row : listOf(m_document, "parameters").GetArray())
        readParameter(row);
    for (const rapidjson::Value &row : listOf(m_document, "dynamicParameters").GetArray())
        readPattern(row);
    readEnumerations();
    for (const rapidjson::Value &row : optionalListOf(m_document, "links").GetArray())
        readLink(row);
    for (const rapidjson::Value &row : optionalListOf(m_document, "kinds").GetArray())
        readKind(row);
}

void ParameterDefinitions::Reader::readParameter(const rapidjson::Value &json)
{
    const std::string id = textOf(json, "id");
    Row &row = m_target.m_rows.emplace_back();
    Definition &definition = row.definition;
    definition.id = Messages::fromUTF8ToWideUnicode(id);
    definition.number = numberOf(json, "number", 0);
    definition.kind = kindOf(json, id);
    definition.type = typeOf(json, id);
    row.strategies = strategiesOf(json, id);
    definition.typeName = optionalTextOf(json, "typeName").value_or(L"");
    definition.title = messageOf(json, "title").value_or(LocalizedMessage());
    definition.fullTitle = messageOf(json, "fullTitle").value_or(LocalizedMessage());
    definition.inlineTitle = messageOf(json, "inlineTitle").value_or(LocalizedMessage());
    definition.description = optionalTextOf(json, "description").value_or(L"");
    definition.defaultExpression = defaultOf(json, "metric").value_or(L"");
    row.defaultInch = defaultOf(json, "inch").value_or(L"");
    definition.enableExpression = optionalTextOf(json, "enableExp").value_or(L"");
    definition.disabledExpression = optionalTextOf(json, "disabledExp").value_or(L"");
    definition.errors = constraintsOf(json, "errors").value_or(std::vector<ParameterTable::Constraint>());
    definition.warnings = constraintsOf(json, "warnings").value_or(std::vector<ParameterTable::Constraint>());
    definition.flags = flagsOf(json, id);
    definition.enumeration = optionalTextOf(json, "enumeration").value_or(L"");
    const rapidjson::Value *feedSpeed = memberOf(json, "feedSpeed");
    definition.isFeedSpeed = feedSpeed && feedSpeed->IsTrue();
    for (const rapidjson::Value &other : optionalListOf(json, "overrides").GetArray())
        row.overrides.push_back(
            {numberOf(other, "strategy", Strategy::INVALID), defaultOf(other, "metric"), defaultOf(other, "inch"),
             optionalTextOf(other, "enableExp"), optionalTextOf(other, "disabledExp"),
             optionalTextOf(other, "description"), messageOf(other, "title"), messageOf(other, "fullTitle"),
             messageOf(other, "inlineTitle"), constraintsOf(other, "errors"), constraintsOf(other, "warnings")});
    if (!m_target.m_byName.emplace(definition.id, &row).second)
        fail(id + ": defined twice");
    if (definition.number != 0 && !m_target.m_byNumber.emplace(definition.number, &row).second)
        fail(id + ": its number is taken");
}

void ParameterDefinitions::Reader::readPattern(const rapidjson::Value &row)
{
    constexpr std::string_view number = "<n>";
    const std::string pattern = textOf(row, "pattern");
    const std::size_t at = pattern.find(number);
    if (at == std::string::npos)
        fail(pattern + ": no <n>");
    Definition definition;
    definition.kind = kindOf(row, pattern);
    definition.type = typeOf(row, pattern);
    definition.flags = flagsOf(row, pattern);
    definition.description = optionalTextOf(row, "description").value_or(L"");
    m_target.m_patterns.push_back({Messages::fromUTF8ToWideUnicode(pattern.substr(0, at)),
                                   Messages::fromUTF8ToWideUnicode(pattern.substr(at + number.size())),
                                   std::move(definition)});
}

void ParameterDefinitions::Reader::readEnumerations()
{
    for (const rapidjson::Value &row : optionalListOf(m_document, "enumerations").GetArray()) {
        const std::wstring enumeration = wideTextOf(row, "enumeration");
        ParameterEnum entry;
        entry.key = wideTextOf(row, "key");
        entry.expression = ParameterExpression::quoted(entry.key);
        entry.value = numberOf(row, "value", 0);
        entry.description = messageOf(row, "title").value_or(LocalizedMessage());
        entry.enableExpression = optionalTextOf(row, "enableExp").value_or(L"");
        if (memberOf(row, "strategies")) {
            entry.strategies.emplace();
            for (const rapidjson::Value &strategy : listOf(row, "strategies").GetArray())
                entry.strategies->push_back(strategy.IsInt() ? strategy.GetInt() : Strategy::INVALID);
        }
        for (const Strategy::Type strategy : Strategy::getToolStrategies())
            if (entry.isValidFor(strategy))
                m_target.m_enumerations[{enumeration, strategy}].push_back(entry);
        m_target.m_enumerations[{enumeration, Strategy::INVALID}].push_back(std::move(entry));
    }
}

void ParameterDefinitions::Reader::readLink(const rapidjson::Value &row)
{
    const std::string set = textOf(row, "set");
    m_target.m_links.push_back({Messages::fromUTF8ToWideUnicode(set), wideTextOf(row, "updates"),
                                wideTextOf(row, "formula"), optionalTextOf(row, "when").value_or(L""),
                                strategiesOf(row, set)});
}

void ParameterDefinitions::Reader::readKind(const rapidjson::Value &row)
{
    const std::string name = textOf(row, "name");
    KindUnits &units = m_target.m_kinds[kindOf(row, name)];
    units.metric = Units::Unit(numberOf(row, "unitMetric", Units::UNIT_NONE));
    units.inch = Units::Unit(numberOf(row, "unitInch", Units::UNIT_NONE));
    if (!Units::isUnit(units.metric) || !Units::isUnit(units.inch))
        fail(name + ": unknown unit");
}

} // namespace Varn

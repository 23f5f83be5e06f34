#include "platform/core/ParameterDefinitions.h"

#include "platform/core/ParameterDefinitionsReader.h"
#include "platform/core/ParameterStrategies.h"

#include <QFile>

#include <algorithm>
#include <stdexcept>

namespace Varn {

namespace {

/// A number of a numbered parameter: counted from 1, without leading zeros.
bool isNumber(std::wstring_view text)
{
    const auto isDigit = [](wchar_t c) { return c >= L'0' && c <= L'9'; };
    return !text.empty() && text.front() != L'0' && std::all_of(text.begin(), text.end(), isDigit);
}

template <typename T>
void replaceBy(T &value, const std::optional<T> &other)
{
    if (other)
        value = *other;
}

} // namespace

ParameterDefinitions::ParameterDefinitions(std::string_view json)
{
    Reader(*this, json).readAll();
}

const ParameterDefinitions &ParameterDefinitions::get()
{
    static const ParameterDefinitions definitions = [] {
        QFile file(QStringLiteral(":/varn/core/tool-parameters.json"));
        if (!file.open(QIODevice::ReadOnly))
            throw std::runtime_error("Parameter definitions: not in this library");
        const QByteArray json = file.readAll();
        return ParameterDefinitions({json.data(), static_cast<std::size_t>(json.size())});
    }();
    return definitions;
}

ParameterTable::Kind ParameterDefinitions::findKind(std::wstring_view name, Strategy::Type strategy) const
{
    const unsigned bit = ParameterStrategies::bitOf(strategy);
    if (bit == 0)
        return ParameterTable::KIND_NONE;
    const auto row = m_byName.find(name);
    if (row != m_byName.end())
        return row->second->strategies & bit ? row->second->definition.kind : ParameterTable::KIND_NONE;
    const Pattern *pattern = findPattern(name);
    return pattern ? pattern->definition.kind : ParameterTable::KIND_NONE;
}

std::vector<ParameterDefinitions::Definition> ParameterDefinitions::definitionsOf(Strategy::Type strategy,
                                                                                  bool metric) const
{
    const unsigned bit = ParameterStrategies::bitOf(strategy);
    std::vector<Definition> definitions;
    for (const Row &row : m_rows) {
        if (!(row.strategies & bit))
            continue;
        Definition &definition = definitions.emplace_back(row.definition);
        if (!metric)
            definition.defaultExpression = row.defaultInch;
        for (const Override &other : row.overrides) {
            if (other.strategy != strategy)
                continue;
            replaceBy(definition.defaultExpression, metric ? other.defaultMetric : other.defaultInch);
            replaceBy(definition.enableExpression, other.enableExpression);
            replaceBy(definition.disabledExpression, other.disabledExpression);
            replaceBy(definition.description, other.description);
            replaceBy(definition.title, other.title);
            replaceBy(definition.fullTitle, other.fullTitle);
            replaceBy(definition.inlineTitle, other.inlineTitle);
            replaceBy(definition.errors, other.errors);
            replaceBy(definition.warnings, other.warnings);
        }
    }
    return definitions;
}

const ParameterDefinitions::Definition *ParameterDefinitions::findByNumber(int number) const
{
    const auto row = m_byNumber.find(number);
    return row == m_byNumber.end() ? nullptr : &row->second->definition;
}

const ParameterDefinitions::Definition *ParameterDefinitions::findByName(std::wstring_view name) const
{
    const auto row = m_byName.find(name);
    return row == m_byName.end() ? nullptr : &row->second->definition;
}

const ParameterDefinitions::Pattern *ParameterDefinitions::findPattern(std::wstring_view name) const
{
    for (const Pattern &pattern : m_patterns) {
        const std::size_t fixed = pattern.prefix.size() + pattern.suffix.size();
        if (name.size() > fixed && name.starts_with(pattern.prefix) && name.ends_with(pattern.suffix) &&
            isNumber(name.substr(pattern.prefix.size(), name.size() - fixed)))
            return &pattern;
    }
    return nullptr;
}

const std::vector<ParameterEnum> &ParameterDefinitions::enumeration(const std::wstring &name,
                                                                    std::optional<Strategy::Type> strategy) const
{
    static const std::vector<ParameterEnum> none;
    const auto found = m_enumerations.find({name, strategy.value_or(Strategy::INVALID)});
    return found == m_enumerations.end() || strategy == Strategy::INVALID ? none : found->second;
}

std::vector<ParameterDefinitions::Link> ParameterDefinitions::linksOf(Strategy::Type strategy) const
{
    std::vector<Link> links;
    for (const Link &link : m_links)
        if (link.strategies & ParameterStrategies::bitOf(strategy))
            links.push_back(link);
    return links;
}

Units::Unit ParameterDefinitions::defaultUnit(ParameterTable::Kind kind, bool metric) const
{
    const auto units = m_kinds.find(kind);
    if (units == m_kinds.end())
        return Units::UNIT_NONE;
    return metric ? units->second.metric : units->second.inch;
}

bool ParameterDefinitions::isStrategy(int strategy)
{
    return ParameterStrategies::bitOf(strategy) != 0;
}

} // namespace Varn

#include "host/ToolQuery.h"

#include "host/ToolKeyTable.h"
#include "host/UsageError.h"

#include "platform/core/ToolSpecification.h"
#include "platform/tool/JsonText.h"
#include "platform/utils/Messages.h"

#include <QString>

#include <json/value.h>

#include <optional>

namespace Quillon {

namespace JsonText = Varn::ToolLibraries::JsonText;
using Varn::Messages;
using Varn::ToolGeometry;
using Varn::ToolSpecification;

namespace {

constexpr double millimetersPerInch = 25.4;
constexpr const char *rangeSign = "..";

/// A filter as it was typed, cut into its parts.
struct Condition {
    const ToolKeyRow &key;
    std::string op; ///< "=", "!=", "<", ">", "<=" or ">="
    QString value;
    const std::string &text; ///< as a whole, for complaints
};

[[noreturn]] void complain(const Condition &condition, const std::string &why)
{
    throw UsageError("Cannot read the filter " + condition.text + ": " + why);
}

QString unquoted(QString value)
{
    value = value.trimmed();
    if (value.size() >= 2 && value.startsWith(QLatin1Char('"')) && value.endsWith(QLatin1Char('"')))
        return value.mid(1, value.size() - 2);
    return value;
}

Condition cut(const std::string &filter)
{
    constexpr const char *signs = "=!<>";
    const std::size_t sign = filter.find_first_of(signs);
    if (sign == std::string::npos)
        throw UsageError("Cannot read the filter " + filter + ": there is no =, <, >, <=, >= or != in it");
    const std::size_t length = filter.size() > sign + 1 && filter[sign + 1] == '=' ? 2 : 1;
    const std::string op = filter.substr(sign, length);
    if (op == "!" || op == "==")
        throw UsageError("Cannot read the filter " + filter + ": " + op + " is no comparison");
    const QString key = QString::fromStdString(filter.substr(0, sign)).trimmed();
    return {toolKey(key.toStdString()), op, unquoted(QString::fromStdString(filter.substr(sign + length))), filter};
}

enum class LengthUnit { None, Millimeters, Inches };

/// Takes the unit off the end of a text.
LengthUnit takeUnit(QString &text)
{
    constexpr std::pair<const char *, LengthUnit> units[] = {
        {"mm", LengthUnit::Millimeters}, {"inches", LengthUnit::Inches}, {"inch", LengthUnit::Inches},
        {"in", LengthUnit::Inches},      {"\"", LengthUnit::Inches},
    };
    for (const auto &[name, unit] : units) {
        if (text.endsWith(QLatin1String(name), Qt::CaseInsensitive)) {
            text = text.chopped(QLatin1String(name).size()).trimmed();
            return unit;
        }
    }
    return LengthUnit::None;
}

/// A number as 12, 0.5, 1/2 or 1-1/2.
std::optional<double> readNumber(const QString &text)
{
    bool isNumber = false;
    if (const double number = text.toDouble(&isNumber); isNumber)
        return number;
    const qsizetype slash = text.indexOf(QLatin1Char('/'));
    if (slash < 0)
        return std::nullopt;
    const qsizetype dash = text.indexOf(QLatin1Char('-'), 1);
    const bool hasWhole = dash > 0 && dash < slash;
    bool read[3] = {true, false, false};
    const uint whole = hasWhole ? text.left(dash).toUInt(&read[0]) : 0;
    const uint above = text.mid(hasWhole ? dash + 1 : 0, slash - (hasWhole ? dash + 1 : 0)).toUInt(&read[1]);
    const uint below = text.mid(slash + 1).toUInt(&read[2]);
    if (!read[0] || !read[1] || !read[2] || below == 0)
        return std::nullopt;
    return whole + static_cast<double>(above) / below;
}

/// A number of the kind of the key; a length in millimeters, in \a fallback when it bears no unit.
double valueOf(const Condition &condition, QString text, LengthUnit fallback)
{
    text = text.trimmed();
    LengthUnit unit = LengthUnit::None;
    if (condition.key.kind == ToolKeyKind::Length)
        unit = takeUnit(text);
    else if (condition.key.kind == ToolKeyKind::Angle && text.endsWith(QChar(0xB0))) // the degree sign
        text.chop(1);
    const std::optional<double> number = readNumber(text);
    if (!number)
        complain(condition, "\"" + text.toStdString() + "\" is no number");
    if (unit == LengthUnit::None)
        unit = fallback;
    return unit == LengthUnit::Inches ? *number * millimetersPerInch : *number;
}

Json::Value comparison(const char *op, double number)
{
    Json::Value value(Json::objectValue);
    value["op"] = op;
    value["value"] = number;
    return value;
}

Json::Value rangeOf(const Condition &condition, qsizetype sign)
{
    QString lower = condition.value.left(sign).trimmed();
    QString upper = condition.value.mid(sign + 2).trimmed();
    if (lower.isEmpty() && upper.isEmpty())
        complain(condition, "the range has no bound");
    QString unitOfUpper = upper;
    QString unitOfLower = lower;
    const LengthUnit ofUpper = takeUnit(unitOfUpper);
    const LengthUnit ofLower = takeUnit(unitOfLower);
    if (lower.isEmpty())
        return comparison("<=", valueOf(condition, upper, LengthUnit::None));
    if (upper.isEmpty())
        return comparison(">=", valueOf(condition, lower, LengthUnit::None));
    Json::Value value(Json::objectValue);
    value["lowerBound"] = valueOf(condition, lower, ofUpper);
    value["upperBound"] = valueOf(condition, upper, ofLower);
    return value;
}

Json::Value numberFilter(const Condition &condition)
{
    const qsizetype range = condition.value.indexOf(QLatin1String(rangeSign));
    if (range >= 0 && condition.op != "=")
        complain(condition, "a range goes with = alone");
    if (range >= 0)
        return rangeOf(condition, range);
    const double number = valueOf(condition, condition.value, LengthUnit::None);
    if (condition.op == "=")
        return comparison(":", number);
    if (condition.op != "!=")
        return comparison(condition.op.c_str(), number);
    Json::Value value = comparison(":", number);
    value["negated"] = true;
    return value;
}

std::string typeKeyword(const Condition &condition, const QString &text)
{
    for (const ToolGeometry::Type type : ToolSpecification::getSupportedTypes()) {
        const std::string keyword = ToolGeometry::getToolTypeAsString(type);
        const QString name = ToolSpecification::getToolTypeAsLocalizedString(type).asQString();
        if (text.compare(QString::fromStdString(keyword), Qt::CaseInsensitive) == 0 ||
            text.compare(name, Qt::CaseInsensitive) == 0)
            return keyword;
    }
    complain(condition, "there is no tool type \"" + text.toStdString() + "\"");
}

std::string unitKeyword(const Condition &condition, const QString &text)
{
    const QString word = text.toLower();
    for (const char *metric : {"mm", "millimeters", "millimeter", "metric"})
        if (word == QLatin1String(metric))
            return "millimeters";
    for (const char *inch : {"in", "inches", "inch", "\""})
        if (word == QLatin1String(inch))
            return "inches";
    complain(condition, "a unit is mm or in");
}

Json::Value textFilter(const Condition &condition)
{
    if (condition.op != "=")
        complain(condition, "texts are compared with = alone");
    Json::Value values(Json::arrayValue);
    for (const QString &alternative : condition.value.split(QLatin1Char('|'))) {
        const QString text = unquoted(alternative);
        switch (condition.key.kind) {
        case ToolKeyKind::Type:
            values.append(typeKeyword(condition, text));
            break;
        case ToolKeyKind::Unit:
            values.append(unitKeyword(condition, text));
            break;
        default:
            values.append(text.toStdString());
        }
    }
    return values;
}

bool isNumber(ToolKeyKind kind)
{
    return kind == ToolKeyKind::Number || kind == ToolKeyKind::Angle || kind == ToolKeyKind::Length;
}

} // namespace

std::string filtersState(const std::vector<std::string> &filters)
{
    Json::Value list(Json::arrayValue);
    for (const std::string &filter : filters) {
        const Condition condition = cut(filter);
        Json::Value entry(Json::objectValue);
        entry["key"] = filterKey(condition.key);
        if (isNumber(condition.key.kind))
            entry["values"].append(numberFilter(condition));
        else
            entry["values"] = textFilter(condition);
        list.append(std::move(entry));
    }
    return JsonText::print(list);
}

std::string sortState(const std::vector<std::string> &sorts)
{
    Json::Value list(Json::arrayValue);
    for (const std::string &sort : sorts) {
        const std::size_t colon = sort.find(':');
        const std::string direction = colon == std::string::npos ? "asc" : sort.substr(colon + 1);
        if (direction != "asc" && direction != "desc")
            throw UsageError("Cannot read the order " + sort + ": behind the colon stands asc or desc");
        Json::Value entry(Json::objectValue);
        entry["key"] = sortKey(toolKey(sort.substr(0, colon)));
        entry["order"] = direction;
        list.append(std::move(entry));
    }
    return JsonText::print(list);
}

} // namespace Quillon

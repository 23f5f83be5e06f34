#include "ToolLibrary/Util/ParameterTableQVariantMapTransferUtil.h"

#include "util/utility/Assert.h"

#include <algorithm>
#include <memory>

namespace Varn::Tools {

namespace {

using Parameter = ParameterTable::Parameter;

constexpr int significantDigits = 6;

/// Calls \a transfer(parameter, value) for a key that is there.
template <typename Transfer>
void transferInto(const QVariantMap &map, const QString &key, ParameterTable &table, const std::wstring &name,
                  const Transfer &transfer)
{
    const std::shared_ptr<Parameter> parameter = table.getParameterNoThrow(name);
    VARN_ASSERT(parameter);
    const auto value = map.constFind(key);
    if (parameter && value != map.constEnd())
        transfer(*parameter, *value);
}

/// Sets \a map[key] to what \a valueOf(parameter) gives.
template <typename ValueOf>
void transferFrom(const ParameterTable &table, const std::wstring &name, QVariantMap &map, const QString &key,
                  const ValueOf &valueOf)
{
    if (const std::shared_ptr<const Parameter> parameter = table.getParameterNoThrow(name))
        map.insert(key, valueOf(*parameter));
}

Units::Unit unitOf(const Parameter &parameter, bool metric)
{
    return Parameter::getDefaultKindUnit(parameter.getKind(), metric);
}

/// Characters of a number in front of its point, the sign among them.
int charactersBeforePoint(double number)
{
    return std::max(0, static_cast<int>(QString::asprintf("%f", number).indexOf(u'.')));
}

void setNumber(Parameter &parameter, double number, int precision, Units::Unit unit)
{
    parameter.setExpression(QString::number(number, 'g', precision).toStdWString(), unit, true);
}

} // namespace

void ParameterTableQVariantMapTransferUtil::transferBoolean(const QVariantMap &map, const QString &key,
                                                            ParameterTable &table, const std::wstring &parameter)
{
    transferInto(map, key, table, parameter, [](Parameter &target, const QVariant &value) {
        target.setExpression(value.toBool() ? ParameterTable::TrueExpression : ParameterTable::FalseExpression,
                             Units::UNIT_NONE, true);
    });
}

void ParameterTableQVariantMapTransferUtil::transferString(const QVariantMap &map, const QString &key,
                                                           ParameterTable &table, const std::wstring &parameter)
{
    transferInto(map, key, table, parameter, [](Parameter &target, const QVariant &value) {
        target.setExpression(ParameterTable::getStringAsExpression(value.toString().toStdWString()), Units::UNIT_NONE,
                             true);
    });
}

void ParameterTableQVariantMapTransferUtil::transferDouble(const QVariantMap &map, const QString &key,
                                                           ParameterTable &table, const std::wstring &parameter,
                                                           bool metric, double factor, int decimals)
{
    transferInto(map, key, table, parameter, [&](Parameter &target, const QVariant &value) {
        const double number = value.toDouble() * factor;
        setNumber(target, number, charactersBeforePoint(number) + decimals, unitOf(target, metric));
    });
}

void ParameterTableQVariantMapTransferUtil::transferDoubleResetIfEqualToDependent(
    const QVariantMap &map, const QString &key, const QString &dependentKey, ParameterTable &table,
    const std::wstring &parameter, bool metric, double factor)
{
    transferInto(map, key, table, parameter, [&](Parameter &target, const QVariant &value) {
        const auto dependent = map.constFind(dependentKey);
        if (dependent != map.constEnd() && dependent->toDouble() == value.toDouble())
            target.reset(false);
        else
            setNumber(target, value.toDouble() * factor, significantDigits, unitOf(target, metric));
    });
}

void ParameterTableQVariantMapTransferUtil::transferBoolean(const ParameterTable &table, const std::wstring &parameter,
                                                            QVariantMap &map, const QString &key)
{
    transferFrom(table, parameter, map, key, [](const Parameter &source) { return source.getAsBoolean(); });
}

void ParameterTableQVariantMapTransferUtil::transferString(const ParameterTable &table, const std::wstring &parameter,
                                                           QVariantMap &map, const QString &key)
{
    transferFrom(table, parameter, map, key,
                 [](const Parameter &source) { return QString::fromStdWString(source.getAsWideMessage()); });
}

void ParameterTableQVariantMapTransferUtil::transferDouble(const ParameterTable &table, const std::wstring &parameter,
                                                           QVariantMap &map, const QString &key, bool metric,
                                                           double factor)
{
    transferFrom(table, parameter, map, key,
                 [&](const Parameter &source) { return source.getAsDouble(unitOf(source, metric)) * factor; });
}

} // namespace Varn::Tools

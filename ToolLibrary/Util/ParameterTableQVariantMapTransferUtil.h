// ParameterTableQVariantMapTransferUtil.h -- moves one value between a tool map and a table of parameters, whose values
// are expressions. Stateless; threads as the map and the table.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/core/ParameterTable.h"

#include <QString>
#include <QVariantMap>

#include <string>

namespace Varn::Tools {

/// Numbers of a map are in the unit of the tool, millimeters for \a metric; those of a table are given and asked for in
/// the default unit of the parameter's kind. \a factor is what the number is multiplied by on its way.
class TOOL_LIBRARY_EXPORT ParameterTableQVariantMapTransferUtil
{
public:
    // Map to table. A key that the map does not have changes nothing, and so does a parameter that the table does not
    // have, which is a report of the tests. A value of another kind is what QVariant makes of it.
    static void transferBoolean(const QVariantMap &map, const QString &key, ParameterTable &table,
                                const std::wstring &parameter);
    static void transferString(const QVariantMap &map, const QString &key, ParameterTable &table,
                               const std::wstring &parameter);

    /// With \a decimals places behind the point, where a minus sign takes one more.
    static void transferDouble(const QVariantMap &map, const QString &key, ParameterTable &table,
                               const std::wstring &parameter, bool metric, double factor, int decimals);

    /// With six significant digits. A number that is exactly that under \a dependentKey follows its default instead.
    static void transferDoubleResetIfEqualToDependent(const QVariantMap &map, const QString &key,
                                                      const QString &dependentKey, ParameterTable &table,
                                                      const std::wstring &parameter, bool metric, double factor);

    // Table to map. Nothing is written for a parameter that the table does not have.
    static void transferBoolean(const ParameterTable &table, const std::wstring &parameter, QVariantMap &map,
                                const QString &key);
    static void transferString(const ParameterTable &table, const std::wstring &parameter, QVariantMap &map,
                               const QString &key);
    static void transferDouble(const ParameterTable &table, const std::wstring &parameter, QVariantMap &map,
                               const QString &key, bool metric, double factor);
};

} // namespace Varn::Tools

// ParameterExpressionConverter.h -- the expressions that a person gave to parameters, between a tool and its map.
// Stateless; threads as the tool and the map.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <QVariantMap>

#include <map>
#include <optional>
#include <string>

namespace Varn {
class ToolSpecification;
}

namespace Varn::Tools {

/// A tool map, and the map of a preset, has them under "expressions": a map from the name of the parameter to the text,
/// which is neither read nor checked here. The key is absent when there are none.
class TOOL_LIBRARY_EXPORT ParameterExpressionConverter
{
public:
    /// Sets those of the tool in the map, in place of what stood there; nothing for a tool without any.
    static void convertExpressions(const ToolSpecification &tool, QVariantMap &map);

    /// Adds those of the map to the tool; others that the tool has stay.
    static void convertExpressions(const QVariantMap &map, ToolSpecification &tool);

    static void addExpressionsToToolMap(const std::map<std::wstring, std::wstring> &expressions, QVariantMap &map);

    /// Nothing without the key; empty for a value that is no map.
    static std::optional<QVariantMap> getExpressionsMap(const QVariantMap &map);

private:
    static const QString expressionsKey;
};

} // namespace Varn::Tools

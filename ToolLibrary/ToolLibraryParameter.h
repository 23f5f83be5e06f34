// ToolLibraryParameter.h -- the vocabulary of tool data: the names that one property has in tool maps, in parameter
// tables and on the screen. Immutable once made by the first question; any thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"
#include "ToolLibrary/ToolLibraryParametersEnum.h"
#include "platform/utils/LocalizedMessage.h"

#include <QString>

#include <cstdint>

namespace Varn::Tools {

/// The texts are static; those to be shown have their English text as id, of which a trailing blank is a part.
struct ToolLibraryParameter {
    const char *key;               ///< in tool maps and library JSON; null in the empty last row
    const char16_t *parameterName; ///< in parameter tables; empty for a property that these do not have
    LocalizedMessage title;
    LocalizedMessage description;
    const char16_t *unitKind; ///< the kind of quantity ("length", "angle", "velocity" ...), or empty
    std::int32_t classFlag;   ///< 0 or 1
    const char *section;      ///< the part of the tool map that holds the key ("start-values" ...), or empty
    bool summaryFlag;
};

/// The row of a property. Throws std::out_of_range for a value that is no enumerator.
TOOL_LIBRARY_EXPORT const ToolLibraryParameter &getToolLibraryParameter(ToolLibraryParametersEnum parameter);

/// The key of a property, as tool maps are asked for it.
TOOL_LIBRARY_EXPORT QString ToolLibraryParameterKey(ToolLibraryParametersEnum parameter);

/// By what a number of a tool map is multiplied to be that of the parameter table, and divided on its way back. 1 but
/// for the surface speed: maps have it in meters or feet per minute, tables in millimeters or inches per minute.
TOOL_LIBRARY_EXPORT double parameterConversionFactor(const ToolLibraryParameter &parameter, bool metric);

/// The names of the parts of a tool map.
namespace ToolMapKey {

TOOL_LIBRARY_EXPORT QString geometry();
TOOL_LIBRARY_EXPORT QString holder();
TOOL_LIBRARY_EXPORT QString postProcess();
TOOL_LIBRARY_EXPORT QString material();
TOOL_LIBRARY_EXPORT QString presets();
TOOL_LIBRARY_EXPORT QString upperDiameter();
TOOL_LIBRARY_EXPORT QString segments();
TOOL_LIBRARY_EXPORT QString setup();
TOOL_LIBRARY_EXPORT QString shaft();
TOOL_LIBRARY_EXPORT QString startValues();
TOOL_LIBRARY_EXPORT QString toolCoolant();
TOOL_LIBRARY_EXPORT QString type();
TOOL_LIBRARY_EXPORT QString useFeedPerRevolution();

} // namespace ToolMapKey

} // namespace Varn::Tools

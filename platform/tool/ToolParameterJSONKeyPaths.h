// ToolParameterJSONKeyPaths.h -- where in the JSON of a tool the value of a flat property key lies. Immutable, any
// thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <list>
#include <map>
#include <string_view>

namespace Varn::ToolLibraries {

class VARN_PLATFORM_EXPORT ToolParameterJSONKeyPaths
{
public:
    /// Alternative paths, to be tried in order; each is the list of member names from the tool object downwards.
    using PathList = std::list<std::list<std::string_view>>;

    /// All flat keys ("tool_diameter") with their paths. A parameter of presets has an empty list: presets stand in a
    /// list, which no path of member names leads into.
    static const std::map<std::string_view, PathList> &get();

    /// The paths of one key, or null for an unknown one. For hot paths: hashed, allocates nothing.
    static const PathList *find(std::string_view key);
};

} // namespace Varn::ToolLibraries

// Tool3DGeometryUtil.h -- which libraries keep the solids of their tools in files beside them. Stateless, any thread.
#pragma once

#include "ToolLibrary/IO/ToolLibraryUrl.h"
#include "ToolLibrary/ToolLibraryExport.h"

namespace Varn::Tools {

class TOOL_LIBRARY_EXPORT Tool3DGeometryUtil
{
public:
    /// True for local, custom and cloud nodes; a hub, system or vendor library needs no files.
    static bool requiresLocal3DGeometry(const ToolLibraryUrl &url);
};

} // namespace Varn::Tools

#include "ToolLibrary/Util/Tool3DGeometryUtil.h"

namespace Varn::Tools {

bool Tool3DGeometryUtil::requiresLocal3DGeometry(const ToolLibraryUrl &url)
{
    return url.isLocalLibrary() || url.isCustomFolder() || url.isCloudLibrary();
}

} // namespace Varn::Tools

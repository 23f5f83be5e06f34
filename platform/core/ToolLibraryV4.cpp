#include "platform/core/ToolLibraryV4.h"

#include "platform/core/FeatureFlag.h"
#include "platform/nc/ToolGeometry.h"

namespace Varn {

bool ToolLibraryV4::platformHubToolLibrariesIsEnabled()
{
    return FeatureFlag::enabled("tool-library-v4-hub-libraries", true);
}

bool ToolLibraryV4::tool3DGeometryIsEnabled(ToolGeometryTypes::Type type)
{
    return ToolGeometry::supports3DGeometry(type) && FeatureFlag::enabled("tool-3D-geometry", true);
}

} // namespace Varn

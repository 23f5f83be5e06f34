// ToolLibraryV4.h -- which of the newer abilities of the tool library are on in this process. Any thread.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/nc/ToolGeometryTypes.h"

namespace Varn {

class VARN_PLATFORM_EXPORT ToolLibraryV4
{
public:
    /// Whether libraries of the hub are loaded. The feature flag "tool-library-v4-hub-libraries", on unless set
    /// otherwise: a person without a hub has no such libraries anyway.
    static bool platformHubToolLibrariesIsEnabled();

    /// Whether tools of the type carry a solid of their own: turning tools and tool blocks, while the feature flag
    /// "tool-3D-geometry" is on, which it is unless set otherwise.
    static bool tool3DGeometryIsEnabled(ToolGeometryTypes::Type type);
};

} // namespace Varn

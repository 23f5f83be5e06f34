// ToolLibraryV4.h -- which of the newer abilities of the tool library are on in this process. Any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

namespace Varn {

class VARN_PLATFORM_EXPORT ToolLibraryV4
{
public:
    /// Whether libraries of the hub are loaded. The feature flag "tool-library-v4-hub-libraries", on unless set
    /// otherwise: a person without a hub has no such libraries anyway.
    static bool platformHubToolLibrariesIsEnabled();
};

} // namespace Varn

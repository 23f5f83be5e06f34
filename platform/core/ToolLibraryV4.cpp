#include "platform/core/ToolLibraryV4.h"

#include "platform/core/FeatureFlag.h"

namespace Varn {

bool ToolLibraryV4::platformHubToolLibrariesIsEnabled()
{
    return FeatureFlag::enabled("tool-library-v4-hub-libraries", true);
}

} // namespace Varn

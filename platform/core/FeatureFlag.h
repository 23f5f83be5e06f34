// FeatureFlag.h -- switches of features by name, such as "tool-gtc-import". Process-wide, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <string_view>

namespace Varn {

class VARN_PLATFORM_EXPORT FeatureFlag
{
public:
    /// Whether the feature is on; \a fallback for a name that was never set.
    static bool enabled(std::string_view name, bool fallback);

    static void setEnabled(std::string_view name, bool on);

    /// Forgets every flag, as at the start of the process.
    static void reset();
};

} // namespace Varn

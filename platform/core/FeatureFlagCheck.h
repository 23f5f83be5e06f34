// FeatureFlagCheck.h -- which technologies this installation offers. Any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

namespace Varn {

class VARN_PLATFORM_EXPORT FeatureFlagCheck
{
public:
    /// Whether additive machining by directed energy deposition is offered, and with it tools that deposit material.
    /// The feature flag "additive-ded", on unless set otherwise.
    static bool isAdditiveTechDED();
};

} // namespace Varn

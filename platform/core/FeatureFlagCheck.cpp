#include "platform/core/FeatureFlagCheck.h"

#include "platform/core/FeatureFlag.h"

namespace Varn {

bool FeatureFlagCheck::isAdditiveTechDED()
{
    return FeatureFlag::enabled("additive-ded", true);
}

} // namespace Varn

#include "platform/core/FeatureFlagCheck.h"

#include "platform/core/FeatureFlag.h"

#include <gtest/gtest.h>

TEST(FeatureFlagCheck, AdditiveTechnologyIsOnUnlessItIsTurnedOff)
{
    Varn::FeatureFlag::reset();
    EXPECT_TRUE(Varn::FeatureFlagCheck::isAdditiveTechDED());
    Varn::FeatureFlag::setEnabled("additive-ded", false);
    EXPECT_FALSE(Varn::FeatureFlagCheck::isAdditiveTechDED());
    Varn::FeatureFlag::reset();
}

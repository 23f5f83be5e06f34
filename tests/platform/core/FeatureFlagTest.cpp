#include "platform/core/FeatureFlag.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

using Varn::FeatureFlag;

namespace {

class FeatureFlags : public testing::Test
{
protected:
    ~FeatureFlags() override { FeatureFlag::reset(); }
};

} // namespace

TEST_F(FeatureFlags, AnUnknownFlagIsWhatTheCallerTakesItFor)
{
    EXPECT_TRUE(FeatureFlag::enabled("tool-gtc-import", true));
    EXPECT_FALSE(FeatureFlag::enabled("tool-gtc-import", false));
}

TEST_F(FeatureFlags, ASetFlagOverrulesTheFallback)
{
    FeatureFlag::setEnabled("tool-gtc-import", false);
    FeatureFlag::setEnabled("tool-p21-import", true);
    for (const bool fallback : {true, false}) {
        EXPECT_FALSE(FeatureFlag::enabled("tool-gtc-import", fallback));
        EXPECT_TRUE(FeatureFlag::enabled("tool-p21-import", fallback));
        EXPECT_EQ(FeatureFlag::enabled("Tool-P21-import", fallback), fallback);
        EXPECT_EQ(FeatureFlag::enabled("", fallback), fallback);
    }
    FeatureFlag::setEnabled("tool-gtc-import", true);
    EXPECT_TRUE(FeatureFlag::enabled("tool-gtc-import", false));
}

TEST_F(FeatureFlags, ResetForgets)
{
    FeatureFlag::setEnabled("tool-gtc-import", false);
    FeatureFlag::reset();
    EXPECT_TRUE(FeatureFlag::enabled("tool-gtc-import", true));
}

TEST_F(FeatureFlags, ThreadsMaySetAndAskAtOnce)
{
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([i] {
                const std::string own = "flag-" + std::to_string(i);
                for (int round = 0; round < 500; ++round) {
                    FeatureFlag::setEnabled(own, round % 2 == 0);
                    EXPECT_EQ(FeatureFlag::enabled(own, round % 2 != 0), round % 2 == 0);
                }
            });
        }
    }
    for (int i = 0; i < 4; ++i)
        EXPECT_FALSE(FeatureFlag::enabled("flag-" + std::to_string(i), true));
}

#include "platform/ox/TestMgr.h"
#include "support/Asserts.h"

#include <gtest/gtest.h>

using Ox::Test::TestMgr;

TEST(TestMgr, IsOffUntilATestTurnsItOn)
{
    EXPECT_FALSE(TestMgr::testing());
    TestMgr::setTesting(true);
    EXPECT_TRUE(TestMgr::testing());
    TestMgr::setTesting(false);
    EXPECT_FALSE(TestMgr::testing());
}

TEST(TestMgr, IsNoSwitchOfTheAssertions)
{
    TestMgr::setTesting(true);
    EXPECT_FALSE(_debug::isTesting());
    TestMgr::setTesting(false);

    const TestSupport::Asserts asserts;
    EXPECT_FALSE(TestMgr::testing());
}

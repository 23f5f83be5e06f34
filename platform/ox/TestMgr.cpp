#include "platform/ox/TestMgr.h"

#include <atomic>

namespace Ox::Test {

namespace {

std::atomic<bool> isTesting{false};

} // namespace

bool TestMgr::testing()
{
    return isTesting.load(std::memory_order_relaxed);
}

void TestMgr::setTesting(bool testing)
{
    isTesting.store(testing, std::memory_order_relaxed);
}

} // namespace Ox::Test

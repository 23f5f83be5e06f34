// TestMgr.h -- the platform's own test switch. Any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

namespace Ox::Test {

/// While it is on, what would be random may come from a generator of a test. Off at start; assertions have a switch of
/// their own.
class VARN_PLATFORM_EXPORT TestMgr
{
public:
    static bool testing();
    static void setTesting(bool testing);
};

} // namespace Ox::Test

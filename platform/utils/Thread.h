// Thread.h -- which thread is the main thread of the process.
#pragma once

#include "platform/VarnPlatformExport.h"

namespace Varn {

/// The thread that loaded this library is the main thread, until setMainThread says otherwise. Any thread.
class VARN_PLATFORM_EXPORT Thread
{
public:
    static bool isMainThread();

    /// Makes the calling thread the main thread. For hosts that load the library on another one.
    static void setMainThread();
};

} // namespace Varn

// ToolLibraryWrappers.h -- the hub of this process, and how a host puts in its own. Any thread.
#pragma once

#include "platform/hub/IPlatformLibrariesInterface.h"

namespace Varn {

class VARN_PLATFORM_EXPORT ToolLibraryWrappers
{
public:
    using Failure = IPlatformLibrariesInterface::Failure;
    /// A hub, or why there is none to be had.
    using Hub = Ox::expected<gsl::not_null<std::shared_ptr<IPlatformLibrariesInterface>>, Failure>;

    /// The way to the hub that is set at each call; an UnconfiguredHub at first. The pointer never dies: a call under
    /// way keeps the hub that it began with, the next goes to the one that is set by then. The failure is the one that
    /// was set.
    static Ox::expected<SafePointer<IPlatformLibrariesInterface>, Failure> getPlatformLibrariesInterface();

    /// Puts another hub in, and returns the one before, for whoever set this one only for a while. The hub is shared:
    /// it dies when its last call has ended and nobody else holds it, maybe on the thread of that call. One that is set
    /// when the process ends is not destroyed.
    static Hub setPlatformLibrariesInterface(Hub hub);
};

} // namespace Varn

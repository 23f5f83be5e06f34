#include "platform/hub/ToolLibraryWrappers.h"

#include "platform/hub/CurrentHub.h"
#include "platform/hub/UnconfiguredHub.h"

#include <utility>

namespace Varn {

namespace {

/// Never destroyed: loads from a hub may still be under way when the process ends.
CurrentHub &currentHub()
{
    static auto &hub = *new CurrentHub(std::make_shared<UnconfiguredHub>());
    return hub;
}

} // namespace

Ox::expected<SafePointer<IPlatformLibrariesInterface>, ToolLibraryWrappers::Failure>
ToolLibraryWrappers::getPlatformLibrariesInterface()
{
    return currentHub().get().map([](const auto &) { return SafePointer<IPlatformLibrariesInterface>(&currentHub()); });
}

ToolLibraryWrappers::Hub ToolLibraryWrappers::setPlatformLibrariesInterface(Hub hub)
{
    return currentHub().exchange(std::move(hub));
}

} // namespace Varn

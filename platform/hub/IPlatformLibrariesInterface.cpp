#include "platform/hub/IPlatformLibrariesInterface.h"

namespace Varn {

IPlatformLibrariesInterface::~IPlatformLibrariesInterface() = default;

} // namespace Varn

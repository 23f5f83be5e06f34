#include "ToolLibrary/Interface/Private/ToolSourceSink/DiskLibrary.h"

namespace Varn::ToolLibraries {

DiskLibrary::~DiskLibrary() = default;

} // namespace Varn::ToolLibraries

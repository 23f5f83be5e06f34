#include "ToolLibrary/Interface/ToolLibraryCache.h"

namespace Varn::ToolLibraries {

ToolLibraryCache::~ToolLibraryCache() = default;

} // namespace Varn::ToolLibraries

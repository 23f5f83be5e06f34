// Trees.h -- trees of libraries that are measured.
#pragma once

#include "ToolLibrary/Interface/Private/ToolLibraryCacheInMemory.h"
#include "platform/tool/ToolLibraryInterface.h"

#include <memory>
#include <string>
#include <vector>

namespace Bench {

/// A cache of these libraries alone.
std::shared_ptr<Varn::ToolLibraries::ToolLibraryCacheInMemory> cacheOf(const std::vector<std::wstring> &urls);

/// The interface over such a cache.
std::shared_ptr<Varn::ToolLibraries::ToolLibraryInterface> engineOf(const std::vector<std::wstring> &urls);

} // namespace Bench

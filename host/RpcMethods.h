// RpcMethods.h -- the methods that the engine offers to scripts.
#pragma once

#include "host/JsonRpcDispatcher.h"
#include "platform/tool/ToolLibraryInterface.h"

#include <memory>

namespace Quillon {

/// Operations of the interface: library, fetchTools, getToolsFromLibrary, findToolById, getAllLibraryUrls.
void addReadingMethods(JsonRpcDispatcher &dispatcher,
                       std::shared_ptr<Varn::ToolLibraries::ToolLibraryInterface> engine);

/// Operations on values: URLs, locators, loose libraries and tools.
void addConversionMethods(JsonRpcDispatcher &dispatcher);

/// What holds for the process: locale.set.
void addStateMethods(JsonRpcDispatcher &dispatcher);

} // namespace Quillon

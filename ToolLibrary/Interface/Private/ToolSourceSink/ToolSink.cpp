#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSink.h"

namespace Varn::ToolLibraries {

ToolSink::~ToolSink() = default;

} // namespace Varn::ToolLibraries

#include "platform/tool/ToolLibraryInterface.h"

namespace Varn::ToolLibraries {

ToolLibraryInterface::~ToolLibraryInterface() = default;

} // namespace Varn::ToolLibraries

#include "ToolLibrary/Interface/Private/ToolSourceSink/ExportableLibrary.h"

namespace Varn::ToolLibraries {

ExportableLibrary::~ExportableLibrary() = default;

} // namespace Varn::ToolLibraries

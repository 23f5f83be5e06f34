#include "ToolLibrary/Interface/mode/ModeConfiguration.h"

namespace Varn::ToolLibraries {

ModeConfiguration::~ModeConfiguration() = default;

} // namespace Varn::ToolLibraries

#include "platform/tool/UserInteraction.h"

namespace Varn::ToolLibraries {

UserInteraction::~UserInteraction() = default;

} // namespace Varn::ToolLibraries

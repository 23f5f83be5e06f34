#include "platform/tool/JSONSerializable.h"

namespace Varn::ToolLibraries {

JSONSerializable::~JSONSerializable() = default;

} // namespace Varn::ToolLibraries

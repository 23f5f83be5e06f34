#include "ToolLibrary/Interface/Private/JsonManipulation/JsonConsumer.h"

namespace Varn::ToolLibraries {

JsonConsumer::~JsonConsumer() = default;

} // namespace Varn::ToolLibraries

#include "platform/nc/ToolSegmentStream.h"

namespace Varn {

ToolSegmentStream::~ToolSegmentStream() = default;

} // namespace Varn

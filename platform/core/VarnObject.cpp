#include "platform/core/VarnObject.h"

namespace Varn {

VarnObject::~VarnObject() = default;

} // namespace Varn

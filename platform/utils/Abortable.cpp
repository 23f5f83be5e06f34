#include "platform/utils/Abortable.h"

namespace Varn {

Abortable::~Abortable() = default;
AbortableImpl::~AbortableImpl() = default;

} // namespace Varn

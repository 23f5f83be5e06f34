#include "util/utility/SafePointer.h"

namespace Varn {

NullPointerException::NullPointerException() : std::runtime_error("Null pointer") {}
NullPointerException::~NullPointerException() = default;

} // namespace Varn

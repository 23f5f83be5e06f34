// HolderSupportTable.h -- which holder takes which insert on which turning tool. Immutable, any thread.
#pragma once

#include "platform/nc/ToolGeometry.h"

namespace Varn {

/// Whether a holder of the style takes the insert on a tool of the type; false for whatever is no turning tool.
bool isHolderSupported(ToolGeometry::Type type, ToolGeometry::InsertType insert, ToolGeometry::HolderType holder);

} // namespace Varn

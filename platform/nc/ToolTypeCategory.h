// ToolTypeCategory.h -- the coarse groups in which a dialog lists the tool types. Stateless, any thread.
#pragma once

#include "platform/nc/ToolGeometry.h"

namespace Varn {

/// Hole making, milling and probe are the rotating tools.
enum class ToolTypeCategory : int {
    None = 0,
    Adaptive = 1, ///< holders and tool blocks
    Jet = 2,
    HoleMaking = 3,
    Milling = 4,
    Probe = 5,
    Turning = 6,
    Depositing = 7,
};

/// The category of \a type; None for TYPE_NONE and for a value that is no type.
VARN_PLATFORM_EXPORT ToolTypeCategory getToolTypeCategory(ToolGeometry::Type type);

} // namespace Varn

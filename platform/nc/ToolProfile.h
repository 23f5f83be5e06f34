// ToolProfile.h -- the outline of a form mill: a chain of lines and arcs. A value, any thread.
#pragma once

#include "platform/utils/Vector2D.h"

#include <vector>

namespace Varn {

/// One piece of the chain. It begins where the one before it ends, the first on the axis at the tip. x is the radius, y
/// runs up the axis.
struct ToolProfileEntity {
    Vector2D end;
    bool arc = false;
    bool ccw = true; ///< counter-clockwise; of an arc
    Vector2D center; ///< of an arc

    friend bool operator==(const ToolProfileEntity &, const ToolProfileEntity &) = default;
};

using ToolProfile = std::vector<ToolProfileEntity>;

} // namespace Varn

#include "platform/nc/ToolPlaceholder3DGeometry.h"

#include <utility>

namespace Varn {

ToolPlaceholder3DGeometry::ToolPlaceholder3DGeometry(std::wstring id) : Tool3DGeometryBase(std::move(id)) {}

ToolPlaceholder3DGeometry::~ToolPlaceholder3DGeometry() = default;

} // namespace Varn

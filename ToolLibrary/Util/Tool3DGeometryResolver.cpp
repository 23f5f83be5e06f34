// Tool3DGeometryResolver.cpp -- lets the tool records of the platform find their solids in the engine's table, from the
// moment on when the engine is loaded.
#include "ToolLibrary/Util/Tool3DGeometryMap.h"
#include "platform/core/ToolSLDGeometry.h"
#include "platform/core/ToolSpecification.h"

namespace Varn::ToolLibraries {

namespace {

ToolSpecification::Raw3DGeometry solidOf(const std::wstring &id)
{
    if (id.empty() || !Tool3DGeometryMap::has(id))
        return nullptr;
    return Tool3DGeometryMap::getLoaded3DGeometry(id);
}

[[maybe_unused]] const bool isSet = [] {
    ToolSpecification::set3DGeometryResolver(&solidOf);
    return true;
}();

} // namespace

} // namespace Varn::ToolLibraries

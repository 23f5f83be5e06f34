#include "ToolLibrary/Util/Tool3DGeometryMapAccessor.h"

#include "ToolLibrary/Util/Tool3DGeometryMap.h"
#include "util/utility/Assert.h"

namespace Varn::ToolLibraries {

std::shared_ptr<const ToolSLDGeometry> Tool3DGeometryMapAccessor::getLoaded3DGeometry(const std::wstring &id)
{
    VARN_EXPECTS(!id.empty());
    VARN_EXPECTS(mapHas(id));
    return Tool3DGeometryMap::getLoaded3DGeometry(id);
}

bool Tool3DGeometryMapAccessor::mapHas(const std::wstring &id) const
{
    VARN_EXPECTS(!id.empty());
    return Tool3DGeometryMap::has(id);
}

Tool3DGeometryMapAccessor::~Tool3DGeometryMapAccessor() = default;

} // namespace Varn::ToolLibraries

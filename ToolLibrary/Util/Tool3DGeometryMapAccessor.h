// Tool3DGeometryMapAccessor.h -- a door to the table of solids, for code that wants to put another in its place. Any
// thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/core/ToolSLDGeometry.h"

#include <memory>
#include <string>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT Tool3DGeometryMapAccessor
{
public:
    /// As Tool3DGeometryMap::getLoaded3DGeometry. REQUIRES: mapHas(id).
    virtual std::shared_ptr<const ToolSLDGeometry> getLoaded3DGeometry(const std::wstring &id);
    /// REQUIRES: an id.
    virtual bool mapHas(const std::wstring &id) const;
    virtual ~Tool3DGeometryMapAccessor();
};

} // namespace Varn::ToolLibraries

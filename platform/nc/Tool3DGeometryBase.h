// Tool3DGeometryBase.h -- the solid model of a tool, known by its id. Immutable, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <string>

namespace Varn {

/// What a tool holds of its solid: the id at least. Tools that share an id share the solid.
class VARN_PLATFORM_EXPORT Tool3DGeometryBase
{
public:
    virtual ~Tool3DGeometryBase();
    Tool3DGeometryBase(const Tool3DGeometryBase &) = delete;
    Tool3DGeometryBase &operator=(const Tool3DGeometryBase &) = delete;

    const std::wstring &id() const { return m_id; }

protected:
    explicit Tool3DGeometryBase(std::wstring id);

private:
    std::wstring m_id;
};

} // namespace Varn

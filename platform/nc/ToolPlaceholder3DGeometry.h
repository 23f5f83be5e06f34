// ToolPlaceholder3DGeometry.h -- stands for a solid that has not been read: its id alone. Immutable, any thread.
#pragma once

#include "platform/nc/Tool3DGeometryBase.h"

namespace Varn {

class VARN_PLATFORM_EXPORT ToolPlaceholder3DGeometry : public Tool3DGeometryBase
{
public:
    explicit ToolPlaceholder3DGeometry(std::wstring id);
    ~ToolPlaceholder3DGeometry() override;
};

} // namespace Varn

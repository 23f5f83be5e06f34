#include "platform/nc/ToolTypeCategory.h"

#include "platform/nc/ToolTypeTable.h"

namespace Varn {

ToolTypeCategory getToolTypeCategory(ToolGeometry::Type type)
{
    return toolTypeRow(type).category;
}

} // namespace Varn

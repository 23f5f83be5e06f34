// What stands for ToolSolid in a build without OpenCASCADE.
#include "platform/core/ToolSolid.h"

#include "platform/tool/Exception.h"

namespace Varn {

namespace {

constexpr const char *missing = "This build has no 3D solids";

} // namespace

bool ToolSolid::isAvailable()
{
    return false;
}

std::string ToolSolid::toBytes(const TopoDS_Shape &)
{
    throw ToolLibraries::NotSupportedError(missing);
}

std::shared_ptr<const TopoDS_Shape> ToolSolid::fromBytes(std::string_view)
{
    throw ToolLibraries::NotSupportedError(missing);
}

} // namespace Varn

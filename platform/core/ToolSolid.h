// ToolSolid.h -- between the solids of the modelling library and their bytes. Stateless, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <memory>
#include <string>
#include <string_view>

class TopoDS_Shape; // of OpenCASCADE, whose headers only the users of a solid need

namespace Varn {

/// Lengths of a solid are millimeters. A build without OpenCASCADE has the class all the same: every conversion then
/// raises NotSupportedError "This build has no 3D solids".
class VARN_PLATFORM_EXPORT ToolSolid
{
public:
    /// Whether this build can convert at all.
    static bool isAvailable();

    /// The bytes of \a shape: OpenCASCADE's binary form, version 4, without the triangles that a display adds.
    /// \throws ToolLibraries::InvalidInput for a null shape, and for one that fromBytes would refuse: faces that are
    /// only triangles, nesting without end.
    static std::string toBytes(const TopoDS_Shape &shape);

    /// The solid that the bytes hold; never null. They may come from anywhere.
    /// \throws ToolLibraries::GeometryLoadError "The solid cannot be read: " and what is wrong with them.
    static std::shared_ptr<const TopoDS_Shape> fromBytes(std::string_view bytes);
};

} // namespace Varn

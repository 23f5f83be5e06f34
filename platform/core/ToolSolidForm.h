// ToolSolidForm.h -- the binary form of a solid, checked before the modelling library reads it. Stateless, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <optional>
#include <string>
#include <string_view>

namespace Varn {

/// OpenCASCADE's binary form of a shape, version 4, as docs/3dtool-file.md draws it. Its reader makes room for whatever
/// a count claims, follows any nesting and believes any index, so no bytes from outside go to it unchecked.
class VARN_PLATFORM_EXPORT ToolSolidForm
{
public:
    static constexpr int mostNesting = 100;           ///< of curves and surfaces in each other, of shapes in shapes
    static constexpr int mostLocationSteps = 1000;    ///< elementary movements behind one location
    static constexpr long mostOccurrences = 10000000; ///< of shapes in the whole, each place of a shared one counted

    /// What is wrong with \a bytes and where, for people; nothing when every count, index and nesting holds. Memory
    /// and time are bounded by the number of bytes.
    static std::optional<std::string> findFault(std::string_view bytes);
};

} // namespace Varn

// ToolErrorConverter.h -- the faults of a tool between objects and the list "errors" of its map. Stateless, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/core/ToolError.h"

#include <QVariantMap>

#include <memory>
#include <vector>

namespace Varn {

class ToolSpecification;

class VARN_PLATFORM_EXPORT ToolErrorConverter
{
public:
    using Errors = std::vector<std::shared_ptr<ToolError>>;

    /// Appends to the list of the map, which is made when there is an error to put into it. Null pointers are left out;
    /// what stands in the list stays as it is, and a member that is no list is replaced.
    static void convertErrors(const Errors &errors, QVariantMap &tool);

    /// The entries of the list that are maps, in their order.
    static void convertErrors(const QVariantMap &tool, Errors &errors);

    // The same with the faults of a tool's record; those that it had before are replaced.
    static void convertErrors(const ToolSpecification &record, QVariantMap &tool);
    static void convertErrors(const QVariantMap &tool, ToolSpecification &record);

    /// The first form for one.
    static void convertError(const std::shared_ptr<ToolError> &error, QVariantMap &tool);
};

} // namespace Varn

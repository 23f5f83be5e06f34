// UpdateNodeResult.h -- what became of a node of the tree that was to be changed. Values that share the node's
// metadata; any thread, while no one changes that.
#pragma once

#include "platform/tool/LibraryMetadata.h"
#include "platform/tool/UpdateMultipleResult.h"
#include "platform/tool/UpdateResult.h"

namespace Varn::ToolLibraries {

class VARN_PLATFORM_EXPORT UpdateNodeResult : public UpdateResult<std::shared_ptr<LibraryMetadata>>
{
public:
    explicit UpdateNodeResult(const std::shared_ptr<LibraryMetadata> &node);
    UpdateNodeResult(const std::shared_ptr<LibraryMetadata> &node, const std::string &error,
                     const std::optional<std::wstring> &translated);
};

class VARN_PLATFORM_EXPORT UpdateNodesResult : public UpdateMultipleResult<UpdateNodeResult>
{
};

} // namespace Varn::ToolLibraries

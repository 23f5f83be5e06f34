#include "platform/tool/UpdateNodeResult.h"

namespace Varn::ToolLibraries {

UpdateNodeResult::UpdateNodeResult(const std::shared_ptr<LibraryMetadata> &node) : UpdateResult(node) {}

UpdateNodeResult::UpdateNodeResult(const std::shared_ptr<LibraryMetadata> &node, const std::string &error,
                                   const std::optional<std::wstring> &translated)
    : UpdateResult(node, error, translated)
{
}

} // namespace Varn::ToolLibraries

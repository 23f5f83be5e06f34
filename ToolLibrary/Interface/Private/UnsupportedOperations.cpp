// UnsupportedOperations.cpp -- the operations of the interface that this release declares, so that hosts can be built
// against it, and refuses.
#include "ToolLibrary/Interface/Private/ToolLibraryInterfaceImpl.h"

#include "platform/core/ToolSpecification.h"
#include "platform/tool/Exception.h"

namespace Varn::ToolLibraries {

namespace {

[[noreturn]] void refuse()
{
    throw NotSupportedError("Not yet supported");
}

} // namespace

std::vector<LibraryTool> ToolLibraryInterfaceImpl::fetchUnusedTools(const ToolLibraryLocator &)
{
    refuse();
}

UpdateNodesResult ToolLibraryInterfaceImpl::createLibraries(const LibraryMetadataList &)
{
    refuse();
}

UpdateNodeResult ToolLibraryInterfaceImpl::createHubLibrary()
{
    refuse();
}

UpdateNodesResult ToolLibraryInterfaceImpl::deleteLibraries(const LibraryMetadataList &)
{
    refuse();
}

UpdateNodesResult ToolLibraryInterfaceImpl::duplicateLibraries(const LibraryMetadataList &)
{
    refuse();
}

UpdateNodesResult ToolLibraryInterfaceImpl::pasteNodes(const LibraryMetadataList &, std::wstring)
{
    refuse();
}

UpdateNodesResult ToolLibraryInterfaceImpl::editLibraries(const LibraryMetadataList &)
{
    refuse();
}

UpdateNodesResult ToolLibraryInterfaceImpl::createFolders(const LibraryMetadataList &)
{
    refuse();
}

UpdateNodesResult ToolLibraryInterfaceImpl::deleteFolders(const LibraryMetadataList &)
{
    refuse();
}

UpdateNodesResult ToolLibraryInterfaceImpl::editFolders(const LibraryMetadataList &)
{
    refuse();
}

ExportLibrariesResult ToolLibraryInterfaceImpl::exportLibraries(const std::vector<ToolLibraryLocator> &)
{
    refuse();
}

ImportLibrariesResult ToolLibraryInterfaceImpl::importLibraries(const ToolLibraryLocator &)
{
    refuse();
}

ImportLibrariesResult
ToolLibraryInterfaceImpl::importConfirmedLibraries(const std::map<std::wstring, ToolLibraryLocator> &)
{
    refuse();
}

ImportToolsResult ToolLibraryInterfaceImpl::importTools(const ToolLibraryLocator &)
{
    refuse();
}

ImportToolsResult ToolLibraryInterfaceImpl::importConfirmedTools(const std::map<std::wstring, ToolLibraryLocator> &)
{
    refuse();
}

Import3DToolResult ToolLibraryInterfaceImpl::import3DTool(const std::wstring &)
{
    refuse();
}

Import3DToolResult ToolLibraryInterfaceImpl::import3DTool()
{
    refuse();
}

UpdateToolsResult ToolLibraryInterfaceImpl::createTools(const std::vector<LibraryTool> &)
{
    refuse();
}

UpdateToolsResult ToolLibraryInterfaceImpl::deleteTools(const std::vector<LibraryTool> &)
{
    refuse();
}

UpdateToolsResult ToolLibraryInterfaceImpl::editTools(const std::vector<LibraryTool> &)
{
    refuse();
}

UpdateToolsResult ToolLibraryInterfaceImpl::mergeTools(const ToolLibraryLocator &, const std::vector<LibraryTool> &)
{
    refuse();
}

SelectToolResult ToolLibraryInterfaceImpl::selectToolForOperation(const ToolLibraryLocator &, const ToolId &,
                                                                  std::optional<const PresetId>,
                                                                  std::optional<const int>, ToolSelectType,
                                                                  std::optional<Tool>)
{
    refuse();
}

EditToolPageOnlyModeSettings ToolLibraryInterfaceImpl::editToolPageOnlyModeSettings() const
{
    refuse();
}

gsl::not_null<std::unique_ptr<const ToolRender>> ToolLibraryInterfaceImpl::renderTool(ToolSpecification,
                                                                                      Tools::ToolRenderer &)
{
    refuse();
}

bool ToolLibraryInterfaceImpl::reportError(const ReportErrorPayload &)
{
    refuse();
}

bool ToolLibraryInterfaceImpl::openExternalLink(const std::string &) const
{
    refuse();
}

int ToolLibraryInterfaceImpl::getNextAvailableToolNumber(const ToolLibraryLocator &) const
{
    refuse();
}

ToolSelectType ToolLibraryInterfaceImpl::getToolSelectionType() const
{
    refuse();
}

void ToolLibraryInterfaceImpl::getToolSpecificationFromJson(const std::string &, ToolSpecification &) const
{
    refuse();
}

UpdateToolsResult ToolLibraryInterfaceImpl::getLatestTools(const std::vector<LibraryTool> &)
{
    refuse();
}

RefreshHubLibrariesResult ToolLibraryInterfaceImpl::refreshHubLibraries()
{
    refuse();
}

std::optional<std::chrono::system_clock::time_point> ToolLibraryInterfaceImpl::getHubLastSyncTime()
{
    refuse();
}

} // namespace Varn::ToolLibraries

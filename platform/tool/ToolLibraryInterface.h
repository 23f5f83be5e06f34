// ToolLibraryInterface.h -- the one door through which a host reaches the tool library.
//
// Calls may come on any thread. Operations that change a batch report per item and never throw for one of them;
// operations that read let an Exception pass. The order of the operations is part of the interface: hosts that were
// built against an earlier release call by position.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/tool/EditToolPageOnlyModeSettings.h"
#include "platform/tool/ExportLibraryResult.h"
#include "platform/tool/Import3DToolResult.h"
#include "platform/tool/ImportLibraryResult.h"
#include "platform/tool/ImportToolResult.h"
#include "platform/tool/LibraryMetadata.h"
#include "platform/tool/LibraryMetadataTree.h"
#include "platform/tool/LibraryTool.h"
#include "platform/tool/PresetId.h"
#include "platform/tool/RefreshHubLibrariesResult.h"
#include "platform/tool/ReportErrorPayload.h"
#include "platform/tool/SelectToolResult.h"
#include "platform/tool/ToolLibrary.h"
#include "platform/tool/ToolLibraryLocator.h"
#include "platform/tool/ToolPage.h"
#include "platform/tool/ToolPageRequest.h"
#include "platform/tool/ToolRender.h"
#include "platform/tool/ToolSelectType.h"
#include "platform/tool/UpdateNodeResult.h"
#include "platform/tool/UpdateToolResult.h"
#include "util/utility/SafePointer.h"

#include <gsl/gsl>

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Varn {
class Abortable;
class ToolSpecification;
class VarnDocument;
namespace Tools {
class ToolRenderer;
}
} // namespace Varn

namespace Varn::ToolLibraries {

using LibraryMetadataList = std::vector<std::unique_ptr<LibraryMetadata>>;

class VARN_PLATFORM_EXPORT ToolLibraryInterface
{
public:
    /// The load that started with the cache; abort it to end all loads that have not finished.
    virtual std::shared_ptr<Abortable> initialLoadTask() const = 0;

    /// The tree of folders and libraries.
    virtual LibraryMetadataTree toolLibrariesIndex() const = 0;

    /// All tools of a library, in the order of their GUIDs. Reads a library outside the tree anew.
    virtual std::unique_ptr<ToolLibrary> library(const ToolLibraryLocator &locator) = 0;

    /// One page of tools. A library that cannot be opened is an error entry of the page.
    virtual std::unique_ptr<ToolPage> fetchTools(const ToolPageRequest &request) = 0;

    /// The tools of documents that no operation uses.
    virtual std::vector<LibraryTool> fetchUnusedTools(const ToolLibraryLocator &locator) = 0;

    virtual UpdateNodesResult createLibraries(const LibraryMetadataList &libraries) = 0;
    virtual UpdateNodeResult createHubLibrary() = 0;
    virtual UpdateNodesResult deleteLibraries(const LibraryMetadataList &libraries) = 0;
    virtual UpdateNodesResult duplicateLibraries(const LibraryMetadataList &libraries) = 0;
    virtual UpdateNodesResult pasteNodes(const LibraryMetadataList &nodes, std::wstring targetFolderUrl) = 0;
    virtual UpdateNodesResult editLibraries(const LibraryMetadataList &libraries) = 0;
    virtual UpdateNodesResult createFolders(const LibraryMetadataList &folders) = 0;
    virtual UpdateNodesResult deleteFolders(const LibraryMetadataList &folders) = 0;
    virtual UpdateNodesResult editFolders(const LibraryMetadataList &folders) = 0;

    virtual ExportLibrariesResult exportLibraries(const std::vector<ToolLibraryLocator> &libraries) = 0;
    virtual ImportLibrariesResult importLibraries(const ToolLibraryLocator &parentFolder) = 0;
    virtual ImportLibrariesResult
    importConfirmedLibraries(const std::map<std::wstring, ToolLibraryLocator> &targets) = 0;
    virtual ImportToolsResult importTools(const ToolLibraryLocator &targetLibrary) = 0;
    virtual ImportToolsResult importConfirmedTools(const std::map<std::wstring, ToolLibraryLocator> &targets) = 0;
    virtual Import3DToolResult import3DTool(const std::wstring &filePath) = 0;
    virtual Import3DToolResult import3DTool() = 0;

    virtual UpdateToolsResult createTools(const std::vector<LibraryTool> &tools) = 0;
    virtual UpdateToolsResult deleteTools(const std::vector<LibraryTool> &tools) = 0;
    virtual UpdateToolsResult editTools(const std::vector<LibraryTool> &tools) = 0;
    virtual UpdateToolsResult mergeTools(const ToolLibraryLocator &library, const std::vector<LibraryTool> &tools) = 0;

    virtual SelectToolResult selectToolForOperation(const ToolLibraryLocator &library, const ToolId &toolId,
                                                    std::optional<const PresetId> presetId,
                                                    std::optional<const int> operationId, ToolSelectType selectType,
                                                    std::optional<Tool> tool) = 0;
    virtual EditToolPageOnlyModeSettings editToolPageOnlyModeSettings() const = 0;
    virtual gsl::not_null<std::unique_ptr<const ToolRender>> renderTool(ToolSpecification specification,
                                                                        Tools::ToolRenderer &renderer) = 0;
    virtual bool reportError(const ReportErrorPayload &payload) = 0;
    virtual bool openExternalLink(const std::string &url) const = 0;
    virtual std::optional<ToolLibraryLocator> getActiveDocumentUrl() const = 0;
    virtual ToolLibraryLocator getDocumentUrl(const VarnDocument &document) const = 0;

    /// The first tool with that id in the libraries of the tree, in their order; nothing when none has it. A library
    /// that failed to load and stands before a hit raises its failure.
    virtual std::optional<const LibraryTool> findToolById(ToolId toolId) = 0;
    virtual std::optional<const LibraryTool> findToolById(ToolLibraryLocator library, ToolId toolId) = 0;

    /// Documents and libraries of the tree, without its folders.
    virtual std::vector<ToolLibraryLocator> getAllLibraryUrls() const = 0;

    /// All tools of a library of the tree, in the library's order; throws LibraryMissing for any other.
    virtual std::vector<LibraryTool> getToolsFromLibrary(ToolLibraryLocator library) const = 0;

    virtual int getNextAvailableToolNumber(const ToolLibraryLocator &library) const = 0;
    virtual ToolSelectType getToolSelectionType() const = 0;
    virtual void getToolSpecificationFromJson(const std::string &json, ToolSpecification &specification) const = 0;
    virtual UpdateToolsResult getLatestTools(const std::vector<LibraryTool> &tools) = 0;
    virtual RefreshHubLibrariesResult refreshHubLibraries() = 0;
    virtual std::optional<std::chrono::system_clock::time_point> getHubLastSyncTime() = 0;
    virtual void setActiveDocument(SafePointer<VarnDocument> document) = 0;

    /// Takes over which documents are open, and shows them in the tree.
    virtual void refreshDocumentLibraries() = 0;

    virtual ~ToolLibraryInterface();
};

} // namespace Varn::ToolLibraries

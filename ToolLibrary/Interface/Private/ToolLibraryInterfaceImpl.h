// ToolLibraryInterfaceImpl.h -- the facade: resolves a locator to a library of the cache, or to a file outside the
// tree, and works on it. Threads as for ToolLibraryInterface.
#pragma once

#include "ToolLibrary/IO/ToolLibraryUrl.h"
#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/tool/ToolLibraryInterface.h"

namespace Varn::Tools {
class CamDocuments;
}

namespace Varn::ToolLibraries {

class DiskLibrary;
class ModeConfiguration;
class ToolLibraryCache;
class RapidjsonToolLibrary;
class ToolSource;
class UserInteraction;

class TOOL_LIBRARY_EXPORT ToolLibraryInterfaceImpl : public ToolLibraryInterface
{
public:
    /// None of the three may be null. Made on the main thread, where the open documents are listed.
    ToolLibraryInterfaceImpl(std::shared_ptr<ModeConfiguration> modeConfiguration,
                             std::shared_ptr<ToolLibraryCache> cache, std::shared_ptr<UserInteraction> userInteraction);
    ToolLibraryInterfaceImpl(SafePointer<VarnDocument> document, std::shared_ptr<ModeConfiguration> modeConfiguration,
                             std::shared_ptr<ToolLibraryCache> cache, std::shared_ptr<UserInteraction> userInteraction);
    ~ToolLibraryInterfaceImpl() override;

    void setModeConfiguration(std::shared_ptr<ModeConfiguration> modeConfiguration);

    std::shared_ptr<Abortable> initialLoadTask() const override;
    LibraryMetadataTree toolLibrariesIndex() const override;
    std::unique_ptr<ToolLibrary> library(const ToolLibraryLocator &locator) override;
    std::unique_ptr<ToolPage> fetchTools(const ToolPageRequest &request) override;
    std::vector<LibraryTool> fetchUnusedTools(const ToolLibraryLocator &locator) override;

    UpdateNodesResult createLibraries(const LibraryMetadataList &libraries) override;
    UpdateNodeResult createHubLibrary() override;
    UpdateNodesResult deleteLibraries(const LibraryMetadataList &libraries) override;
    UpdateNodesResult duplicateLibraries(const LibraryMetadataList &libraries) override;
    UpdateNodesResult pasteNodes(const LibraryMetadataList &nodes, std::wstring targetFolderUrl) override;
    UpdateNodesResult editLibraries(const LibraryMetadataList &libraries) override;
    UpdateNodesResult createFolders(const LibraryMetadataList &folders) override;
    UpdateNodesResult deleteFolders(const LibraryMetadataList &folders) override;
    UpdateNodesResult editFolders(const LibraryMetadataList &folders) override;

    ExportLibrariesResult exportLibraries(const std::vector<ToolLibraryLocator> &libraries) override;
    ImportLibrariesResult importLibraries(const ToolLibraryLocator &parentFolder) override;
    ImportLibrariesResult importConfirmedLibraries(const std::map<std::wstring, ToolLibraryLocator> &targets) override;
    ImportToolsResult importTools(const ToolLibraryLocator &targetLibrary) override;
    ImportToolsResult importConfirmedTools(const std::map<std::wstring, ToolLibraryLocator> &targets) override;
    Import3DToolResult import3DTool(const std::wstring &filePath) override;
    Import3DToolResult import3DTool() override;

    UpdateToolsResult createTools(const std::vector<LibraryTool> &tools) override;
    UpdateToolsResult deleteTools(const std::vector<LibraryTool> &tools) override;
    UpdateToolsResult editTools(const std::vector<LibraryTool> &tools) override;
    UpdateToolsResult mergeTools(const ToolLibraryLocator &library, const std::vector<LibraryTool> &tools) override;

    SelectToolResult selectToolForOperation(const ToolLibraryLocator &library, const ToolId &toolId,
                                            std::optional<const PresetId> presetId,
                                            std::optional<const int> operationId, ToolSelectType selectType,
                                            std::optional<Tool> tool) override;
    EditToolPageOnlyModeSettings editToolPageOnlyModeSettings() const override;
    gsl::not_null<std::unique_ptr<const ToolRender>> renderTool(ToolSpecification specification,
                                                                Tools::ToolRenderer &renderer) override;
    bool reportError(const ReportErrorPayload &payload) override;
    bool openExternalLink(const std::string &url) const override;
    std::optional<ToolLibraryLocator> getActiveDocumentUrl() const override;
    ToolLibraryLocator getDocumentUrl(const VarnDocument &document) const override;

    std::optional<const LibraryTool> findToolById(ToolId toolId) override;
    std::optional<const LibraryTool> findToolById(ToolLibraryLocator library, ToolId toolId) override;
    std::vector<ToolLibraryLocator> getAllLibraryUrls() const override;
    std::vector<LibraryTool> getToolsFromLibrary(ToolLibraryLocator library) const override;
    int getNextAvailableToolNumber(const ToolLibraryLocator &library) const override;
    ToolSelectType getToolSelectionType() const override;
    void getToolSpecificationFromJson(const std::string &json, ToolSpecification &specification) const override;
    UpdateToolsResult getLatestTools(const std::vector<LibraryTool> &tools) override;
    RefreshHubLibrariesResult refreshHubLibraries() override;
    std::optional<std::chrono::system_clock::time_point> getHubLastSyncTime() override;
    void setActiveDocument(SafePointer<VarnDocument> document) override;
    void refreshDocumentLibraries() override;

private:
    std::shared_ptr<ToolSource> getToolSource(const ToolLibraryLocator &locator) const;
    std::shared_ptr<DiskLibrary> getDocumentLibrary(const Tools::ToolLibraryUrl &url) const;
    std::shared_ptr<DiskLibrary> getDocumentOrCacheLibrary(const Tools::ToolLibraryUrl &url) const;
    const RapidjsonToolLibrary *printableSource(const ToolSource &source) const;
    std::unique_ptr<ToolPage> validatePageTools(std::unique_ptr<ToolPage> page) const;

    std::shared_ptr<Tools::CamDocuments> m_camDocuments;
    std::shared_ptr<ModeConfiguration> m_modeConfiguration;
    std::shared_ptr<ToolLibraryCache> m_cachedLibraries;
    std::shared_ptr<UserInteraction> m_userInteraction;
};

} // namespace Varn::ToolLibraries

// UnconfiguredHub.h -- the hub of a person who has none. Stateless, any thread.
#pragma once

#include "platform/hub/IPlatformLibrariesInterface.h"

namespace Varn {

/// There is nothing to list, and a refresh finds just that, so that nodes of a hub that was left vanish. Whatever would
/// need a hub to do it fails with "No hub is configured".
class VARN_PLATFORM_EXPORT UnconfiguredHub : public IPlatformLibrariesInterface
{
public:
    ~UnconfiguredHub() override;

    Result<ToolLibraries::LibraryMetadataTree> index() const override;
    Result<void> addHubLibraryNodes(ToolLibraries::LibraryMetadataTree &tree) override;
    Result<void> listTools(const std::string &libraryId, QList<QVariant> &tools,
                           const Abortable &abortable) const override;

    Result<QStringList> listChildNames(const std::string &parentFolderId) const override;
    Result<void> checkNodeEditable(const std::string &folderId) const override;
    Result<std::string> createNode(const QString &kind, const QString &name,
                                   const std::string &parentFolderId) override;
    Result<void> deleteNode(const std::string &folderId) override;
    Result<void> updateNode(const std::string &folderId, const QString &name,
                            const std::string &parentFolderId) override;

    LibrariesPlatform::HubLibraryRefreshResult fetchLibraryNodes() override;
    LibrariesPlatform::HubLibraryRefreshResult fetchItems() override;
    std::optional<std::chrono::system_clock::time_point> lastSyncTime() const override;

    Result<std::shared_ptr<const Ox::JSONNode>> getTool(const std::string &hubToolId) const override;
    Result<std::string> createTool(const std::string &libraryId, const std::string &toolJson) override;
    Result<std::string> updateTool(const std::string &hubToolId, const std::string &libraryId,
                                   const std::string &toolJson) override;
    Result<void> removeTool(const std::string &hubToolId) override;
    Result<void> syncTool(const std::string &hubToolId) override;
};

} // namespace Varn

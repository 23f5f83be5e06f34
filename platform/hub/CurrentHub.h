// CurrentHub.h -- hands each call on to the hub that is set at that moment. Any thread.
#pragma once

#include "platform/hub/ToolLibraryWrappers.h"

#include <mutex>

namespace Varn {

/// Stands between a SafePointer, which keeps nothing alive, and hubs that come and go while calls are under way: a call
/// holds its hub until it ends. Where no hub is to be had, each operation fails with the reason.
class CurrentHub : public IPlatformLibrariesInterface
{
public:
    using Hub = ToolLibraryWrappers::Hub;

    explicit CurrentHub(Hub hub);
    ~CurrentHub() override;

    Hub get() const;

    /// Returns the hub before.
    Hub exchange(Hub hub);

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

private:
    mutable std::mutex m_mutex;
    Hub m_hub; // guarded by m_mutex, which is not held during a call
};

} // namespace Varn

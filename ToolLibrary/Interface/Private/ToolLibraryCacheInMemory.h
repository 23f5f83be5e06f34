// ToolLibraryCacheInMemory.h -- the libraries of a person's tree, each loaded once, and the tree.
//
// Any thread. One lock guards the tree and the maps; it is never held while a library is loaded, the hub or the main
// thread is waited for, or a file is touched.
#pragma once

#include "ToolLibrary/Interface/ToolLibraryCache.h"

#include <cstddef>
#include <future>
#include <map>
#include <shared_mutex>
#include <utility>
#include <vector>

namespace Varn {
class AbortableImpl;
class IPlatformLibrariesInterface;
} // namespace Varn

namespace Varn::ToolLibraries {

class LibraryIndexProvider;

/// Every library file of the tree begins to load when the cache is made. Whoever asks for a library that no thread has
/// come to yet loads it itself, so the wait is for that one library alone, whatever else is loading. When the cache
/// dies, loads under way run to their own end and those that have not begun are dropped.
class TOOL_LIBRARY_EXPORT ToolLibraryCacheInMemory : public ToolLibraryCache
{
public:
    using ToolLibraryUrl = Tools::ToolLibraryUrl;
    /// What comes of a load: a library, or what the load threw, at each look.
    using LibraryFuture = std::shared_future<std::shared_ptr<DiskLibrary>>;
    using Libraries = std::map<ToolLibraryUrl, LibraryFuture>;

    /// Reads the folders and starts the loads; reads no library file.
    explicit ToolLibraryCacheInMemory(std::shared_ptr<LibraryIndexProvider> indexProvider);
    ToolLibraryCacheInMemory(const ToolLibraryCacheInMemory &other); ///< shares the loads
    ToolLibraryCacheInMemory &operator=(const ToolLibraryCacheInMemory &) = delete;
    ~ToolLibraryCacheInMemory() override;

    std::shared_ptr<Abortable> initialLoadTask() const override; ///< aborts all loads that the cache began with
    LibraryMetadataTree libraryIndex() const override;
    bool hasLibrary(ToolLibraryUrl url) const override;
    std::shared_ptr<DiskLibrary> getLoadedLibrary(ToolLibraryUrl url) const override;

    /// How many of the libraries have ended their load, whether or not it succeeded, of how many.
    struct LoadProgress {
        std::size_t ended = 0;
        std::size_t total = 0;
    };
    LoadProgress loadProgress() const;

    // These throw NotSupportedError "Not yet supported".
    std::shared_ptr<DiskLibrary> createLibrary(ToolLibraryUrl url, const QMap<QString, QVariant> &library,
                                               QMap<QString, QVariant> &node) override;
    void createHubLibraryAndAddNodes() override;
    void deleteLibrary(ToolLibraryUrl url) override;
    std::shared_ptr<DiskLibrary> duplicateLibrary(ToolLibraryUrl source, ToolLibraryUrl target,
                                                  QMap<QString, QVariant> &node) override;
    std::shared_ptr<DiskLibrary> editLibrary(ToolLibraryUrl url, QMap<QString, QVariant> &node) override;
    void createFolder(ToolLibraryUrl url, QMap<QString, QVariant> &node) override;
    void deleteFolder(ToolLibraryUrl url) override;
    QList<QVariant> editFolder(ToolLibraryUrl url, QMap<QString, QVariant> &node) override;
    ToolLibraryUrl makeUniqueUrl(ToolLibraryUrl url) const override;

    void setDocumentIndex(std::shared_ptr<Tools::CamDocuments> documents) override;
    void refreshDocumentLibraries() override;

    /// "HUB_BRQLIBRARYNODE" brings the nodes right below the hub's root up to date, any other text what is below those.
    /// A hub that cannot be reached, or has nothing to say, changes nothing.
    LibrariesPlatform::HubLibraryRefreshResult refreshCache(const std::string &kind) override;
    std::optional<std::chrono::system_clock::time_point> getHubLastSyncTime() const override;

private:
    using HubFolders = std::map<ToolLibraryUrl, std::string>; ///< to the hub's folder identifiers
    using HubLibraries = std::vector<std::pair<ToolLibraryUrl, std::shared_ptr<DiskLibrary>>>;
    using HubRefreshResult = LibrariesPlatform::HubLibraryRefreshResult;
    using Nodes = std::vector<std::shared_ptr<LibraryMetadata>>;

    void initialLoad();
    virtual Libraries startLoadingLibraries(const LibraryMetadataTree &index, std::shared_ptr<Abortable> abortable);
    std::future<std::shared_ptr<DiskLibrary>> loadLibraryAsync(const ToolLibraryUrl &url,
                                                               const std::shared_ptr<Abortable> &abortable) const;
    void checkLibrary(const ToolLibraryUrl &url) const;
    void addToLibraryCache(const ToolLibraryUrl &url, std::shared_ptr<DiskLibrary> library);

    // The hub. Those that change something want m_mutex held.
    HubRefreshResult refreshBRQLibraryNode(IPlatformLibrariesInterface &hub);
    HubRefreshResult refreshHubItems(IPlatformLibrariesInterface &hub);
    HubRefreshResult processHubItemsData(const HubRefreshResult &data);
    void addHubRoot();
    void replaceBRQLibraryNodes(const Nodes &nodes);
    std::optional<std::string> findAndProcessBRQLibraryNode(const LibraryMetadataTree &tree);
    static HubLibraries hubLibraries(const Nodes &nodes, const QVariantList &libraryTools);
    void updateHubFolderCache(const Nodes &nodes);
    void updateHubLibraryCache(const HubLibraries &libraries);
    void syncLibraryIndexWithHubChanges(const HubFolders &oldFolders, const Nodes &nodes);

    std::shared_ptr<LibraryIndexProvider> m_indexProvider; // never null
    std::shared_ptr<AbortableImpl> m_initialLoadTask;      // of all loads of the beginning
    LibraryMetadataTree m_index;                           // guarded by m_mutex
    Libraries m_libraries;                                 // guarded by m_mutex
    HubFolders m_hubFolders;                               // guarded by m_mutex
    std::shared_ptr<const bool> m_isWanted;                // expires with the last cache that shares the loads
    mutable std::shared_mutex m_mutex;
};

} // namespace Varn::ToolLibraries

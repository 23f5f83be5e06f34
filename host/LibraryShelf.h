// LibraryShelf.h -- the libraries in the person's own folder and among the samples, each read when it is first asked
// for. Any thread.
#pragma once

#include "ToolLibrary/Interface/ToolLibraryCache.h"

#include <map>
#include <mutex>

namespace Quillon {

/// Operations that change libraries or folders throw NotSupportedError "Not yet supported".
class LibraryShelf : public Varn::ToolLibraries::ToolLibraryCache
{
public:
    using DiskLibrary = Varn::ToolLibraries::DiskLibrary;
    using ToolLibraryUrl = Varn::Tools::ToolLibraryUrl;

    /// Reads the folders, but no file.
    LibraryShelf();
    ~LibraryShelf() override;

    std::shared_ptr<Varn::Abortable> initialLoadTask() const override;
    Varn::ToolLibraries::LibraryMetadataTree libraryIndex() const override;
    bool hasLibrary(ToolLibraryUrl url) const override;
    std::shared_ptr<DiskLibrary> getLoadedLibrary(ToolLibraryUrl url) const override;

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

    void setDocumentIndex(std::shared_ptr<Varn::Tools::CamDocuments> documents) override;
    void refreshDocumentLibraries() override;
    Varn::LibrariesPlatform::HubLibraryRefreshResult refreshCache(const std::string &kind) override;
    std::optional<std::chrono::system_clock::time_point> getHubLastSyncTime() const override;

private:
    struct Load;

    void addFolder(const ToolLibraryUrl &folder);

    /// Null when no such library lies in the folders.
    std::shared_ptr<Load> loadOf(const ToolLibraryUrl &url) const;

    std::shared_ptr<Varn::Abortable> m_loads; // of all libraries
    Varn::ToolLibraries::LibraryMetadataTree m_index;
    mutable std::mutex m_mutex;
    mutable std::map<ToolLibraryUrl, std::shared_ptr<Load>> m_libraries; // guarded by m_mutex
};

} // namespace Quillon

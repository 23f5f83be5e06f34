// FakeLibraryCache.h -- a cache of the libraries that a test hands in, with a tree of them. It counts what is asked of
// it.
#pragma once

#include "ToolLibrary/CamDocuments.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidjsonToolLibrary.h"
#include "ToolLibrary/Interface/ToolLibraryCache.h"
#include "platform/tool/Exception.h"
#include "platform/utils/Abortable.h"

#include <atomic>
#include <functional>
#include <map>

namespace TestSupport {

class FakeLibraryCache : public Varn::ToolLibraries::ToolLibraryCache
{
public:
    using DiskLibrary = Varn::ToolLibraries::DiskLibrary;
    using LibraryMetadata = Varn::ToolLibraries::LibraryMetadata;
    using LibraryMetadataTree = Varn::ToolLibraries::LibraryMetadataTree;
    using ToolLibraryLocator = Varn::ToolLibraries::ToolLibraryLocator;
    using ToolLibraryUrl = Varn::Tools::ToolLibraryUrl;
    using NodeData = QMap<QString, QVariant>;
    using Load = std::function<std::shared_ptr<DiskLibrary>()>;

    FakeLibraryCache() : m_loadTask(std::make_shared<Varn::AbortableImpl>()) {}

    /// Puts a node under \a parent, or among the roots.
    void addNode(const std::wstring &url, LibraryMetadata::Type type,
                 const std::optional<ToolLibraryLocator> &parent = std::nullopt)
    {
        m_index.insert(std::make_shared<LibraryMetadata>(L"node", type, ToolLibraryLocator(url), parent, std::nullopt));
    }

    /// A library of the tree; \a load is what comes of each getLoadedLibrary.
    void add(const std::wstring &url, Load load)
    {
        addNode(url, LibraryMetadata::Type::Library);
        m_libraries[urlOf(url)] = std::move(load);
    }
    void add(const std::wstring &url, std::shared_ptr<DiskLibrary> library)
    {
        add(url, [library] { return library; });
    }
    void add(const std::wstring &url, const std::string &document)
    {
        add(url, Varn::ToolLibraries::RapidjsonToolLibrary::fromString(document, Varn::AbortableImpl()));
    }
    void addBroken(const std::wstring &url, const std::string &failure)
    {
        add(url, [failure]() -> std::shared_ptr<DiskLibrary> {
            throw Varn::ToolLibraries::LibraryFormatError(failure, L"translated " +
                                                                       std::wstring(failure.begin(), failure.end()));
        });
    }

    const std::shared_ptr<Varn::Tools::CamDocuments> &documents() const { return m_documents; }
    int refreshes() const { return m_refreshes; }
    int loads() const { return m_loads; } ///< calls of getLoadedLibrary

    std::shared_ptr<Varn::Abortable> initialLoadTask() const override { return m_loadTask; }
    LibraryMetadataTree libraryIndex() const override { return m_index; }
    bool hasLibrary(ToolLibraryUrl url) const override { return m_libraries.contains(url); }
    std::shared_ptr<DiskLibrary> getLoadedLibrary(ToolLibraryUrl url) const override
    {
        ++m_loads;
        const auto found = m_libraries.find(url);
        if (found == m_libraries.end())
            throw Varn::ToolLibraries::LibraryMissing("Unable to find tool library " + url.url().toStdString());
        return found->second();
    }

    std::shared_ptr<DiskLibrary> createLibrary(ToolLibraryUrl, const NodeData &, NodeData &) override { refuse(); }
    void createHubLibraryAndAddNodes() override { refuse(); }
    void deleteLibrary(ToolLibraryUrl) override { refuse(); }
    std::shared_ptr<DiskLibrary> duplicateLibrary(ToolLibraryUrl, ToolLibraryUrl, NodeData &) override { refuse(); }
    std::shared_ptr<DiskLibrary> editLibrary(ToolLibraryUrl, NodeData &) override { refuse(); }
    void createFolder(ToolLibraryUrl, NodeData &) override { refuse(); }
    void deleteFolder(ToolLibraryUrl) override { refuse(); }
    QList<QVariant> editFolder(ToolLibraryUrl, NodeData &) override { refuse(); }
    ToolLibraryUrl makeUniqueUrl(ToolLibraryUrl) const override { refuse(); }

    void setDocumentIndex(std::shared_ptr<Varn::Tools::CamDocuments> documents) override
    {
        m_documents = std::move(documents);
    }
    void refreshDocumentLibraries() override { ++m_refreshes; }
    Varn::LibrariesPlatform::HubLibraryRefreshResult refreshCache(const std::string &) override { refuse(); }
    std::optional<std::chrono::system_clock::time_point> getHubLastSyncTime() const override { refuse(); }

private:
    static ToolLibraryUrl urlOf(const std::wstring &url) { return ToolLibraryUrl(QString::fromStdWString(url)); }
    [[noreturn]] static void refuse() { throw std::logic_error("No test asks for this"); }

    std::shared_ptr<Varn::Abortable> m_loadTask;
    LibraryMetadataTree m_index;
    std::map<ToolLibraryUrl, Load> m_libraries;
    std::shared_ptr<Varn::Tools::CamDocuments> m_documents;
    std::atomic<int> m_refreshes{0};
    mutable std::atomic<int> m_loads{0};
};

} // namespace TestSupport

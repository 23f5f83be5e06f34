#include "ToolLibrary/Interface/Private/ToolLibraryCacheInMemory.h"

#include "ToolLibrary/CamDocuments.h"
#include "ToolLibrary/Interface/Private/Hub/HubToolLibrariesLoader.h"
#include "ToolLibrary/Interface/Private/Hub/HubToolLibrary.h"
#include "ToolLibrary/Interface/Private/LibraryIndexProvider.h"
#include "ToolLibrary/Interface/Private/LoadThreads.h"
#include "ToolLibrary/Interface/Private/TaskDispatcher.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSourceLoader.h"
#include "platform/hub/ToolLibraryWrappers.h"
#include "platform/tool/Exception.h"
#include "platform/utils/Abortable.h"
#include "util/utility/Assert.h"

#include <mutex>
#include <system_error>
#include <unordered_set>
#include <utility>

namespace Varn::ToolLibraries {

using InsertionPosition = LibraryMetadataTree::InsertionPosition;
using LibrariesPlatform::HubLibraryRefreshResult;

namespace {

constexpr const char *libraryNodesKind = "HUB_BRQLIBRARYNODE";

bool hasEnded(const ToolLibraryCacheInMemory::LibraryFuture &library)
{
    return library.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

/// The libraries among the nodes by the hub's identifier.
std::map<QString, Tools::ToolLibraryUrl> libraryUrls(const std::vector<std::shared_ptr<LibraryMetadata>> &nodes)
{
    std::map<QString, Tools::ToolLibraryUrl> urls;
    for (const std::shared_ptr<LibraryMetadata> &node : nodes) {
        const Tools::ToolLibraryUrl url(node->url());
        if (node->folderId() && url.isHubLibrary())
            urls[QString::fromStdString(*node->folderId())] = url;
    }
    return urls;
}

} // namespace

ToolLibraryCacheInMemory::ToolLibraryCacheInMemory(std::shared_ptr<LibraryIndexProvider> indexProvider)
    : m_indexProvider(std::move(indexProvider)), m_isWanted(std::make_shared<const bool>(true))
{
    initialLoad();
}

ToolLibraryCacheInMemory::ToolLibraryCacheInMemory(const ToolLibraryCacheInMemory &other)
    : m_indexProvider(other.m_indexProvider), m_initialLoadTask(other.m_initialLoadTask), m_isWanted(other.m_isWanted)
{
    const std::shared_lock lock(other.m_mutex);
    m_index = other.m_index;
    m_libraries = other.m_libraries;
    m_hubFolders = other.m_hubFolders;
}

ToolLibraryCacheInMemory::~ToolLibraryCacheInMemory() = default;

void ToolLibraryCacheInMemory::initialLoad()
{
    VARN_ASSERT(m_indexProvider != nullptr);
    m_initialLoadTask = std::make_shared<AbortableImpl>();
    m_index = m_indexProvider->libraryIndex();
    m_libraries = startLoadingLibraries(m_index, m_initialLoadTask);
    HubToolLibrariesLoader::startLoadingAndAppendLibraries(m_index, m_libraries, m_hubFolders, m_initialLoadTask,
                                                           m_isWanted);
}

ToolLibraryCacheInMemory::Libraries
ToolLibraryCacheInMemory::startLoadingLibraries(const LibraryMetadataTree &index, std::shared_ptr<Abortable> abortable)
{
    Libraries libraries;
    for (const LibraryMetadataTree::Node *node : index.traverse()) {
        const ToolLibraryUrl url(node->metadata()->url());
        // A vendor's library has no place on this machine to be read from.
        const bool isOnDisk = url.isLibraryFile() && url.protocol() != ToolLibraryUrl::Vendor;
        if (node->metadata()->type() != LibraryMetadata::Type::Library || !isOnDisk || libraries.contains(url))
            continue;
        libraries.emplace(url, loadLibraryAsync(url, abortable).share());
    }
    for (const auto &[url, library] : libraries) {
        try {
            LoadThreads::ofFiles().start([library = library, wanted = std::weak_ptr(m_isWanted)] {
                if (!wanted.expired())
                    library.wait();
            });
        } catch (const std::system_error &) {
            // Without a thread to be had, whoever asks for a library loads it.
        }
    }
    return libraries;
}

// A deferred call runs on the thread that waits for it first: one of ours, or that of somebody who cannot wait.
std::future<std::shared_ptr<DiskLibrary>>
ToolLibraryCacheInMemory::loadLibraryAsync(const ToolLibraryUrl &url, const std::shared_ptr<Abortable> &abortable) const
{
    auto libraryFuture = std::async(
        std::launch::deferred, [url, abortable] { return ToolSourceLoader::loadFromNonDocument(url, *abortable); });
    VARN_ASSERT(libraryFuture.valid());
    return libraryFuture;
}

std::shared_ptr<Abortable> ToolLibraryCacheInMemory::initialLoadTask() const
{
    return m_initialLoadTask;
}

LibraryMetadataTree ToolLibraryCacheInMemory::libraryIndex() const
{
    const std::shared_lock lock(m_mutex);
    return m_index;
}

bool ToolLibraryCacheInMemory::hasLibrary(ToolLibraryUrl url) const
{
    const std::shared_lock lock(m_mutex);
    return m_libraries.contains(url);
}

std::shared_ptr<DiskLibrary> ToolLibraryCacheInMemory::getLoadedLibrary(ToolLibraryUrl url) const
{
    checkLibrary(url);
    LibraryFuture future;
    {
        const std::shared_lock lock(m_mutex);
        const auto found = m_libraries.find(url);
        if (found != m_libraries.end())
            future = found->second;
    }
    if (!future.valid())
        throw LibraryMissing("Unable to find tool library " + url.url().toStdString());
    std::shared_ptr<DiskLibrary> library = future.get();
    if (!library)
        throw IOError("Failed to load tool library " + url.url().toStdString());
    return library;
}

ToolLibraryCacheInMemory::LoadProgress ToolLibraryCacheInMemory::loadProgress() const
{
    const std::shared_lock lock(m_mutex);
    LoadProgress progress{0, m_libraries.size()};
    for (const auto &[url, library] : m_libraries)
        progress.ended += hasEnded(library) ? 1 : 0;
    return progress;
}

void ToolLibraryCacheInMemory::checkLibrary(const ToolLibraryUrl &url) const
{
    if (!url.isLibrary())
        throw InvalidInput("Not a library URL");
}

void ToolLibraryCacheInMemory::addToLibraryCache(const ToolLibraryUrl &url, std::shared_ptr<DiskLibrary> library)
{
    checkLibrary(url);
    std::promise<std::shared_ptr<DiskLibrary>> promise;
    promise.set_value(std::move(library));
    m_libraries[url] = promise.get_future().share();
}

void ToolLibraryCacheInMemory::setDocumentIndex(std::shared_ptr<Tools::CamDocuments> documents)
{
    VARN_ASSERT(m_indexProvider);
    m_indexProvider->setDocumentIndex(std::move(documents));
}

void ToolLibraryCacheInMemory::refreshDocumentLibraries()
{
    // One job of the main thread, so that of two refreshes the one that reads later also writes later.
    const auto refresh = [this] {
        LibraryMetadataTree documents = m_indexProvider->getDocumentLibraries();
        const std::unique_lock lock(m_mutex);
        m_index.erase(ToolLibraryLocator::DocumentsFolder);
        LibraryIndexProvider::addToUserLibraries(m_index, std::move(documents), InsertionPosition::Front);
    };
    TaskDispatcher::runOnThread(refresh, VarnMainThreadExecutor()).get();
}

std::optional<std::chrono::system_clock::time_point> ToolLibraryCacheInMemory::getHubLastSyncTime() const
{
    const auto hub = ToolLibraryWrappers::getPlatformLibrariesInterface();
    return hub ? (*hub)->lastSyncTime() : std::nullopt;
}

HubLibraryRefreshResult ToolLibraryCacheInMemory::refreshCache(const std::string &kind)
{
    HubFolders oldFolders;
    {
        const std::shared_lock lock(m_mutex);
        oldFolders = m_hubFolders;
    }
    const auto hub = ToolLibraryWrappers::getPlatformLibrariesInterface();
    if (!hub)
        return HubLibraryRefreshResult(hub.error());
    return kind == libraryNodesKind ? refreshBRQLibraryNode(**hub) : refreshHubItems(**hub, oldFolders);
}

HubLibraryRefreshResult ToolLibraryCacheInMemory::refreshBRQLibraryNode(IPlatformLibrariesInterface &hub)
{
    HubLibraryRefreshResult data = hub.fetchLibraryNodes();
    if (!data.hasValue())
        return data;
    const std::unique_lock lock(m_mutex);
    replaceBRQLibraryNodes(data.libraryNodes());
    findAndProcessBRQLibraryNode(m_index);
    return data;
}

void ToolLibraryCacheInMemory::replaceBRQLibraryNodes(const Nodes &nodes)
{
    std::unordered_set<ToolLibraryLocator> current;
    for (const std::shared_ptr<LibraryMetadata> &metadata : nodes) {
        current.insert(metadata->url());
        if (LibraryMetadataTree::Node *known = m_index.find(metadata->url()))
            known->setMetadata(metadata);
        else
            m_index.insert(metadata);
    }
    const LibraryMetadataTree::Node *root = m_index.find(ToolLibraryLocator::HubsFolder);
    if (!root)
        return;
    std::vector<ToolLibraryLocator> gone;
    for (const LibraryMetadataTree::Node &child : root->children())
        if (!current.contains(child.metadata()->url()))
            gone.push_back(child.metadata()->url());
    for (const ToolLibraryLocator &url : gone)
        m_index.erase(url);
}

/// Notes the identifier of the first node right below the hub's root, in which libraries are made. Nothing without one.
std::optional<std::string> ToolLibraryCacheInMemory::findAndProcessBRQLibraryNode(const LibraryMetadataTree &tree)
{
    const LibraryMetadataTree::Node *root = tree.find(ToolLibraryLocator::HubsFolder);
    if (!root || root->children().empty())
        return std::nullopt;
    const LibraryMetadata &brqLibrary = *root->children().front().metadata();
    const ToolLibraryUrl brqLibraryUrl(brqLibrary.url());
    VARN_ASSERT_TEXT(brqLibrary.parent() && ToolLibraryUrl(*brqLibrary.parent()).isHubRootFolder(),
                     "ToolLibraryUrl(brqLibrary.parent().value_or(ToolLibraryUrl())).isHubRootFolder()");
    VARN_ASSERT(brqLibraryUrl.isValid());
    const std::optional<std::string> &folderId = brqLibrary.folderId();
    VARN_ASSERT_TEXT(folderId.has_value(), "folderId");
    if (folderId)
        m_hubFolders[brqLibraryUrl] = *folderId;
    return folderId;
}

HubLibraryRefreshResult ToolLibraryCacheInMemory::refreshHubItems(IPlatformLibrariesInterface &hub,
                                                                  const HubFolders &oldFolders)
{
    const HubLibraryRefreshResult data = hub.fetchItems();
    if (data.hasError())
        return data;
    HubLibraryRefreshResult result = processHubItemsData(data, oldFolders);
    if (data.hasWarnings())
        for (const Ox::StatusCode &code : data.status().getTopLevelStatusCodes())
            result.addWarning(code.message(), code.code());
    return result;
}

HubLibraryRefreshResult ToolLibraryCacheInMemory::processHubItemsData(const HubLibraryRefreshResult &data,
                                                                      const HubFolders &oldFolders)
{
    if (!data.hasValue())
        return data;
    const HubLibraries libraries = hubLibraries(data);
    const std::unique_lock lock(m_mutex);
    updateHubFolderCache(data.libraryNodes());
    updateHubLibraryCache(libraries);
    syncLibraryIndexWithHubChanges(oldFolders, data.libraryNodes());
    return HubLibraryRefreshResult(data.libraryNodes(), data.libraryTools());
}

/// Those whose node came with them; others are dropped in silence.
ToolLibraryCacheInMemory::HubLibraries ToolLibraryCacheInMemory::hubLibraries(const HubLibraryRefreshResult &data)
{
    const std::map<QString, ToolLibraryUrl> urls = libraryUrls(data.libraryNodes());
    HubLibraries libraries;
    for (const QVariant &item : data.libraryTools()) {
        const QVariantMap map = item.toMap();
        const QString folderId = map.value(QStringLiteral("folderId")).toString();
        const auto url = urls.find(folderId);
        if (url == urls.end())
            continue;
        const QVariantList tools = map.value(QStringLiteral("tools")).toList();
        libraries.emplace_back(url->second, std::make_shared<HubToolLibrary>(folderId.toStdString(), tools));
    }
    return libraries;
}

/// Takes over the identifiers of all nodes but those right below the hub's root, which this refresh is not about.
void ToolLibraryCacheInMemory::updateHubFolderCache(const Nodes &nodes)
{
    std::erase_if(m_hubFolders, [](const auto &folder) { return !folder.first.parentUrl().isHubRootFolder(); });
    for (const std::shared_ptr<LibraryMetadata> &node : nodes)
        if (node->folderId())
            m_hubFolders[ToolLibraryUrl(node->url())] = *node->folderId();
}

void ToolLibraryCacheInMemory::updateHubLibraryCache(const HubLibraries &libraries)
{
    std::erase_if(m_libraries,
                  [](const auto &library) { return library.first.isHubLibrary() && !library.first.isHubRootFolder(); });
    for (const auto &[url, library] : libraries)
        addToLibraryCache(url, library);
}

/// A node that stayed keeps what it had; only those that came or went are written.
void ToolLibraryCacheInMemory::syncLibraryIndexWithHubChanges(const HubFolders &oldFolders, const Nodes &nodes)
{
    for (const ToolLibraryLocator &locator : m_index.traverseUrls()) {
        const ToolLibraryUrl url(locator);
        const bool isOfHub = !url.isHubRootFolder() && (url.isHubLibrary() || url.isHubFolder());
        if (isOfHub && oldFolders.contains(url) && !m_hubFolders.contains(url))
            m_index.erase(locator);
    }
    for (const std::shared_ptr<LibraryMetadata> &node : nodes) {
        if (oldFolders.contains(ToolLibraryUrl(node->url())) && m_index.contains(node->url()))
            continue;
        m_index.erase(node->url());
        m_index.insert(node);
    }
}

} // namespace Varn::ToolLibraries

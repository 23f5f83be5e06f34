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
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace Varn::ToolLibraries {

using InsertionPosition = LibraryMetadataTree::InsertionPosition;
using LibrariesPlatform::HubLibraryRefreshResult;

namespace {

constexpr const char *libraryNodesKind = "HUB_BRQLIBRARYNODE";

using Nodes = std::vector<std::shared_ptr<LibraryMetadata>>;

bool hasEnded(const ToolLibraryCacheInMemory::LibraryFuture &library)
{
    return library.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

/// The libraries among the nodes by the hub's identifier.
std::map<QString, Tools::ToolLibraryUrl> libraryUrls(const Nodes &nodes)
{
    std::map<QString, Tools::ToolLibraryUrl> urls;
    for (const std::shared_ptr<LibraryMetadata> &node : nodes) {
        const Tools::ToolLibraryUrl url(node->url());
        if (node->folderId() && url.isHubLibrary())
            urls[QString::fromStdString(*node->folderId())] = url;
    }
    return urls;
}

/// Empty for what is no list: Qt would make one of the characters of a text.
QVariantList toolsOf(const QVariantMap &library)
{
    const QVariant tools = library.value(QStringLiteral("tools"));
    return tools.typeId() == QMetaType::QVariantList ? tools.toList() : QVariantList();
}

/// The nodes that lie below the hub's root: the hub has no say in the rest of the tree.
Nodes belowHubRoot(const Nodes &nodes)
{
    Nodes below;
    for (const std::shared_ptr<LibraryMetadata> &node : nodes) {
        const Tools::ToolLibraryUrl url(node->url());
        if (url.protocol() == Tools::ToolLibraryUrl::Hub && !url.isHubRootFolder())
            below.push_back(node);
    }
    return below;
}

/// The same nodes, each behind its parent if that is among them: a node that comes first would end among the roots.
/// Of those in a circle one is the first.
Nodes parentsFirst(const Nodes &nodes)
{
    std::unordered_map<ToolLibraryLocator, std::size_t> places;
    for (std::size_t i = 0; i < nodes.size(); ++i)
        places.emplace(nodes[i]->url(), i);
    std::vector<bool> isTaken(nodes.size());
    Nodes ordered;
    ordered.reserve(nodes.size());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        std::vector<std::size_t> wayUp;
        for (std::size_t at = i; !isTaken[at];) {
            isTaken[at] = true;
            wayUp.push_back(at);
            const std::optional<ToolLibraryLocator> &parent = nodes[at]->parent();
            const auto above = parent ? places.find(*parent) : places.end();
            if (above != places.end())
                at = above->second;
        }
        for (auto at = wayUp.rbegin(); at != wayUp.rend(); ++at)
            ordered.push_back(nodes[*at]);
    }
    return ordered;
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
    const auto hub = ToolLibraryWrappers::getPlatformLibrariesInterface();
    if (!hub)
        return HubLibraryRefreshResult(hub.error());
    return kind == libraryNodesKind ? refreshBRQLibraryNode(**hub) : refreshHubItems(**hub);
}

HubLibraryRefreshResult ToolLibraryCacheInMemory::refreshBRQLibraryNode(IPlatformLibrariesInterface &hub)
{
    HubLibraryRefreshResult data = hub.fetchLibraryNodes();
    if (!data.hasValue())
        return data;
    const Nodes nodes = belowHubRoot(data.libraryNodes());
    const std::unique_lock lock(m_mutex);
    if (!nodes.empty() && !m_index.contains(ToolLibraryLocator::HubsFolder))
        addHubRoot();
    replaceBRQLibraryNodes(nodes);
    findAndProcessBRQLibraryNode(m_index);
    return data;
}

/// For a hub that was set after the tree was made.
void ToolLibraryCacheInMemory::addHubRoot()
{
    const ToolLibraryUrl root(ToolLibraryLocator::HubsFolder);
    m_index.insert(std::make_shared<LibraryMetadata>(root.libraryDisplayName().toStdWString(),
                                                     LibraryMetadata::Type::Folder, ToolLibraryLocator::HubsFolder,
                                                     ToolLibraryLocator::UserLibrariesFolder, false));
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

HubLibraryRefreshResult ToolLibraryCacheInMemory::refreshHubItems(IPlatformLibrariesInterface &hub)
{
    const HubLibraryRefreshResult data = hub.fetchItems();
    if (!data.hasValue())
        return data;
    HubLibraryRefreshResult result = processHubItemsData(data);
    if (data.hasWarnings())
        for (const Ox::StatusCode &code : data.status().getTopLevelStatusCodes())
            result.addWarning(code.message(), code.code());
    return result;
}

HubLibraryRefreshResult ToolLibraryCacheInMemory::processHubItemsData(const HubLibraryRefreshResult &data)
{
    const Nodes nodes = belowHubRoot(data.libraryNodes());
    const HubLibraries libraries = hubLibraries(nodes, data.libraryTools());
    const std::unique_lock lock(m_mutex);
    // Not those of before the hub was asked: another refresh may have been faster.
    const HubFolders oldFolders = m_hubFolders;
    updateHubFolderCache(nodes);
    updateHubLibraryCache(libraries);
    syncLibraryIndexWithHubChanges(oldFolders, nodes);
    return HubLibraryRefreshResult(data.libraryNodes(), data.libraryTools());
}

/// Those whose node came with them; others are dropped in silence.
ToolLibraryCacheInMemory::HubLibraries ToolLibraryCacheInMemory::hubLibraries(const Nodes &nodes,
                                                                              const QVariantList &libraryTools)
{
    const std::map<QString, ToolLibraryUrl> urls = libraryUrls(nodes);
    HubLibraries libraries;
    for (const QVariant &item : libraryTools) {
        const QVariantMap map = item.toMap();
        const QString folderId = map.value(QStringLiteral("folderId")).toString();
        const auto url = urls.find(folderId);
        if (url == urls.end())
            continue;
        libraries.emplace_back(url->second, std::make_shared<HubToolLibrary>(folderId.toStdString(), toolsOf(map)));
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

/// A node that stayed keeps what it had; only those that came or went are written. Of several new ones with one URL the
/// last counts, like its identifier.
void ToolLibraryCacheInMemory::syncLibraryIndexWithHubChanges(const HubFolders &oldFolders, const Nodes &nodes)
{
    for (const ToolLibraryLocator &locator : m_index.traverseUrls()) {
        const ToolLibraryUrl url(locator);
        const bool isOfHub = !url.isHubRootFolder() && (url.isHubLibrary() || url.isHubFolder());
        if (isOfHub && oldFolders.contains(url) && !m_hubFolders.contains(url))
            m_index.erase(locator);
    }
    std::unordered_set<ToolLibraryLocator> written;
    for (const std::shared_ptr<LibraryMetadata> &node : parentsFirst(nodes)) {
        LibraryMetadataTree::Node *known = m_index.find(node->url());
        if (known && oldFolders.contains(ToolLibraryUrl(node->url())))
            continue;
        if (!written.insert(node->url()).second && known) {
            known->setMetadata(node);
            continue;
        }
        m_index.erase(node->url());
        m_index.insert(node);
    }
}

} // namespace Varn::ToolLibraries

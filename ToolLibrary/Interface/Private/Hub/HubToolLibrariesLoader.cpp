#include "ToolLibrary/Interface/Private/Hub/HubToolLibrariesLoader.h"

#include "ToolLibrary/Interface/Private/Hub/HubToolLibrary.h"
#include "ToolLibrary/Interface/Private/LoadThreads.h"
#include "platform/core/ToolLibraryV4.h"
#include "platform/hub/ToolLibraryWrappers.h"
#include "platform/ox/AppLogMgr.h"
#include "platform/ox/TestMgr.h"
#include "platform/tool/Exception.h"
#include "platform/utils/Abortable.h"
#include "util/utility/Assert.h"

#include <utility>

namespace Varn::ToolLibraries {

namespace {

constexpr int failureLevel = 1;

void report(const IPlatformLibrariesInterface::Failure &failure)
{
    if (!Ox::Test::TestMgr::testing())
        VARN_FAIL(failure->what());
    Ox::AppLogMgr::appLog(failureLevel, std::string("HubToolLibrariesLoader: ") + failure->what());
}

} // namespace

LibraryMetadataTree HubToolLibrariesLoader::getIndex()
{
    auto index =
        ToolLibraryWrappers::getPlatformLibrariesInterface().and_then([](const auto &hub) { return hub->index(); });
    if (index)
        return std::move(*index);
    report(index.error());
    return LibraryMetadataTree();
}

void HubToolLibrariesLoader::createHubLibraryAndAddNodes(LibraryMetadataTree &tree)
{
    const auto added = ToolLibraryWrappers::getPlatformLibrariesInterface().and_then(
        [&](const auto &hub) { return hub->addHubLibraryNodes(tree); });
    if (!added)
        report(added.error());
}

void HubToolLibrariesLoader::startLoadingAndAppendLibraries(LibraryMetadataTree &tree, Libraries &libraries,
                                                            const std::shared_ptr<Abortable> &abortable)
{
    static const auto &forEver = *new std::shared_ptr<const bool>(std::make_shared<const bool>(true));
    HubFolders unused;
    startLoadingAndAppendLibraries(tree, libraries, unused, abortable, forEver);
}

void HubToolLibrariesLoader::startLoadingAndAppendLibraries(LibraryMetadataTree &tree, Libraries &libraries,
                                                            HubFolders &hubFolders,
                                                            const std::shared_ptr<Abortable> &abortable,
                                                            const std::weak_ptr<const void> &wanted)
{
    if (!isEnabled() || !abortable || abortable->isAborted())
        return;
    LibraryMetadataTree::Node *hubs = tree.find(ToolLibraryLocator::HubsFolder);
    if (!hubs)
        return;
    for (const LibraryMetadataTree::Node *node : tree.traverseNodes(*hubs)) {
        const std::string id = node->metadata()->folderId().value_or(std::string());
        const Tools::ToolLibraryUrl url(node->metadata()->url());
        if (id.empty() || !(url.isHubLibrary() || url.isHubFolder()))
            continue;
        hubFolders[url] = id;
        if (url.isHubLibrary())
            libraries[url] = loadHubLibraryAsync(id, abortable, wanted).share();
    }
}

// The future is none of std::async, whose end would wait for the hub.
std::future<std::shared_ptr<DiskLibrary>>
HubToolLibrariesLoader::loadHubLibraryAsync(const std::string &id, const std::shared_ptr<Abortable> &abortable,
                                            const std::weak_ptr<const void> &wanted)
{
    const auto promise = std::make_shared<std::promise<std::shared_ptr<DiskLibrary>>>();
    auto libraryFuture = promise->get_future();
    VARN_ASSERT(libraryFuture.valid());
    try {
        checkTaskAborted(*abortable);
        LoadThreads::ofHub().start([id, abortable, wanted, promise] {
            if (wanted.expired())
                return;
            try {
                promise->set_value(loadHubLibraryContents(id, *abortable));
            } catch (...) {
                promise->set_exception(std::current_exception());
            }
        });
    } catch (...) {
        promise->set_exception(std::current_exception());
    }
    return libraryFuture;
}

std::shared_ptr<DiskLibrary> HubToolLibrariesLoader::loadHubLibraryContents(const std::string &id,
                                                                            const Abortable &abortable)
{
    checkTaskAborted(abortable);
    QList<QVariant> tools;
    const auto listed = ToolLibraryWrappers::getPlatformLibrariesInterface().and_then(
        [&](const auto &hub) { return hub->listTools(id, tools, abortable); });
    if (!listed)
        throw Ox::HubLibrariesCache::Exception(*listed.error());
    return std::make_shared<HubToolLibrary>(id, tools);
}

bool HubToolLibrariesLoader::isEnabled()
{
    return ToolLibraryV4::platformHubToolLibrariesIsEnabled();
}

void HubToolLibrariesLoader::checkTaskAborted(const Abortable &abortable)
{
    if (abortable.isAborted())
        throw LibraryLoadError("Library load interrupted");
}

} // namespace Varn::ToolLibraries

#include "platform/hub/CurrentHub.h"

#include <utility>

namespace Varn {

using LibrariesPlatform::HubLibraryRefreshResult;

CurrentHub::CurrentHub(Hub hub) : m_hub(std::move(hub)) {}

CurrentHub::~CurrentHub() = default;

CurrentHub::Hub CurrentHub::get() const
{
    const std::lock_guard lock(m_mutex);
    return m_hub;
}

CurrentHub::Hub CurrentHub::exchange(Hub hub)
{
    const std::lock_guard lock(m_mutex);
    std::swap(m_hub, hub);
    return hub;
}

auto CurrentHub::index() const -> Result<ToolLibraries::LibraryMetadataTree>
{
    return get().and_then([](const auto &hub) { return hub->index(); });
}

auto CurrentHub::addHubLibraryNodes(ToolLibraries::LibraryMetadataTree &tree) -> Result<void>
{
    return get().and_then([&](const auto &hub) { return hub->addHubLibraryNodes(tree); });
}

auto CurrentHub::listTools(const std::string &libraryId, QList<QVariant> &tools, const Abortable &abortable) const
    -> Result<void>
{
    return get().and_then([&](const auto &hub) { return hub->listTools(libraryId, tools, abortable); });
}

auto CurrentHub::listChildNames(const std::string &parentFolderId) const -> Result<QStringList>
{
    return get().and_then([&](const auto &hub) { return hub->listChildNames(parentFolderId); });
}

auto CurrentHub::checkNodeEditable(const std::string &folderId) const -> Result<void>
{
    return get().and_then([&](const auto &hub) { return hub->checkNodeEditable(folderId); });
}

auto CurrentHub::createNode(const QString &kind, const QString &name, const std::string &parentFolderId)
    -> Result<std::string>
{
    return get().and_then([&](const auto &hub) { return hub->createNode(kind, name, parentFolderId); });
}

auto CurrentHub::deleteNode(const std::string &folderId) -> Result<void>
{
    return get().and_then([&](const auto &hub) { return hub->deleteNode(folderId); });
}

auto CurrentHub::updateNode(const std::string &folderId, const QString &name, const std::string &parentFolderId)
    -> Result<void>
{
    return get().and_then([&](const auto &hub) { return hub->updateNode(folderId, name, parentFolderId); });
}

HubLibraryRefreshResult CurrentHub::fetchLibraryNodes()
{
    const Hub hub = get();
    return hub ? hub.value()->fetchLibraryNodes() : HubLibraryRefreshResult(hub.error());
}

HubLibraryRefreshResult CurrentHub::fetchItems()
{
    const Hub hub = get();
    return hub ? hub.value()->fetchItems() : HubLibraryRefreshResult(hub.error());
}

std::optional<std::chrono::system_clock::time_point> CurrentHub::lastSyncTime() const
{
    const Hub hub = get();
    return hub ? hub.value()->lastSyncTime() : std::nullopt;
}

auto CurrentHub::getTool(const std::string &hubToolId) const -> Result<std::shared_ptr<const Ox::JSONNode>>
{
    return get().and_then([&](const auto &hub) { return hub->getTool(hubToolId); });
}

auto CurrentHub::createTool(const std::string &libraryId, const std::string &toolJson) -> Result<std::string>
{
    return get().and_then([&](const auto &hub) { return hub->createTool(libraryId, toolJson); });
}

auto CurrentHub::updateTool(const std::string &hubToolId, const std::string &libraryId, const std::string &toolJson)
    -> Result<std::string>
{
    return get().and_then([&](const auto &hub) { return hub->updateTool(hubToolId, libraryId, toolJson); });
}

auto CurrentHub::removeTool(const std::string &hubToolId) -> Result<void>
{
    return get().and_then([&](const auto &hub) { return hub->removeTool(hubToolId); });
}

auto CurrentHub::syncTool(const std::string &hubToolId) -> Result<void>
{
    return get().and_then([&](const auto &hub) { return hub->syncTool(hubToolId); });
}

} // namespace Varn

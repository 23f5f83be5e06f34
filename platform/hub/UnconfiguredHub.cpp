#include "platform/hub/UnconfiguredHub.h"

#include "platform/utils/LocaleRegistry.h"

namespace Varn {

using LibrariesPlatform::HubLibraryRefreshResult;

namespace {

// A tool that cannot be reached for want of a hub has not vanished from one: this is no HubItemMissingError.
Ox::unexpected<IPlatformLibrariesInterface::Failure> noHub()
{
    static const LocalizedMessage text = LocaleRegistry::registerMessage("No hub is configured");
    return Ox::unexpected<IPlatformLibrariesInterface::Failure>(
        std::make_shared<Ox::HubLibrariesCache::Exception>(text.id(), text.asWideString()));
}

} // namespace

UnconfiguredHub::~UnconfiguredHub() = default;

auto UnconfiguredHub::index() const -> Result<ToolLibraries::LibraryMetadataTree>
{
    return ToolLibraries::LibraryMetadataTree();
}

auto UnconfiguredHub::addHubLibraryNodes(ToolLibraries::LibraryMetadataTree &) -> Result<void>
{
    return noHub();
}

auto UnconfiguredHub::listTools(const std::string &, QList<QVariant> &, const Abortable &) const -> Result<void>
{
    return {};
}

auto UnconfiguredHub::listChildNames(const std::string &) const -> Result<QStringList>
{
    return QStringList();
}

auto UnconfiguredHub::checkNodeEditable(const std::string &) const -> Result<void>
{
    return noHub();
}

auto UnconfiguredHub::createNode(const QString &, const QString &, const std::string &) -> Result<std::string>
{
    return noHub();
}

auto UnconfiguredHub::deleteNode(const std::string &) -> Result<void>
{
    return noHub();
}

auto UnconfiguredHub::updateNode(const std::string &, const QString &, const std::string &) -> Result<void>
{
    return noHub();
}

HubLibraryRefreshResult UnconfiguredHub::fetchLibraryNodes()
{
    return HubLibraryRefreshResult(HubLibraryRefreshResult::Nodes());
}

HubLibraryRefreshResult UnconfiguredHub::fetchItems()
{
    return HubLibraryRefreshResult(HubLibraryRefreshResult::Nodes());
}

std::optional<std::chrono::system_clock::time_point> UnconfiguredHub::lastSyncTime() const
{
    return std::nullopt;
}

auto UnconfiguredHub::getTool(const std::string &) const -> Result<std::shared_ptr<const Ox::JSONNode>>
{
    return noHub();
}

auto UnconfiguredHub::createTool(const std::string &, const std::string &) -> Result<std::string>
{
    return noHub();
}

auto UnconfiguredHub::updateTool(const std::string &, const std::string &, const std::string &) -> Result<std::string>
{
    return noHub();
}

auto UnconfiguredHub::removeTool(const std::string &) -> Result<void>
{
    return noHub();
}

auto UnconfiguredHub::syncTool(const std::string &) -> Result<void>
{
    return noHub();
}

} // namespace Varn

// IPlatformLibrariesInterface.h -- the hub: folders and libraries that a service keeps for many people, seen through
// the local cache of what it holds. Any thread may call any operation; one that has to ask the service blocks.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/hub/HubLibraryRefreshResult.h"
#include "platform/ox/HubLibrariesCache.h"
#include "platform/ox/JSONNode.h"
#include "platform/ox/expected.h"
#include "platform/tool/LibraryMetadataTree.h"
#include "util/utility/SafePointer.h"

#include <gsl/gsl>

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace Varn {

class Abortable;

/// What a host provides; reached through ToolLibraryWrappers. The order of the operations is part of the interface.
///
/// The hub names its nodes by folder identifiers and its tools by hub tool ids: texts that mean nothing here. A tool's
/// hub tool id may change whenever the tool is written; its GUID does not. An operation throws nothing: what went wrong
/// is in its result, and nothing has changed then.
class VARN_PLATFORM_EXPORT IPlatformLibrariesInterface : public SafePointerTarget
{
public:
    using Failure = gsl::not_null<std::shared_ptr<Ox::HubLibrariesCache::Exception>>;
    template <typename T>
    using Result = Ox::expected<T, Failure>;

    // The tree, as the local cache knows it.

    /// The hub's folders and libraries as one tree, whose root is ToolLibraryLocator::HubsFolder; each node below it
    /// has its folderId(). Empty for a person without a hub. The caller may change the nodes: nobody else has them.
    virtual Result<ToolLibraries::LibraryMetadataTree> index() const = 0;

    /// Sees to it that the hub has a place for libraries, and adds the nodes of index() that \a tree lacks; the root,
    /// if it is one of them, as the last below ToolLibraryLocator::UserLibrariesFolder.
    virtual Result<void> addHubLibraryNodes(ToolLibraries::LibraryMetadataTree &tree) = 0;

    /// Appends the tools of a library to \a tools: maps with "toolId", "guid" and the members of the tool. An abort is
    /// a failure.
    virtual Result<void> listTools(const std::string &libraryId, QList<QVariant> &tools,
                                   const Abortable &abortable) const = 0;

    // Nodes.

    /// The names that the folder's children have, without extension.
    virtual Result<QStringList> listChildNames(const std::string &parentFolderId) const = 0;

    /// A failure says why this person may not change the node.
    virtual Result<void> checkNodeEditable(const std::string &folderId) const = 0;

    /// \param kind "folder" or "library"
    /// \return     the folder identifier of the new node
    virtual Result<std::string> createNode(const QString &kind, const QString &name,
                                           const std::string &parentFolderId) = 0;

    /// Removes the node with all that is below it.
    virtual Result<void> deleteNode(const std::string &folderId) = 0;

    /// Renames and moves; the node keeps its identifier.
    virtual Result<void> updateNode(const std::string &folderId, const QString &name,
                                    const std::string &parentFolderId) = 0;

    // Refreshes: these bring the local cache up to date with the service.

    /// The nodes right below ToolLibraryLocator::HubsFolder, which hold everything else.
    virtual LibrariesPlatform::HubLibraryRefreshResult fetchLibraryNodes() = 0;

    /// All other nodes, in any order, and the tools of the libraries among them.
    virtual LibrariesPlatform::HubLibraryRefreshResult fetchItems() = 0;

    /// When the local cache last agreed with the service; nothing before the first time.
    virtual std::optional<std::chrono::system_clock::time_point> lastSyncTime() const = 0;

    // Tools. A failure is a HubItemMissingError where the tool is gone from the service, a HubItemConflictError where
    // the service holds a newer state than the one that was changed.

    /// The tool as the local cache holds it. Never a null node.
    virtual Result<std::shared_ptr<const Ox::JSONNode>> getTool(const std::string &hubToolId) const = 0;

    /// \return the hub tool id
    virtual Result<std::string> createTool(const std::string &libraryId, const std::string &toolJson) = 0;

    /// \return the hub tool id from now on
    virtual Result<std::string> updateTool(const std::string &hubToolId, const std::string &libraryId,
                                           const std::string &toolJson) = 0;
    virtual Result<void> removeTool(const std::string &hubToolId) = 0;

    /// Brings the local cache of one tool up to date with the service.
    virtual Result<void> syncTool(const std::string &hubToolId) = 0;

    virtual ~IPlatformLibrariesInterface();
};

} // namespace Varn

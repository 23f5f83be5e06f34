// ToolLibraryCache.h -- the libraries of the user's tree, and the tree itself. A host may hand in one of its own.
//
// Calls may come on any thread. The order of the operations is part of the interface.
#pragma once

#include "ToolLibrary/IO/ToolLibraryUrl.h"
#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/hub/HubLibraryRefreshResult.h"
#include "platform/tool/LibraryMetadataTree.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace Varn {
class Abortable;
namespace Tools {
class CamDocuments;
}
} // namespace Varn

namespace Varn::ToolLibraries {

class DiskLibrary;

class TOOL_LIBRARY_EXPORT ToolLibraryCache
{
public:
    /// The load that started with the cache.
    virtual std::shared_ptr<Abortable> initialLoadTask() const = 0;

    /// A copy of the tree.
    virtual LibraryMetadataTree libraryIndex() const = 0;

    /// True for a library that the cache knows, whether or not its load has ended or succeeded.
    virtual bool hasLibrary(Tools::ToolLibraryUrl url) const = 0;

    /// Waits for that one library. Throws InvalidInput "Not a library URL", LibraryMissing "Unable to find tool library
    /// " and the URL, or what its load threw.
    virtual std::shared_ptr<DiskLibrary> getLoadedLibrary(Tools::ToolLibraryUrl url) const = 0;

    virtual std::shared_ptr<DiskLibrary>
    createLibrary(Tools::ToolLibraryUrl url, const QMap<QString, QVariant> &library, QMap<QString, QVariant> &node) = 0;
    virtual void createHubLibraryAndAddNodes() = 0;
    virtual void deleteLibrary(Tools::ToolLibraryUrl url) = 0;
    virtual std::shared_ptr<DiskLibrary> duplicateLibrary(Tools::ToolLibraryUrl source, Tools::ToolLibraryUrl target,
                                                          QMap<QString, QVariant> &node) = 0;
    virtual std::shared_ptr<DiskLibrary> editLibrary(Tools::ToolLibraryUrl url, QMap<QString, QVariant> &node) = 0;
    virtual void createFolder(Tools::ToolLibraryUrl url, QMap<QString, QVariant> &node) = 0;
    virtual void deleteFolder(Tools::ToolLibraryUrl url) = 0;
    virtual QList<QVariant> editFolder(Tools::ToolLibraryUrl url, QMap<QString, QVariant> &node) = 0;
    virtual Tools::ToolLibraryUrl makeUniqueUrl(Tools::ToolLibraryUrl url) const = 0;

    /// Where the document nodes of the tree come from; the tree changes at the next refresh.
    virtual void setDocumentIndex(std::shared_ptr<Tools::CamDocuments> documents) = 0;
    virtual void refreshDocumentLibraries() = 0;

    /// \a kind is "HUB_BRQLIBRARYNODE" or "HUB_ITEMS".
    virtual LibrariesPlatform::HubLibraryRefreshResult refreshCache(const std::string &kind) = 0;
    virtual std::optional<std::chrono::system_clock::time_point> getHubLastSyncTime() const = 0;
    virtual ~ToolLibraryCache();
};

} // namespace Varn::ToolLibraries

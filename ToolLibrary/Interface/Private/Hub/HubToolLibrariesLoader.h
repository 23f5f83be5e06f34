// HubToolLibrariesLoader.h -- brings the hub into the tree, and its libraries into the cache. Stateless; any thread,
// but all but the loads run on the caller's, who sees to it that nobody else uses the tree and the maps meanwhile.
#pragma once

#include "ToolLibrary/IO/ToolLibraryUrl.h"
#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/tool/LibraryMetadataTree.h"

#include <future>
#include <map>
#include <memory>
#include <string>

namespace Varn {
class Abortable;
}

namespace Varn::ToolLibraries {

class DiskLibrary;

class TOOL_LIBRARY_EXPORT HubToolLibrariesLoader
{
public:
    using Libraries = std::map<Tools::ToolLibraryUrl, std::shared_future<std::shared_ptr<DiskLibrary>>>;
    using HubFolders = std::map<Tools::ToolLibraryUrl, std::string>; ///< to the hub's folder identifiers

    /// The nodes of the hub. Without a hub an empty tree, and a line in the log.
    static LibraryMetadataTree getIndex();

    /// Makes a place for libraries on the hub and adds its nodes to \a tree. Without a hub the tree stays as it is, and
    /// there is a line in the log.
    static void createHubLibraryAndAddNodes(LibraryMetadataTree &tree);

    /// Starts to load each hub library below ToolLibraryLocator::HubsFolder that has a folder identifier, and puts what
    /// comes of it into \a libraries, in place of what was there. Does nothing when libraries of the hub are turned
    /// off, and for no \a abortable or an aborted one.
    ///
    /// A future raises what went wrong: LibraryLoadError "Library load interrupted" after an abort, else an
    /// Ox::HubLibrariesCache::Exception. Dropping it does not wait for the load.
    static void startLoadingAndAppendLibraries(LibraryMetadataTree &tree, Libraries &libraries,
                                               const std::shared_ptr<Abortable> &abortable);

    /// The same, and notes the identifier of each hub folder and hub library on the way. Loads that have not begun when
    /// \a wanted expires are dropped.
    static void startLoadingAndAppendLibraries(LibraryMetadataTree &tree, Libraries &libraries, HubFolders &hubFolders,
                                               const std::shared_ptr<Abortable> &abortable,
                                               const std::weak_ptr<const void> &wanted);

private:
    static std::future<std::shared_ptr<DiskLibrary>> loadHubLibraryAsync(const std::string &id,
                                                                         const std::shared_ptr<Abortable> &abortable,
                                                                         const std::weak_ptr<const void> &wanted);
    static std::shared_ptr<DiskLibrary> loadHubLibraryContents(const std::string &id, const Abortable &abortable);
    static bool isEnabled();
    static void checkTaskAborted(const Abortable &abortable);
};

} // namespace Varn::ToolLibraries

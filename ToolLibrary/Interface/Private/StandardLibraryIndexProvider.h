// StandardLibraryIndexProvider.h -- the tree of a person's machine: open documents, the hub, the cloud folder, local
// libraries, samples, and beside them the vendors.
#pragma once

#include "ToolLibrary/IO/ToolLibraryUrl.h"
#include "ToolLibrary/Interface/Private/LibraryIndexProvider.h"

#include <QStringList>

#include <map>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT StandardLibraryIndexProvider : public LibraryIndexProvider
{
public:
    using ToolLibraryUrl = Tools::ToolLibraryUrl;

    /// Reads the folders, but no file. A folder that cannot be read has no children. Makes the local folder with its
    /// first library where there is none.
    LibraryMetadataTree libraryIndex() const override;
    ~StandardLibraryIndexProvider() override;

    /// Display name to path; the path's last part names the library's file. The same table for ever.
    virtual const std::map<QString, QString> &getVendorLibraries() const;

    /// Whether this person may write to a folder of the cloud.
    virtual bool hasWritePermission(const ToolLibraryUrl &url) const;

    virtual bool cloudLibrariesEnabled() const;

private:
    /// A folder that is being listed with all that is below it.
    struct Listing {
        LibraryMetadataTree &index;
        bool includeZetLib;
        bool readOnly;              ///< what libraries of the cloud inherit from their root
        QStringList ancestors = {}; ///< the real paths of the folders around; one that comes again is a loop of links
    };

    void addCloudNodes(LibraryMetadataTree &index) const;
    static void addHubNodes(LibraryMetadataTree &index);
    void addLocalNodes(LibraryMetadataTree &index) const;
    void addSampleNodes(LibraryMetadataTree &index) const;
    void addVendorNodes(LibraryMetadataTree &index) const;

    void addRoot(const ToolLibraryUrl &root, Listing listing) const;
    void addToIndexRecursive(const ToolLibraryUrl &url, const ToolLibraryLocator &parent, const QString &realPath,
                             Listing &listing) const;
    void addEntries(const ToolLibraryUrl &folder, Listing &listing) const;
    static void addVendorNodes(LibraryMetadataTree &index, const QString &rootUrl, const QString &path,
                               const QString &name);
    bool isReadOnlyCloudAsset(const ToolLibraryUrl &url, bool inherited) const;
    static void removeDepositingSampleLibraries(LibraryMetadataTree &index);
};

} // namespace Varn::ToolLibraries

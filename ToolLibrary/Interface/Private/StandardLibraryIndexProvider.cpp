#include "ToolLibrary/Interface/Private/StandardLibraryIndexProvider.h"

#include "ToolLibrary/Interface/Private/Hub/HubToolLibrariesLoader.h"
#include "ToolLibrary/Interface/Private/Storage/ToolLibraryJsonStorage.h"
#include "ToolLibrary/Interface/Private/VendorLibraries.h"
#include "platform/core/CloudLibraries.h"
#include "platform/core/FeatureFlagCheck.h"
#include "platform/core/VarnApplication.h"
#include "platform/ox/AppLogMgr.h"
#include "platform/tool/Exception.h"
#include "util/utility/Assert.h"

#include <QDir>
#include <QFileInfo>

#include <utility>

namespace Varn::ToolLibraries {

using Type = LibraryMetadata::Type;

namespace {

constexpr int failureLevel = 1;
const QString crossReferenceFolder = QStringLiteral("_XRef_"); // of the cloud's client, not the person's

void insert(LibraryMetadataTree &index, const QString &name, Type type, const Tools::ToolLibraryUrl &url,
            std::optional<ToolLibraryLocator> parent, bool readOnly)
{
    index.insert(std::make_shared<LibraryMetadata>(name.toStdWString(), type, url, std::move(parent), readOnly));
}

/// Asks the disk only about links: it looks at each folder on the way, which takes long for deep ones.
QString realPathOf(const QFileInfo &entry, const QString &realFolder)
{
    return entry.isSymLink() ? entry.canonicalFilePath() : QDir(realFolder).filePath(entry.fileName());
}

/// Where this person may not write, the rest of the tree is there all the same.
void makeDefaultLocalLibrary()
{
    try {
        Tools::ToolLibraryJsonStorage::makeDefaultLocalLibrary();
    } catch (const Exception &failure) {
        Ox::AppLogMgr::appLog(failureLevel, std::string("StandardLibraryIndexProvider: ") + failure.what());
    }
}

} // namespace

LibraryMetadataTree StandardLibraryIndexProvider::libraryIndex() const
{
    LibraryMetadataTree index = LibraryIndexProvider::libraryIndex();
    addHubNodes(index);
    addCloudNodes(index);
    addLocalNodes(index);
    addSampleNodes(index);
    addVendorNodes(index);
    return index;
}

StandardLibraryIndexProvider::~StandardLibraryIndexProvider() = default;

const std::map<QString, QString> &StandardLibraryIndexProvider::getVendorLibraries() const
{
    return vendorLibraries();
}

bool StandardLibraryIndexProvider::hasWritePermission(const ToolLibraryUrl &url) const
{
    const SafePointer<CloudLibraries> cloud = CloudLibraries::get(CloudLibraries::TOOL_LIBRARIES);
    return cloud && cloud->userCanWriteToFolder(url.libraryFileSystemPath());
}

bool StandardLibraryIndexProvider::cloudLibrariesEnabled() const
{
    return CloudLibraries::EnableCloudLibraries();
}

void StandardLibraryIndexProvider::addHubNodes(LibraryMetadataTree &index)
{
    addToUserLibraries(index, HubToolLibrariesLoader::getIndex(), InsertionPosition::Back);
}

void StandardLibraryIndexProvider::addCloudNodes(LibraryMetadataTree &index) const
{
    if (!cloudLibrariesEnabled())
        return;
    const ToolLibraryUrl cloudFolderUrl(QString(), ToolLibraryUrl::Cloud);
    VARN_ASSERT(cloudFolderUrl.isCloudRootFolder());
    const bool rootReadOnly = cloudFolderUrl.isCloudFolder() && !hasWritePermission(cloudFolderUrl);
    addRoot(cloudFolderUrl, {index, true, rootReadOnly});
}

void StandardLibraryIndexProvider::addLocalNodes(LibraryMetadataTree &index) const
{
    if (VarnApplication::isAppStreamMachine()) // its disk is gone with the session
        return;
    makeDefaultLocalLibrary();
    const ToolLibraryUrl localFolderUrl(QStringLiteral("Local"), ToolLibraryUrl::Local);
    VARN_ASSERT(localFolderUrl.isLocalRootFolder());
    addRoot(localFolderUrl, {index, true, false});
}

void StandardLibraryIndexProvider::addSampleNodes(LibraryMetadataTree &index) const
{
    const ToolLibraryUrl systemFolderUrl(QStringLiteral("Samples"), ToolLibraryUrl::System);
    VARN_ASSERT(systemFolderUrl.isSamplesRootFolder());
    addRoot(systemFolderUrl, {index, false, true});
    if (!FeatureFlagCheck::isAdditiveTechDED())
        removeDepositingSampleLibraries(index);
}

void StandardLibraryIndexProvider::removeDepositingSampleLibraries(LibraryMetadataTree &index)
{
    index.erase(ToolLibraryUrl(QStringLiteral("Samples/Depositing Tools.json"), ToolLibraryUrl::System));
}

void StandardLibraryIndexProvider::addRoot(const ToolLibraryUrl &root, Listing listing) const
{
    const QString realPath = QFileInfo(root.fullFilePath()).canonicalFilePath();
    addToIndexRecursive(root, ToolLibraryLocator::UserLibrariesFolder, realPath, listing);
}

void StandardLibraryIndexProvider::addToIndexRecursive(const ToolLibraryUrl &url, const ToolLibraryLocator &parent,
                                                       const QString &realPath, Listing &listing) const
{
    const Type type = url.isLibrary() ? Type::Library : Type::Folder;
    const bool readOnly = isReadOnlyCloudAsset(url, listing.readOnly) || url.protocol() == ToolLibraryUrl::System;
    insert(listing.index, url.libraryDisplayName(), type, url, parent, readOnly);
    if (type == Type::Library)
        return;
    // A link to a folder is followed, unless it leads to one that is being listed: that would never end.
    if (realPath.isEmpty() || listing.ancestors.contains(realPath))
        return;
    listing.ancestors.append(realPath);
    addEntries(url, listing);
    listing.ancestors.removeLast();
}

void StandardLibraryIndexProvider::addEntries(const ToolLibraryUrl &folder, Listing &listing) const
{
    const QDir dir(folder.fullFilePath(), QString(), QDir::Name | QDir::DirsFirst,
                   QDir::Files | QDir::AllDirs | QDir::NoDotAndDotDot);
    const QStringList extensions = ToolLibraryUrl::atRestFileExtensions(false, listing.includeZetLib);
    for (const QFileInfo &entry : dir.entryInfoList()) {
        const bool skipped = entry.isDir() ? entry.baseName() == crossReferenceFolder
                                           : !extensions.contains(entry.suffix(), Qt::CaseSensitive);
        if (skipped)
            continue;
        const ToolLibraryUrl child = folder.makeChildUrl(entry.fileName());
        if (entry.isDir() || child.isLibrary()) // the name of a file can make it none: one with a newline
            addToIndexRecursive(child, folder, realPathOf(entry, listing.ancestors.last()), listing);
    }
}

bool StandardLibraryIndexProvider::isReadOnlyCloudAsset(const ToolLibraryUrl &url, bool inherited) const
{
    if (url.protocol() != ToolLibraryUrl::Cloud)
        return false;
    return url.isLibrary() ? inherited : !hasWritePermission(url);
}

void StandardLibraryIndexProvider::addVendorNodes(LibraryMetadataTree &index) const
{
    const ToolLibraryUrl vendorUrl(QString(), ToolLibraryUrl::Vendor);
    VARN_ASSERT(vendorUrl.isVendorRootFolder());
    insert(index, vendorUrl.libraryDisplayName(), Type::Folder, vendorUrl, std::nullopt, false);
    for (const auto &[name, path] : getVendorLibraries())
        addVendorNodes(index, vendorUrl.url(), path, name);
}

void StandardLibraryIndexProvider::addVendorNodes(LibraryMetadataTree &index, const QString &rootUrl,
                                                  const QString &path, const QString &name)
{
    const ToolLibraryUrl root(rootUrl);
    const qsizetype separator = path.indexOf(QLatin1Char('/'));
    if (separator < 0) {
        insert(index, name, Type::Library, ToolLibraryUrl(rootUrl + path + ToolLibraryUrl::libraryJsonExtension), root,
               true);
        return;
    }
    const QString folderUrl = rootUrl + path.left(separator + 1);
    if (!index.contains(ToolLibraryUrl(folderUrl)))
        insert(index, path.left(separator), Type::Folder, ToolLibraryUrl(folderUrl), root, true);
    addVendorNodes(index, folderUrl, path.mid(separator + 1), name);
}

} // namespace Varn::ToolLibraries

#include "ToolLibrary/Interface/Private/Storage/LibrarySaver.h"

#include "platform/tool/Exception.h"
#include "platform/utils/FileSystem.h"
#include "util/utility/Assert.h"

#include <filesystem>
#include <system_error>

namespace Varn::ToolLibraries {

using Tools::ToolLibraryJsonStorage;
using Tools::ToolLibraryUrl;

namespace {

/// Whether the file at \a path is that of the library, under whatever name.
bool isOwnFile(const ToolLibraryUrl &url, const QString &path)
{
    if (url.protocol() == ToolLibraryUrl::Vendor) // which has no path on the disk
        return false;
    std::error_code missing;
    return std::filesystem::equivalent(FileSystem::toPath(FileSystem::fromQString(path)),
                                       FileSystem::toPath(FileSystem::fromQString(url.fullFilePath())), missing);
}

} // namespace

void LibrarySaver::saveLibrary(const ToolLibraryUrl &url, const QString &fileName, const ExportableLibrary &library,
                               const Companions &companions)
{
    VARN_EXPECTS(!fileName.endsWith(ToolLibraryUrl::libraryHubExtension));
    bool saved = false;
    if (fileName.endsWith(ToolLibraryUrl::libraryJsonExtension) ||
        fileName.endsWith(ToolLibraryUrl::libraryToolsExtension))
        saved = saveLibraryAsJson(url, fileName, library, companions);
    else if (fileName.endsWith(ToolLibraryUrl::libraryZetLibExtension))
        saved = saveLibraryAsZetlib(fileName, library);
    else if (fileName.endsWith(ToolLibraryUrl::libraryCsvExtension))
        saved = saveLibraryAsCSV(fileName, library);
    else
        throw UnknownError("Invalid file format");
    if (!saved)
        throw IOError("Failed to export library");
}

bool LibrarySaver::saveLibraryAsJson(const ToolLibraryUrl &url, const QString &fileName,
                                     const ExportableLibrary &library, const Companions &companions)
{
    VARN_EXPECTS(fileName.endsWith(ToolLibraryUrl::libraryJsonExtension) ||
                 fileName.endsWith(ToolLibraryUrl::libraryToolsExtension));
    const bool regenerateGuids = url.isDocumentLibrary() || url.isSetup();
    const auto others = isOwnFile(url, fileName) ? ToolLibraryJsonStorage::OtherEntries::Keep
                                                 : ToolLibraryJsonStorage::OtherEntries::Drop;
    return ToolLibraryJsonStorage::saveLibrary(ToolLibraryUrl(fileName, url.protocol()), library, regenerateGuids,
                                               others, companions);
}

bool LibrarySaver::saveLibraryAsZetlib(const QString &fileName, const ExportableLibrary &)
{
    VARN_EXPECTS(fileName.endsWith(ToolLibraryUrl::libraryZetLibExtension));
    throw NotSupportedError("Not yet supported");
}

bool LibrarySaver::saveLibraryAsCSV(const QString &fileName, const ExportableLibrary &)
{
    VARN_EXPECTS(fileName.endsWith(ToolLibraryUrl::libraryCsvExtension));
    throw NotSupportedError("Not yet supported");
}

} // namespace Varn::ToolLibraries

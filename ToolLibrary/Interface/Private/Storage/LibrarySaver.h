// LibrarySaver.h -- writes a library to a file in the format that its name asks for. Threads as ToolLibraryJsonStorage.
#pragma once

#include "ToolLibrary/IO/ToolLibraryUrl.h"
#include "ToolLibrary/Interface/Private/Storage/ToolLibraryJsonStorage.h"
#include "ToolLibrary/ToolLibraryExport.h"

#include <QString>

namespace Varn::ToolLibraries {

class ExportableLibrary;

class TOOL_LIBRARY_EXPORT LibrarySaver
{
public:
    using Companions = Tools::ToolLibraryJsonStorage::Companions;

    /// Writes \a library, which \a url names, to the absolute path \a fileName. Tools that leave a document get new
    /// GUIDs. A ".tools" library that is saved to its own file keeps the geometries there; any other file is replaced
    /// whole. Only a ".tools" file takes \a companions.
    ///
    /// Throws UnknownError "Invalid file format" for an end of the name that no writer takes (case counts),
    /// NotSupportedError for ".zetlib" and ".csv", which have no writer yet, IOError "Failed to export library" or the
    /// text of JsonFileWriter. What fails leaves the old file. REQUIRES: no name that ends in ".hub".
    static void saveLibrary(const Tools::ToolLibraryUrl &url, const QString &fileName, const ExportableLibrary &library,
                            const Companions &companions = {});

private:
    static bool saveLibraryAsJson(const Tools::ToolLibraryUrl &url, const QString &fileName,
                                  const ExportableLibrary &library, const Companions &companions);
    static bool saveLibraryAsZetlib(const QString &fileName, const ExportableLibrary &library);
    static bool saveLibraryAsCSV(const QString &fileName, const ExportableLibrary &library);
};

} // namespace Varn::ToolLibraries

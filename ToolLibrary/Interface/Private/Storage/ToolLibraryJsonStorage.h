// ToolLibraryJsonStorage.h -- the store of the library tree: puts libraries into their files, in the current format.
//
// Any thread, but one at a time for one file, and nothing may write to the library meanwhile.
#pragma once

#include "ToolLibrary/IO/ToolLibraryUrl.h"
#include "ToolLibrary/ToolLibraryExport.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVariant>

#include <map>

namespace Varn::ToolLibraries {
class ExportableLibrary;
}

namespace Varn::Tools {

/// A ".json" library is the indented library document, a ".tools" library an archive with that document in it (see
/// docs/tools-file.md). A ".zetlib" library, and any older form, moves on to ".json": the old file goes once the new
/// one is there. A library of the cloud is announced to CloudLibraries afterwards.
class TOOL_LIBRARY_EXPORT ToolLibraryJsonStorage
{
public:
    /// What becomes of the entries, beside the library document, of an archive that is already there.
    enum class OtherEntries {
        Keep, ///< the archive is the library's own: its geometries stay
        Drop  ///< the archive is another library's, which this one takes the place of
    };

    /// Saves a library document to the place of \a url. With \a regenerateGuids each of its tools gets a new GUID and
    /// is no document tool any more. False when an archive could not be written, and for a URL of no such file, which
    /// is a programming error. Throws IOError with the text of JsonFileWriter. What fails leaves the old file.
    static bool saveLibrary(const ToolLibraryUrl &url, const QMap<QString, QVariant> &library, bool regenerateGuids);

    /// What goes into an archive beside the library document: name to content.
    using Companions = std::map<QString, QByteArray>;

    /// The same bytes for a library in memory, which is not copied if it is a RapidjsonToolLibrary. A ".tools" library
    /// gets the \a companions at the same moment, in the place of entries of their names.
    static bool saveLibrary(const ToolLibraryUrl &url, const ToolLibraries::ExportableLibrary &library,
                            bool regenerateGuids, OtherEntries others = OtherEntries::Keep,
                            const Companions &companions = {});

    /// Makes the folder of the local libraries and the library "Library.json" in it, unless they are there. Throws
    /// IOError when the library cannot be written.
    static void makeDefaultLocalLibrary();

private:
    static bool createLibrary(const ToolLibraryUrl &url);
};

} // namespace Varn::Tools

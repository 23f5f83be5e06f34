// ZipToolFormat.h -- reads and builds a zipped tool library (".tools"). One thread at a time.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/utils/Abortable.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace Varn {
class CZipArchive;
}

namespace Varn::Tools {

class ByteArrayCZipMemFile;

/// A ".tools" library is a zip archive with an entry "tools.json", the library document, and beside it the 3D geometry
/// files of its tools. The whole archive is kept in memory.
///
/// Each reading call (getFileNames, getData, extractFile) reads the file on the disk afresh and lets it go. The
/// changing ones (create, createKeeping, addFile, removeFile) build an archive in memory, which write() puts in the
/// place of the file; a reading call in between does not disturb it. Names are paths within the archive, and the case
/// of letters counts.
///
/// A missing or damaged file, or one beyond the limits of ZipLimits, answers false or with an empty list, and why goes
/// to the log (level 3). Nothing throws.
class TOOL_LIBRARY_EXPORT ZipToolFormat
{
public:
    static constexpr QLatin1String documentEntry{"tools.json"}; ///< of a library

    /// Touches no file. \a path is the archive's on the disk.
    explicit ZipToolFormat(const QString &path);
    ZipToolFormat(const ZipToolFormat &) = delete;
    ZipToolFormat &operator=(const ZipToolFormat &) = delete;
    ~ZipToolFormat(); ///< drops what was not written

    /// \name Reading
    /// @{
    /// The name of every entry, in the order of the archive.
    QList<QString> getFileNames();

    /// Puts the content of an entry into \a out. False, and \a out as it was, for a name that does not occur exactly
    /// once, a damaged or encrypted entry, or an abort, which is asked for with each block.
    bool getData(const QString &name, QByteArray &out, const Abortable &abortable = AbortableImpl());

    /// Writes an entry to a file: into \a target under the entry's name if that is a folder, otherwise to \a target
    /// itself, whose folder is made when it is missing. False as for getData(), for a name that would lead out of the
    /// folder, and when the file cannot be written.
    bool extractFile(const QString &name, const std::filesystem::path &target,
                     const Abortable &abortable = AbortableImpl());
    /// @}

    /// \name Changing
    /// @{
    /// Begins a new, empty archive in memory.
    bool create();

    /// Begins a new archive with the entries of the file on the disk whose names \a keep is true for, as they are:
    /// nothing is inflated. False when there is no archive to be read; then the new one is as after create().
    bool createKeeping(const std::function<bool(const QString &name)> &keep);

    /// Adds an entry to the archive that is being built, and begins one when there is none. False for a name that is
    /// taken, or that cannot be a path below a folder, and when the archive gets too large.
    bool addFile(const QString &name, const QByteArray &data);

    /// Hands a content to the sink, block by block; false when the sink was, and for a content that breaks off.
    using Content = std::function<bool(const std::function<bool(std::string_view)> &sink)>;

    /// As addFile(), for a content that is never whole in memory: it is compressed while it comes.
    bool addContent(const QString &name, const Content &content);

    /// Removes an entry from the archive that is being built, or, when there is none, begins one with the other entries
    /// of the file on the disk. False for a name that does not occur exactly once; then none is begun.
    bool removeFile(const QString &name);

    /// Writes the archive that was built to the path, and is done with it: the next addFile() begins another. Without
    /// one it writes the image that was read last, and without that an empty archive. The old file or the new one is
    /// there whatever happens. False when the file could not be written; a second call tries again, also after a
    /// reading call.
    bool write();
    /// @}

private:
    bool attach();
    bool openArchive(bool toChange);
    bool readArchive(const std::function<bool()> &work);
    bool guarded(const std::function<bool()> &work) const;
    std::optional<int> getFileIndex(const QString &name) const;
    bool isBuilding() const;
    bool isUnwritten() const { return isBuilding() || m_pending; }
    void log(std::string_view why) const;

    QString m_path;
    std::unique_ptr<ByteArrayCZipMemFile> m_file;
    std::unique_ptr<CZipArchive> m_archive; // open on m_file, while an archive is being built and within a reading call
    bool m_pending = false;                 // m_file holds what write() could not put on the disk
};

} // namespace Varn::Tools

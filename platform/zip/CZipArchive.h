// CZipArchive.h -- a zip archive in memory, after APPNOTE.TXT of the format, with zip64. One thread at a time.
#pragma once

#include "platform/utils/Abortable.h"
#include "platform/zip/CZipAbstractFile.h"
#include "platform/zip/CZipException.h"
#include "platform/zip/CZipFileHeader.h"
#include "platform/zip/CZipTypes.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

struct zip;
struct zip_source;

namespace Varn {

class DeflatedFile;

/// Entries are known by their index, in the order of the archive. Only the list of entries is read at Open(), and an
/// extraction inflates that one entry. What is written is "deflated", without a date of its own (the first that the
/// format has, 1980-01-01), so that the same entries give the same bytes.
///
/// All but Open() raise CZipException, and NotAllowed in particular on a closed archive. A failed call changes nothing
/// unless told otherwise. Limits: see ZipLimits.
class VARN_PLATFORM_EXPORT CZipArchive
{
public:
    enum OpenMode {
        Existing = 1, ///< to read and to change
        ReadOnly = 3,
        Create = 4 ///< a new archive; what the file holds goes at Close()
    };
    enum CloseMode {
        Regular, ///< the changes are written
        Forced   ///< the changes are dropped; never raises
    };
    enum System { Dos = 0, Unix = 3 };

    /// Receives the content of an entry, block by block. What it raises ends the extraction and passes through.
    using Sink = std::function<void(std::string_view block)>;

    CZipArchive();
    CZipArchive(const CZipArchive &) = delete;
    CZipArchive &operator=(const CZipArchive &) = delete;
    ~CZipArchive(); ///< a forced close

    /// The system whose file attributes new entries get: Unix with permissions 0644, as at first, or Dos. False for
    /// others.
    bool SetSystemCompatibility(int system);

    /// \name Open and close
    /// @{
    /// Opens the archive in \a file, which outlives it. False when it is none, damaged in its list of entries, or
    /// beyond the limits; GetOpenError() says which. An archive that was open is dropped first.
    bool Open(CZipAbstractFile &file, OpenMode mode);

    /// The same for a copy of a file on the disk, which is let go at once: only ReadOnly makes sense, and is taken.
    bool Open(const CZipString &path, OpenMode mode = ReadOnly);

    /// Why the last Open() was false, in UTF-8; empty when it was not.
    const std::string &GetOpenError() const { return m_openError; }

    bool IsClosed() const { return !m_archive; }

    /// Compresses and writes what was added, in the place of the old content of the file, when anything changed. After
    /// an exception the file is as it was and the archive still open. Fine when closed.
    void Close(CloseMode mode = Regular);
    /// @}

    /// \name The list of entries
    /// @{
    int GetCount() const;

    /// Null for an index that there is not. Valid until the next change.
    const CZipFileHeader *GetFileInfo(int index) const;

    /// The indexes of all entries of these names, name by name: none for a name that is not there, several for one that
    /// occurs more than once. The case of letters counts.
    void GetIndexes(const CZipArray<CZipString> &names, CZipArray<int> &indexes) const;

    /// The indexes of all entries whose whole path fits \a pattern, as EntryNames::matches() tells.
    void FindMatches(const CZipString &pattern, CZipArray<int> &indexes, bool caseSensitive) const;
    /// @}

    /// \name Reading. \a abortable is asked for each block.
    /// @{
    /// Hands on the content. Raises Encrypted, Unsupported, Aborted, or Damaged for content that does not have the size
    /// and checksum of its header; what was handed on by then is worth nothing. Never more bytes than the header
    /// claims. An entry that was added can be read after Close() alone (NotAllowed).
    void ExtractFile(int index, const Sink &sink, const Abortable &abortable = AbortableImpl()) const;

    /// Writes the content to \a target, from its position on.
    void ExtractFile(int index, CZipAbstractFile &target, const Abortable &abortable = AbortableImpl()) const;

    /// Makes a file of the entry below \a folder, and the folders that it needs: under the entry's path (BadName unless
    /// EntryNames::isSafe), for \a fullPath false under the last part of it, or under \a newName if that is not empty.
    /// An old file is overwritten, but left alone by an entry that cannot be read. Links among the entries become plain
    /// files.
    void ExtractFile(int index, const CZipString &folder, bool fullPath = true, const CZipString &newName = {},
                     const Abortable &abortable = AbortableImpl()) const;
    /// @}

    /// \name Changes
    /// @{
    /// Adds an entry; the archive reads \a file at Close(). \a level is that of zlib, 0 for "stored", -1 for the
    /// usual 6. A name with '/' at its end is a folder, and has no content. Raises BadName unless EntryNames::isSafe,
    /// NameTaken, TooLarge.
    void AddNewFile(std::unique_ptr<CZipAbstractFile> file, const CZipString &name, int level = -1);

    /// Adds an entry whose content is compressed already. Raises as AddNewFile(), and NotAllowed for a content that is
    /// not finished.
    void AddDeflatedFile(std::unique_ptr<DeflatedFile> file, const CZipString &name);

    /// The entries behind move up.
    void RemoveFiles(const CZipArray<int> &indexes);
    /// @}

private:
    struct Discard {
        void operator()(zip *archive) const;
    };
    struct Entry {
        CZipFileHeader header;
        std::uint64_t number; // libzip's own index, which stays
    };

    void open(CZipAbstractFile &file, OpenMode mode);
    void readEntries();
    void expectOpen() const;
    void expectWritable() const;
    const Entry &entry(int index) const;
    void checkReadable(const Entry &entry) const;
    void setProperties(std::uint64_t number, bool directory, int level);
    void add(zip_source *source, CZipFileHeader header, int level);
    void expectAddable(const CZipFileHeader &header) const;
    void remove(const Entry &entry);
    void writeEmpty();

    std::unique_ptr<CZipAbstractFile> m_image; // of a file on the disk
    CZipAbstractFile *m_file = nullptr;
    std::unique_ptr<zip, Discard> m_archive; // null when closed
    CZipArray<Entry> m_entries;
    std::uint64_t m_totalSize = 0; // of all entries, uncompressed
    OpenMode m_mode = ReadOnly;
    bool m_changed = false;
    System m_system = Unix;
    std::string m_openError;
};

} // namespace Varn

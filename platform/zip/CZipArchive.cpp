#include "platform/zip/CZipArchive.h"

#include "platform/utils/FileSystem.h"
#include "platform/utils/Guid.h"
#include "platform/utils/Messages.h"
#include "platform/zip/CZipFile.h"
#include "platform/zip/CZipMemFile.h"
#include "platform/zip/DeflatedFile.h"
#include "platform/zip/EntryNames.h"
#include "platform/zip/ZipLimits.h"
#include "platform/zip/ZipSource.h"

#include <algorithm>
#include <array>
#include <new>
#include <utility>

namespace Varn {

namespace {

using Cause = CZipException::Cause;

constexpr std::size_t blockSize = 65536;
constexpr int usualLevel = 6;
constexpr zip_uint16_t firstDosDate = 1 << 5 | 1; // 1980-01-01, APPNOTE.TXT 4.4.6
constexpr std::string_view emptyArchive("PK\5\6\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 22);

/// What libzip's errors are to us; anything else is damage.
struct ErrorRow {
    int code;
    Cause cause;
};
// clang-format off
constexpr ErrorRow errorRows[] = {
    { ZIP_ER_CHANGED,     Cause::NotAllowed  },
    { ZIP_ER_COMPNOTSUPP, Cause::Unsupported },
    { ZIP_ER_ENCRNOTSUPP, Cause::Encrypted   },
    { ZIP_ER_EXISTS,      Cause::NameTaken   },
    { ZIP_ER_MULTIDISK,   Cause::NoArchive   },
    { ZIP_ER_NOPASSWD,    Cause::Encrypted   },
    { ZIP_ER_RDONLY,      Cause::NotAllowed  },
    { ZIP_ER_READ,        Cause::FileError   },
    { ZIP_ER_WRITE,       Cause::FileError   },
};
// clang-format on

[[noreturn]] void fail(Cause cause, const std::string &what, std::string_view why)
{
    throw CZipException(cause, what + ": " + std::string(why));
}

[[noreturn]] void fail(zip_error_t *error, const std::string &what)
{
    const int code = zip_error_code_zip(error);
    if (code == ZIP_ER_MEMORY)
        throw std::bad_alloc();
    const auto *row = std::ranges::find(errorRows, code, &ErrorRow::code);
    fail(row == std::end(errorRows) ? Cause::Damaged : row->cause, what, zip_error_strerror(error));
}

std::string nameOf(const CZipFileHeader &header)
{
    return "entry '" + Messages::fromWideUnicodeToUTF8(header.GetFileName()) + "'";
}

struct CloseFile {
    void operator()(zip_file_t *file) const { zip_fclose(file); }
};

CZipString lastPart(CZipString path)
{
    if (path.ends_with(L'/'))
        path.pop_back();
    return path.substr(path.rfind(L'/') + 1);
}

/// Writes a file whole, or leaves none.
void writeFile(const CZipString &path, std::string_view bytes)
{
    CZipFile file;
    if (!file.Open(path, CZipFile::OpenMode::Create))
        fail(Cause::FileError, Messages::fromWideUnicodeToUTF8(path), "the file could not be opened");
    try {
        file.Write(bytes.data(), bytes.size());
        file.Close();
    } catch (const CZipException &) {
        (void)FileSystem::remove(path);
        throw;
    }
}

void makeFolder(const CZipString &path)
{
    if (const std::error_code error = FileSystem::createFolders(path))
        fail(Cause::FileError, Messages::fromWideUnicodeToUTF8(path), error.message());
}

} // namespace

void CZipArchive::Discard::operator()(zip *archive) const
{
    zip_discard(archive);
}

CZipArchive::CZipArchive() = default;

CZipArchive::~CZipArchive() = default;

bool CZipArchive::SetSystemCompatibility(int system)
{
    if (system != Dos && system != Unix)
        return false;
    m_system = static_cast<System>(system);
    return true;
}

bool CZipArchive::Open(CZipAbstractFile &file, OpenMode mode)
{
    Close(Forced);
    m_openError.clear();
    try {
        open(file, mode);
        return true;
    } catch (const CZipException &error) {
        m_openError = error.what();
        Close(Forced);
        return false;
    }
}

bool CZipArchive::Open(const CZipString &path, OpenMode mode)
{
    Close(Forced);
    m_openError.clear();
    CZipFile file;
    auto image = std::make_unique<CZipMemFile>();
    try {
        if (mode != ReadOnly)
            fail(Cause::NotAllowed, Messages::fromWideUnicodeToUTF8(path), "a file on the disk opens to be read alone");
        if (!file.Open(path, CZipFile::OpenMode::Read))
            fail(Cause::FileError, Messages::fromWideUnicodeToUTF8(path), "the file could not be opened");
        ZipLimits::check(file);
        file.Seek(0);
        std::array<char, blockSize> block;
        for (std::size_t count = 0; (count = file.Read(block.data(), block.size())) > 0;)
            image->Write(block.data(), count);
    } catch (const CZipException &error) {
        m_openError = error.what();
        return false;
    }
    const bool opened = Open(*image, mode);
    if (opened)
        m_image = std::move(image);
    return opened;
}

void CZipArchive::Close(CloseMode mode)
{
    if (mode == Regular && m_archive && m_mode != ReadOnly && m_changed) {
        if (m_entries.empty())
            writeEmpty();
        else if (zip_close(m_archive.get()) != 0)
            fail(zip_get_error(m_archive.get()), "archive");
        else
            (void)m_archive.release();
    }
    m_archive.reset();
    m_entries.clear();
    m_file = nullptr;
    m_image.reset();
    m_totalSize = 0;
    m_changed = false;
}

int CZipArchive::GetCount() const
{
    expectOpen();
    return static_cast<int>(m_entries.size());
}

const CZipFileHeader *CZipArchive::GetFileInfo(int index) const
{
    expectOpen();
    return index >= 0 && index < GetCount() ? &m_entries[static_cast<std::size_t>(index)].header : nullptr;
}

void CZipArchive::GetIndexes(const CZipArray<CZipString> &names, CZipArray<int> &indexes) const
{
    indexes.clear();
    for (const CZipString &name : names)
        for (int i = 0; i < GetCount(); ++i)
            if (GetFileInfo(i)->GetFileName() == name)
                indexes.push_back(i);
}

void CZipArchive::FindMatches(const CZipString &pattern, CZipArray<int> &indexes, bool caseSensitive) const
{
    indexes.clear();
    for (int i = 0; i < GetCount(); ++i)
        if (EntryNames::matches(GetFileInfo(i)->GetFileName(), pattern, caseSensitive))
            indexes.push_back(i);
}

void CZipArchive::ExtractFile(int index, const Sink &sink, const Abortable &abortable) const
{
    const Entry &from = entry(index);
    const std::string name = nameOf(from.header);
    checkReadable(from);
    const std::unique_ptr<zip_file_t, CloseFile> file(zip_fopen_index(m_archive.get(), from.number, 0));
    if (!file)
        fail(zip_get_error(m_archive.get()), name);
    std::array<char, blockSize> block;
    std::uint64_t left = from.header.GetUncompressedSize();
    for (;;) {
        if (abortable.isAborted())
            fail(Cause::Aborted, name, "Interrupted");
        // libzip holds size and checksum against the header once the end is met, so it must be.
        const zip_int64_t count = zip_fread(file.get(), block.data(), block.size());
        if (count < 0)
            fail(zip_file_get_error(file.get()), name);
        if (count == 0)
            break;
        if (static_cast<std::uint64_t>(count) > left)
            fail(Cause::Damaged, name, "longer than its header says");
        left -= static_cast<std::uint64_t>(count);
        sink({block.data(), static_cast<std::size_t>(count)});
    }
    if (left > 0)
        fail(Cause::Damaged, name, "shorter than its header says");
}

void CZipArchive::ExtractFile(int index, CZipAbstractFile &target, const Abortable &abortable) const
{
    ExtractFile(
        index, [&](std::string_view block) { target.Write(block.data(), block.size()); }, abortable);
}

void CZipArchive::ExtractFile(int index, const CZipString &folder, bool fullPath, const CZipString &newName,
                              const Abortable &abortable) const
{
    const CZipFileHeader &header = entry(index).header;
    if (newName.empty() && !EntryNames::isSafe(header.GetFileName()))
        fail(Cause::BadName, nameOf(header), "the name leads out of the folder, or is none for a file");
    CZipString name = header.GetFileName();
    if (!newName.empty())
        name = newName;
    else if (!fullPath)
        name = lastPart(std::move(name));
    const CZipString path = FileSystem::combine(folder, name);
    CZipMemFile content;
    ExtractFile(index, content, abortable);
    if (header.IsDirectory())
        return makeFolder(path);
    if (const CZipString parent = FileSystem::getFolder(path); !parent.empty())
        makeFolder(parent);
    writeFile(path, content.GetBytes());
}

void CZipArchive::AddNewFile(std::unique_ptr<CZipAbstractFile> file, const CZipString &name, int level)
{
    expectWritable();
    CZipFileHeader header(name, file->GetLength(), 0, false);
    expectAddable(header);
    if (level < -1 || level > 9)
        fail(Cause::NotAllowed, nameOf(header), "no such level of compression");
    const bool empty = header.GetUncompressedSize() == 0;
    const ZipSource::Pointer source = ZipSource::forEntry(std::move(file));
    add(source.get(), std::move(header), empty ? 0 : level);
}

void CZipArchive::AddDeflatedFile(std::unique_ptr<DeflatedFile> file, const CZipString &name)
{
    expectWritable();
    CZipFileHeader header(name, file->GetContentSize(), 0, false);
    if (!file->IsFinished())
        fail(Cause::NotAllowed, nameOf(header), "its content has not ended");
    expectAddable(header);
    const ZipSource::Pointer source = ZipSource::forEntry(std::move(file));
    add(source.get(), std::move(header), usualLevel);
}

void CZipArchive::RemoveFiles(const CZipArray<int> &indexes)
{
    expectWritable();
    CZipArray<int> last(indexes);
    std::ranges::sort(last, std::greater<>());
    last.erase(std::unique(last.begin(), last.end()), last.end());
    for (const int index : last)
        entry(index);
    for (const int index : last) {
        remove(entry(index));
        m_totalSize -= entry(index).header.GetUncompressedSize();
        m_entries.erase(m_entries.begin() + index);
        m_changed = true;
    }
}

void CZipArchive::open(CZipAbstractFile &file, OpenMode mode)
{
    if (mode != Create)
        ZipLimits::check(file);
    ZipSource::Pointer source = ZipSource::forArchive(file);
    const int flags = mode == Create ? ZIP_CREATE | ZIP_TRUNCATE : mode == ReadOnly ? ZIP_RDONLY : 0;
    zip_error_t error;
    zip_error_init(&error);
    m_archive.reset(zip_open_from_source(source.get(), flags, &error));
    if (!m_archive) {
        const struct Fini {
            zip_error_t *error;
            ~Fini() { zip_error_fini(error); }
        } fini{&error};
        fail(&error, "archive");
    }
    zip_error_fini(&error);
    (void)source.release(); // the archive has it now
    m_file = &file;
    m_mode = mode;
    m_changed = mode == Create;
    readEntries();
}

void CZipArchive::readEntries()
{
    const zip_int64_t count = zip_get_num_entries(m_archive.get(), 0);
    if (static_cast<std::uint64_t>(count) > ZipLimits::mostEntries)
        fail(Cause::TooLarge, "archive", "more than 250000 entries");
    m_entries.reserve(static_cast<std::size_t>(count));
    for (std::uint64_t i = 0; i < static_cast<std::uint64_t>(count); ++i) {
        zip_stat_t stat;
        if (zip_stat_index(m_archive.get(), i, 0, &stat) != 0)
            fail(zip_get_error(m_archive.get()), "archive");
        CZipFileHeader header(Messages::fromUTF8ToWideUnicode(stat.name), stat.size, stat.comp_size,
                              stat.encryption_method != ZIP_EM_NONE);
        if (stat.size > ZipLimits::mostBytes - m_totalSize)
            fail(Cause::TooLarge, nameOf(header), "more than 2147483647 bytes, with the entries before it");
        m_totalSize += stat.size;
        m_entries.push_back({std::move(header), i});
    }
}

/// Raises what the name and the size alone tell.
void CZipArchive::expectAddable(const CZipFileHeader &header) const
{
    const std::uint64_t size = header.GetUncompressedSize();
    if (!EntryNames::isSafe(header.GetFileName()) || (header.IsDirectory() && size > 0))
        fail(Cause::BadName, nameOf(header), "not a name for an entry");
    if (size > ZipLimits::mostBytes - m_totalSize || m_entries.size() >= ZipLimits::mostEntries)
        fail(Cause::TooLarge, nameOf(header), "the archive has no room for it");
}

void CZipArchive::add(zip_source *source, CZipFileHeader header, int level)
{
    const std::string utf8 = Messages::fromWideUnicodeToUTF8(header.GetFileName());
    const zip_int64_t number = zip_file_add(m_archive.get(), utf8.c_str(), source, ZIP_FL_ENC_UTF_8);
    if (number < 0)
        fail(zip_get_error(m_archive.get()), nameOf(header));
    zip_source_keep(source); // the archive has it now
    m_totalSize += header.GetUncompressedSize();
    m_entries.push_back({std::move(header), static_cast<std::uint64_t>(number)});
    m_changed = true;
    setProperties(m_entries.back().number, m_entries.back().header.IsDirectory(), level);
}

void CZipArchive::expectOpen() const
{
    if (IsClosed())
        fail(Cause::NotAllowed, "archive", "not open");
}

void CZipArchive::expectWritable() const
{
    expectOpen();
    if (m_mode == ReadOnly)
        fail(Cause::NotAllowed, "archive", "open to be read alone");
}

/// Raises what the header alone tells.
void CZipArchive::checkReadable(const Entry &entry) const
{
    const std::string name = nameOf(entry.header);
    zip_stat_t stat;
    if (zip_stat_index(m_archive.get(), entry.number, 0, &stat) != 0)
        fail(zip_get_error(m_archive.get()), name);
    if (entry.header.IsEncrypted())
        fail(Cause::Encrypted, name, "needs a password");
    // The other methods inflate without bound, or ask for gigabytes before the first byte.
    if (stat.comp_method != ZIP_CM_STORE && stat.comp_method != ZIP_CM_DEFLATE)
        fail(Cause::Unsupported, name, "compressed by a method that is not read here");
    // libzip does not look at the checksum of an entry that has no bytes at all.
    if (entry.header.GetCompressedSize() == 0 && (stat.valid & ZIP_STAT_CRC) && stat.crc != 0)
        fail(Cause::Damaged, name, "no content, but a checksum of one");
}

const CZipArchive::Entry &CZipArchive::entry(int index) const
{
    if (!GetFileInfo(index))
        fail(Cause::NotAllowed, "archive", "no entry of this index");
    return m_entries[static_cast<std::size_t>(index)];
}

void CZipArchive::setProperties(std::uint64_t number, bool directory, int level)
{
    zip *archive = m_archive.get();
    const zip_uint32_t unixMode = directory ? 040755 : 0100644;
    const zip_uint32_t dosAttributes = directory ? 0x10 : 0x20;
    const bool good =
        zip_set_file_compression(archive, number, level == 0 ? ZIP_CM_STORE : ZIP_CM_DEFLATE,
                                 static_cast<zip_uint32_t>(level < 0 ? usualLevel : level)) == 0 &&
        zip_file_set_dostime(archive, number, 0, firstDosDate, 0) == 0 &&
        (m_system == Unix ? zip_file_set_external_attributes(archive, number, 0, ZIP_OPSYS_UNIX,
                                                             unixMode << 16 | (directory ? 0x10 : 0))
                          : zip_file_set_external_attributes(archive, number, 0, ZIP_OPSYS_DOS, dosAttributes)) == 0;
    if (!good)
        fail(zip_get_error(archive), nameOf(m_entries.back().header));
}

void CZipArchive::remove(const Entry &entry)
{
    zip *archive = m_archive.get();
    if (zip_delete(archive, entry.number) == 0)
        return;
    // libzip finds one entry for a name; the others of that name go once they have another.
    const std::string other = Guid::create().asString() + (entry.header.IsDirectory() ? "/" : "");
    if (entry.header.GetFileName().empty() ||
        zip_file_rename(archive, entry.number, other.c_str(), ZIP_FL_ENC_UTF_8) != 0 ||
        zip_delete(archive, entry.number) != 0)
        fail(zip_get_error(archive), nameOf(entry.header));
}

void CZipArchive::writeEmpty()
{
    m_file->Seek(0);
    m_file->Write(emptyArchive.data(), emptyArchive.size());
    m_file->SetLength(emptyArchive.size());
}

} // namespace Varn

#include "ToolLibrary/IO/ZipToolFormat.h"

#include "ToolLibrary/IO/ByteArrayCZipMemFile.h"
#include "platform/ox/AppLogMgr.h"
#include "platform/utils/FileReplacement.h"
#include "platform/utils/FileSystem.h"
#include "platform/zip/CZipArchive.h"
#include "platform/zip/CZipFile.h"
#include "platform/zip/DeflatedFile.h"
#include "platform/zip/ZipLimits.h"
#include "util/utility/Assert.h"

#include <algorithm>
#include <new>
#include <string>
#include <system_error>

namespace Varn::Tools {

namespace {

constexpr int logLevel = 3;

/// The size of an entry as its header claims it, but no more than its compressed bytes can become: only then is it
/// worth having the memory ready.
std::uint64_t credibleSize(const CZipFileHeader &header, std::uint64_t archiveLength)
{
    constexpr std::uint64_t mostOfAByte = 1032; // 258 bytes for 2 bits, the best that deflate can do
    return std::min(header.GetUncompressedSize(), std::min(header.GetCompressedSize(), archiveLength) * mostOfAByte);
}

} // namespace

ZipToolFormat::ZipToolFormat(const QString &path)
    : m_path(path), m_file(std::make_unique<ByteArrayCZipMemFile>()), m_archive(std::make_unique<CZipArchive>())
{
    m_archive->SetSystemCompatibility(CZipArchive::Unix);
}

ZipToolFormat::~ZipToolFormat()
{
    m_archive->Close(CZipArchive::Forced);
}

QList<QString> ZipToolFormat::getFileNames()
{
    if (isUnwritten())
        return ZipToolFormat(m_path).getFileNames();
    QList<QString> names;
    readArchive([&] {
        for (int i = 0; i < m_archive->GetCount(); ++i)
            names.append(QString::fromStdWString(m_archive->GetFileInfo(i)->GetFileName()));
        return true;
    });
    return names;
}

bool ZipToolFormat::getData(const QString &name, QByteArray &out, const Abortable &abortable)
{
    if (isUnwritten())
        return ZipToolFormat(m_path).getData(name, out, abortable);
    QByteArray data;
    const bool done = readArchive([&] {
        const auto index = getFileIndex(name);
        if (!index)
            return false;
        data.reserve(static_cast<qsizetype>(credibleSize(*m_archive->GetFileInfo(*index), m_file->GetLength())));
        m_archive->ExtractFile(
            *index, [&](std::string_view block) { data.append(block.data(), static_cast<qsizetype>(block.size())); },
            abortable);
        return true;
    });
    if (done)
        out.swap(data);
    return done;
}

bool ZipToolFormat::extractFile(const QString &name, const std::filesystem::path &target, const Abortable &abortable)
{
    if (isUnwritten())
        return ZipToolFormat(m_path).extractFile(name, target, abortable);
    if (target.empty())
        return false;
    std::error_code missing;
    const bool isFolder = std::filesystem::is_directory(target, missing);
    return readArchive([&] {
        const auto index = getFileIndex(name);
        if (!index)
            return false;
        const std::filesystem::path folder = isFolder ? target : target.parent_path();
        const std::filesystem::path newName = isFolder ? std::filesystem::path() : target.filename();
        m_archive->ExtractFile(*index, FileSystem::fromPath(folder), true, FileSystem::fromPath(newName), abortable);
        return true;
    });
}

bool ZipToolFormat::create()
{
    m_archive->Close(CZipArchive::Forced);
    m_file->Close();
    m_pending = false;
    return m_archive->Open(*m_file, CZipArchive::Create);
}

bool ZipToolFormat::createKeeping(const std::function<bool(const QString &name)> &keep)
{
    m_archive->Close(CZipArchive::Forced);
    const bool kept = guarded([&] {
        if (!openArchive(true))
            return false;
        CZipArray<int> others;
        for (int i = 0; i < m_archive->GetCount(); ++i)
            if (!keep(QString::fromStdWString(m_archive->GetFileInfo(i)->GetFileName())))
                others.push_back(i);
        m_archive->RemoveFiles(others);
        return true;
    });
    if (!kept)
        create();
    return kept;
}

bool ZipToolFormat::addFile(const QString &name, const QByteArray &data)
{
    if (!isBuilding() && !create())
        return false;
    return guarded([&] {
        m_archive->AddNewFile(std::make_unique<ByteArrayCZipMemFile>(data), name.toStdWString());
        return true;
    });
}

bool ZipToolFormat::addContent(const QString &name, const Content &content)
{
    if (!isBuilding() && !create())
        return false;
    return guarded([&] {
        auto file = std::make_unique<DeflatedFile>();
        if (!content([&](std::string_view block) { return file->Append(block), true; }))
            return false;
        file->Finish();
        m_archive->AddDeflatedFile(std::move(file), name.toStdWString());
        return true;
    });
}

bool ZipToolFormat::removeFile(const QString &name)
{
    const bool begun = !isBuilding();
    const bool removed = guarded([&] {
        if (begun && !openArchive(true))
            return false;
        const auto index = getFileIndex(name);
        if (index)
            m_archive->RemoveFiles({*index});
        return index.has_value();
    });
    if (begun && !removed)
        m_archive->Close(CZipArchive::Forced);
    return removed;
}

bool ZipToolFormat::write()
{
    if (!isBuilding() && m_file->GetLength() == 0 && !create())
        return false;
    return guarded([&] {
        m_pending = isUnwritten();
        m_archive->Close();
        FileReplacement file(FileSystem::fromQString(m_path));
        const bool written = file.isOpen() && file.write(m_file->GetBytes()) && file.commit();
        m_pending = m_pending && !written;
        return written;
    });
}

/// Reads the whole file into memory, once its end looks like that of an archive; afterwards the disk is not needed any
/// more.
bool ZipToolFormat::attach()
{
    m_file->Close();
    m_pending = false;
    const std::wstring path = FileSystem::fromQString(m_path);
    CZipFile file;
    if (!FileSystem::exists(path) || !file.Open(path, CZipFile::OpenMode::Read))
        return false;
    ZipLimits::check(file);
    file.Seek(0);
    const std::uint64_t length = file.GetLength();
    if (file.Read(m_file->resize(static_cast<qsizetype>(length)), length) == length)
        return true;
    m_file->Close(); // cut short meanwhile
    return false;
}

bool ZipToolFormat::openArchive(bool toChange)
{
    if (!attach())
        return false;
    const bool opened = m_archive->Open(*m_file, toChange ? CZipArchive::Existing : CZipArchive::ReadOnly);
    if (!opened)
        log(m_archive->GetOpenError());
    return opened;
}

/// Does \a work while the archive on the disk is open to be read.
bool ZipToolFormat::readArchive(const std::function<bool()> &work)
{
    const bool done = guarded([&] { return openArchive(false) && work(); });
    m_archive->Close(CZipArchive::Forced);
    return done;
}

/// False when \a work says so, or throws.
bool ZipToolFormat::guarded(const std::function<bool()> &work) const
{
    try {
        return work();
    } catch (const CZipException &error) {
        log(error.what());
    } catch (const std::bad_alloc &) {
        log("out of memory");
    }
    return false;
}

void ZipToolFormat::log(std::string_view why) const
{
    Ox::AppLogMgr::appLog(logLevel, "ZipToolFormat: " + m_path.toStdString() + ": " + std::string(why));
}

/// The entry of this name; nothing unless there is exactly one.
std::optional<int> ZipToolFormat::getFileIndex(const QString &name) const
{
    VARN_EXPECTS(!m_archive->IsClosed());
    CZipArray<int> indexes;
    m_archive->GetIndexes({name.toStdWString()}, indexes);
    return indexes.size() == 1 ? std::optional(indexes.front()) : std::nullopt;
}

bool ZipToolFormat::isBuilding() const
{
    return !m_archive->IsClosed();
}

} // namespace Varn::Tools

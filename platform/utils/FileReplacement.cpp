#include "platform/utils/FileReplacement.h"

#include "platform/utils/FileSystem.h"

#include <QCryptographicHash>

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <filesystem>
#include <system_error>

namespace Varn {

namespace {

constexpr std::string_view besideSuffix = ".part"; // no extension of any library
constexpr mode_t ownerOnly = 0600;                 // until the new file has the rights of the old one
constexpr mode_t anyone = 0666;                    // but for what the process masks

std::string hashed(std::string_view text)
{
    const QByteArray bytes = QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size()));
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex().first(16).toStdString();
}

std::string folderOf(const std::string &file)
{
    const std::string folder = std::filesystem::path(file).parent_path().string();
    return folder.empty() ? "." : folder;
}

/// What the names of the new files of one target on this machine begin with. A process id follows: on another machine
/// that shares the folder it would mean another process. Hashed, for a long name leaves no room for more.
std::string besidePrefix(const std::string &target)
{
    char host[256] = {};
    gethostname(host, sizeof host - 1);
    return ".quillon-" + hashed(std::filesystem::path(target).filename().string() + '\n' + host) + '-';
}

/// What follows in the names of this process. The time tells it from one that had its id before: in a container every
/// start may get the same id.
std::string ownMark()
{
    static const std::string start = std::to_string(std::chrono::system_clock::now().time_since_epoch().count());
    return std::to_string(getpid()) + '-' + start + '-';
}

/// Whether \a mark, what follows the prefix in a name, is that of a process that has died.
bool isOfDeadProcess(std::string_view mark)
{
    int process = 0;
    if (std::from_chars(mark.data(), mark.data() + mark.size(), process).ec != std::errc())
        return false;
    if (process == getpid())
        return !mark.starts_with(ownMark());
    return kill(process, 0) != 0 && errno == ESRCH;
}

/// Removes what processes that have died left beside \a target.
void sweepLeftovers(const std::string &target)
{
    const std::string prefix = besidePrefix(target);
    std::error_code error;
    for (std::filesystem::directory_iterator at(folderOf(target), error), end; !error && at != end;
         at.increment(error)) {
        const std::string name = at->path().filename().string();
        if (!name.starts_with(prefix) || !name.ends_with(besideSuffix))
            continue;
        std::error_code ignored; // another process may sweep as well
        if (isOfDeadProcess(std::string_view(name).substr(prefix.size())))
            std::filesystem::remove(at->path(), ignored);
    }
}

/// Follows links, one that leads nowhere as well: the file that would be made is meant.
std::string behindLinks(std::filesystem::path path)
{
    constexpr int mostLinks = 40; // as the kernel
    for (int i = 0; i < mostLinks; ++i) {
        std::error_code error;
        const std::filesystem::path next = std::filesystem::read_symlink(path, error);
        if (error)
            break;
        path = next.is_absolute() ? next : path.parent_path() / next;
    }
    return path.string();
}

int openRetrying(const char *name, int flags, mode_t mode = 0)
{
    int descriptor = -1;
    do
        descriptor = open(name, flags | O_CLOEXEC, mode);
    while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

/// Gives the new file the owner, group and permissions of the old one, as far as this process may. An administrator
/// alone gives a file away, but a group that the writer is in stays.
void keepRights(int file, const struct stat &old)
{
    const bool groupStays = fchown(file, old.st_uid, old.st_gid) == 0 || fchown(file, uid_t(-1), old.st_gid) == 0;
    mode_t mode = old.st_mode & 07777;
    if (!groupStays) // another group gets nothing that the world has not
        mode &= ~mode_t(S_IRWXG) | (mode & S_IRWXO) << 3;
    fchmod(file, mode);
}

bool syncFolder(const std::string &file)
{
    const int folder = openRetrying(folderOf(file).c_str(), O_RDONLY | O_DIRECTORY);
    if (folder < 0)
        return true; // a folder that may be written to but not read; the rename stands all the same
    const bool synced = fsync(folder) == 0 || errno == EINVAL;
    close(folder);
    return synced;
}

} // namespace

FileReplacement::FileReplacement(const std::wstring &path) : m_target(behindLinks(FileSystem::toPath(path)))
{
    struct stat old = {};
    const bool exists = stat(m_target.c_str(), &old) == 0;
    if (!exists && (errno != ENOENT || m_target.empty())) // a circle of links, a name too long
        return;
    if (exists && (!S_ISREG(old.st_mode) || faccessat(AT_FDCWD, m_target.c_str(), W_OK, AT_EACCESS) != 0))
        return;
    if (!exists || old.st_nlink == 1)
        openBeside(exists ? ownerOnly : anyone);
    if (m_descriptor >= 0 && exists)
        keepRights(m_descriptor, old);
    else if (exists)
        openInPlace();
}

FileReplacement::~FileReplacement()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
    if (!m_beside.empty())
        unlink(m_beside.c_str());
}

bool FileReplacement::write(std::string_view bytes)
{
    while (!m_failed && !bytes.empty()) {
        const ssize_t written = ::write(m_descriptor, bytes.data(), bytes.size());
        if (written > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
            startFlush(static_cast<std::uint64_t>(written));
        } else if (written == 0 || errno != EINTR)
            m_failed = true;
    }
    return !m_failed;
}

/// Lets the disk begin before all is written, so that the flush at the end finds little left to do. Only a hint.
void FileReplacement::startFlush(std::uint64_t written)
{
    constexpr std::uint64_t worthwhile = std::uint64_t{8} << 20;
    m_unflushed += written;
    if (m_unflushed < worthwhile)
        return;
#ifdef SYNC_FILE_RANGE_WRITE
    sync_file_range(m_descriptor, lseek(m_descriptor, 0, SEEK_CUR) - static_cast<off_t>(m_unflushed),
                    static_cast<off_t>(m_unflushed), SYNC_FILE_RANGE_WRITE);
#endif
    m_unflushed = 0;
}

bool FileReplacement::commit()
{
    if (!isOpen() || m_failed || !finish()) {
        m_failed = true;
        return false;
    }
    if (m_beside.empty())
        return true;
    if (rename(m_beside.c_str(), m_target.c_str()) != 0)
        return false;
    m_beside.clear();
    return syncFolder(m_target);
}

void FileReplacement::openBeside(unsigned mode)
{
    static std::atomic<unsigned> counter{0};
    sweepLeftovers(m_target);
    const std::string name = (std::filesystem::path(folderOf(m_target)) / besidePrefix(m_target)).string() + ownMark() +
                             std::to_string(counter++) + std::string(besideSuffix);
    m_descriptor = openRetrying(name.c_str(), O_WRONLY | O_CREAT | O_EXCL, mode);
    if (m_descriptor >= 0)
        m_beside = name;
}

void FileReplacement::openInPlace()
{
    m_descriptor = openRetrying(m_target.c_str(), O_WRONLY);
}

bool FileReplacement::finish()
{
    bool good = true;
    if (m_beside.empty()) // what the old file had beyond the new bytes goes
        good = ftruncate(m_descriptor, lseek(m_descriptor, 0, SEEK_CUR)) == 0;
    good = fsync(m_descriptor) == 0 && good;
    good = close(m_descriptor) == 0 && good;
    m_descriptor = -1;
    return good;
}

} // namespace Varn

#include "platform/zip/CZipFile.h"

#include "platform/utils/FileSystem.h"
#include "platform/utils/Messages.h"
#include "platform/zip/CZipException.h"

#include <cerrno>
#include <limits>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Varn {

namespace {

/// The flags of open(); the file is emptied only once it is known to be a regular one, and no pipe is waited for.
int flagsOf(CZipFile::OpenMode mode)
{
    const int always = O_CLOEXEC | O_NONBLOCK;
    switch (mode) {
    case CZipFile::OpenMode::Read:
        return always | O_RDONLY;
    case CZipFile::OpenMode::ReadWrite:
        return always | O_RDWR;
    case CZipFile::OpenMode::Create:
        return always | O_RDWR | O_CREAT;
    }
    return always;
}

template <typename Call>
ssize_t retried(Call call)
{
    ssize_t count = -1;
    do
        count = call();
    while (count < 0 && errno == EINTR);
    return count;
}

} // namespace

CZipFile::~CZipFile()
{
    if (!IsClosed())
        close(m_descriptor);
}

bool CZipFile::Open(const CZipString &path, OpenMode mode)
{
    if (!IsClosed())
        close(std::exchange(m_descriptor, -1));
    m_path = path;
    const std::filesystem::path name = FileSystem::toPath(path);
    m_descriptor = static_cast<int>(retried([&] { return open(name.c_str(), flagsOf(mode), 0666); }));
    struct stat status = {};
    if (IsClosed() || (fstat(m_descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
                       (mode != OpenMode::Create || ftruncate(m_descriptor, 0) == 0)))
        return !IsClosed();
    close(std::exchange(m_descriptor, -1));
    return false;
}

void CZipFile::Close()
{
    if (!IsClosed())
        expect(close(std::exchange(m_descriptor, -1)) == 0, "could not be written");
}

std::size_t CZipFile::Read(void *buffer, std::size_t size)
{
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count =
            retried([&] { return read(m_descriptor, static_cast<char *>(buffer) + done, size - done); });
        expect(count >= 0, "could not be read");
        if (count == 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

void CZipFile::Write(const void *bytes, std::size_t size)
{
    for (std::size_t done = 0; done < size;) {
        const ssize_t count =
            retried([&] { return write(m_descriptor, static_cast<const char *>(bytes) + done, size - done); });
        expect(count > 0, "could not be written");
        done += static_cast<std::size_t>(count);
    }
}

void CZipFile::Seek(std::uint64_t position)
{
    expect(position <= std::numeric_limits<off_t>::max() &&
               lseek(m_descriptor, static_cast<off_t>(position), SEEK_SET) >= 0,
           "has no such position");
}

std::uint64_t CZipFile::GetPosition() const
{
    const off_t position = lseek(m_descriptor, 0, SEEK_CUR);
    expect(position >= 0, "has no position");
    return static_cast<std::uint64_t>(position);
}

std::uint64_t CZipFile::GetLength() const
{
    struct stat status = {};
    expect(fstat(m_descriptor, &status) == 0, "has no length");
    return static_cast<std::uint64_t>(status.st_size);
}

void CZipFile::SetLength(std::uint64_t length)
{
    expect(length <= std::numeric_limits<off_t>::max() && ftruncate(m_descriptor, static_cast<off_t>(length)) == 0,
           "could not be given its length");
}

void CZipFile::expect(bool good, const char *what) const
{
    if (!good)
        throw CZipException(CZipException::Cause::FileError, Messages::fromWideUnicodeToUTF8(m_path) + ": the file " +
                                                                 (IsClosed() ? "is not open" : what));
}

} // namespace Varn

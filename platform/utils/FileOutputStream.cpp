#include "platform/utils/FileOutputStream.h"

#include "util/utility/Assert.h"

#include <fcntl.h>
#include <unistd.h>

namespace Varn {

namespace {

FileSystem::File openForWriting(const std::wstring &path)
{
    constexpr mode_t readAndWriteByAll = 0666; // less the umask of the process
    // Without O_NONBLOCK the opening of a pipe waits until somebody reads from it; the writing itself may wait.
    const int descriptor = ::open(FileSystem::toPath(path).c_str(),
                                  O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, readAndWriteByAll);
    if (descriptor < 0)
        return nullptr;
    std::FILE *file = nullptr;
    if (const int flags = ::fcntl(descriptor, F_GETFL);
        flags >= 0 && ::fcntl(descriptor, F_SETFL, flags & ~O_NONBLOCK) == 0)
        file = ::fdopen(descriptor, "wb");
    if (!file)
        ::close(descriptor);
    return FileSystem::File(file);
}

} // namespace

FileOutputStream::FileOutputStream(const std::wstring &path, int flags)
{
    VARN_EXPECTS(flags == writeBinary);
    if (flags == writeBinary)
        m_file = openForWriting(path);
}

bool FileOutputStream::write(std::span<const std::byte> bytes)
{
    if (!m_file || m_failed)
        return false;
    const std::size_t count = std::fwrite(bytes.data(), 1, bytes.size(), m_file.get());
    m_size += count;
    m_failed = count < bytes.size();
    return !m_failed;
}

bool FileOutputStream::flush()
{
    if (!m_file || m_failed)
        return false;
    m_failed = std::fflush(m_file.get()) != 0;
    return !m_failed;
}

bool FileOutputStream::close()
{
    if (!m_file)
        return false;
    const bool closed = std::fclose(m_file.release()) == 0;
    return closed && !m_failed;
}

std::optional<std::uint64_t> FileOutputStream::size() const
{
    if (!m_file)
        return std::nullopt;
    return m_size;
}

} // namespace Varn

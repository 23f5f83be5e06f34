#include "platform/utils/FileInputStream.h"

#include "util/utility/Assert.h"

#include <algorithm>
#include <array>

#include <sys/stat.h>

namespace Varn {

FileInputStream::FileInputStream(const std::wstring &path, int flags)
{
    VARN_EXPECTS(flags == readBinary);
    if (flags == readBinary)
        m_file = FileSystem::openForReading(path);
}

std::optional<std::size_t> FileInputStream::read(std::span<std::byte> buffer)
{
    if (!m_file)
        return std::nullopt;
    const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), m_file.get());
    if (count < buffer.size() && std::ferror(m_file.get()))
        return std::nullopt;
    return count;
}

std::optional<std::string> FileInputStream::readAll(std::size_t limit)
{
    std::string content;
    std::array<std::byte, 65536> block;
    for (;;) {
        const auto count = read(block);
        if (!count || *count > limit - content.size())
            return std::nullopt;
        if (*count == 0)
            return content;
        content.append(reinterpret_cast<const char *>(block.data()), *count);
    }
}

std::optional<std::uint64_t> FileInputStream::size() const
{
    struct stat status = {};
    if (!m_file || ::fstat(::fileno(m_file.get()), &status) != 0)
        return std::nullopt;
    return static_cast<std::uint64_t>(status.st_size);
}

} // namespace Varn

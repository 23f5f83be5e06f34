#include "platform/ox/TemporaryFile.h"

#include "platform/ox/TemporaryFolder.h"
#include "platform/utils/FileSystem.h"

#include <cerrno>
#include <tuple>
#include <utility>

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

namespace Ox {

using Varn::FileSystem;

TemporaryFile::TemporaryFile(std::wstring_view extension)
{
    const auto folder = FileSystem::toPath(TemporaryFolder::systemFolder());
    const std::string ending = FileSystem::toPath(extension).native();
    std::string path = (folder / "quillon-XXXXXX").native() + ending;
    const bool isName = ending.find('/') == std::string::npos;
    const int descriptor = isName ? ::mkostemps(path.data(), static_cast<int>(ending.size()), O_CLOEXEC) : -1;
    if (descriptor < 0) {
        const std::error_code error(isName ? errno : EINVAL, std::generic_category());
        throw std::filesystem::filesystem_error("cannot create a temporary file", path, error);
    }
    ::close(descriptor);
    m_path = FileSystem::fromPath(path);
}

TemporaryFile::~TemporaryFile()
{
    remove();
}

TemporaryFile::TemporaryFile(TemporaryFile &&other) noexcept : m_path(std::exchange(other.m_path, {})) {}

TemporaryFile &TemporaryFile::operator=(TemporaryFile &&other) noexcept
{
    if (this != &other) {
        remove();
        m_path = std::exchange(other.m_path, {});
    }
    return *this;
}

std::wstring TemporaryFile::release()
{
    return std::exchange(m_path, {});
}

void TemporaryFile::remove() noexcept
{
    if (!m_path.empty())
        std::ignore = FileSystem::remove(m_path);
}

} // namespace Ox

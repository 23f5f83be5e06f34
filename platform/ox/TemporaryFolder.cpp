#include "platform/ox/TemporaryFolder.h"

#include "platform/utils/FileSystem.h"
#include "platform/utils/Guid.h"

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include <sys/stat.h>

namespace Ox {

using Varn::FileSystem;

namespace {

std::error_code makeFolder(const std::filesystem::path &path)
{
    constexpr mode_t onlyThisUser = 0700;
    if (::mkdir(path.c_str(), onlyThisUser) == 0)
        return {};
    return {errno, std::generic_category()};
}

} // namespace

TemporaryFolder::TemporaryFolder(const std::wstring &name, bool create, bool removeAtEnd) : m_removeAtEnd(removeAtEnd)
{
    const auto random = Varn::Guid::create().asString();
    auto path = FileSystem::toPath(systemFolder());
    path /= FileSystem::toPath(name.empty() ? L"quillon" : name).native() + "-" + random;
    std::error_code error;
    if (name.find(L'/') != std::wstring::npos)
        error = std::make_error_code(std::errc::invalid_argument);
    else if (create)
        error = makeFolder(path);
    if (error)
        throw std::filesystem::filesystem_error("cannot create a temporary folder", path, error);
    m_path = FileSystem::fromPath(path);
}

TemporaryFolder::~TemporaryFolder()
{
    remove();
}

TemporaryFolder::TemporaryFolder(TemporaryFolder &&other) noexcept
    : m_path(std::exchange(other.m_path, {})), m_removeAtEnd(other.m_removeAtEnd)
{
}

TemporaryFolder &TemporaryFolder::operator=(TemporaryFolder &&other) noexcept
{
    if (this != &other) {
        remove();
        m_path = std::exchange(other.m_path, {});
        m_removeAtEnd = other.m_removeAtEnd;
    }
    return *this;
}

std::wstring TemporaryFolder::systemFolder()
{
    std::error_code error;
    auto folder = FileSystem::fromPath(std::filesystem::absolute(std::filesystem::temp_directory_path(error), error));
    if (error)
        return L"/tmp";
    while (folder.size() > 1 && folder.back() == L'/')
        folder.pop_back();
    return folder;
}

void TemporaryFolder::remove() noexcept
{
    std::error_code ignored;
    if (m_removeAtEnd && !m_path.empty())
        std::filesystem::remove_all(FileSystem::toPath(m_path), ignored);
}

} // namespace Ox

#include "platform/core/CloudLibraries.h"

#include "platform/utils/FileSystem.h"

#include <QDir>

#include <memory>
#include <mutex>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace Varn {

namespace {

using Kind = CloudLibraries::Event::Kind;

struct Configured {
    std::mutex mutex;
    std::unique_ptr<CloudLibraries> toolLibraries;            // guarded by mutex
    std::shared_ptr<const CloudLibraries::Listener> listener; // guarded by mutex; null for none
    bool explicitSync = false;                                // guarded by mutex
};

Configured &configured()
{
    static Configured instance;
    return instance;
}

/// Not under the lock, so that the listener may ask for what it needs.
void tell(const CloudLibraries::Event &event)
{
    std::unique_lock lock(configured().mutex);
    const auto listener = configured().toolLibraries ? configured().listener : nullptr;
    lock.unlock();
    if (listener)
        (*listener)(event);
}

} // namespace

CloudLibraries::CloudLibraries(const std::wstring &folder)
    : m_folder(QDir(QString::fromStdWString(folder)).absolutePath().toStdWString())
{
}

SafePointer<CloudLibraries> CloudLibraries::get(LibraryType type)
{
    const std::lock_guard lock(configured().mutex);
    return type == TOOL_LIBRARIES ? configured().toolLibraries.get() : nullptr;
}

void CloudLibraries::configure(const std::wstring &folder)
{
    if (folder.empty())
        return reset();
    auto libraries = std::make_unique<CloudLibraries>(folder);
    const std::lock_guard lock(configured().mutex);
    configured().toolLibraries = std::move(libraries);
}

void CloudLibraries::reset()
{
    const std::lock_guard lock(configured().mutex);
    configured().toolLibraries.reset();
    configured().listener.reset();
    configured().explicitSync = false;
}

bool CloudLibraries::EnableCloudLibraries()
{
    return get(TOOL_LIBRARIES).isValid();
}

void CloudLibraries::setListener(Listener listener)
{
    auto shared = listener ? std::make_shared<const Listener>(std::move(listener)) : nullptr;
    const std::lock_guard lock(configured().mutex);
    configured().listener = std::move(shared);
}

void CloudLibraries::fireCloudUploadEvent(const std::wstring &path)
{
    tell({Kind::Uploaded, path, {}});
}

void CloudLibraries::fireCloudDeleteEvent(const std::wstring &path)
{
    tell({Kind::Deleted, path, {}});
}

void CloudLibraries::fireCloudRenameEvent(const std::wstring &from, const std::wstring &to)
{
    tell({Kind::Renamed, from, to});
}

void CloudLibraries::markFileAsDeleted(const std::wstring &path)
{
    tell({Kind::MarkedAsDeleted, path, {}});
}

bool CloudLibraries::isUsingExplicitSync(const std::wstring &path)
{
    const std::lock_guard lock(configured().mutex);
    return configured().explicitSync && configured().toolLibraries && configured().toolLibraries->holds(path);
}

void CloudLibraries::setExplicitSync(bool explicitSync)
{
    const std::lock_guard lock(configured().mutex);
    configured().explicitSync = explicitSync;
}

bool CloudLibraries::userCanWriteToFolder(const std::filesystem::path &folder) const
{
    const std::filesystem::path path = FileSystem::toPath(m_folder) / folder;
    return FileSystem::isDirectory(FileSystem::fromPath(path)) &&
           faccessat(AT_FDCWD, path.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

/// By the text of the path: what is asked for may be gone already.
bool CloudLibraries::holds(const std::wstring &path) const
{
    const std::wstring clean = QDir::cleanPath(QString::fromStdWString(path)).toStdWString();
    return clean == m_folder || clean.starts_with(m_folder == L"/" ? m_folder : m_folder + L'/');
}

} // namespace Varn

#include "platform/core/CloudLibraries.h"

#include <QDir>

#include <memory>
#include <mutex>

namespace Varn {

namespace {

struct Configured {
    std::mutex mutex;
    std::unique_ptr<CloudLibraries> toolLibraries; // guarded by mutex
};

Configured &configured()
{
    static Configured instance;
    return instance;
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
    auto libraries = folder.empty() ? nullptr : std::make_unique<CloudLibraries>(folder);
    const std::lock_guard lock(configured().mutex);
    configured().toolLibraries = std::move(libraries);
}

void CloudLibraries::reset()
{
    configure({});
}

bool CloudLibraries::EnableCloudLibraries()
{
    return get(TOOL_LIBRARIES).isValid();
}

} // namespace Varn

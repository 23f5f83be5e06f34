#include "ToolLibrary/Interface/FilePaths.h"

#include "platform/core/CloudLibraries.h"
#include "platform/core/VarnApplication.h"
#include "platform/utils/FileSystem.h"
#include "util/utility/Assert.h"

#include <algorithm>
#include <deque>
#include <mutex>

namespace Varn::Tools {

namespace {

struct Stack {
    std::mutex mutex;
    std::deque<const FilePaths *> instances; // guarded by mutex
};

Stack &stack()
{
    static Stack instance;
    return instance;
}

const DefaultFilePaths defaultFilePaths;

} // namespace

FilePaths::FilePaths()
{
    const std::lock_guard lock(stack().mutex);
    stack().instances.push_back(this);
}

FilePaths::~FilePaths()
{
    const std::lock_guard lock(stack().mutex);
    auto &instances = stack().instances;
    VARN_ASSERT_TEXT(instances.back() == this, "Scoped instances should not be interleaved");
    instances.erase(std::ranges::find(instances, this));
}

const FilePaths &FilePaths::get()
{
    const std::lock_guard lock(stack().mutex);
    return *stack().instances.back();
}

std::wstring DefaultFilePaths::appDataFolder() const
{
    static const std::wstring folder = VarnApplication::getAppDataFolder();
    return folder;
}

std::wstring DefaultFilePaths::cloudLibrariesFolder() const
{
    return CloudLibraries::get(CloudLibraries::TOOL_LIBRARIES)->getCachedCloudLibrariesFolder();
}

std::wstring DefaultFilePaths::systemLibrariesFolder() const
{
    static const std::wstring folder = [] {
        std::wstring path = VarnApplication::getPerUserFolder();
        for (const wchar_t *name : {L"Brennmoor", L"Lodestar", L"libraries"})
            path = FileSystem::combine(path, name);
        return path;
    }();
    return folder;
}

std::wstring DefaultFilePaths::localLibrariesFolder() const
{
    static const std::wstring folder = FileSystem::combine(appDataFolder(), L"libraries");
    return folder;
}

} // namespace Varn::Tools

#include "ToolLibrary/Util/Tool3DGeometryMap.h"

#include "ToolLibrary/Util/Tool3DGeometryUtil.h"
#include "platform/nc/ToolPlaceholder3DGeometry.h"
#include "platform/tool/Exception.h"
#include "platform/utils/FileSystem.h"
#include "util/utility/Assert.h"

#include <algorithm>
#include <chrono>
#include <mutex>
#include <system_error>
#include <unordered_set>
#include <utility>
#include <vector>

namespace Varn::ToolLibraries {

namespace fs = std::filesystem;

using Tools::Tool3DGeometryUtil;
using Entries = std::map<std::wstring, Tool3DGeometryMapEntry>;

namespace {

constexpr std::chrono::seconds coarsestClock(3); // of a file system: a change may follow another unseen that long

struct Table {
    std::mutex mutex; // guards all others
    Entries entries;
    std::map<std::pair<ToolLibraryUrl, fs::path>, fs::file_time_type> walked; // folders, and when they had changed last
    unsigned syncs = 0;
};

/// Never destroyed: a thread may outlive the statics.
Table &table()
{
    static auto *const theTable = new Table;
    return *theTable;
}

std::shared_ptr<const ToolSLDGeometry> loadedOf(const Tool3DGeometryMapEntry &entry)
{
    return std::dynamic_pointer_cast<const ToolSLDGeometry>(entry.geometry);
}

bool isPlaceholder(const Tool3DGeometryBase &geometry)
{
    return dynamic_cast<const ToolPlaceholder3DGeometry *>(&geometry) != nullptr;
}

/// One name for one folder, whatever links lead to it.
fs::path canonicalOf(const fs::path &folder)
{
    std::error_code error;
    const fs::path canonical = fs::weakly_canonical(folder, error);
    return error ? folder.lexically_normal() : canonical;
}

fs::path folderOf(const ToolLibraryUrl &url)
{
    return canonicalOf(Tool3DGeometryUtil::getLocal3DGeometryFolder(url));
}

std::set<fs::path> foldersOf(const Entries &entries)
{
    std::set<ToolLibraryUrl> locations;
    for (const auto &[id, entry] : entries)
        locations.insert(entry.locations.begin(), entry.locations.end());
    std::set<fs::path> folders;
    for (const ToolLibraryUrl &location : locations) {
        if (Tool3DGeometryUtil::requiresLocal3DGeometry(location))
            folders.insert(folderOf(location));
    }
    return folders;
}

/// The files that the ids of each library name.
std::unordered_set<std::string> pathsInUse(const std::map<ToolLibraryUrl, std::set<std::wstring>> &libraries)
{
    const std::wstring extension = FileSystem::fromPath(Tool3DGeometryUtil::extension);
    std::unordered_set<std::string> paths;
    for (const auto &[url, ids] : libraries) {
        if (ids.empty() || !Tool3DGeometryUtil::requiresLocal3DGeometry(url))
            continue;
        const fs::path folder = folderOf(url);
        for (const std::wstring &id : ids) {
            if (Tool3DGeometryUtil::isValidId(id))
                paths.insert(folder / FileSystem::toPath(id + extension));
        }
    }
    return paths;
}

/// The table of \a libraries, with the geometries of the one before.
Entries entriesOf(const std::map<ToolLibraryUrl, std::set<std::wstring>> &libraries, const Entries &before)
{
    Entries entries;
    for (const auto &[url, ids] : libraries) {
        for (const std::wstring &id : ids) {
            Tool3DGeometryMapEntry &entry = entries[id];
            if (!entry.geometry) {
                const auto old = before.find(id);
                entry.geometry =
                    old != before.end() ? old->second.geometry : std::make_shared<ToolPlaceholder3DGeometry>(id);
            }
            entry.locations.insert(url);
        }
    }
    return entries;
}

/// Calls \a visit for each entry that can be read.
template <typename Visit>
void walk(const fs::path &folder, const Visit &visit)
{
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        visit(*entry);
}

bool isTemporaryFolder(const fs::path &folder)
{
    std::error_code error;
    const fs::path temporary = fs::temp_directory_path(error);
    return !error && canonicalOf(temporary) == folder;
}

} // namespace

Tool3DGeometryMap::~Tool3DGeometryMap() = default;

bool Tool3DGeometryMap::has(const std::wstring &id)
{
    VARN_EXPECTS(!id.empty());
    const std::lock_guard lock(table().mutex);
    return table().entries.contains(id);
}

bool Tool3DGeometryMap::isEmpty()
{
    const std::lock_guard lock(table().mutex);
    return table().entries.empty();
}

std::set<ToolLibraryUrl> Tool3DGeometryMap::getLocations(const std::wstring &id)
{
    VARN_EXPECTS(!id.empty());
    VARN_EXPECTS(has(id));
    std::set<ToolLibraryUrl> locations;
    {
        const std::lock_guard lock(table().mutex);
        if (const auto found = table().entries.find(id); found != table().entries.end())
            locations = found->second.locations;
    }
    VARN_ENSURES(!locations.empty());
    return locations;
}

void Tool3DGeometryMap::emplace(const std::wstring &id, std::shared_ptr<const Tool3DGeometryBase> geometry,
                                const ToolLibraryUrl &location)
{
    VARN_EXPECTS(!id.empty());
    VARN_EXPECTS(geometry);
    if (id.empty() || !geometry)
        return;
    const std::lock_guard lock(table().mutex);
    const auto [found, isNew] = table().entries.try_emplace(id);
    Tool3DGeometryMapEntry &entry = found->second;
    VARN_ASSERT_TEXT(isNew || !entry.locations.empty(), "Map entry should always have at least location");
    if (isNew || isPlaceholder(*entry.geometry))
        entry.geometry = std::move(geometry);
    entry.locations.insert(location);
}

std::shared_ptr<const ToolSLDGeometry> Tool3DGeometryMap::getLoaded3DGeometry(const std::wstring &id)
{
    VARN_EXPECTS(!id.empty());
    VARN_EXPECTS(has(id));
    std::optional<ToolLibraryUrl> location;
    {
        const std::lock_guard lock(table().mutex);
        const auto found = table().entries.find(id);
        if (found == table().entries.end())
            return nullptr;
        if (auto loaded = loadedOf(found->second))
            return loaded;
        const auto &locations = found->second.locations;
        const auto first = std::ranges::find_if(locations, &Tool3DGeometryUtil::requiresLocal3DGeometry);
        if (first == locations.end())
            return nullptr;
        location = *first;
    }
    std::shared_ptr<const ToolSLDGeometry> loaded;
    try {
        loaded = Tool3DGeometryUtil::load(id, *location);
    } catch (const IOError &) {
        return nullptr;
    }
    const std::lock_guard lock(table().mutex);
    const auto found = table().entries.find(id);
    if (found == table().entries.end()) // a sync took it out meanwhile
        return loaded;
    if (auto other = loadedOf(found->second)) // another thread was faster
        return other;
    found->second.geometry = loaded;
    return loaded;
}

// Every page of a library asks for this, so a folder that has not changed since the last walk is not walked again.
void Tool3DGeometryMap::populateFromLibraryUrl(const ToolLibraryUrl &url)
{
    const fs::path folder = Tool3DGeometryUtil::getLocal3DGeometryFolder(url);
    std::error_code error;
    const fs::file_time_type changed = fs::last_write_time(folder, error);
    unsigned syncs = 0;
    {
        const std::lock_guard lock(table().mutex);
        const auto walked = table().walked.find({url, folder});
        if (!error && walked != table().walked.end() && walked->second == changed)
            return;
        syncs = table().syncs;
    }
    const bool isSettled = !error && fs::file_time_type::clock::now() - changed > coarsestClock;
    walk(folder, [&url](const fs::directory_entry &entry) {
        if (const auto id = getGeometryId(entry))
            emplace(*id, std::make_shared<ToolPlaceholder3DGeometry>(*id), url);
    });
    const std::lock_guard lock(table().mutex);
    if (isSettled && syncs == table().syncs)
        table().walked.insert_or_assign({url, folder}, changed);
}

void Tool3DGeometryMap::syncLibraries(const std::map<ToolLibraryUrl, std::set<std::wstring>> &libraries)
{
    Entries before;
    {
        const std::lock_guard lock(table().mutex);
        before = std::exchange(table().entries, entriesOf(libraries, table().entries));
        table().walked.clear();
        ++table().syncs;
    }
    const std::unordered_set<std::string> used = pathsInUse(libraries);
    std::optional<fs::filesystem_error> failure;
    for (const fs::path &folder : foldersOf(before)) {
        VARN_ASSERT_TEXT(!isTemporaryFolder(folder),
                         "Don't test with $TEMP as we'll clear runtime 3DTool files (see ToolSLDGeometry) here instead "
                         "of only persistent ones");
        std::vector<fs::path> unused; // removed behind the walk, which removals would disturb
        walk(folder, [&](const fs::directory_entry &entry) {
            if (getGeometryId(entry) && !used.contains(entry.path().native()))
                unused.push_back(entry.path());
        });
        for (const fs::path &path : unused) {
            std::error_code error;
            fs::remove(path, error);
            if (error && !failure)
                failure.emplace("remove", path, error);
        }
    }
    if (failure)
        throw *failure;
}

std::optional<std::wstring> Tool3DGeometryMap::getGeometryId(const fs::directory_entry &entry)
{
    std::error_code error;
    if (entry.path().extension() != Tool3DGeometryUtil::extension || !entry.is_regular_file(error) || error)
        return std::nullopt;
    std::wstring id = FileSystem::fromPath(entry.path().stem());
    if (!Tool3DGeometryUtil::isValidId(id)) // no tool can name it, and so nobody may remove it
        return std::nullopt;
    return id;
}

} // namespace Varn::ToolLibraries

// Tool3DGeometryMap.h -- which solids there are, and which libraries have the file of each. One table for the process.
//
// Any thread may call any operation. One lock guards the table and nothing else: it is not held while a file is read,
// written or removed, so two threads that ask for one solid at once may both read its file, and get the same object.
// syncLibraries is the one operation that needs more than that; see there.
#pragma once

#include "ToolLibrary/IO/ToolLibraryUrl.h"
#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/core/ToolSLDGeometry.h"

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

namespace Varn::ToolLibraries {

using Tools::ToolLibraryUrl;

struct Tool3DGeometryMapEntry {
    std::shared_ptr<const Tool3DGeometryBase> geometry; ///< loaded, or a placeholder that knows the id alone
    std::set<ToolLibraryUrl> locations;                 ///< the libraries that have the file; at least one
};

class TOOL_LIBRARY_EXPORT Tool3DGeometryMap
{
public:
    virtual ~Tool3DGeometryMap();

    /// REQUIRES: an id.
    static bool has(const std::wstring &id);
    static bool isEmpty();

    /// The libraries at this moment. REQUIRES: has(id); empty without it.
    static std::set<ToolLibraryUrl> getLocations(const std::wstring &id);

    /// Adds the location. The geometry is taken in for a new id and in the place of a placeholder; a loaded one stays.
    /// REQUIRES: an id, a geometry; nothing happens without.
    static void emplace(const std::wstring &id, std::shared_ptr<const Tool3DGeometryBase> geometry,
                        const ToolLibraryUrl &location);

    /// The solid, read from the first library that keeps files and remembered from then on. Null when its file cannot
    /// be read; no other library is tried then. REQUIRES: has(id); null without it.
    static std::shared_ptr<const ToolSLDGeometry> getLoaded3DGeometry(const std::wstring &id);

    /// Learns of each file beside the library. No file is read; a folder that cannot be walked has none.
    /// REQUIRES: Tool3DGeometryUtil::requiresLocal3DGeometry(url).
    static void populateFromLibraryUrl(const ToolLibraryUrl &url);

    /// Makes the table that of \a libraries, given for each the ids of the solids of its tools and of their nested
    /// solids, and removes every geometry file from the folders of the table before in which no listed library names
    /// it.
    ///
    /// It removes what it is not told of. So the caller lists all libraries of every folder that it has ever named,
    /// does not call at all while one of them could not be read, and lets no tool with a new solid come to a library
    /// between collecting the ids and the end of this call. The system's temporary folder is never that of a library.
    /// \throws std::filesystem::filesystem_error "remove" for the first file that cannot be removed, after the rest.
    static void syncLibraries(const std::map<ToolLibraryUrl, std::set<std::wstring>> &libraries);

private:
    static std::optional<std::wstring> getGeometryId(const std::filesystem::directory_entry &entry);
};

} // namespace Varn::ToolLibraries

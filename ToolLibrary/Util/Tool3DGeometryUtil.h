// Tool3DGeometryUtil.h -- the files that hold the solids of tools (.3DTool), one per id, beside the library files whose
// tools use them. Stateless; any thread, one at a time for one file.
#pragma once

#include "ToolLibrary/IO/ToolLibraryUrl.h"
#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/core/ToolSLDGeometry.h"
#include "platform/ox/TemporaryFile.h"

#include <filesystem>
#include <memory>
#include <set>
#include <string>

namespace Varn::Tools {

/// An id may come from a file of anybody. One that no file name can hold (empty, with a '/', '\\' or control character,
/// too long; see FileSystem::isValidFileName) names no file: nothing is there under it, and nothing is written.
class TOOL_LIBRARY_EXPORT Tool3DGeometryUtil
{
public:
    using Geometry = std::shared_ptr<const Tool3DGeometry>;

    static const std::filesystem::path extension; ///< ".3DTool"

    /// True for local, custom and cloud nodes; a hub, system or vendor library needs no files.
    static bool requiresLocal3DGeometry(const ToolLibraryUrl &url);

    /// Whether \a geometryId can name a file at all.
    static bool isValidId(const std::wstring &geometryId);

    /// The absolute folder of the library's file. REQUIRES: requiresLocal3DGeometry(libraryUrl).
    static std::filesystem::path getLocal3DGeometryFolder(const ToolLibraryUrl &libraryUrl);

    /// The file in that folder, whether it is there or not; never a path that leads out of it.
    /// REQUIRES: requiresLocal3DGeometry(libraryUrl). \throws InvalidInput for an id that names no file.
    static std::filesystem::path getLocal3DGeometryPath(const std::wstring &geometryId,
                                                        const ToolLibraryUrl &libraryUrl);

    /// \throws std::filesystem::filesystem_error "exists" when that cannot be found out.
    static bool local3DGeometryExists(const std::wstring &geometryId, const ToolLibraryUrl &libraryUrl);

    /// \throws IOError "Unable to load local 3D geometry" without a file that opens; with the text of
    /// ToolSLDGeometry::load for a broken one.
    static std::unique_ptr<ToolSLDGeometry> load(const std::wstring &geometryId, const ToolLibraryUrl &libraryUrl);

    /// Writes the file of that id; a crash leaves the old one or the new one.
    /// REQUIRES: an id, a geometry, requiresLocal3DGeometry(libraryUrl). \throws Exception "Unable to save 3D
    /// geometry".
    static void save(const std::wstring &geometryId, const Geometry &geometry, const ToolLibraryUrl &libraryUrl);
    static void save(const Geometry &geometry, const ToolLibraryUrl &libraryUrl); ///< under the geometry's own id

    /// A file of its own for the geometry, for a renderer or an export.
    /// \throws Exception as save; std::filesystem::filesystem_error when no temporary file can be made.
    static std::unique_ptr<Ox::TemporaryFile> saveTemporary(const Geometry &geometry);

    /// Puts the geometry into a library that keeps files and lacks it, and into the map. True when a file was written.
    /// \throws as save.
    static bool saveToolGeometry(const Geometry &geometry, const ToolLibraryUrl &libraryUrl);

    /// Copies the file of a library, over one that is at \a outputPath; its time is that of the copy.
    /// REQUIRES: an id, a path. \throws Exception "Cannot find 3D geometry"; std::filesystem::filesystem_error "copy"
    /// or "last_write_time".
    static void export3DGeometryFromId(const std::wstring &geometryId, const ToolLibraryUrl &libraryUrl,
                                       const std::filesystem::path &outputPath);

    /// REQUIRES: a geometry, a path. \throws as save.
    static void exportToolSLDGeometry(const Geometry &geometry, const std::filesystem::path &filePath);

    /// Makes the file at \a importPath that of \a geometryId in the library, unless it has one, and lets the map know.
    /// A folder stands for the file of that id in it. For a document the geometry goes into the map alone.
    /// REQUIRES: an id, a path. \throws std::filesystem::filesystem_error "copy_file"; InvalidInput for an id that
    /// names no file; IOError as load, for a document.
    static void import3DGeometry(const std::wstring &geometryId, const ToolLibraryUrl &libraryUrl,
                                 const std::filesystem::path &importPath);

    /// Whether a tool that moves between the libraries takes its file along: not within one folder, nor between
    /// documents. REQUIRES: each is a document or requires local geometry.
    static bool is3DGeometryCopyRequired(const ToolLibraryUrl &originLibrary, const ToolLibraryUrl &targetLibrary);
    /// False when one of the origins needs no copy. REQUIRES: an origin; true without one.
    static bool is3DGeometryCopyRequired(const std::set<ToolLibraryUrl> &originLibraries,
                                         const ToolLibraryUrl &targetLibrary);

private:
    static void save(const Geometry &geometry, const std::filesystem::path &filePath);
};

} // namespace Varn::Tools

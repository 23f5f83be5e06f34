#include "ToolLibrary/Util/Tool3DGeometryUtil.h"

#include "ToolLibrary/Util/Tool3DGeometryMap.h"
#include "platform/nc/ToolPlaceholder3DGeometry.h"
#include "platform/tool/Exception.h"
#include "platform/utils/FileInputStream.h"
#include "platform/utils/FileOutputStream.h"
#include "platform/utils/FileReplacement.h"
#include "platform/utils/Messages.h"
#include "util/utility/Assert.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cerrno>
#include <span>
#include <system_error>

namespace Varn::Tools {

namespace fs = std::filesystem;

using ToolLibraries::Exception;
using ToolLibraries::InvalidInput;
using ToolLibraries::IOError;
using ToolLibraries::Tool3DGeometryMap;

namespace {

constexpr const char *unableToLoad = "Unable to load local 3D geometry";
constexpr const char *unableToSave = "Unable to save 3D geometry";

std::wstring fileNameOf(const std::wstring &geometryId)
{
    return geometryId + FileSystem::fromPath(Tool3DGeometryUtil::extension);
}

/// The name in the file system, or InvalidInput.
fs::path checkedFileName(const std::wstring &geometryId)
{
    if (!Tool3DGeometryUtil::isValidId(geometryId))
        throw InvalidInput("No file can have the 3D geometry id " + Messages::fromWideUnicodeToUTF8(geometryId));
    return FileSystem::toPath(fileNameOf(geometryId));
}

QString folderOf(const ToolLibraryUrl &libraryUrl)
{
    return QFileInfo(libraryUrl.fullFilePath()).absolutePath();
}

/// Copies all bytes; whatever happens on the way, \a to is as it was or a whole copy. \a operation names a failure.
void copyWhole(const fs::path &from, const fs::path &to, const char *operation)
{
    const auto fail = [&](std::errc otherwise) {
        const std::error_code error =
            errno != 0 ? std::error_code(errno, std::generic_category()) : std::make_error_code(otherwise);
        throw fs::filesystem_error(operation, from, to, error);
    };
    errno = 0;
    FileInputStream source(FileSystem::fromPath(from), FileInputStream::readBinary);
    if (!source.isOpen())
        fail(std::errc::not_supported);
    errno = 0;
    FileReplacement target(FileSystem::fromPath(to));
    if (!target.isOpen())
        fail(std::errc::permission_denied);
    std::array<std::byte, 65536> block;
    for (;;) {
        errno = 0;
        const auto count = source.read(block);
        if (!count)
            fail(std::errc::io_error);
        if (*count == 0)
            break;
        if (!target.write({reinterpret_cast<const char *>(block.data()), *count}))
            fail(std::errc::io_error);
    }
    errno = 0;
    if (!target.commit())
        fail(std::errc::io_error);
}

std::unique_ptr<ToolSLDGeometry> loadFile(const std::wstring &geometryId, const fs::path &path)
{
    FileInputStream stream(FileSystem::fromPath(path), FileInputStream::readBinary);
    if (!stream.isOpen())
        throw IOError(unableToLoad);
    return ToolSLDGeometry::load(geometryId, stream);
}

} // namespace

const fs::path Tool3DGeometryUtil::extension = ".3DTool";

bool Tool3DGeometryUtil::requiresLocal3DGeometry(const ToolLibraryUrl &url)
{
    return url.isLocalLibrary() || url.isCustomFolder() || url.isCloudLibrary();
}

bool Tool3DGeometryUtil::isValidId(const std::wstring &geometryId)
{
    return !geometryId.empty() && FileSystem::isValidFileName(fileNameOf(geometryId));
}

fs::path Tool3DGeometryUtil::getLocal3DGeometryFolder(const ToolLibraryUrl &libraryUrl)
{
    VARN_EXPECTS(requiresLocal3DGeometry(libraryUrl));
    return FileSystem::toPath(FileSystem::fromQString(folderOf(libraryUrl)));
}

fs::path Tool3DGeometryUtil::getLocal3DGeometryPath(const std::wstring &geometryId, const ToolLibraryUrl &libraryUrl)
{
    return getLocal3DGeometryFolder(libraryUrl) / checkedFileName(geometryId);
}

bool Tool3DGeometryUtil::local3DGeometryExists(const std::wstring &geometryId, const ToolLibraryUrl &libraryUrl)
{
    if (!isValidId(geometryId))
        return false;
    const fs::path path = getLocal3DGeometryPath(geometryId, libraryUrl);
    std::error_code error;
    const bool exists = fs::exists(path, error);
    if (error)
        throw fs::filesystem_error("exists", path, error);
    return exists;
}

std::unique_ptr<ToolSLDGeometry> Tool3DGeometryUtil::load(const std::wstring &geometryId,
                                                          const ToolLibraryUrl &libraryUrl)
{
    if (!isValidId(geometryId))
        throw IOError(unableToLoad);
    return loadFile(geometryId, getLocal3DGeometryPath(geometryId, libraryUrl));
}

void Tool3DGeometryUtil::save(const std::wstring &geometryId, const Geometry &geometry,
                              const ToolLibraryUrl &libraryUrl)
{
    VARN_EXPECTS(!geometryId.empty());
    VARN_EXPECTS(geometry);
    VARN_EXPECTS(requiresLocal3DGeometry(libraryUrl));
    if (!isValidId(geometryId))
        throw Exception(unableToSave);
    save(geometry, getLocal3DGeometryPath(geometryId, libraryUrl));
}

void Tool3DGeometryUtil::save(const Geometry &geometry, const ToolLibraryUrl &libraryUrl)
{
    save(geometry ? geometry->id() : std::wstring(), geometry, libraryUrl);
}

void Tool3DGeometryUtil::save(const Geometry &geometry, const fs::path &filePath)
{
    FileReplacement file(FileSystem::fromPath(filePath));
    if (!geometry || !file.isOpen() || !geometry->save(file) || !file.commit())
        throw Exception(unableToSave);
}

std::unique_ptr<Ox::TemporaryFile> Tool3DGeometryUtil::saveTemporary(const Geometry &geometry)
{
    VARN_EXPECTS(geometry);
    auto file = std::make_unique<Ox::TemporaryFile>(FileSystem::fromPath(extension));
    FileOutputStream stream(file->filePath(), FileOutputStream::writeBinary);
    if (!geometry || !stream.isOpen() || !geometry->save(stream) || !stream.close())
        throw Exception(unableToSave);
    return file;
}

bool Tool3DGeometryUtil::saveToolGeometry(const Geometry &geometry, const ToolLibraryUrl &libraryUrl)
{
    VARN_EXPECTS(geometry);
    if (!geometry || !requiresLocal3DGeometry(libraryUrl) || local3DGeometryExists(geometry->id(), libraryUrl))
        return false;
    save(geometry, libraryUrl);
    Tool3DGeometryMap::emplace(geometry->id(), geometry, libraryUrl);
    return true;
}

void Tool3DGeometryUtil::export3DGeometryFromId(const std::wstring &geometryId, const ToolLibraryUrl &libraryUrl,
                                                const fs::path &outputPath)
{
    VARN_EXPECTS(!geometryId.empty());
    VARN_EXPECTS(!outputPath.empty());
    if (!local3DGeometryExists(geometryId, libraryUrl))
        throw Exception("Cannot find 3D geometry");
    copyWhole(getLocal3DGeometryPath(geometryId, libraryUrl), outputPath, "copy");
    std::error_code error;
    fs::last_write_time(outputPath, fs::file_time_type::clock::now(), error);
    if (error)
        throw fs::filesystem_error("last_write_time", outputPath, error);
}

void Tool3DGeometryUtil::exportToolSLDGeometry(const Geometry &geometry, const fs::path &filePath)
{
    VARN_EXPECTS(geometry);
    VARN_EXPECTS(!filePath.empty());
    save(geometry, filePath);
}

void Tool3DGeometryUtil::import3DGeometry(const std::wstring &geometryId, const ToolLibraryUrl &libraryUrl,
                                          const fs::path &importPath)
{
    VARN_EXPECTS(!geometryId.empty());
    VARN_EXPECTS(!importPath.empty());
    std::error_code notThere;
    const fs::path fileName = checkedFileName(geometryId);
    const fs::path source = fs::is_directory(importPath, notThere) ? importPath / fileName : importPath;
    if (libraryUrl.isDocumentLibrary()) {
        if (!Tool3DGeometryMap::has(geometryId))
            Tool3DGeometryMap::emplace(geometryId, loadFile(geometryId, source), libraryUrl);
        return;
    }
    if (!local3DGeometryExists(geometryId, libraryUrl))
        copyWhole(source, getLocal3DGeometryPath(geometryId, libraryUrl), "copy_file");
    Tool3DGeometryMap::emplace(geometryId, std::make_shared<ToolPlaceholder3DGeometry>(geometryId), libraryUrl);
}

bool Tool3DGeometryUtil::is3DGeometryCopyRequired(const ToolLibraryUrl &originLibrary,
                                                  const ToolLibraryUrl &targetLibrary)
{
    VARN_EXPECTS(requiresLocal3DGeometry(originLibrary) || originLibrary.isDocumentLibrary());
    VARN_EXPECTS(requiresLocal3DGeometry(targetLibrary) || targetLibrary.isDocumentLibrary());
    if (originLibrary.isDocumentLibrary())
        return !targetLibrary.isDocumentLibrary();
    const auto bothAre = [&](bool (ToolLibraryUrl::*kind)() const) {
        return (originLibrary.*kind)() && (targetLibrary.*kind)();
    };
    if (bothAre(&ToolLibraryUrl::isCloudLibrary) || bothAre(&ToolLibraryUrl::isLocalLibrary) ||
        bothAre(&ToolLibraryUrl::isCustomFolder))
        return QDir(folderOf(originLibrary)) != QDir(folderOf(targetLibrary));
    VARN_ASSERT_TEXT(originLibrary.protocol() != targetLibrary.protocol(),
                     "Should have different library types at this point");
    return true;
}

bool Tool3DGeometryUtil::is3DGeometryCopyRequired(const std::set<ToolLibraryUrl> &originLibraries,
                                                  const ToolLibraryUrl &targetLibrary)
{
    VARN_EXPECTS(!originLibraries.empty());
    return std::ranges::all_of(
        originLibraries, [&](const ToolLibraryUrl &origin) { return is3DGeometryCopyRequired(origin, targetLibrary); });
}

} // namespace Varn::Tools

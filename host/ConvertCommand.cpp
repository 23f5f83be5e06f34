#include "host/Commands.h"
#include "host/Engine.h"

#include "ToolLibrary/IO/ToolLibraryUrl.h"
#include "ToolLibrary/IO/ZipToolFormat.h"
#include "ToolLibrary/Interface/Private/Storage/LibrarySaver.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/DiskLibrary.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSourceLoader.h"
#include "platform/tool/Exception.h"
#include "platform/utils/Abortable.h"
#include "platform/utils/FileReplacement.h"
#include "platform/utils/FileSystem.h"
#include "platform/utils/Messages.h"
#include "platform/zip/CZipArchive.h"
#include "platform/zip/EntryNames.h"

#include <set>
#include <utility>

namespace Quillon {

using namespace Varn::ToolLibraries;
using Varn::CZipArchive;
using Varn::FileSystem;
using Varn::Messages;
using Varn::Tools::ToolLibraryUrl;

namespace {

const QString geometryExtension = QStringLiteral(".3DTool");

/// What lies beside a library document, in an archive or in a folder.
using Companions = LibrarySaver::Companions;

QByteArray contentOf(const std::wstring &path)
{
    const FileSystem::File file = FileSystem::openForReading(path);
    QByteArray content;
    char block[65536];
    while (const std::size_t count = file ? std::fread(block, 1, sizeof block, file.get()) : 0)
        content.append(block, static_cast<qsizetype>(count));
    if (!file || std::ferror(file.get()))
        throw IOError("Cannot read " + Messages::fromWideUnicodeToUTF8(path));
    return content;
}

/// All entries but the document, for an archive that is kept in memory once, however many there are. A name that leads
/// out of a folder is none for a new archive either.
Companions companionsInArchive(const CZipArchive &archive)
{
    Companions companions;
    for (int i = 0; i < archive.GetCount(); ++i) {
        const std::wstring &entry = archive.GetFileInfo(i)->GetFileName();
        const QString name = QString::fromStdWString(entry);
        if (name == Varn::Tools::ZipToolFormat::documentEntry || !Varn::EntryNames::isSafe(entry))
            continue;
        const auto [companion, isNew] = companions.try_emplace(name);
        if (!isNew)
            throw IOError("Cannot read from the archive: " + name.toStdString() + " is there twice");
        try {
            archive.ExtractFile(i, [&content = companion->second](std::string_view block) {
                content.append(block.data(), static_cast<qsizetype>(block.size()));
            });
        } catch (const Varn::CZipException &failure) {
            throw IOError(std::string("Cannot read from the archive: ") + failure.what());
        }
    }
    return companions;
}

void addGeometryId(const Json::Value &geometry, std::set<std::string> &ids)
{
    const Json::Value id = geometry.isObject() ? geometry["3DGeometry"] : Json::Value();
    if (id.isObject() && id["id"].isString())
        ids.insert(id["id"].asString());
}

/// The geometry files of the library's tools that lie in the folder of its file.
Companions companionsInFolder(const std::wstring &path, const DiskLibrary &library)
{
    std::set<std::string> ids;
    const auto end = library.end();
    for (auto at = library.begin(); !(at == end); ++at) {
        const std::unique_ptr<const Tool> tool = *at;
        const Json::Value &value = tool->getToolValue();
        addGeometryId(value["geometry"], ids);
        if (value["tool-block"].isObject())
            addGeometryId(value["tool-block"]["geometry"], ids);
    }
    Companions companions;
    for (const std::string &id : ids) {
        const QString name = QString::fromStdString(id) + geometryExtension;
        const std::wstring file = FileSystem::combine(FileSystem::getFolder(path), name.toStdWString());
        if (FileSystem::isValidFileName(name.toStdWString()) && FileSystem::isFile(file))
            companions.emplace(name, contentOf(file));
    }
    return companions;
}

Companions companionsOf(const std::wstring &path, const DiskLibrary &library)
{
    CZipArchive archive;
    if (FileSystem::hasExtension(path, L".tools") && archive.Open(path))
        return companionsInArchive(archive);
    return companionsInFolder(path, library);
}

/// Only geometries lie beside a library: an archive of anybody may hold a file of any name.
Companions geometriesOf(Companions companions)
{
    std::erase_if(companions, [](const auto &companion) {
        return !companion.first.endsWith(geometryExtension) ||
               !FileSystem::isValidFileName(companion.first.toStdWString());
    });
    return companions;
}

/// A geometry that is there already is the same: its name is its identity.
void putBeside(const std::wstring &path, const Companions &geometries)
{
    for (const auto &[name, content] : geometries) {
        const std::wstring file = FileSystem::combine(FileSystem::getFolder(path), name.toStdWString());
        if (FileSystem::exists(file))
            continue;
        Varn::FileReplacement replacement(file);
        if (!replacement.write({content.constData(), static_cast<std::size_t>(content.size())}) ||
            !replacement.commit())
            throw IOError("Could not write " + Messages::fromWideUnicodeToUTF8(file));
    }
}

std::wstring absolutePath(const std::string &name)
{
    return FileSystem::fromPath(std::filesystem::absolute(std::filesystem::path(name)));
}

} // namespace

void runConvert(const ConvertOptions &options, const Streams &streams)
{
    const std::wstring input = absolutePath(options.input);
    const std::wstring output = absolutePath(options.output);
    if (!options.force && FileSystem::exists(output))
        throw IOError("File already exists: " + options.output);
    const std::shared_ptr<DiskLibrary> library =
        ToolSourceLoader::loadFromNonDocument(ToolLibraryLocator::fromFilePath(input), Varn::AbortableImpl());
    Companions companions = companionsOf(input, *library);
    if (!output.ends_with(L".tools"))
        companions = geometriesOf(std::move(companions));
    if (output.ends_with(L".json")) // first, so that no library is without its geometries
        putBeside(output, companions);
    LibrarySaver::saveLibrary(ToolLibraryUrl(QString::fromStdWString(input), ToolLibraryUrl::Custom),
                              QString::fromStdWString(output), *library, companions);
    streams.out << "Wrote " << library->numberOfTools() << " tools";
    if (!companions.empty())
        streams.out << " and " << companions.size() << " files beside them";
    streams.out << " to " << options.output << '\n';
}

} // namespace Quillon

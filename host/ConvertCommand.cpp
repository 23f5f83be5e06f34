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

#include <map>
#include <set>

namespace Quillon {

using namespace Varn::ToolLibraries;
using Varn::FileSystem;
using Varn::Messages;
using Varn::Tools::ToolLibraryUrl;
using Varn::Tools::ZipToolFormat;

namespace {

const QString geometryExtension = QStringLiteral(".3DTool");

/// What lies beside a library document, in an archive or in a folder: name to content.
using Companions = std::map<QString, QByteArray>;

bool isArchive(const std::wstring &path)
{
    return FileSystem::getExtension(path) == L".tools";
}

QByteArray contentOf(const std::wstring &path)
{
    QByteArray content;
    const FileSystem::File file = FileSystem::openForReading(path);
    char block[65536];
    while (const std::size_t count = file ? std::fread(block, 1, sizeof block, file.get()) : 0)
        content.append(block, static_cast<qsizetype>(count));
    if (!file || std::ferror(file.get()))
        throw IOError("Could not read " + Messages::fromWideUnicodeToUTF8(path));
    return content;
}

Companions companionsInArchive(const std::wstring &path)
{
    Companions companions;
    ZipToolFormat archive(QString::fromStdWString(path));
    for (const QString &name : archive.getFileNames())
        if (name != QLatin1String("tools.json") && !archive.getData(name, companions[name]))
            throw IOError("Cannot read from the archive: " + name.toStdString());
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

void addToArchive(const std::wstring &path, const Companions &companions)
{
    ZipToolFormat archive(QString::fromStdWString(path));
    bool done = archive.createKeeping([](const QString &name) { return name == QLatin1String("tools.json"); });
    for (const auto &[name, content] : companions)
        done = done && archive.addFile(name, content);
    if (!done || !archive.write())
        throw IOError("Failed to export library");
}

/// A geometry that is there already is the same: its name is its identity.
void putBeside(const std::wstring &path, const Companions &companions)
{
    for (const auto &[name, content] : companions) {
        const std::wstring file = FileSystem::combine(FileSystem::getFolder(path), name.toStdWString());
        if (!FileSystem::isValidFileName(name.toStdWString()) || FileSystem::exists(file))
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
    const Companions companions = isArchive(input) ? companionsInArchive(input) : companionsInFolder(input, *library);
    LibrarySaver::saveLibrary(ToolLibraryUrl(QString::fromStdWString(input), ToolLibraryUrl::Custom),
                              QString::fromStdWString(output), *library);
    if (isArchive(output) && !companions.empty())
        addToArchive(output, companions);
    else if (!isArchive(output))
        putBeside(output, companions);
    streams.out << "Wrote " << library->numberOfTools() << " tools";
    if (!companions.empty())
        streams.out << " and " << companions.size() << " files beside them";
    streams.out << " to " << options.output << '\n';
}

} // namespace Quillon

#include "ToolLibrary/Interface/Private/Storage/ToolLibraryJsonStorage.h"

#include "ToolLibrary/DocumentToolVariantMapUtil.h"
#include "ToolLibrary/IO/ZipToolFormat.h"
#include "ToolLibrary/Interface/FilePaths.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/GuidUtil.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/JsonFileWriter.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidjsonToolLibrary.h"
#include "platform/core/CloudLibraries.h"
#include "platform/ox/AppLogMgr.h"
#include "platform/utils/FileSystem.h"
#include "platform/utils/Messages.h"
#include "util/utility/Assert.h"

#include <QDir>
#include <QJsonDocument>

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace Varn::Tools {

namespace {

using ToolLibraries::ExportableLibrary;
using ToolLibraries::JsonFileWriter;
using ToolLibraries::RapidjsonToolLibrary;
using OtherEntries = ToolLibraryJsonStorage::OtherEntries;
using Companions = ToolLibraryJsonStorage::Companions;
using Text = JsonFileWriter::Text;

/// What is to be written.
struct Content {
    Text text;
    OtherEntries others = OtherEntries::Keep;
    const Companions &companions;
};

const Companions noCompanions;

constexpr int failureLevel = 1;

QMap<QString, QVariant> withNewGuids(QMap<QString, QVariant> library)
{
    QVariantList tools = library.value(QStringLiteral("data")).toList();
    for (QVariant &tool : tools) {
        QVariantMap map = tool.toMap();
        map.insert(QStringLiteral("guid"), GuidUtil::createGuid());
        DocumentToolVariantMapUtil::removeDocumentToolInformation(map);
        tool = map;
    }
    library.insert(QStringLiteral("data"), tools);
    return library;
}

Text textOf(const QMap<QString, QVariant> &library)
{
    return [&library](const JsonFileWriter::Sink &sink) {
        const QByteArray text = QJsonDocument::fromVariant(library).toJson(QJsonDocument::Indented);
        return sink({text.constData(), static_cast<std::size_t>(text.size())});
    };
}

/// A read-only archive is written all the same. Whatever keeps that from working shows in the write.
void clearReadOnlyFlag(const std::wstring &path)
{
    std::error_code ignored;
    if (FileSystem::isFile(path))
        std::filesystem::permissions(FileSystem::toPath(path), std::filesystem::perms::owner_write,
                                     std::filesystem::perm_options::add, ignored);
}

/// Whether replacing the file at \a path would lose no geometries. What cannot be looked into may hold some.
bool holdsNoArchive(const std::wstring &path)
{
    if (!FileSystem::isFile(path))
        return true;
    char head[4] = {};
    const FileSystem::File file = FileSystem::openForReading(path);
    if (!file)
        return false;
    const std::size_t size = std::fread(head, 1, sizeof head, file.get());
    return std::ferror(file.get()) == 0 && std::string_view(head, size) != "PK\3\4";
}

/// Begins the archive with what is kept of the one at \a path, and the companions. False for an archive that cannot be
/// read.
bool beginArchive(ZipToolFormat &archive, const std::wstring &path, const Content &content)
{
    const auto isKept = [&](const QString &name) {
        return name != ZipToolFormat::documentEntry && !content.companions.contains(name);
    };
    const bool begun =
        content.others == OtherEntries::Drop ? archive.create() : archive.createKeeping(isKept) || holdsNoArchive(path);
    return begun && std::ranges::all_of(content.companions, [&](const auto &companion) {
               return archive.addFile(companion.first, companion.second);
           });
}

bool writeZipped(const QString &path, const Content &content)
{
    const std::wstring file = FileSystem::fromQString(path);
    clearReadOnlyFlag(file);
    ZipToolFormat archive(path);
    return beginArchive(archive, file, content) && archive.addContent(ZipToolFormat::documentEntry, content.text) &&
           archive.write();
}

bool writeFile(const ToolLibraryUrl &url, const Content &content)
{
    switch (url.version()) {
    case 1:
        JsonFileWriter::writeText(FileSystem::fromQString(url.fullFilePath()), content.text);
        return true;
    case 2:
        return writeZipped(url.fullFilePath(), content);
    default:
        VARN_FAIL("Restricted flow");
        return false;
    }
}

bool writeAndAnnounce(const ToolLibraryUrl &url, const Content &content)
{
    if (!writeFile(url, content))
        return false;
    if (url.isCloudLibrary())
        CloudLibraries::fireCloudUploadEvent(FileSystem::fromQString(url.fullFilePath()));
    return true;
}

/// Whether the name \a path is that of the file itself that \a other leads to.
bool leadsTo(const std::wstring &other, const std::wstring &path)
{
    const std::filesystem::path file = FileSystem::toPath(path);
    std::error_code missing;
    const std::filesystem::path folder = std::filesystem::canonical(file.parent_path(), missing);
    return std::filesystem::canonical(FileSystem::toPath(other), missing) == folder / file.filename();
}

/// Removes the file of the older form, once \a current has been written.
void removeOldFile(const ToolLibraryUrl &url, const ToolLibraryUrl &current)
{
    const std::wstring path = FileSystem::fromQString(url.fullFilePath());
    if (leadsTo(FileSystem::fromQString(current.fullFilePath()), path)) // the new name is a link to the old one
        return;
    if (const std::error_code error = FileSystem::remove(path))
        Ox::AppLogMgr::appLog(failureLevel, "ToolLibraryJsonStorage: Failed to remove " +
                                                Messages::fromWideUnicodeToUTF8(path) + ": " + error.message());
    if (url.isCloudLibrary())
        CloudLibraries::markFileAsDeleted(path);
}

bool save(const ToolLibraryUrl &url, const Content &content)
{
    if (!url.needsUpgrade())
        return writeAndAnnounce(url, content);
    const ToolLibraryUrl current(url.convertToCurrentVersion());
    if (!writeAndAnnounce(current, content))
        return false;
    removeOldFile(url, current);
    return true;
}

} // namespace

bool ToolLibraryJsonStorage::saveLibrary(const ToolLibraryUrl &url, const QMap<QString, QVariant> &library,
                                         bool regenerateGuids)
{
    const QMap<QString, QVariant> saved = regenerateGuids ? withNewGuids(library) : library;
    return save(url, {textOf(saved), OtherEntries::Keep, noCompanions});
}

bool ToolLibraryJsonStorage::saveLibrary(const ToolLibraryUrl &url, const ExportableLibrary &library,
                                         bool regenerateGuids, OtherEntries others, const Companions &companions)
{
    if (const auto *document = dynamic_cast<const RapidjsonToolLibrary *>(&library)) {
        const auto text = [&](const JsonFileWriter::Sink &sink) {
            return document->printIndented(sink, regenerateGuids);
        };
        return save(url, {text, others, companions});
    }
    const QMap<QString, QVariant> map = library.toQVariantMap();
    const QMap<QString, QVariant> saved = regenerateGuids ? withNewGuids(map) : map;
    return save(url, {textOf(saved), others, companions});
}

void ToolLibraryJsonStorage::makeDefaultLocalLibrary()
{
    const QDir localDir(QDir(QString::fromStdWString(FilePaths::get().localLibrariesFolder())).filePath("Local"));
    const bool made = localDir.mkpath(".");
    VARN_ASSERT_TEXT(made, "localDir.mkpath(\".\")");
    if (!localDir.exists("Library.json"))
        createLibrary(ToolLibraryUrl(localDir.filePath("Library.json"), ToolLibraryUrl::Local));
}

bool ToolLibraryJsonStorage::createLibrary(const ToolLibraryUrl &url)
{
    const QMap<QString, QVariant> library{{QStringLiteral("data"), QVariantList()}};
    return writeFile(url, {textOf(library), OtherEntries::Drop, noCompanions});
}

} // namespace Varn::Tools

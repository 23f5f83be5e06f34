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

#include <filesystem>
#include <system_error>

namespace Varn::Tools {

namespace {

using ToolLibraries::ExportableLibrary;
using ToolLibraries::JsonFileWriter;
using ToolLibraries::RapidjsonToolLibrary;
using OtherEntries = ToolLibraryJsonStorage::OtherEntries;
using Text = JsonFileWriter::Text;

constexpr int failureLevel = 1;
const QString documentEntry = QStringLiteral("tools.json");

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

bool beginsLikeAnArchive(const std::wstring &path)
{
    char head[4] = {};
    const FileSystem::File file = FileSystem::openForReading(path);
    return file && std::fread(head, 1, sizeof head, file.get()) == sizeof head &&
           std::string_view(head, sizeof head) == "PK\3\4";
}

/// Begins the archive with what is kept of the one at \a path. False for an archive that cannot be read: replacing it
/// would lose its geometries.
bool beginArchive(ZipToolFormat &archive, const std::wstring &path, OtherEntries others)
{
    if (others == OtherEntries::Drop)
        return archive.create();
    return archive.createKeeping([](const QString &name) { return name != documentEntry; }) ||
           !beginsLikeAnArchive(path);
}

bool writeZipped(const QString &path, const Text &text, OtherEntries others)
{
    const std::wstring file = FileSystem::fromQString(path);
    clearReadOnlyFlag(file);
    ZipToolFormat archive(path);
    return beginArchive(archive, file, others) && archive.addContent(documentEntry, text) && archive.write();
}

bool writeFile(const ToolLibraryUrl &url, const Text &text, OtherEntries others)
{
    switch (url.version()) {
    case 1:
        JsonFileWriter::writeText(FileSystem::fromQString(url.fullFilePath()), text);
        return true;
    case 2:
        return writeZipped(url.fullFilePath(), text, others);
    default:
        VARN_FAIL("Restricted flow");
        return false;
    }
}

bool writeAndAnnounce(const ToolLibraryUrl &url, const Text &text, OtherEntries others)
{
    if (!writeFile(url, text, others))
        return false;
    if (url.isCloudLibrary())
        CloudLibraries::fireCloudUploadEvent(FileSystem::fromQString(url.fullFilePath()));
    return true;
}

void removeOldFile(const ToolLibraryUrl &url)
{
    const std::wstring path = FileSystem::fromQString(url.fullFilePath());
    if (const std::error_code error = FileSystem::remove(path))
        Ox::AppLogMgr::appLog(failureLevel, "ToolLibraryJsonStorage: Failed to remove " +
                                                Messages::fromWideUnicodeToUTF8(path) + ": " + error.message());
    if (url.isCloudLibrary())
        CloudLibraries::markFileAsDeleted(path);
}

bool save(const ToolLibraryUrl &url, const Text &text, OtherEntries others)
{
    if (!url.needsUpgrade())
        return writeAndAnnounce(url, text, others);
    if (!writeAndAnnounce(ToolLibraryUrl(url.convertToCurrentVersion()), text, others))
        return false;
    removeOldFile(url);
    return true;
}

} // namespace

bool ToolLibraryJsonStorage::saveLibrary(const ToolLibraryUrl &url, const QMap<QString, QVariant> &library,
                                         bool regenerateGuids)
{
    const QMap<QString, QVariant> saved = regenerateGuids ? withNewGuids(library) : library;
    return save(url, textOf(saved), OtherEntries::Keep);
}

bool ToolLibraryJsonStorage::saveLibrary(const ToolLibraryUrl &url, const ExportableLibrary &library,
                                         bool regenerateGuids, OtherEntries others)
{
    if (const auto *document = dynamic_cast<const RapidjsonToolLibrary *>(&library)) {
        const auto text = [&](const JsonFileWriter::Sink &sink) {
            return document->printIndented(sink, regenerateGuids);
        };
        return save(url, text, others);
    }
    const QMap<QString, QVariant> map = library.toQVariantMap();
    const QMap<QString, QVariant> saved = regenerateGuids ? withNewGuids(map) : map;
    return save(url, textOf(saved), others);
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
    return writeFile(url, textOf(library), OtherEntries::Drop);
}

} // namespace Varn::Tools

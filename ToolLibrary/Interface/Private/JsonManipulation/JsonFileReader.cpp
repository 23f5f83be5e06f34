#include "ToolLibrary/Interface/Private/JsonManipulation/JsonFileReader.h"

#include "ToolLibrary/Interface/Private/JsonManipulation/JsonConvert.h"
#include "platform/tool/Exception.h"
#include "platform/utils/FileSystem.h"
#include "platform/utils/Messages.h"

#include <QFile>

namespace Varn::ToolLibraries {

QByteArray JsonFileReader::readFile(const std::wstring &path)
{
    if (!FileSystem::exists(path))
        throw LibraryMissing("JSON file doesn't exist: " + Messages::fromWideUnicodeToUTF8(path));
    // Opened by the platform, which knows names that are no UTF-8 and refuses a pipe, whose reading may never end.
    const FileSystem::File opened = FileSystem::openForReading(path);
    QFile file;
    if (!opened || !file.open(opened.get(), QIODevice::ReadOnly | QIODevice::Text))
        throw LibraryLoadError("JSON file exists but is not readable: " + Messages::fromWideUnicodeToUTF8(path));
    return file.readAll();
}

QJsonDocument JsonFileReader::readDocument(const std::wstring &path)
{
    QJsonDocument document = JsonConvert::parse(readFile(path));
    if (document.isNull())
        throw LibraryFormatError("File exists but cannot be parsed: " + Messages::fromWideUnicodeToUTF8(path));
    return document;
}

} // namespace Varn::ToolLibraries

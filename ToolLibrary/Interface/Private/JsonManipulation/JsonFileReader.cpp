#include "ToolLibrary/Interface/Private/JsonManipulation/JsonFileReader.h"

#include "platform/tool/Exception.h"
#include "platform/utils/Messages.h"

#include <QFile>
#include <QFileInfo>

namespace Varn::ToolLibraries {

QByteArray JsonFileReader::readFile(const std::wstring &path)
{
    QFile file(QString::fromStdWString(path));
    if (!file.exists())
        throw LibraryMissing("JSON file doesn't exist: " + Messages::fromWideUnicodeToUTF8(path));
    // A pipe or a device is there, but reading it may never end.
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Text))
        throw LibraryLoadError("JSON file exists but is not readable: " + Messages::fromWideUnicodeToUTF8(path));
    return file.readAll();
}

QJsonDocument JsonFileReader::readDocument(const std::wstring &path)
{
    QJsonDocument document = QJsonDocument::fromJson(readFile(path));
    if (document.isNull())
        throw LibraryFormatError("File exists but cannot be parsed: " + Messages::fromWideUnicodeToUTF8(path));
    return document;
}

} // namespace Varn::ToolLibraries

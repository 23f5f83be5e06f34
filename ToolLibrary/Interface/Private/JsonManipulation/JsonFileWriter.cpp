#include "ToolLibrary/Interface/Private/JsonManipulation/JsonFileWriter.h"

#include "platform/tool/Exception.h"
#include "platform/utils/FileReplacement.h"
#include "platform/utils/Messages.h"

namespace Varn::ToolLibraries {

void JsonFileWriter::writeFile(const std::wstring &path, const QByteArray &bytes)
{
    writeText(path, [&](const Sink &sink) {
        return sink({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    });
}

void JsonFileWriter::writeText(const std::wstring &path, const Text &text)
{
    FileReplacement file(path);
    if (!file.isOpen())
        throw IOError("Cannot open JSON file for writing: " + Messages::fromWideUnicodeToUTF8(path));
    if (!text([&](std::string_view block) { return file.write(block); }) || !file.commit())
        throw IOError("Could not write data to JSON file: " + Messages::fromWideUnicodeToUTF8(path));
}

void JsonFileWriter::writeDocument(const std::wstring &path, const QJsonDocument &document)
{
    writeFile(path, document.toJson(QJsonDocument::Indented));
}

} // namespace Varn::ToolLibraries

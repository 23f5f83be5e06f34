// JsonFileReader.h -- whole JSON files into memory. Stateless, any thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <QByteArray>
#include <QJsonDocument>

#include <string>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT JsonFileReader
{
public:
    /// All bytes of the file. Throws LibraryMissing when it isn't there, LibraryLoadError when it can't be read.
    static QByteArray readFile(const std::wstring &path);

    /// As readFile; throws LibraryFormatError when the bytes are no JSON document.
    static QJsonDocument readDocument(const std::wstring &path);
};

} // namespace Varn::ToolLibraries

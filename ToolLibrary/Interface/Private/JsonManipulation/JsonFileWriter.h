// JsonFileWriter.h -- JSON files, written whole or not at all. Stateless, any thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <QByteArray>
#include <QJsonDocument>

#include <functional>
#include <string>
#include <string_view>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT JsonFileWriter
{
public:
    using Sink = std::function<bool(std::string_view)>;
    /// Hands a text to the sink, block by block; false when the sink was.
    using Text = std::function<bool(const Sink &)>;

    /// Replaces the file by \a bytes: whatever happens on the way, the old file or the new one is there. Throws IOError
    /// with "Cannot open JSON file for writing: " or "Could not write data to JSON file: " and the path.
    static void writeFile(const std::wstring &path, const QByteArray &bytes);

    /// The same for a text that is never whole in memory.
    static void writeText(const std::wstring &path, const Text &text);

    /// The indented text of \a document, as writeFile.
    static void writeDocument(const std::wstring &path, const QJsonDocument &document);
};

} // namespace Varn::ToolLibraries

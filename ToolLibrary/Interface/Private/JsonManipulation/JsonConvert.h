// JsonConvert.h -- JSON text to and from QJsonDocument and QVariant trees. Stateless, any thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <QJsonDocument>
#include <QMap>
#include <QString>
#include <QVariant>

#include <string>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT JsonConvert
{
public:
    // Compact text, members in the order of their keys.
    static std::string fromQJsonDocument(const QJsonDocument &document);
    static std::string fromQVariant(const QVariant &variant);
    static std::string fromQVariantMap(const QMap<QString, QVariant> &map);

    /// The document of a file or an archive: null for bad text, and for text nested deeper than 1,000 levels.
    static QJsonDocument parse(const QByteArray &bytes);

    // Bad text gives a null document or an empty container. An embedded NUL ends the text. Every number becomes a
    // double. These take the few levels more that Qt does, 1,024: the text of a page nests deeper than its libraries.
    static QJsonDocument toQJsonDocument(const std::string &text);
    static QVariantList toQVariantList(const std::string &text);
    static QVariantMap toQVariantMap(const std::string &text);
};

} // namespace Varn::ToolLibraries

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

    // Bad text gives a null document or an empty container. An embedded NUL ends the text. Every number becomes a double.
    static QJsonDocument toQJsonDocument(const std::string &text);
    static QVariantList toQVariantList(const std::string &text);
    static QVariantMap toQVariantMap(const std::string &text);
};

} // namespace Varn::ToolLibraries

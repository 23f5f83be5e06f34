// QJsonLibraryWriter.h -- delivers a library into a QJsonDocument. For small documents.
#pragma once

#include "ToolLibrary/Interface/Private/JsonManipulation/JsonConsumer.h"

#include <QJsonDocument>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT QJsonLibraryWriter : public JsonConsumer
{
public:
    /// \a target must outlive this object.
    explicit QJsonLibraryWriter(QJsonDocument *target) : m_target(target) {}

    /// Throws as JsonFileReader::readFile does; a load cannot be aborted.
    bool acceptJsonFile(const std::wstring &path, const Abortable &abortable) const override;
    bool acceptJsonBytes(const QByteArray &bytes, const Abortable &abortable) const override;
    bool acceptJsonString(const std::string &text, const Abortable &abortable) const override;
    void acceptQVariantMap(const QMap<QString, QVariant> &map) const override;

private:
    QJsonDocument *m_target;
};

} // namespace Varn::ToolLibraries

#include "ToolLibrary/Interface/Private/JsonManipulation/QJsonLibraryWriter.h"

#include "ToolLibrary/Interface/Private/JsonManipulation/JsonConvert.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/JsonFileReader.h"

namespace Varn::ToolLibraries {

bool QJsonLibraryWriter::acceptJsonFile(const std::wstring &path, const Abortable &abortable) const
{
    return acceptJsonBytes(JsonFileReader::readFile(path), abortable);
}

bool QJsonLibraryWriter::acceptJsonBytes(const QByteArray &bytes, const Abortable &) const
{
    *m_target = JsonConvert::parse(bytes);
    return !m_target->isNull();
}

bool QJsonLibraryWriter::acceptJsonString(const std::string &text, const Abortable &abortable) const
{
    return acceptJsonBytes(QByteArray::fromStdString(text), abortable);
}

void QJsonLibraryWriter::acceptQVariantMap(const QMap<QString, QVariant> &map) const
{
    *m_target = QJsonDocument::fromVariant(map);
}

} // namespace Varn::ToolLibraries

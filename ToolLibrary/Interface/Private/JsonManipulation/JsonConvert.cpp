#include "ToolLibrary/Interface/Private/JsonManipulation/JsonConvert.h"

namespace Varn::ToolLibraries {

std::string JsonConvert::fromQJsonDocument(const QJsonDocument &document)
{
    return document.toJson(QJsonDocument::Compact).toStdString();
}

std::string JsonConvert::fromQVariant(const QVariant &variant)
{
    return fromQJsonDocument(QJsonDocument::fromVariant(variant));
}

std::string JsonConvert::fromQVariantMap(const QMap<QString, QVariant> &map)
{
    return fromQVariant(map);
}

QJsonDocument JsonConvert::toQJsonDocument(const std::string &text)
{
    return QJsonDocument::fromJson(QByteArray::fromRawData(text.c_str(), qstrlen(text.c_str())));
}

QVariantList JsonConvert::toQVariantList(const std::string &text)
{
    return toQJsonDocument(text).toVariant().toList();
}

QVariantMap JsonConvert::toQVariantMap(const std::string &text)
{
    return toQJsonDocument(text).toVariant().toMap();
}

} // namespace Varn::ToolLibraries

#include "ToolLibrary/Interface/Private/JsonManipulation/JsonConvert.h"

#include <QJsonArray>
#include <QJsonObject>

namespace Varn::ToolLibraries {

namespace {

constexpr qsizetype maximumDepth = 1000;

/// REQUIRES: good JSON text.
bool isNestedTooDeeply(const QByteArray &text)
{
    qsizetype depth = 0;
    bool inText = false;
    for (auto at = text.begin(); at != text.end(); ++at) {
        if (inText && *at == '\\')
            ++at;
        else if (*at == '"')
            inText = !inText;
        else if (!inText && (*at == '[' || *at == '{') && ++depth > maximumDepth)
            return true;
        else if (!inText && (*at == ']' || *at == '}'))
            --depth;
    }
    return false;
}

/// As QJsonValue::toVariant, which makes integers of whole numbers, also of those that were written as doubles.
QVariant withDoubles(const QJsonValue &value)
{
    if (value.isDouble())
        return value.toDouble();
    if (value.isArray()) {
        QVariantList list;
        for (const QJsonValue element : value.toArray())
            list.append(withDoubles(element));
        return list;
    }
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        QVariantMap map;
        for (auto member = object.begin(); member != object.end(); ++member)
            map.insert(map.cend(), member.key(), withDoubles(member.value()));
        return map;
    }
    return value.toVariant();
}

} // namespace

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

QJsonDocument JsonConvert::parse(const QByteArray &bytes)
{
    QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (bytes.size() > 2 * maximumDepth && !document.isNull() && isNestedTooDeeply(bytes))
        return QJsonDocument();
    return document;
}

QJsonDocument JsonConvert::toQJsonDocument(const std::string &text)
{
    return QJsonDocument::fromJson(
        QByteArray::fromRawData(text.c_str(), static_cast<qsizetype>(qstrlen(text.c_str()))));
}

QVariantList JsonConvert::toQVariantList(const std::string &text)
{
    return withDoubles(toQJsonDocument(text).array()).toList();
}

QVariantMap JsonConvert::toQVariantMap(const std::string &text)
{
    return withDoubles(toQJsonDocument(text).object()).toMap();
}

} // namespace Varn::ToolLibraries

#include "ToolLibrary/Interface/Private/JsonManipulation/JsonRecursiveDescent.h"

#include "util/utility/Assert.h"

#include <QJsonArray>

namespace Varn::ToolLibraries {

namespace {

using Rewrite = JsonRecursiveDescent::Rewrite;

QJsonArray descend(QJsonArray array, const Rewrite &rewrite);

QJsonObject descend(const QJsonObject &original, const Rewrite &rewrite)
{
    QJsonObject object = rewrite(original);
    for (QJsonValueRef member : object) {
        if (member.isObject())
            member = descend(member.toObject(), rewrite);
        else if (member.isArray())
            member = descend(member.toArray(), rewrite);
    }
    return object;
}

QJsonArray descend(QJsonArray array, const Rewrite &rewrite)
{
    for (QJsonValueRef element : array) {
        if (element.isObject())
            element = descend(element.toObject(), rewrite);
        else if (element.isArray())
            element = descend(element.toArray(), rewrite);
    }
    return array;
}

} // namespace

QJsonDocument JsonRecursiveDescent::apply(const QJsonDocument &json, const Rewrite &rewrite)
{
    VARN_ASSERT(json.isArray() || json.isObject());
    if (json.isObject())
        return QJsonDocument(descend(json.object(), rewrite));
    if (json.isArray())
        return QJsonDocument(descend(json.array(), rewrite));
    return json;
}

} // namespace Varn::ToolLibraries

// JsonRecursiveDescent.h -- rewrites every object of a JSON document. Stateless, any thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <functional>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT JsonRecursiveDescent
{
public:
    using Rewrite = std::function<QJsonObject(const QJsonObject &)>;

    /// The document with \a rewrite applied to each of its objects: a parent before its children, and the children are
    /// those of the parent's result. REQUIRES: an array or an object as root.
    static QJsonDocument apply(const QJsonDocument &json, const Rewrite &rewrite);
};

} // namespace Varn::ToolLibraries

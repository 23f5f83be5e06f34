// GuidRegenerator.h -- new GUIDs for a copied document. Stateless, any thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT GuidRegenerator
{
public:
    /// The document with a new value under every "guid" in it: of tools, presets, holders and whatever else has one.
    static QJsonDocument regenerateGuids(const QJsonDocument &document);

private:
    static QJsonObject regenerateGuid(const QJsonObject &object);
};

} // namespace Varn::ToolLibraries

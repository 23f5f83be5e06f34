// ExportableLibrary.h -- the face of a library that can leave as a whole.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <QMap>
#include <QString>
#include <QVariant>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT ExportableLibrary
{
public:
    ExportableLibrary() = default;
    ExportableLibrary(const ExportableLibrary &) = delete;
    ExportableLibrary &operator=(const ExportableLibrary &) = delete;

    /// In the form of the library document: "data", a list of tool maps, and "version".
    virtual QMap<QString, QVariant> toQVariantMap() const = 0;
    virtual ~ExportableLibrary();
};

} // namespace Varn::ToolLibraries

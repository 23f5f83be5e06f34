// ToolLibraryAnalytics.h -- tells how the library is used, when the person allows it. Any thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <QString>
#include <QVariantMap>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT ToolLibraryAnalytics
{
public:
    /// Sends \a values, each of which converts to a text, under the name of a command. Nothing happens while tracking
    /// is off, as it is unless a person turns it on.
    static void sendReport(const QString &commandName, const QVariantMap &values);
};

} // namespace Varn::ToolLibraries

// ToolFormatMigrator.h -- brings tool maps of older format versions to the current one. Stateless, any thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <QVariant>

namespace Varn::Tools {

class TOOL_LIBRARY_EXPORT ToolFormatMigrator
{
public:
    /// Migrates a tool as it is stored in a library file. A map of the current version, or of a newer one, stays as it
    /// is. Throws NotSupportedError for an older one: there is no way from it to the current form yet, and passing it
    /// off as current would lose data later.
    static void fixMap(QVariantMap &tool, int version);
};

} // namespace Varn::Tools

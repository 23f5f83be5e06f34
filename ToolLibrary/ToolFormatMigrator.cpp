#include "ToolLibrary/ToolFormatMigrator.h"

#include "platform/core/ToolLibraryVersion.h"
#include "platform/tool/Exception.h"

#include <string>

namespace Varn::Tools {

void ToolFormatMigrator::fixMap(QVariantMap &, int version)
{
    if (version >= ToolLibraryVersion::latestVersion())
        return;
    throw ToolLibraries::NotSupportedError("Tools of format version " + std::to_string(version) +
                                           " cannot be migrated to version " +
                                           std::to_string(ToolLibraryVersion::latestVersion()) + " yet");
}

} // namespace Varn::Tools

// DocumentToolVariantMapUtil.h -- the marks in a tool map that say that it stands for a tool of an open document.
// Stateless, any thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <QString>
#include <QVariant>

#include <array>

namespace Varn::Tools {

class TOOL_LIBRARY_EXPORT DocumentToolVariantMapUtil
{
public:
    /// REQUIRES: !isDocumentTool(tool); marks that are there all the same are replaced.
    /// \param documentToolId the place of the tool in the document's tool table
    static void addDocumentToolInformation(QVariantMap &tool, unsigned int documentToolId,
                                           const QString &referenceGuid);

    /// Whether both marks are there.
    static bool isDocumentTool(const QVariantMap &tool);

    /// 0 for what is no document tool.
    static unsigned int getDocumentToolId(const QVariantMap &tool);

    /// REQUIRES: isDocumentTool(tool). Empty without that mark.
    static QString getDocumentToolReferenceGuid(const QVariantMap &tool);

    /// Removes whichever of the marks are there.
    static void removeDocumentToolInformation(QVariantMap &tool);

    /// The keys of the marks, for tools that are no map.
    static std::array<const char *, 2> informationKeys();
};

} // namespace Varn::Tools

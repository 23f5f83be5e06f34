#include "ToolLibrary/DocumentToolVariantMapUtil.h"

#include "util/utility/Assert.h"

namespace Varn::Tools {

namespace {

constexpr std::array<const char *, 2> keys{"_document_tool_id", "_document_tool_reference_guid"};
const QString idKey = QString::fromLatin1(keys[0]);
const QString referenceGuidKey = QString::fromLatin1(keys[1]);

} // namespace

void DocumentToolVariantMapUtil::addDocumentToolInformation(QVariantMap &toolVariantMap, unsigned int documentToolId,
                                                            const QString &referenceGuid)
{
    VARN_ASSERT(!isDocumentTool(toolVariantMap));
    toolVariantMap.insert(idKey, documentToolId);
    toolVariantMap.insert(referenceGuidKey, referenceGuid);
}

bool DocumentToolVariantMapUtil::isDocumentTool(const QVariantMap &tool)
{
    return tool.contains(idKey) && tool.contains(referenceGuidKey);
}

unsigned int DocumentToolVariantMapUtil::getDocumentToolId(const QVariantMap &tool)
{
    return isDocumentTool(tool) ? tool.value(idKey).toUInt() : 0;
}

QString DocumentToolVariantMapUtil::getDocumentToolReferenceGuid(const QVariantMap &toolVariantMap)
{
    VARN_ASSERT(isDocumentTool(toolVariantMap));
    return toolVariantMap.value(referenceGuidKey).toString();
}

void DocumentToolVariantMapUtil::removeDocumentToolInformation(QVariantMap &tool)
{
    tool.remove(idKey);
    tool.remove(referenceGuidKey);
}

std::array<const char *, 2> DocumentToolVariantMapUtil::informationKeys()
{
    return keys;
}

} // namespace Varn::Tools

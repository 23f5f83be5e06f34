#include "ToolLibrary/Interface/Private/JsonManipulation/GuidRegenerator.h"

#include "ToolLibrary/Interface/Private/JsonManipulation/JsonRecursiveDescent.h"
#include "platform/utils/Guid.h"
#include "util/utility/Assert.h"

namespace Varn::ToolLibraries {

QJsonDocument GuidRegenerator::regenerateGuids(const QJsonDocument &document)
{
    VARN_ASSERT(document.isArray() || document.isObject());
    return JsonRecursiveDescent::apply(document, &GuidRegenerator::regenerateGuid);
}

QJsonObject GuidRegenerator::regenerateGuid(const QJsonObject &object)
{
    QJsonObject result = object;
    const auto guid = result.find(u"guid");
    if (guid != result.end())
        *guid = QString::fromStdString(Guid::create().asString());
    return result;
}

} // namespace Varn::ToolLibraries

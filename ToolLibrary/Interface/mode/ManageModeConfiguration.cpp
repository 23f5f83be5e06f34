#include "ToolLibrary/Interface/mode/ManageModeConfiguration.h"

#include "platform/core/VarnObject.h"
#include "platform/utils/LocaleRegistry.h"

namespace Varn::ToolLibraries {

QString ManageModeConfiguration::id() const
{
    return QStringLiteral("MANAGE");
}

QString ManageModeConfiguration::windowTitle() const
{
    static const LocalizedMessage title = LocaleRegistry::registerMessage("Tool Library");
    return title.asQString();
}

Reference<VarnObject> ManageModeConfiguration::operation() const
{
    return {};
}

std::optional<ToolSelection> ManageModeConfiguration::initialSelection() const
{
    return std::nullopt;
}

} // namespace Varn::ToolLibraries

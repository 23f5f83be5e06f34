#include "ToolLibrary/ToolLibraryParameter.h"

#include "platform/utils/LocaleRegistry.h"

#include <string_view>
#include <vector>

namespace Varn::Tools {

namespace {

constexpr std::u16string_view surfaceSpeed = u"tool_surfaceSpeed";
constexpr double millimetersPerMeter = 1000.0;
constexpr double inchesPerFoot = 12.0;

LocalizedMessage message(std::string_view text)
{
    return LocaleRegistry::get()->registerMessage(text, text);
}

std::vector<ToolLibraryParameter> makeTable()
{
    return {
#define ROW(enumerator, key, parameterName, title, description, unitKind, classFlag, section, summaryFlag)             \
    {key, parameterName, message(title), message(description), unitKind, classFlag, section, summaryFlag},
#include "ToolLibrary/ToolLibraryParameters.def"
#undef ROW
    };
}

} // namespace

const ToolLibraryParameter &getToolLibraryParameter(ToolLibraryParametersEnum parameter)
{
    static const std::vector<ToolLibraryParameter> table = makeTable();
    return table.at(static_cast<unsigned>(parameter));
}

QString ToolLibraryParameterKey(ToolLibraryParametersEnum parameter)
{
    return QString::fromUtf8(getToolLibraryParameter(parameter).key);
}

double parameterConversionFactor(const ToolLibraryParameter &parameter, bool metric)
{
    if (parameter.parameterName != surfaceSpeed)
        return 1.0;
    return metric ? millimetersPerMeter : inchesPerFoot;
}

QString ToolMapKey::geometry()
{
    return QStringLiteral("geometry");
}

QString ToolMapKey::holder()
{
    return QStringLiteral("holder");
}

QString ToolMapKey::postProcess()
{
    return QStringLiteral("post-process");
}

QString ToolMapKey::material()
{
    return QStringLiteral("material");
}

QString ToolMapKey::presets()
{
    return QStringLiteral("presets");
}

QString ToolMapKey::upperDiameter()
{
    return QStringLiteral("upper-diameter");
}

QString ToolMapKey::segments()
{
    return QStringLiteral("segments");
}

QString ToolMapKey::setup()
{
    return QStringLiteral("setup");
}

QString ToolMapKey::shaft()
{
    return QStringLiteral("shaft");
}

QString ToolMapKey::startValues()
{
    return QStringLiteral("start-values");
}

QString ToolMapKey::toolCoolant()
{
    return QStringLiteral("tool-coolant");
}

QString ToolMapKey::type()
{
    return QStringLiteral("type");
}

QString ToolMapKey::useFeedPerRevolution()
{
    return QStringLiteral("use-feed-per-revolution");
}

} // namespace Varn::Tools

#include "platform/core/ToolErrorFactory.h"

#include "platform/utils/LocaleRegistry.h"

#include <QString>
#include <QVariantMap>

#include <optional>

namespace Varn {

namespace {

/// The name of the parameter and its value stand for the places of a text.
std::wstring textOf(int code, const std::wstring &parameter, const std::wstring &value)
{
    static const LocalizedMessage newer = LocaleRegistry::registerMessage("This tool comes from a newer version.");
    static const LocalizedMessage doubtful = LocaleRegistry::registerMessage("The value %2 of %1 is doubtful.");
    static const LocalizedMessage lost = LocaleRegistry::registerMessage("The 3D geometry of the tool was not found.");
    static const LocalizedMessage invalid = LocaleRegistry::registerMessage("The value %2 of %1 is not valid.");
    static const LocalizedMessage unknown = LocaleRegistry::registerMessage("The tool has an error: %1");
    const QString name = QString::fromStdWString(parameter);
    const QString text = QString::fromStdWString(value);
    switch (code) {
    case ToolError::CODE_NEWER_VERSION:
        return newer.asWideString();
    case ToolError::CODE_DOUBTFUL_VALUE:
        return doubtful.asQString().arg(name, text).toStdWString();
    case ToolError::CODE_GEOMETRY_NOT_FOUND:
        return lost.asWideString();
    case ToolError::CODE_INVALID_VALUE:
        return invalid.asQString().arg(name, text).toStdWString();
    default:
        return unknown.asQString().arg(code).toStdWString();
    }
}

std::wstring memberText(const QVariantMap &entry, const char *key)
{
    return entry.value(QLatin1String(key)).toString().toStdWString();
}

std::optional<ToolError::Kind> kindOf(const std::wstring &word)
{
    if (word == L"warning")
        return ToolError::Kind::Warning;
    if (word == L"error")
        return ToolError::Kind::Error;
    if (word == L"fail")
        return ToolError::Kind::Fail;
    return std::nullopt;
}

} // namespace

std::shared_ptr<ToolError> ToolErrorFactory::make(int code, const std::wstring &parameter, const std::wstring &value)
{
    return make(code, parameter, value, textOf(code, parameter, value));
}

std::shared_ptr<ToolError> ToolErrorFactory::make(int code, const std::wstring &parameter, const std::wstring &value,
                                                  const std::wstring &message)
{
    return std::make_shared<ToolError>(code, parameter, value, ToolError::kindOf(code), message);
}

std::shared_ptr<ToolError> ToolErrorFactory::make(const QVariant &entry)
{
    const QVariantMap map = entry.toMap();
    const int code = map.value(QStringLiteral("code")).toInt();
    const std::wstring parameter = memberText(map, "parameter");
    const std::wstring value = memberText(map, "value");
    std::wstring message = memberText(map, "message");
    if (message.empty())
        message = textOf(code, parameter, value);
    const ToolError::Kind kind = kindOf(memberText(map, "kind")).value_or(ToolError::kindOf(code));
    return std::make_shared<ToolError>(code, parameter, value, kind, std::move(message));
}

} // namespace Varn

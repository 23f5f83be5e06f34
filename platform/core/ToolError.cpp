#include "platform/core/ToolError.h"

#include <QString>

namespace Varn {

ToolError::Kind ToolError::kindOf(int code)
{
    if (code >= 2000 && code < 3000)
        return Kind::Warning;
    return code >= 4000 && code < 5000 ? Kind::Fail : Kind::Error;
}

QVariantMap ToolError::toMap() const
{
    constexpr const char *kinds[] = {"warning", "error", "fail"}; // in the order of Kind
    QVariantMap map{{QStringLiteral("code"), m_code},
                    {QStringLiteral("kind"), QLatin1String(kinds[static_cast<int>(m_kind)])}};
    const auto add = [&map](const char *key, const std::wstring &text) {
        if (!text.empty())
            map.insert(QLatin1String(key), QString::fromStdWString(text));
    };
    add("parameter", m_parameter);
    add("value", m_value);
    add("message", m_message);
    return map;
}

} // namespace Varn

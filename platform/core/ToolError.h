// ToolError.h -- a fault of a tool, as it stands in the list "errors" of a tool's JSON. A value that never changes; any
// thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <QVariantMap>

#include <memory>
#include <string>

namespace Varn {

///     {"code": 3201, "parameter": "tool_diameter", "value": "-1", "kind": "error", "message": "..."}
class VARN_PLATFORM_EXPORT ToolError
{
public:
    /// How grave it is. A tool that has failed cannot be used at all.
    enum class Kind { Warning, Error, Fail };

    enum Code : int {
        CODE_NEWER_VERSION = 2103,      ///< the tool comes from a newer program
        CODE_DOUBTFUL_VALUE = 2201,     ///< a parameter breaks a warning constraint
        CODE_GEOMETRY_NOT_FOUND = 3104, ///< the solid of an imported tool could not be taken over
        CODE_INVALID_VALUE = 3201,      ///< a parameter breaks an error constraint
    };

    ToolError(int code, std::wstring parameter, std::wstring value, Kind kind, std::wstring message)
        : m_code(code),
          m_parameter(std::move(parameter)),
          m_value(std::move(value)),
          m_kind(kind),
          m_message(std::move(message))
    {
    }

    /// Of a code: those from 2000 are warnings, those from 4000 failures, all others errors.
    static Kind kindOf(int code);

    int getCode() const { return m_code; }
    const std::wstring &getParameter() const { return m_parameter; } ///< its name; empty for a fault of the whole tool
    const std::wstring &getValue() const { return m_value; }         ///< the faulty value as text
    Kind getKind() const { return m_kind; }

    /// What people read.
    const std::wstring &getDescription() const { return m_message; }

    bool isFail() const { return m_kind == Kind::Fail; }
    bool isWarning() const { return m_kind == Kind::Warning; }

    /// False for a warning, and for none at all.
    static bool isError(const std::shared_ptr<ToolError> &error) { return error && !error->isWarning(); }

    /// The entry of the list; "parameter", "value" and "message" only when they are not empty.
    QVariantMap toMap() const;

private:
    int m_code;
    std::wstring m_parameter;
    std::wstring m_value;
    Kind m_kind;
    std::wstring m_message;
};

} // namespace Varn

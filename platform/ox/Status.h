// Status.h -- how an operation of the platform went. Values; one object is not for two threads at once.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <QString>

#include <vector>

namespace Ox {

/// One thing worth telling about an operation: a code for programs, a text for people, and what led to it as children.
class VARN_PLATFORM_EXPORT StatusCode
{
public:
    enum class Severity { Warning, Error };

    explicit StatusCode(QString code, QString message = {}, Severity severity = Severity::Error);

    const QString &code() const { return m_code; } ///< such as "SERVER_ERROR"
    const QString &message() const { return m_message; }
    bool isWarning() const { return m_severity == Severity::Warning; }

    void addChild(StatusCode child);
    const std::vector<StatusCode> &children() const { return m_children; }

private:
    QString m_code;
    QString m_message;
    Severity m_severity;
    std::vector<StatusCode> m_children;
};

/// All well at first; then the codes that were added, in that order. Warnings leave it well. What is nested in a code
/// explains that code and does not count by itself.
class VARN_PLATFORM_EXPORT Status
{
public:
    /// True without an error among the top level codes.
    bool isOk() const;
    /// True with a warning among the top level codes.
    bool hasWarnings() const;

    void addCode(StatusCode code);
    void addCode(const QString &code, const QString &message,
                 StatusCode::Severity severity = StatusCode::Severity::Error);

    const std::vector<StatusCode> &getTopLevelStatusCodes() const { return m_codes; }

    /// The texts for people, one a line, what is nested two blanks further in. A code without a message shows itself.
    QString description() const;

private:
    std::vector<StatusCode> m_codes;
};

} // namespace Ox

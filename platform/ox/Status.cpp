#include "platform/ox/Status.h"

#include <QStringList>

#include <algorithm>
#include <utility>

namespace Ox {

namespace {

void describe(const std::vector<StatusCode> &codes, const QString &indent, QStringList &lines)
{
    for (const StatusCode &code : codes) {
        lines << indent + (code.message().isEmpty() ? code.code() : code.message());
        describe(code.children(), indent + QStringLiteral("  "), lines);
    }
}

} // namespace

StatusCode::StatusCode(QString code, QString message, Severity severity)
    : m_code(std::move(code)), m_message(std::move(message)), m_severity(severity)
{
}

void StatusCode::addChild(StatusCode child)
{
    m_children.push_back(std::move(child));
}

bool Status::isOk() const
{
    return std::ranges::all_of(m_codes, &StatusCode::isWarning);
}

bool Status::hasWarnings() const
{
    return std::ranges::any_of(m_codes, &StatusCode::isWarning);
}

void Status::addCode(StatusCode code)
{
    m_codes.push_back(std::move(code));
}

void Status::addCode(const QString &code, const QString &message, StatusCode::Severity severity)
{
    addCode(StatusCode(code, message, severity));
}

QString Status::description() const
{
    QStringList lines;
    describe(m_codes, QString(), lines);
    return lines.join(QLatin1Char('\n'));
}

} // namespace Ox

// QuillonProcess.h -- the program itself, as a person or a script starts it. Its path is in QUILLON.
#pragma once

#include <QProcess>

#include <functional>
#include <map>
#include <string>

namespace TestSupport {

class QuillonProcess
{
public:
    struct Outcome {
        int status; ///< -1 when it did not end by itself
        std::string out;
        std::string err;
    };

    using Variables = std::map<QString, QString>;

    /// The locale of the process is English, whatever the machine's is.
    /// \param inChild runs in the new process before the program does
    /// \param variables of the environment, beside those of the machine
    QuillonProcess(const QStringList &arguments, const QString &home, const std::function<void()> &inChild = {},
                   const Variables &variables = {})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *name : {"LC_ALL", "LC_MESSAGES", "QUILLON_LOCALE"})
            environment.remove(QLatin1String(name));
        environment.insert(QStringLiteral("LANG"), QStringLiteral("C.UTF-8"));
        environment.insert(QStringLiteral("QUILLON_HOME"), home);
        for (const auto &[name, value] : variables)
            environment.insert(name, value);
        m_process.setProcessEnvironment(environment);
        if (inChild)
            m_process.setChildProcessModifier(inChild);
        m_process.start(QStringLiteral(QUILLON), arguments);
        m_process.waitForStarted();
    }

    QProcess &process() { return m_process; }

    /// Gives it the rest of its input and waits for its end.
    Outcome finish(const QByteArray &input = {})
    {
        m_process.write(input);
        m_process.closeWriteChannel();
        if (!m_process.waitForFinished() || m_process.exitStatus() != QProcess::NormalExit)
            return {-1, "", "quillon did not end as it should"};
        return {m_process.exitCode(), m_process.readAllStandardOutput().toStdString(),
                m_process.readAllStandardError().toStdString()};
    }

private:
    QProcess m_process;
};

inline QuillonProcess::Outcome quillon(const QStringList &arguments, const QString &home, const QByteArray &input = {})
{
    return QuillonProcess(arguments, home).finish(input);
}

} // namespace TestSupport

// LibraryGenerator.h -- library files as the generator of the tests writes them. The path of its script is in
// GENERATOR.
#pragma once

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <stdexcept>
#include <string>

namespace TestSupport {

class LibraryGenerator
{
public:
    /// Runs the script; the library lies at path() afterwards, and what it says of its defects in report().
    explicit LibraryGenerator(const QStringList &arguments)
    {
        run(arguments + QStringList{QStringLiteral("-o"), path(), QStringLiteral("--report"), reportPath()});
    }

    QString path() const { return m_folder.filePath(QStringLiteral("library.json")); }
    std::string text() const { return contentOf(path()); }
    std::string report() const { return contentOf(reportPath()); }

    /// What the script prints with \a arguments.
    static std::string run(const QStringList &arguments)
    {
        QProcess python;
        python.start(QStringLiteral("python3"), QStringList{QStringLiteral(GENERATOR)} + arguments);
        if (!python.waitForFinished() || python.exitCode() != 0)
            throw std::runtime_error("The generator failed: " + python.readAllStandardError().toStdString());
        return python.readAllStandardOutput().toStdString();
    }

private:
    QString reportPath() const { return m_folder.filePath(QStringLiteral("report.txt")); }
    static std::string contentOf(const QString &file)
    {
        QFile content(file);
        if (!content.open(QIODevice::ReadOnly))
            throw std::runtime_error("The generator left no " + file.toStdString());
        return content.readAll().toStdString();
    }

    QTemporaryDir m_folder;
};

} // namespace TestSupport

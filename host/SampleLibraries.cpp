#include "host/SampleLibraries.h"

#include "ToolLibrary/IO/ToolLibraryUrl.h"
#include "platform/ox/AppLogMgr.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace Quillon {

using Varn::Tools::ToolLibraryUrl;

namespace {

constexpr int warningLevel = 2;

void warn(const QString &text)
{
    Ox::AppLogMgr::appLog(warningLevel, text.toStdString());
}

/// Where the samples lie beside the program; empty when they don't.
QString shippedFolder()
{
    if (!QCoreApplication::instance())
        return {};
    const QDir folder(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/quillon/samples"));
    return folder.exists() ? folder.canonicalPath() : QString();
}

bool copyAll(const QString &from, const QDir &to)
{
    for (const QString &name : QDir(from).entryList({QStringLiteral("*.json")}, QDir::Files)) {
        if (!QFile::copy(from + QLatin1Char('/') + name, to.filePath(name))) {
            warn(QStringLiteral("Failed to install the sample library: ") + to.filePath(name));
            return false;
        }
    }
    return true;
}

} // namespace

void installSampleLibraries()
{
    const QString target = ToolLibraryUrl(QStringLiteral("Samples"), ToolLibraryUrl::System).fullFilePath();
    const QString shipped = shippedFolder();
    if (shipped.isEmpty() || QDir(target).exists())
        return;
    // Filled beside and renamed, so that a second process never sees a part of them.
    QDir().mkpath(QFileInfo(target).path());
    QTemporaryDir beside(target + QStringLiteral("-XXXXXX"));
    if (!beside.isValid()) {
        warn(QStringLiteral("Failed to install the sample libraries: ") + beside.errorString());
        return;
    }
    QFile::setPermissions(beside.path(), QFile::permissions(QFileInfo(target).path()));
    if (!copyAll(shipped, QDir(beside.path())))
        return;
    if (QDir().rename(beside.path(), target))
        beside.setAutoRemove(false);
    else if (!QDir(target).exists()) // another process was not faster either
        warn(QStringLiteral("Failed to install the sample libraries: ") + target);
}

} // namespace Quillon

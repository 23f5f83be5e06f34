#include "platform/core/VarnApplication.h"

#include "platform/utils/Thread.h"
#include "util/utility/Assert.h"

#include <QCoreApplication>
#include <QDir>
#include <QMetaObject>
#include <QStandardPaths>

#include <deque>
#include <mutex>
#include <utility>

namespace Varn {

namespace {

struct Jobs {
    std::mutex mutex;
    std::deque<std::function<void()>> queue; // guarded by mutex
};

Jobs &jobs()
{
    static Jobs instance;
    return instance;
}

/// The oldest job, or an empty function when there is none.
std::function<void()> takeJob()
{
    const std::lock_guard lock(jobs().mutex);
    if (jobs().queue.empty())
        return {};
    std::function<void()> job = std::move(jobs().queue.front());
    jobs().queue.pop_front();
    return job;
}

void run(const std::function<void()> &job)
{
    try {
        job();
    } catch (...) {
        VARN_FAIL("A job of the main thread raised an exception");
    }
}

/// Runs what is queued now. A job that queues itself again must not keep the loop from its other events.
std::size_t runQueuedJobs()
{
    std::size_t waiting = 0;
    {
        const std::lock_guard lock(jobs().mutex);
        waiting = jobs().queue.size();
    }
    std::size_t done = 0;
    for (; done < waiting; ++done) {
        const std::function<void()> job = takeJob();
        if (!job)
            break; // a loop inside a job was faster
        run(job);
    }
    return done;
}

struct Home {
    std::mutex mutex;
    QString folder; // guarded by mutex
};

Home &home()
{
    static Home instance;
    return instance;
}

/// The home folder that was given, or an empty text.
QString homeFolder()
{
    QString folder;
    {
        const std::lock_guard lock(home().mutex);
        folder = home().folder;
    }
    if (folder.isEmpty())
        folder = qEnvironmentVariable("QUILLON_HOME");
    return folder.isEmpty() ? QString() : QDir(folder).absolutePath();
}

QString perUserFolder()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (QDir::isAbsolutePath(folder))
        return QDir::cleanPath(folder);
    return QDir::cleanPath(QDir::homePath() + QStringLiteral("/.local/share")); // relative ones are invalid after XDG
}

} // namespace

void VarnApplication::runOnMainThread(std::function<void()> job)
{
    VARN_EXPECTS(job);
    if (!job)
        return;
    {
        const std::lock_guard lock(jobs().mutex);
        jobs().queue.push_back(std::move(job));
    }
    // One event for each job: while a job is in a loop of its own, the events of the others are served there.
    if (QCoreApplication *application = QCoreApplication::instance())
        QMetaObject::invokeMethod(
            application, [] { runQueuedJobs(); }, Qt::QueuedConnection);
}

std::size_t VarnApplication::pumpMainThread()
{
    VARN_EXPECTS(Thread::isMainThread());
    return runQueuedJobs();
}

void VarnApplication::setHomeFolder(const std::wstring &path)
{
    const std::lock_guard lock(home().mutex);
    home().folder = path.empty() ? QString() : QDir(QString::fromStdWString(path)).absolutePath();
}

std::wstring VarnApplication::getAppDataFolder()
{
    const QString folder = homeFolder();
    return (folder.isEmpty() ? perUserFolder() + QStringLiteral("/quillon") : folder).toStdWString();
}

std::wstring VarnApplication::getPerUserFolder()
{
    const QString folder = homeFolder();
    return (folder.isEmpty() ? perUserFolder() : folder).toStdWString();
}

std::wstring VarnApplication::getDefaultOutputFolder()
{
    const QString folder = homeFolder();
    if (!folder.isEmpty())
        return QDir(folder).filePath(QStringLiteral("Documents")).toStdWString();
    return QDir::cleanPath(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)).toStdWString();
}

bool VarnApplication::isAppStreamMachine()
{
    return false;
}

} // namespace Varn

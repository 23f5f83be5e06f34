// VarnApplication.h -- the process as the platform sees it: its main thread and its folders. Any thread, where an
// operation does not say otherwise.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <cstddef>
#include <functional>
#include <string>

namespace Varn {

class VARN_PLATFORM_EXPORT VarnApplication
{
public:
    /// Queues \a job for the main thread and returns at once, also when called on the main thread. Jobs run one after
    /// another in the order in which they were queued, with no lock held: on the event loop of the Qt application, or
    /// in pumpMainThread(). A job that opens a loop of its own (a dialog) lets the jobs behind it run in that loop.
    ///
    /// A job should not raise: nobody is there to hear of it. An exception is dropped, with an assertion, and the jobs
    /// behind it run all the same. A job that has something to tell keeps it in a promise.
    ///
    /// The Qt application, if there is one, lives on the main thread and outlives the threads that post jobs.
    static void runOnMainThread(std::function<void()> job);

    /// Runs the jobs that are queued at this moment and returns how many ran. For a main thread without an event loop,
    /// which calls this from time to time, and waits for what it needs by calling it again. Main thread only.
    static std::size_t pumpMainThread();

    /// Makes \a path the folder of everything that the process keeps, instead of $QUILLON_HOME or the folders of the
    /// person. A relative path counts from the current folder; an empty one takes the setting back.
    static void setHomeFolder(const std::wstring &path);

    // The folders, absolute, with '/' between names and none at the end. None of them is made or looked at. Each call
    // reads the setting and the environment anew, so a caller that must not see a change keeps the answer.

    /// Where the process keeps its data: the home folder, if one is given, else "quillon" in the per-user folder.
    static std::wstring getAppDataFolder();

    /// Below which other per-user folders lie: the home folder, if one is given, else that of the platform
    /// ($XDG_DATA_HOME or ~/.local/share after the XDG base directory specification).
    static std::wstring getPerUserFolder();

    /// Where files for the person go: "Documents" in the home folder, if one is given, else the person's documents.
    static std::wstring getDefaultOutputFolder();

    /// Whether the process runs on a machine that only streams its screen and keeps no files of its own: never.
    static bool isAppStreamMachine();
};

} // namespace Varn

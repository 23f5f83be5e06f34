// LoadThreads.h -- the threads on which libraries are loaded. Any thread may start jobs.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>

namespace Varn::ToolLibraries {

/// A few jobs at a time, the others wait in their order. There is no thread while there is no job.
class TOOL_LIBRARY_EXPORT LoadThreads
{
public:
    /// For libraries in files: as many threads as the machine runs at once. At the end of the process the jobs that
    /// have begun are waited for, and the others dropped.
    static LoadThreads &ofFiles();

    /// For libraries of the hub, which may be slow or not answer at all: so they wait among themselves and hold up no
    /// file, and nobody waits for them at the end of the process.
    static LoadThreads &ofHub();

    explicit LoadThreads(std::size_t maximum);
    LoadThreads(const LoadThreads &) = delete;
    LoadThreads &operator=(const LoadThreads &) = delete;

    /// Drops the jobs that have not begun, and waits for the others.
    ~LoadThreads();

    /// Queues \a job, which throws nothing. Throws std::system_error, and drops the job, when the system gives no
    /// thread.
    void start(std::function<void()> job);

    std::size_t maximum() const { return m_maximum; }

    /// How many threads there are.
    std::size_t count() const;

private:
    void work();
    std::function<void()> nextJob();

    const std::size_t m_maximum;
    mutable std::mutex m_mutex;
    std::condition_variable m_ended;          // of the last thread
    std::deque<std::function<void()>> m_jobs; // guarded by m_mutex
    std::size_t m_threads = 0;                // guarded by m_mutex
};

} // namespace Varn::ToolLibraries

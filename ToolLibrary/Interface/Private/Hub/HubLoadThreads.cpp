#include "ToolLibrary/Interface/Private/Hub/HubLoadThreads.h"

#include <deque>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace Varn::ToolLibraries {

namespace {

struct Queue {
    std::mutex mutex;
    std::deque<std::function<void()>> jobs; // guarded by mutex
    std::size_t threads = 0;                // guarded by mutex
};

/// Never destroyed: a job may still run when the process ends.
Queue &queue()
{
    static auto &instance = *new Queue;
    return instance;
}

/// The next job; an empty one when the calling thread is to end.
std::function<void()> nextJob()
{
    const std::lock_guard lock(queue().mutex);
    if (queue().jobs.empty()) {
        --queue().threads;
        return {};
    }
    std::function<void()> job = std::move(queue().jobs.front());
    queue().jobs.pop_front();
    return job;
}

void work()
{
    while (const std::function<void()> job = nextJob())
        job();
}

} // namespace

void HubLoadThreads::start(std::function<void()> job)
{
    const std::lock_guard lock(queue().mutex);
    queue().jobs.push_back(std::move(job));
    if (queue().threads == maximum)
        return;
    try {
        std::thread(work).detach();
        ++queue().threads;
    } catch (const std::system_error &) {
        if (queue().threads > 0)
            return; // those that are there will come to it
        queue().jobs.pop_back();
        throw;
    }
}

std::size_t HubLoadThreads::count()
{
    const std::lock_guard lock(queue().mutex);
    return queue().threads;
}

} // namespace Varn::ToolLibraries

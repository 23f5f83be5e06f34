// TaskDispatcher.h -- gets work done on a chosen thread, above all on the main thread. Any thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <future>
#include <memory>
#include <type_traits>
#include <utility>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT TaskDispatcher
{
public:
    /// Where a job runs, and when.
    class TOOL_LIBRARY_EXPORT ThreadExecutor
    {
    public:
        virtual void operator()(std::function<void()> job) const = 0;
        virtual ~ThreadExecutor();
    };

    /// Hands \a callable to \a executor. Its result, or the exception it ended with, comes out of the future. Waiting
    /// on the main thread for a job that waits for the main thread never ends.
    template <typename Callable>
    static std::future<std::invoke_result_t<Callable &>> runOnThread(Callable callable, const ThreadExecutor &executor);

    /// How many jobs have been handed over and have not ended.
    static std::size_t numPendingTasks() { return pendingTaskCount.load(); }

private:
    /// Counts a job from the moment it is handed over until it has ended, or was dropped without having run.
    class Pending
    {
    public:
        Pending() { ++pendingTaskCount; }
        ~Pending() { end(); }
        Pending(const Pending &) = delete;
        Pending &operator=(const Pending &) = delete;
        void end()
        {
            if (std::exchange(m_counted, false))
                --pendingTaskCount;
        }

    private:
        bool m_counted = true;
    };

    static std::atomic<std::size_t> pendingTaskCount;
};

/// Runs a job at once on the main thread, and posts it there from any other.
class TOOL_LIBRARY_EXPORT VarnMainThreadExecutor : public TaskDispatcher::ThreadExecutor
{
public:
    void operator()(std::function<void()> job) const override;
};

template <typename Callable>
std::future<std::invoke_result_t<Callable &>> TaskDispatcher::runOnThread(Callable callable,
                                                                          const ThreadExecutor &executor)
{
    using Result = std::invoke_result_t<Callable &>;
    struct State {
        explicit State(Callable &&job) : callable(std::move(job)) {}
        Callable callable;
        std::promise<Result> promise;
        Pending pending;
    };
    auto state = std::make_shared<State>(std::move(callable));
    std::future<Result> result = state->promise.get_future();
    executor([state] {
        // The count goes down before the result is there, so that whoever has the result finds the job gone.
        try {
            if constexpr (std::is_void_v<Result>) {
                state->callable();
                state->pending.end();
                state->promise.set_value();
            } else {
                Result value = state->callable();
                state->pending.end();
                state->promise.set_value(std::move(value));
            }
        } catch (...) {
            state->pending.end();
            state->promise.set_exception(std::current_exception());
        }
    });
    return result;
}

} // namespace Varn::ToolLibraries

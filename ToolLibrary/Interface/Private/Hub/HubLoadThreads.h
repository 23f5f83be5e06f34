// HubLoadThreads.h -- the threads on which libraries of the hub are loaded. Any thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <cstddef>
#include <functional>

namespace Varn::ToolLibraries {

/// A hub may be slow or not answer at all: its loads wait among themselves, a few at a time, and hold up no library
/// that is read from a file. Nobody waits for the threads; each ends when no job is left.
class TOOL_LIBRARY_EXPORT HubLoadThreads
{
public:
    static constexpr std::size_t maximum = 4;

    /// Queues \a job, which throws nothing. Jobs begin in their order. Throws std::system_error, and drops the job,
    /// when the system gives no thread.
    static void start(std::function<void()> job);

    /// How many threads there are.
    static std::size_t count();
};

} // namespace Varn::ToolLibraries

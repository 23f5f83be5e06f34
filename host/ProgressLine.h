// ProgressLine.h -- tells a person at a terminal how far the load of the libraries is.
#pragma once

#include "host/CommandLine.h"
#include "host/Engine.h"

#include <condition_variable>
#include <mutex>
#include <thread>

namespace Quillon {

/// As long as it lives, and only if that takes a while, one line on the standard error, which it clears in the end.
/// Nothing where the standard error is no terminal. Nobody else writes there meanwhile.
class ProgressLine
{
public:
    ProgressLine(const Streams &streams, const Engine &engine);
    ~ProgressLine();
    ProgressLine(const ProgressLine &) = delete;
    ProgressLine &operator=(const ProgressLine &) = delete;

private:
    void run();

    std::ostream &m_err;
    const Engine &m_engine;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_ended = false; // guarded by m_mutex
    std::thread m_thread;
};

} // namespace Quillon

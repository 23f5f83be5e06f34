#include "platform/ox/AppLogMgr.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <utility>

namespace Ox {

namespace {

struct Log {
    std::atomic<bool> hasSink{false};
    std::recursive_mutex mutex;                  // guards the rest; held while the sink runs
    std::shared_ptr<const AppLogMgr::Sink> sink; // shared, so that a sink that replaces itself runs on to its end
    bool isRunning = false;
};

// Never destroyed: a thread that outlives main may still log.
Log &theLog()
{
    static auto &log = *new Log;
    return log;
}

} // namespace

void AppLogMgr::appLog(int level, std::string_view text) noexcept
try {
    Log &log = theLog();
    if (!log.hasSink.load(std::memory_order_relaxed))
        return;
    const std::lock_guard lock(log.mutex);
    if (!log.sink || log.isRunning)
        return;
    struct Running {
        explicit Running(bool &flag) : m_flag(flag) { m_flag = true; }
        ~Running() { m_flag = false; }
        bool &m_flag;
    };
    const auto sink = log.sink;
    const Running running(log.isRunning);
    (*sink)(level, text);
} catch (...) {
    // The caller is telling of some failure already; that of the log must not take its place.
}

AppLogMgr::Sink AppLogMgr::setSink(Sink sink)
{
    auto next = sink ? std::make_shared<const Sink>(std::move(sink)) : nullptr;
    Log &log = theLog();
    const std::lock_guard lock(log.mutex);
    log.hasSink.store(next != nullptr, std::memory_order_relaxed);
    const auto previous = std::exchange(log.sink, std::move(next));
    return previous ? *previous : Sink();
}

} // namespace Ox

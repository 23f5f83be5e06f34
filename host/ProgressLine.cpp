#include "host/ProgressLine.h"

#include <chrono>
#include <system_error>

namespace Quillon {

namespace {

constexpr std::chrono::milliseconds patience(300); // what takes less needs no line
constexpr std::chrono::milliseconds pace(100);
constexpr const char *clearLine = "\r\x1b[K"; // ECMA-48: erase to the end of the line

} // namespace

ProgressLine::ProgressLine(const Streams &streams, const Engine &engine) : m_err(streams.err), m_engine(engine)
{
    if (!streams.errIsTerminal)
        return;
    try {
        m_thread = std::thread([this] { run(); });
    } catch (const std::system_error &) {
        // The work goes on without the line.
    }
}

ProgressLine::~ProgressLine()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ended = true;
    }
    m_wake.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

void ProgressLine::run()
{
    std::unique_lock lock(m_mutex);
    bool isShown = false;
    for (auto wait = patience; !m_wake.wait_for(lock, wait, [this] { return m_ended; }); wait = pace) {
        const auto progress = m_engine.cache().loadProgress();
        m_err << clearLine << "Loading libraries: " << progress.ended << " of " << progress.total << std::flush;
        isShown = true;
    }
    if (isShown)
        m_err << clearLine << std::flush;
}

} // namespace Quillon

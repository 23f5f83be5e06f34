#include "ToolLibrary/Interface/Private/LoadThreads.h"

#include <algorithm>
#include <system_error>
#include <thread>
#include <utility>

namespace Varn::ToolLibraries {

namespace {

constexpr std::size_t hubThreads = 4; // they mostly wait for answers

} // namespace

LoadThreads &LoadThreads::ofFiles()
{
    static LoadThreads instance(std::max(2u, std::thread::hardware_concurrency()));
    return instance;
}

LoadThreads &LoadThreads::ofHub()
{
    static auto &instance = *new LoadThreads(hubThreads); // never destroyed: a job may hang when the process ends
    return instance;
}

LoadThreads::LoadThreads(std::size_t maximum) : m_maximum(maximum) {}

LoadThreads::~LoadThreads()
{
    std::deque<std::function<void()>> dropped; // outlives the lock: what a job holds may do anything when it goes
    std::unique_lock lock(m_mutex);
    dropped.swap(m_jobs);
    m_ended.wait(lock, [this] { return m_threads == 0; });
}

void LoadThreads::start(std::function<void()> job)
{
    const std::lock_guard lock(m_mutex);
    m_jobs.push_back(std::move(job));
    if (m_threads == m_maximum)
        return;
    try {
        std::thread([this] { work(); }).detach();
        ++m_threads;
    } catch (const std::system_error &) {
        if (m_threads > 0)
            return; // those that are there will come to it
        m_jobs.pop_back();
        throw;
    }
}

std::size_t LoadThreads::count() const
{
    const std::lock_guard lock(m_mutex);
    return m_threads;
}

void LoadThreads::work()
{
    while (const std::function<void()> job = nextJob())
        job();
}

/// The next job; an empty one when the calling thread is to end.
std::function<void()> LoadThreads::nextJob()
{
    const std::lock_guard lock(m_mutex);
    if (m_jobs.empty()) {
        if (--m_threads == 0)
            m_ended.notify_all();
        return {};
    }
    std::function<void()> job = std::move(m_jobs.front());
    m_jobs.pop_front();
    return job;
}

} // namespace Varn::ToolLibraries

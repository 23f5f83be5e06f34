#include "util/utility/Assert.h"

#include <atomic>
#include <iostream>
#include <mutex>
#include <utility>

namespace _debug {

namespace {

std::atomic<bool> testing{false};
std::mutex handlerMutex;

AssertHandler &currentHandler() // guarded by handlerMutex
{
    static AssertHandler handler;
    return handler;
}

} // namespace

bool isTesting()
{
    return testing.load(std::memory_order_relaxed);
}

void setTesting(bool on)
{
    testing.store(on, std::memory_order_relaxed);
}

AssertHandler setAssertHandler(AssertHandler handler)
{
    const std::lock_guard lock(handlerMutex);
    return std::exchange(currentHandler(), std::move(handler));
}

void failTestForAssert(std::string_view message, std::string_view source, int line)
{
    if (!isTesting())
        return;
    AssertHandler handler;
    {
        const std::lock_guard lock(handlerMutex);
        handler = currentHandler();
    }
    if (handler)
        handler(message, source, line);
    else
        std::cerr << source << ':' << line << ": assertion failed: " << message << '\n';
}

} // namespace _debug

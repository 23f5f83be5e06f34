#include "platform/utils/Thread.h"

#include <atomic>
#include <thread>

namespace Varn {

namespace {

std::atomic<std::thread::id> mainThread{std::this_thread::get_id()};

} // namespace

bool Thread::isMainThread()
{
    return mainThread.load() == std::this_thread::get_id();
}

void Thread::setMainThread()
{
    mainThread.store(std::this_thread::get_id());
}

} // namespace Varn

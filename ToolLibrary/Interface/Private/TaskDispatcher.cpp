#include "ToolLibrary/Interface/Private/TaskDispatcher.h"

#include "platform/core/VarnApplication.h"
#include "platform/utils/Thread.h"

namespace Varn::ToolLibraries {

std::atomic<std::size_t> TaskDispatcher::pendingTaskCount{0};

TaskDispatcher::ThreadExecutor::~ThreadExecutor() = default;

void VarnMainThreadExecutor::operator()(std::function<void()> job) const
{
    if (Thread::isMainThread())
        job();
    else
        VarnApplication::runOnMainThread(std::move(job));
}

} // namespace Varn::ToolLibraries

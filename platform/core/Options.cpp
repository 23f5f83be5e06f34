#include "platform/core/Options.h"

#include <atomic>

namespace Varn {

namespace {

std::atomic<bool> toolValidation{false};
std::atomic<bool> toolLibraryLogging{false};

} // namespace

bool Options::getEnableToolValidation()
{
    return toolValidation.load(std::memory_order_relaxed);
}

void Options::setEnableToolValidation(bool on)
{
    toolValidation.store(on, std::memory_order_relaxed);
}

bool Options::getEnableToolLibraryLogging()
{
    return toolLibraryLogging.load(std::memory_order_relaxed);
}

void Options::setEnableToolLibraryLogging(bool on)
{
    toolLibraryLogging.store(on, std::memory_order_relaxed);
}

} // namespace Varn

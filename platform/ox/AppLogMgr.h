// AppLogMgr.h -- where the lines of the application log go. Any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <functional>
#include <string_view>

namespace Ox {

/// The library prints nothing itself: without a sink every line is dropped, at next to no cost. A host that wants a log
/// installs one.
class VARN_PLATFORM_EXPORT AppLogMgr
{
public:
    /// Receives a line, UTF-8 without a line end, and its level.
    using Sink = std::function<void(int level, std::string_view text)>;

    /// Logs a line: level 1 for failures of operations and loaders, 3 for trouble in reading a library and for detail.
    /// Lines reach the sink one at a time, on the thread that logs. Never throws: a line whose sink throws is lost, and
    /// so is one that the sink itself logs.
    static void appLog(int level, std::string_view text) noexcept;

    /// Installs what receives the lines, an empty one for nothing, and returns what did before. On return no other
    /// thread is in the old sink any more. A sink may call this; it must not wait for a thread that logs.
    static Sink setSink(Sink sink);
};

} // namespace Ox

// Log.h -- where the log lines of the platform go while quillon runs.
#pragma once

#include "platform/ox/AppLogMgr.h"

#include <ostream>

namespace Quillon {

/// Until it dies, writes each line with its time and level to "quillon.log" in the app data folder, or to \a stream
/// when there is one. The file is made with the first line; a log that cannot be written is no failure. Not nested.
class Log
{
public:
    explicit Log(std::ostream *stream);
    ~Log();
    Log(const Log &) = delete;
    Log &operator=(const Log &) = delete;

private:
    Ox::AppLogMgr::Sink m_previous;
};

} // namespace Quillon

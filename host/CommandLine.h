// CommandLine.h -- the commands of quillon. One call at a time, on the main thread.
#pragma once

#include <istream>
#include <ostream>
#include <string>
#include <vector>

namespace Quillon {

/// Where a command reads and writes. A width of 0 is that of a file or a pipe, where no line is cut.
struct Streams {
    std::istream &in;
    std::ostream &out;
    std::ostream &err;
    std::size_t width = 0;
    bool errIsTerminal = false; ///< progress may be shown
};

enum ExitStatus {
    Done = 0,
    Failed = 1,     ///< the operation failed; one line on err says why
    WrongUsage = 2, ///< the words of the command were wrong
};

/// A text for one line of a terminal: its control characters are blanks.
std::string oneLine(std::string text);

/// Runs "quillon ARGUMENTS".
ExitStatus runCommandLine(const std::vector<std::string> &arguments, const Streams &terminal);

} // namespace Quillon

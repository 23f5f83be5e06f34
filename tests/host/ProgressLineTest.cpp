#include "host/ProgressLine.h"
#include "support/LibraryFile.h"
#include "support/TestPaths.h"

#include <gmock/gmock.h>

#include <sstream>
#include <thread>

using namespace Quillon;
using namespace TestSupport;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

/// What is written in the time of a wait.
std::string writtenIn(std::chrono::milliseconds wait, bool errIsTerminal)
{
    const TestPaths paths;
    writeFile(paths.local(u"Local/a.json"), libraryText({toolText(1)}));
    const Engine engine;
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    {
        const ProgressLine line({in, out, err, 0, errIsTerminal}, engine);
        std::this_thread::sleep_for(wait);
    }
    EXPECT_EQ(out.str(), "");
    return err.str();
}

} // namespace

TEST(ProgressLine, ALongWaitIsToldAndClearedAway)
{
    const std::string written = writtenIn(std::chrono::milliseconds(700), true);
    EXPECT_THAT(written, HasSubstr("Loading libraries: 2 of 2"));
    EXPECT_THAT(written, EndsWith("\r\x1b[K"));
}

TEST(ProgressLine, AShortWaitLeavesTheTerminalAlone)
{
    EXPECT_EQ(writtenIn(std::chrono::milliseconds(1), true), "");
}

TEST(ProgressLine, WhatIsNoTerminalIsNotWrittenTo)
{
    EXPECT_EQ(writtenIn(std::chrono::milliseconds(500), false), "");
}

// Options.h -- the switches that a host sets for the whole process. Any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

namespace Varn {

/// All are off at the start of the process.
class VARN_PLATFORM_EXPORT Options
{
public:
    /// Whether tools are checked against the definitions of their parameters when they are listed.
    static bool getEnableToolValidation();
    static void setEnableToolValidation(bool on);

    /// Whether tools that could not be used are written to the log in full.
    static bool getEnableToolLibraryLogging();
    static void setEnableToolLibraryLogging(bool on);
};

} // namespace Varn

// ToolLibraryVersion.h -- the version of the tool format. Stateless, any thread.
#pragma once

namespace Varn {

class ToolLibraryVersion
{
public:
    /// The version that this system writes. Versions are plain integers; 0 and 1 are both the oldest format.
    static constexpr int latestVersion() { return 36; }
};

} // namespace Varn

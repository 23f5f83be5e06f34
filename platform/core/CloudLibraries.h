// CloudLibraries.h -- libraries in a folder that something else keeps synchronised with the cloud.
//
// The host configures the folder when it starts and takes it back when it ends, while nothing else uses the object. In
// between any thread may ask.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "util/utility/SafePointer.h"

#include <string>

namespace Varn {

class VARN_PLATFORM_EXPORT CloudLibraries : public SafePointerTarget
{
public:
    enum LibraryType : int {
        TOOL_LIBRARIES = 1,
    };

    /// The cloud libraries of a kind; null while no folder is configured, and for a kind that is not kept there.
    static SafePointer<CloudLibraries> get(LibraryType type);

    /// Keeps the cloud libraries in \a folder. Pointers to the object of a folder configured before become null.
    /// An empty text is the same as reset().
    static void configure(const std::wstring &folder);

    /// Turns the cloud libraries off, as at the start of the process.
    static void reset();

    /// Whether a folder is configured.
    static bool EnableCloudLibraries();

    /// The folder with the local copies: absolute, with '/' between names and none at the end.
    std::wstring getCachedCloudLibrariesFolder() const { return m_folder; }

    explicit CloudLibraries(const std::wstring &folder);

private:
    std::wstring m_folder;
};

} // namespace Varn

// CloudLibraries.h -- libraries in a folder that something else keeps synchronised with the cloud.
//
// The host configures the folder when it starts and takes it back when it ends, while nothing else uses the object. In
// between any thread may ask, and any thread may tell of a change.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "util/utility/SafePointer.h"

#include <filesystem>
#include <functional>
#include <string>

namespace Varn {

class VARN_PLATFORM_EXPORT CloudLibraries : public SafePointerTarget
{
public:
    enum LibraryType : int {
        TOOL_LIBRARIES = 1,
    };

    /// What the engine has done to a file or folder of the cloud.
    struct Event {
        enum class Kind {
            Uploaded,        ///< written at path: the cloud needs it
            Deleted,         ///< gone from path
            Renamed,         ///< from path to newPath
            MarkedAsDeleted, ///< gone from path on purpose, so that the synchronisation does not bring it back
        };
        Kind kind;
        std::wstring path;    ///< as the caller has it
        std::wstring newPath; ///< empty unless renamed
    };
    using Listener = std::function<void(const Event &)>;

    /// The cloud libraries of a kind; null while no folder is configured, and for a kind that is not kept there.
    static SafePointer<CloudLibraries> get(LibraryType type);

    /// Keeps the cloud libraries in \a folder. Pointers to the object of a folder configured before become null.
    /// An empty text is the same as reset().
    static void configure(const std::wstring &folder);

    /// Turns the cloud libraries off, as at the start of the process; the listener goes too.
    static void reset();

    /// Whether a folder is configured.
    static bool EnableCloudLibraries();

    /// \name Telling of changes
    /// Called after the change on the disk. Each call reaches the listener once, on the caller's thread; nothing
    /// happens while no folder is configured or nobody listens.
    /// @{
    /// Who is told from now on; none for an empty function. It must not throw, and may call back.
    static void setListener(Listener listener);
    static void fireCloudUploadEvent(const std::wstring &path);
    static void fireCloudDeleteEvent(const std::wstring &path);
    static void fireCloudRenameEvent(const std::wstring &from, const std::wstring &to);
    static void markFileAsDeleted(const std::wstring &path);
    /// @}

    /// Whether the cloud learns of changes to \a path by the events alone, so that no file needs to be marked before it
    /// goes. False for what does not lie in the configured folder, and unless the host says otherwise.
    static bool isUsingExplicitSync(const std::wstring &path);
    static void setExplicitSync(bool explicitSync); ///< false again after reset()

    /// The folder with the local copies: absolute, with '/' between names and none at the end.
    std::wstring getCachedCloudLibrariesFolder() const { return m_folder; }

    /// Whether this user may make files in \a folder, which counts from the folder with the copies unless it is
    /// absolute. False when it is not there.
    bool userCanWriteToFolder(const std::filesystem::path &folder) const;

    explicit CloudLibraries(const std::wstring &folder);

private:
    bool holds(const std::wstring &path) const;

    std::wstring m_folder;
};

} // namespace Varn

// TemporaryFolder.h -- a folder in the system's folder for temporary files. One thread at a time.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <string>

namespace Ox {

/// A folder of its own for each object, whose path cannot be foretold and which only this user may enter.
class VARN_PLATFORM_EXPORT TemporaryFolder
{
public:
    /// \a name, if not empty, begins the name of the folder; the rest is random. Without \a create the path is only
    /// chosen, and whoever needs the folder makes it. If \a removeAtEnd, whatever is at the path goes with the object,
    /// with all that is in it; links are removed, not followed.
    /// \throws std::filesystem::filesystem_error when it cannot be created, or \a name has a '/'.
    TemporaryFolder(const std::wstring &name, bool create, bool removeAtEnd);
    ~TemporaryFolder();

    TemporaryFolder(TemporaryFolder &&other) noexcept;
    TemporaryFolder &operator=(TemporaryFolder &&other) noexcept;

    /// The whole path without a separator at its end; empty in one that was moved from.
    const std::wstring &folderPath() const { return m_path; }

    /// The folder for temporary files of the system: $TMPDIR, else "/tmp".
    static std::wstring systemFolder();

private:
    void remove() noexcept;

    std::wstring m_path;
    bool m_removeAtEnd;
};

} // namespace Ox

// TemporaryFile.h -- a file in the system's folder for temporary files that goes away by itself. One thread at a time.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <string>
#include <string_view>

namespace Ox {

/// A new empty file that only this user may read and write, removed with the object. Its name is unique and cannot be
/// foretold.
class VARN_PLATFORM_EXPORT TemporaryFile
{
public:
    /// Creates the file. \a extension, such as L".3DTool", ends its name.
    /// \throws std::filesystem::filesystem_error when it cannot be created, or \a extension has a '/'.
    explicit TemporaryFile(std::wstring_view extension = {});
    ~TemporaryFile();

    TemporaryFile(TemporaryFile &&other) noexcept;
    TemporaryFile &operator=(TemporaryFile &&other) noexcept;

    /// The whole path; empty in one that was released or moved from.
    const std::wstring &filePath() const { return m_path; }

    /// Gives the file to the caller: it stays when the object dies. Returns its path.
    std::wstring release();

private:
    void remove() noexcept;

    std::wstring m_path;
};

} // namespace Ox

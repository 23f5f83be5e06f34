// FileSystem.h -- files and folders by their path as wide text. Stateless, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <QStringView>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace Varn {

/// Paths are wide text with '/' between the parts. What changes something on the disk answers with an error code: false
/// when all went well, else `message()` is the text for people. Nothing here throws but for want of memory.
class VARN_PLATFORM_EXPORT FileSystem
{
public:
    struct FileCloser {
        void operator()(std::FILE *file) const { std::fclose(file); }
    };
    /// An open file, closed with the pointer; null when it could not be opened.
    using File = std::unique_ptr<std::FILE, FileCloser>;

    /// \name Between wide text and the names of the system
    /// The system holds a name as bytes, UTF-8 by custom. A byte that is no UTF-8 is U+DC00 + byte in the wide text, so
    /// that every name survives the way there and back. What no name can hold, NUL too, becomes U+FFFD in the path.
    /// @{
    static std::filesystem::path toPath(std::wstring_view text);
    static std::wstring fromPath(const std::filesystem::path &path);
    /// The wide text of a path that Qt has: unlike Qt's own conversion it keeps those bytes.
    static std::wstring fromQString(QStringView text);
    /// @}

    /// \name The text of a path, whatever is on the disk
    /// @{
    /// What follows the last '/'; empty for a path that ends in one.
    static std::wstring getFileName(std::wstring_view path);
    /// What precedes the last '/'; empty without one, "/" for what lies in the root.
    static std::wstring getFolder(std::wstring_view path);
    /// From the last dot of the file name on, so ".json" for "a.b.json" and for ".json", "." for "a."; empty without a
    /// dot, and for "." and "..". Its case stays.
    static std::wstring getExtension(std::wstring_view path);
    /// True if the extension is \a extension (with its dot), whatever the case of its ASCII letters.
    static bool hasExtension(std::wstring_view path, std::wstring_view extension);
    /// \a folder, one '/' and \a name without any '/' at its start. An empty part leaves the other alone.
    static std::wstring combine(std::wstring_view folder, std::wstring_view name);
    /// A path from another system in the form of this one: every '\' becomes '/'.
    static std::wstring getNativePath(std::wstring_view path);
    /// \a path without any '/' and '\' at its start: never an absolute path.
    static std::wstring trimLeadingSeparator(std::wstring_view path);
    /// True if a new file or folder may bear this name: not empty, "." or "..", no '/' or '\', no control character,
    /// nothing that is no Unicode character, and at most 255 bytes of UTF-8.
    static bool isValidFileName(std::wstring_view name);
    /// @}

    /// \name What is on the disk. Links are followed; what cannot be reached is not there.
    /// @{
    static bool exists(std::wstring_view path);
    static bool isDirectory(std::wstring_view path);
    /// True for a regular file; false for a folder, pipe or device.
    static bool isFile(std::wstring_view path);
    /// The names of the regular files directly in \a folder that match \a pattern ('*' any text, '?' one character,
    /// case does not matter), in ascending order. Empty when the folder cannot be read.
    static std::vector<std::wstring> getFiles(std::wstring_view folder, std::wstring_view pattern);
    /// Opens a regular file to read its bytes (mode "rb"). Null for anything else: a missing or locked file, a folder,
    /// a pipe, a device. Never waits for the other end of a pipe.
    static File openForReading(const std::wstring &path);
    /// @}

    /// \name Changes
    /// @{
    /// Makes the folder and the ones above it that are missing. A folder that is there is fine.
    [[nodiscard]] static std::error_code createFolders(std::wstring_view path);
    /// Copies a regular file. Without \a overwrite a target that exists is an error, `std::errc::file_exists`. A copy
    /// that fails halfway leaves no new file behind; an overwritten one may then be torn.
    [[nodiscard]] static std::error_code copy(std::wstring_view from, std::wstring_view to, bool overwrite);
    /// Renames or moves a folder within a file system. Nothing may be at \a to.
    [[nodiscard]] static std::error_code renameFolder(std::wstring_view from, std::wstring_view to);
    /// Removes a file or a link, not what the link leads to. Fine when nothing is there; a folder is an error.
    [[nodiscard]] static std::error_code remove(std::wstring_view path);
    /// Removes a folder with all that is in it, or the link if it is one to a folder. Links in it are not followed.
    [[nodiscard]] static std::error_code removeFolderRecursive(std::wstring_view path);
    /// @}
};

} // namespace Varn

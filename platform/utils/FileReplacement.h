// FileReplacement.h -- writes a file so that, whatever happens on the way, the old file or the new one is there. One
// thread; two processes that replace one file leave that of the later.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Varn {

/// The bytes go into a new file beside the old one, which takes its place at commit(). A link is followed to the file
/// that it leads to. Where the folder takes no new file, or the old file has several hard links, the bytes go into the
/// old file itself: the one case in which a crash or a full disk can tear it. What a process that died has left beside
/// the file is removed. The new file has the permissions of the old one, and its owner and group as far as this process
/// may give them.
class VARN_PLATFORM_EXPORT FileReplacement
{
public:
    /// Asks first whether \a path could be opened for writing: an old file must be a plain one with write permission.
    explicit FileReplacement(const std::wstring &path);
    FileReplacement(const FileReplacement &) = delete;
    FileReplacement &operator=(const FileReplacement &) = delete;

    /// Without a commit() the old file stays as it is, and nothing stays beside it.
    ~FileReplacement();

    bool isOpen() const { return m_descriptor >= 0; }

    /// Appends \a bytes; false when not all of them were taken, after which commit() fails.
    bool write(std::string_view bytes);

    /// Brings the bytes to the disk and puts the new file in the place of the old one; false when any of it failed.
    bool commit();

private:
    void openBeside(unsigned mode);
    void openInPlace();
    void startFlush(std::uint64_t written);
    bool finish();

    std::string m_target; // name in the file system
    std::string m_beside; // of the new file; empty when the old file is written itself
    int m_descriptor = -1;
    std::uint64_t m_unflushed = 0; // bytes at the end that the disk may not have begun to take
    bool m_failed = false;
};

} // namespace Varn

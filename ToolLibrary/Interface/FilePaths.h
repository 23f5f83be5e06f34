// FilePaths.h -- the folders that the engine works in. Creating an instance puts it on top of a stack, destroying it
// takes it off; everything asks the top. So a test, or a host with folders of its own, replaces all of them at once.
//
// Instances are made and destroyed on one thread, nested strictly, while nothing else is at work; get() and the queries
// may be called on any thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"

#include <string>

namespace Varn::Tools {

class TOOL_LIBRARY_EXPORT FilePaths
{
public:
    FilePaths();
    FilePaths(const FilePaths &) = delete;
    FilePaths &operator=(const FilePaths &) = delete;

    /// The user's application data folder.
    virtual std::wstring appDataFolder() const = 0;
    /// The local copy of the cloud libraries.
    virtual std::wstring cloudLibrariesFolder() const = 0;
    /// The per-user folder in which earlier releases kept libraries; the sample libraries lie in its folder "Samples".
    virtual std::wstring systemLibrariesFolder() const = 0;
    /// The user's own libraries lie in its folder "Local".
    virtual std::wstring localLibrariesFolder() const = 0;
    virtual ~FilePaths();

    static const FilePaths &get();
};

/// The folders of a person's machine; at the bottom of the stack from the start. Each folder but that of the cloud is
/// read once and kept.
class TOOL_LIBRARY_EXPORT DefaultFilePaths : public FilePaths
{
public:
    std::wstring appDataFolder() const override;
    /// Raises NullPointerException while no cloud folder is configured.
    std::wstring cloudLibrariesFolder() const override;
    std::wstring systemLibrariesFolder() const override;
    std::wstring localLibrariesFolder() const override;
};

} // namespace Varn::Tools

// UserInteraction.h -- every question that the engine puts to a person. Called on the main thread.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/tool/ToolLibraryLocator.h"
#include "platform/tool/ToolOverwriteChoice.h"

#include <string>
#include <vector>

namespace Varn::ToolLibraries {

class ErrorReport;

class VARN_PLATFORM_EXPORT UserInteraction
{
public:
    /// \a url in UTF-8; true when it was opened.
    virtual bool openExternalLink(const std::string &url) = 0;

    /// A path to write to; empty when the person cancelled.
    virtual std::wstring promptWhereToExportToolLibrary(const ToolLibraryLocator &library) = 0;

    virtual std::vector<std::wstring> promptWhichToolLibrariesToImport() = 0;
    virtual std::vector<std::wstring> promptWhichToolsToImport() = 0;
    virtual std::wstring promptWhich3DToolToImport() = 0;

    /// What becomes of operations that use a preset that has been edited; \a operations are their names.
    virtual ToolOverwriteChoice promptToOverwriteTool(const std::vector<std::wstring> &operations) = 0;

    /// True when the report was taken.
    virtual bool sendReport(ErrorReport &report) = 0;

    virtual ~UserInteraction();
};

} // namespace Varn::ToolLibraries

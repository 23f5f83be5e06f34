// APIUserInteraction.h -- answers the engine's questions from values queued in advance, so that a script can drive it
// without a dialog. One thread at a time.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/tool/UserInteraction.h"

#include <optional>

namespace Varn::ToolLibraries {

/// One answer can wait for each question; a second one takes the place of the first. Each serves one question, but for
/// the choice of promptToOverwriteTool, which stays. A question without an answer gets an empty one, and choice 0.
class TOOL_LIBRARY_EXPORT APIUserInteraction : public UserInteraction
{
public:
    void setWhereToExportToolLibrary(const std::wstring &path) { m_exportPath = path; }
    void setWhichToolLibraryToImport(const std::wstring &path) { m_libraryPath = path; }
    void setWhichToolToImport(const std::wstring &path) { m_toolPath = path; }
    void setWhich3DToolToImport(const std::wstring &path) { m_toolPath3D = path; }
    void setOverwriteToolFeedAndSpeed(ToolOverwriteChoice choice) { m_overwriteChoice = choice; }

    /// A script opens no links: always false.
    bool openExternalLink(const std::string &url) override;
    std::wstring promptWhereToExportToolLibrary(const ToolLibraryLocator &library) override;
    std::vector<std::wstring> promptWhichToolLibrariesToImport() override;
    std::vector<std::wstring> promptWhichToolsToImport() override;
    std::wstring promptWhich3DToolToImport() override;
    ToolOverwriteChoice promptToOverwriteTool(const std::vector<std::wstring> &operations) override;

    /// Always false: a script gets its failures as answers.
    bool sendReport(ErrorReport &report) override;

private:
    std::optional<std::wstring> m_exportPath;
    std::optional<std::wstring> m_libraryPath;
    std::optional<std::wstring> m_toolPath;
    std::optional<std::wstring> m_toolPath3D;
    std::optional<ToolOverwriteChoice> m_overwriteChoice;
};

} // namespace Varn::ToolLibraries

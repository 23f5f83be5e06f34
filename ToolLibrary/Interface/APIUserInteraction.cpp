#include "ToolLibrary/Interface/APIUserInteraction.h"

#include "util/utility/Assert.h"

#include <string_view>
#include <utility>

namespace Varn::ToolLibraries {

namespace {

std::optional<std::wstring> taken(std::optional<std::wstring> &slot, std::string_view assertion)
{
    if (!slot)
        VARN_FAIL(assertion);
    return std::exchange(slot, std::nullopt);
}

std::vector<std::wstring> asList(std::optional<std::wstring> path)
{
    std::vector<std::wstring> paths;
    if (path)
        paths.push_back(std::move(*path));
    return paths;
}

} // namespace

bool APIUserInteraction::openExternalLink(const std::string &)
{
    VARN_FAIL("This method is not expected to be used by the Quillon Tool Library API.");
    return false;
}

std::wstring APIUserInteraction::promptWhereToExportToolLibrary(const ToolLibraryLocator &)
{
    return taken(m_exportPath, "Expected tool library export to be queued.").value_or(std::wstring());
}

std::vector<std::wstring> APIUserInteraction::promptWhichToolLibrariesToImport()
{
    return asList(taken(m_libraryPath, "Expected tool library import to be queued."));
}

std::vector<std::wstring> APIUserInteraction::promptWhichToolsToImport()
{
    return asList(taken(m_toolPath, "Expected tool import to be queued."));
}

std::wstring APIUserInteraction::promptWhich3DToolToImport()
{
    return taken(m_toolPath3D, "Expected 3D tool import to be queued.").value_or(std::wstring());
}

ToolOverwriteChoice APIUserInteraction::promptToOverwriteTool(const std::vector<std::wstring> &)
{
    return m_overwriteChoice.value_or(ToolOverwriteChoice{});
}

bool APIUserInteraction::sendReport(ErrorReport &)
{
    return false;
}

} // namespace Varn::ToolLibraries

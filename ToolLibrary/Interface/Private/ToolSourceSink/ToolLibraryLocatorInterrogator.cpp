#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolLibraryLocatorInterrogator.h"

#include "platform/utils/FileSystem.h"
#include "util/utility/Assert.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <utility>

namespace Varn::ToolLibraries {

using Tools::ToolLibraryUrl;

ToolLibraryLocatorInterrogator::ToolLibraryLocatorInterrogator(ToolLibraryLocator locator)
    : m_locator(std::move(locator))
{
}

bool ToolLibraryLocatorInterrogator::isLocalFile() const
{
    return isFilePath() || ToolLibraryUrl(m_locator).version() >= 0;
}

bool ToolLibraryLocatorInterrogator::isDocument() const
{
    return isUrl() && url().isDocumentLibrary();
}

bool ToolLibraryLocatorInterrogator::isSetup() const
{
    return isUrl() && url().isSetup();
}

bool ToolLibraryLocatorInterrogator::isHub() const
{
    return isUrl() && url().isHubLibrary();
}

bool ToolLibraryLocatorInterrogator::isValidLibraryLocator() const
{
    if (isFilePath())
        return true;
    const ToolLibraryUrl location = url();
    return !location.isAllLibrary() && !location.isFolder() && !location.isUnknown() && !location.isWebLibrary();
}

bool ToolLibraryLocatorInterrogator::isLocalZet() const
{
    return isLocalFileOf(FileExtension::Zet);
}

bool ToolLibraryLocatorInterrogator::isLocalJson() const
{
    return isLocalFileOf(FileExtension::Json);
}

bool ToolLibraryLocatorInterrogator::isLocalZippedJson() const
{
    return isLocalFileOf(FileExtension::Tools);
}

bool ToolLibraryLocatorInterrogator::isLocalTsv() const
{
    return isLocalFileOf(FileExtension::Tsv);
}

bool ToolLibraryLocatorInterrogator::isLocalCsv() const
{
    return isLocalFileOf(FileExtension::Csv);
}

bool ToolLibraryLocatorInterrogator::isLocalMasterCamHolders() const
{
    return isLocalFileOf(FileExtension::MasterCamHolders);
}

bool ToolLibraryLocatorInterrogator::isLocalMasterCamTools() const
{
    return isLocalFileOf(FileExtension::MasterCamTools);
}

bool ToolLibraryLocatorInterrogator::isLocalUnigraphicsNX() const
{
    return isLocalFileOf(FileExtension::UnigraphicsNX);
}

bool ToolLibraryLocatorInterrogator::isLocalZip() const
{
    return isLocalFileOf(FileExtension::Zip);
}

std::wstring ToolLibraryLocatorInterrogator::filePath() const
{
    VARN_ASSERT(isLocalFile());
    return isFilePath() ? m_locator.url() : FileSystem::fromQString(url().fullFilePath());
}

ToolLibraryUrl ToolLibraryLocatorInterrogator::url() const
{
    VARN_ASSERT(isUrl());
    return ToolLibraryUrl(m_locator);
}

bool ToolLibraryLocatorInterrogator::isLocalFileOf(FileExtension extension) const
{
    return isLocalFile() && fileExtension() == extension;
}

ToolLibraryLocatorInterrogator::FileExtension ToolLibraryLocatorInterrogator::fileExtension() const
{
    VARN_ASSERT(isLocalFile());
    return isUrl() ? urlFileExtension() : localFileExtension();
}

ToolLibraryLocatorInterrogator::FileExtension ToolLibraryLocatorInterrogator::urlFileExtension() const
{
    VARN_ASSERT(isUrl() && isLocalFile());
    switch (url().version()) {
    case 0:
        return FileExtension::Zet;
    case 1:
        return FileExtension::Json;
    case 2:
        return FileExtension::Tools;
    default: // a hub library, whose file is not on this machine
        VARN_FAIL("Restricted flow");
        return FileExtension::Unknown;
    }
}

ToolLibraryLocatorInterrogator::FileExtension ToolLibraryLocatorInterrogator::localFileExtension() const
{
    VARN_ASSERT(isFilePath());
    std::wstring extension = FileSystem::getExtension(filePath());
    std::ranges::transform(extension, extension.begin(), [](wchar_t character) {
        return character < 128 ? static_cast<wchar_t>(std::tolower(static_cast<int>(character))) : character;
    });
    // Plain rows, which no end of the process takes from a load that is still under way.
    struct Row {
        std::wstring_view text;
        FileExtension extension;
    };
    static constexpr Row rows[] = {
        {L".zetlib", FileExtension::Zet},
        {L".json", FileExtension::Json},
        {L".tools", FileExtension::Tools},
        {L".tsv", FileExtension::Tsv},
        {L".csv", FileExtension::Csv},
        {L".holderstxt", FileExtension::MasterCamHolders},
        {L".txt", FileExtension::MasterCamTools},
        {L".dat", FileExtension::UnigraphicsNX},
        {L".zip", FileExtension::Zip},
    };
    const auto *found = std::ranges::find(rows, extension, &Row::text);
    return found == std::end(rows) ? FileExtension::Unknown : found->extension;
}

} // namespace Varn::ToolLibraries

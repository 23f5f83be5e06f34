// ToolLibraryLocatorInterrogator.h -- what kind of library a locator names, and in which format. A value, any thread.
#pragma once

#include "ToolLibrary/IO/ToolLibraryUrl.h"
#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/tool/ToolLibraryLocator.h"

#include <string>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT ToolLibraryLocatorInterrogator
{
public:
    explicit ToolLibraryLocatorInterrogator(ToolLibraryLocator locator);

    /// Any file path, and a URL that ends as a library file does (a hub library too).
    bool isLocalFile() const;
    bool isDocument() const;
    bool isSetup() const;
    bool isHub() const;
    /// Any file path, and a URL that names a library. Whether the path can be read shows in the loader.
    bool isValidLibraryLocator() const;

    // By the end of the name: of a file path in any case, of a URL as it is written. A URL has only the first three.
    bool isLocalZet() const;
    bool isLocalJson() const;
    bool isLocalZippedJson() const;
    bool isLocalTsv() const;
    bool isLocalCsv() const;
    bool isLocalMasterCamHolders() const;
    bool isLocalMasterCamTools() const;
    bool isLocalUnigraphicsNX() const;
    bool isLocalZip() const;

    /// The place on disk. REQUIRES: isLocalFile().
    std::wstring filePath() const;
    /// REQUIRES: a locator of URL kind.
    Tools::ToolLibraryUrl url() const;

private:
    enum class FileExtension {
        Unknown = 0,
        Zet = 1,
        Json = 2,
        Tools = 3,
        Tsv = 4,
        Csv = 5,
        MasterCamHolders = 6,
        MasterCamTools = 7,
        UnigraphicsNX = 8,
        Zip = 9
    };

    bool isFilePath() const { return m_locator.isFilePath(); }
    bool isUrl() const { return !m_locator.isFilePath(); }
    bool isLocalFileOf(FileExtension extension) const;
    FileExtension fileExtension() const;
    FileExtension urlFileExtension() const;
    FileExtension localFileExtension() const;

    ToolLibraryLocator m_locator;
};

} // namespace Varn::ToolLibraries

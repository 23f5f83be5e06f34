// Libraries.h -- the documents that are measured, made once by the generator and kept in the build folder.
#pragma once

#include "ToolLibrary/Interface/FilePaths.h"

#include <cstddef>
#include <string>

namespace Bench {

/// The URL of a library of that many tools, in the form in which library files are saved.
std::wstring libraryUrl(std::size_t tools);

/// Its file.
std::string libraryFile(std::size_t tools);

/// Its bytes.
std::string libraryBytes(std::size_t tools);

/// The folders of the engine while it is measured.
class BenchPaths : public Varn::Tools::FilePaths
{
public:
    std::wstring appDataFolder() const override;
    std::wstring cloudLibrariesFolder() const override { return appDataFolder(); }
    std::wstring systemLibrariesFolder() const override { return appDataFolder(); }
    std::wstring localLibrariesFolder() const override { return appDataFolder(); }
};

} // namespace Bench

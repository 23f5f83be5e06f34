// ExportLibraryResult.h -- what became of a library that was to be exported to a file. Values, any thread.
#pragma once

#include "platform/tool/ToolLibraryLocator.h"
#include "platform/tool/UpdateMultipleResult.h"
#include "platform/tool/UpdateResult.h"

#include <vector>

namespace Varn::ToolLibraries {

class VARN_PLATFORM_EXPORT ExportLibraryResult : public UpdateResult<ToolLibraryLocator>
{
public:
    ExportLibraryResult(const ToolLibraryLocator &library, const std::string &error,
                        const std::optional<std::wstring> &translated);

    /// The file is written; \a errorCodes name what of the library is not in it.
    ExportLibraryResult(const ToolLibraryLocator &library, const std::vector<unsigned int> &errorCodes);

    /// Codes of the host's table of errors; empty when all went well, and on failure.
    const std::vector<unsigned int> &errorCodes() const { return m_errorCodes; }

protected:
    /// "errorCodes" when the file is written.
    void appendMembers(std::string &json) const override;

private:
    std::vector<unsigned int> m_errorCodes;
};

class VARN_PLATFORM_EXPORT ExportLibrariesResult : public UpdateMultipleResult<ExportLibraryResult>
{
};

} // namespace Varn::ToolLibraries

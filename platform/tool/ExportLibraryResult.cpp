#include "platform/tool/ExportLibraryResult.h"

namespace Varn::ToolLibraries {

ExportLibraryResult::ExportLibraryResult(const ToolLibraryLocator &library, const std::string &error,
                                         const std::optional<std::wstring> &translated)
    : UpdateResult(library, error, translated)
{
}

ExportLibraryResult::ExportLibraryResult(const ToolLibraryLocator &library, const std::vector<unsigned int> &errorCodes)
    : UpdateResult(library), m_errorCodes(errorCodes)
{
}

void ExportLibraryResult::appendMembers(std::string &json) const
{
    if (hasError())
        return;
    json += ",\"errorCodes\":[";
    for (std::size_t i = 0; i < m_errorCodes.size(); ++i) {
        if (i > 0)
            json += ',';
        json += std::to_string(m_errorCodes[i]);
    }
    json += ']';
}

} // namespace Varn::ToolLibraries

#include "platform/tool/ImportLibraryResult.h"

#include "platform/tool/JsonText.h"

namespace Varn::ToolLibraries {

ImportLibraryResult::ImportLibraryResult(const Exception &exception)
    : UpdateNodeResult(nullptr, ErrorResult::textOf(exception), exception.translatedWhat())
{
}

ImportLibraryResult::ImportLibraryResult(const std::shared_ptr<LibraryMetadata> &library) : UpdateNodeResult(library) {}

ImportLibraryResult::ImportLibraryResult(const std::shared_ptr<LibraryMetadata> &library,
                                         const Confirmation &confirmation)
    : UpdateNodeResult(library), m_confirmation(confirmation)
{
}

ImportLibraryResult::ImportLibraryResult(const std::shared_ptr<LibraryMetadata> &library, const std::string &warning)
    : UpdateNodeResult(library), m_warning(warning)
{
}

void ImportLibraryResult::appendMembers(std::string &json) const
{
    if (m_confirmation)
        json += ",\"confirmation\":" + m_confirmation->toJson();
    if (m_warning) {
        json += ",\"warning\":";
        JsonText::printString(*m_warning, json);
    }
}

} // namespace Varn::ToolLibraries

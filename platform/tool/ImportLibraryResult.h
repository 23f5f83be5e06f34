// ImportLibraryResult.h -- what became of a file that was to be imported as a library. Values, any thread.
#pragma once

#include "platform/tool/Confirmation.h"
#include "platform/tool/Exception.h"
#include "platform/tool/UpdateNodeResult.h"

namespace Varn::ToolLibraries {

class VARN_PLATFORM_EXPORT ImportLibraryResult : public UpdateNodeResult
{
public:
    /// Failure; there is no item.
    explicit ImportLibraryResult(const Exception &exception);

    explicit ImportLibraryResult(const std::shared_ptr<LibraryMetadata> &library);

    /// Nothing is imported before a person has agreed.
    ImportLibraryResult(const std::shared_ptr<LibraryMetadata> &library, const Confirmation &confirmation);

    /// The library is there, and something of it is not: \a warning says what, for the person at the screen (UTF-8).
    ImportLibraryResult(const std::shared_ptr<LibraryMetadata> &library, const std::string &warning);

    const std::optional<Confirmation> &confirmation() const { return m_confirmation; }
    const std::optional<std::string> &warning() const { return m_warning; }

protected:
    /// "confirmation" or "warning".
    void appendMembers(std::string &json) const override;

private:
    std::optional<Confirmation> m_confirmation;
    std::optional<std::string> m_warning;
};

class VARN_PLATFORM_EXPORT ImportLibrariesResult : public UpdateMultipleResult<ImportLibraryResult>
{
};

} // namespace Varn::ToolLibraries

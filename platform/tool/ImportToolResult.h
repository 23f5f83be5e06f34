// ImportToolResult.h -- what became of a tool that was to be imported into a library. Values, any thread.
#pragma once

#include "platform/tool/Confirmation.h"
#include "platform/tool/LibraryTool.h"
#include "platform/tool/UpdateMultipleResult.h"
#include "platform/tool/UpdateResult.h"

namespace Varn::ToolLibraries {

/// The tool may be null where there is none to show: for a failure, or for a file that waits for consent.
class VARN_PLATFORM_EXPORT ImportToolResult : public UpdateResult<std::shared_ptr<LibraryTool>>
{
public:
    explicit ImportToolResult(const std::shared_ptr<LibraryTool> &tool);

    /// Nothing is imported before a person has agreed.
    ImportToolResult(const std::shared_ptr<LibraryTool> &tool, const Confirmation &confirmation);

    ImportToolResult(const std::shared_ptr<LibraryTool> &tool, const std::string &error,
                     const std::optional<std::wstring> &translated);

    const std::optional<Confirmation> &confirmation() const { return m_confirmation; }

protected:
    /// "confirmation".
    void appendMembers(std::string &json) const override;

private:
    std::optional<Confirmation> m_confirmation;
};

class VARN_PLATFORM_EXPORT ImportToolsResult : public UpdateMultipleResult<ImportToolResult>
{
};

} // namespace Varn::ToolLibraries

// OxJsonTool.h -- a tool that answers out of the platform's JSON, of which it owns a share. One thread at a time.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/ox/JSONNode.h"
#include "platform/tool/Tool.h"

#include <memory>

/// Unlike RapidJsonTool it gives a whole number that is written with a decimal point as a double.
class TOOL_LIBRARY_EXPORT OxJsonTool : public Varn::ToolLibraries::Tool
{
public:
    /// \a node must not be null.
    explicit OxJsonTool(std::shared_ptr<const Ox::JSONNode> node);
    ~OxJsonTool() override;

protected:
    std::optional<Property> getRawPropertyImpl(std::string_view key) const override;

private:
    std::shared_ptr<const Ox::JSONNode> m_node;
};

// RapidJsonTool.h -- a tool that answers out of a parsed library document. It does not own the value and must not
// outlive the document or a change of it; a reader that keeps a tool longer clones it. One thread at a time.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/tool/Tool.h"

#include <rapidjson/document.h>

class TOOL_LIBRARY_EXPORT RapidJsonTool : public Varn::ToolLibraries::Tool
{
public:
    /// Prints the tool's text at once.
    explicit RapidJsonTool(const rapidjson::Value *value);

    /// A tool for the time of one look: prints its text, and makes its parsed value, only when asked.
    static std::unique_ptr<RapidJsonTool> view(const rapidjson::Value *value);

    const rapidjson::Value &getRapidJsonValue() const { return *m_value; }

    std::string toJson() const override;
    ~RapidJsonTool() override;

protected:
    std::optional<Property> getRawPropertyImpl(std::string_view key) const override;
    Json::Value makeToolValue() const override;
    Varn::ToolLibraries::ToolId findToolId() const override;

private:
    struct View {
    };
    RapidJsonTool(View, const rapidjson::Value *value) : m_value(value), m_isView(true) {}

    static std::optional<Property> plainValue(const rapidjson::Value &value);

    const rapidjson::Value *m_value;
    bool m_isView = false;
};

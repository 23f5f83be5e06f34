// ToolRender.h -- a tool drawn for a preview, or why it could not be drawn. One object is not for two threads at once.
#pragma once

#include "platform/tool/Exception.h"
#include "platform/tool/JSONSerializable.h"

#include <json/value.h>

#include <optional>
#include <string>

namespace Varn::ToolLibraries {

/// What is drawn is the matter of a subclass. A render with an error may still hold what was drawn before it.
class VARN_PLATFORM_EXPORT ToolRender : public JSONSerializable
{
public:
    /// Keeps the texts of \a exception; the last error stands.
    void setError(const Exception &exception);

    bool hasError() const { return m_error.has_value(); }

    /// The English text; empty without an error.
    std::string errorText() const { return m_error.value_or(std::string()); }
    const std::optional<std::wstring> &translatedErrorText() const { return m_translated; }

    /// What the subclass adds and, when there is an error, the "error" of ErrorResult::createPayload().
    std::string toJson() const override;

protected:
    /// Adds the members of the subclass to \a object.
    virtual void fillJson(Json::Value &object) const;

private:
    std::optional<std::string> m_error;
    std::optional<std::wstring> m_translated;
};

} // namespace Varn::ToolLibraries

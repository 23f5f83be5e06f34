// RpcParameters.h -- the parameters of a call, checked against what the method declares.
#pragma once

#include "platform/tool/ToolLibraryLocator.h"

#include <QString>

#include <rapidjson/document.h>

#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace Quillon {

enum class RpcKind {
    Text,
    Integer, ///< of 32 bits
    Boolean,
    Object,
    Locator,     ///< a URL as text, or {"path": FILE}
    TextList,    ///< a list of texts
    LocatorList, ///< a list of locators
    ListOrText,  ///< a JSON list, or a text that is passed on as it is
};

struct RpcParameter {
    std::string_view name;
    RpcKind kind;
    bool optional = false; ///< may be missing or null
};

/// The parameters do not fit the method; the text says which, and how.
class RpcParameterError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The getters give what the declaration promises. The values belong to the message and live as long as that.
class RpcParameters
{
public:
    /// \a values is an object, or null for none. Throws RpcParameterError for a parameter that is missing, unknown or
    /// of the wrong kind.
    RpcParameters(std::span<const RpcParameter> declared, const rapidjson::Value *values);

    bool has(std::string_view name) const { return find(name) != nullptr; }
    std::string text(std::string_view name) const;
    QString qText(std::string_view name) const;
    int integer(std::string_view name) const;
    bool boolean(std::string_view name) const;
    const rapidjson::Value &object(std::string_view name) const;
    Varn::ToolLibraries::ToolLibraryLocator locator(std::string_view name) const;
    std::vector<std::string> textList(std::string_view name) const;
    std::vector<Varn::ToolLibraries::ToolLibraryLocator> locatorList(std::string_view name) const;
    std::string listOrText(std::string_view name) const; ///< the text of the list, or the text

private:
    const rapidjson::Value *find(std::string_view name) const;
    const rapidjson::Value &get(std::string_view name) const;

    const rapidjson::Value *m_values;
};

} // namespace Quillon

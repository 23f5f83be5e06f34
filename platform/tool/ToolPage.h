// ToolPage.h -- one page of tools, the answer to a ToolPageRequest. Any thread may read one.
#pragma once

#include "platform/tool/JSONSerializable.h"

#include <json/value.h>

#include <memory>
#include <string>

namespace Varn::ToolLibraries {

class VARN_PLATFORM_EXPORT ToolPage : public JSONSerializable
{
public:
    /// Puts a page together out of its parts; the two values are taken over, not copied.
    /// \param tools     object from the URL of a library (UTF-8) to the list of its tools on the page, or to an error
    ///                  payload; null when no library was asked for
    /// \param toolTypes the types of all tools that matched
    /// \param matched   tools that passed the filter in the libraries visited
    /// \param total     tools looked at in the libraries visited
    /// \param version   tool format version of the tools
    static std::unique_ptr<ToolPage> make(Json::Value &&tools, Json::Value &&toolTypes, int limit, int offset,
                                          int matched, int total, int version);

    /// Reads the text that toJson() gives. Throws InvalidInput for what is no JSON object or has no "data" that is an
    /// object or null; further members stay as they are.
    static std::unique_ptr<ToolPage> fromJson(const std::string &json);

    /// {"data","version","toolTypes","limit","offset","matched","total"}
    std::string toJson() const override;

    /// The page as the JSON object that toJson() prints.
    const Json::Value &value() const { return m_value; }

private:
    explicit ToolPage(Json::Value &&value);

    Json::Value m_value;
};

} // namespace Varn::ToolLibraries

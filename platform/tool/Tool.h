// Tool.h -- a cutting tool as a JSON object with a GUID.
//
// A value that never changes. Reading one from several threads is safe. The keys of the object are those of the tool
// map; flat property keys such as "tool_diameter" are found in it through ToolParameterJSONKeyPaths.
#pragma once

#include "platform/tool/JSONSerializable.h"
#include "platform/tool/ToolId.h"

#include <json/value.h>

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace Varn::ToolLibraries {

class VARN_PLATFORM_EXPORT Tool : public JSONSerializable
{
public:
    /// What a property key can give, in the unit of the tool.
    using Property = std::variant<std::string, double, int, bool>;

    /// Parses \a json, which must be one JSON object; throws InvalidInput with the place of the fault otherwise.
    explicit Tool(const std::string &json);
    Tool(const Tool &other);
    Tool &operator=(const Tool &other);

    /// A plain tool from JSON text. Throws as the constructor does.
    static std::unique_ptr<Tool> fromJson(const std::string &json);

    /// A copy that stands alone, whatever this one leans on.
    std::unique_ptr<Tool> clone() const;

    /// The tool's JSON text.
    std::string toJson() const override;
    ~Tool() override;

    /// The parsed value; made when it is first asked for.
    const Json::Value &getToolValue() const;

    ToolId getToolId() const;                            ///< from "guid"; the null GUID when there is none
    std::string getType() const;                         ///< the type keyword, empty when there is none
    std::string getDescription() const;                  ///< empty when there is none
    std::optional<int> getToolNumber() const;            ///< the number that the post-processor writes
    int getToolDocumentId() const;                       ///< id within a document, 0 for a tool of no document
    std::optional<std::wstring> get3DGeometryId() const; ///< id of the solid that goes with the tool

    /// The value under a flat key, or nothing for an unknown key or one without a plain value. A whole double comes
    /// back as an int, so callers that compare values accept both.
    std::optional<Property> getRawProperty(std::string_view key) const;
    std::optional<std::string> getString(std::string_view key) const;   ///< a text, in UTF-8
    std::optional<std::wstring> getWString(std::string_view key) const; ///< a text
    std::optional<double> getDouble(std::string_view key) const;        ///< a number of either kind
    std::optional<int> getInt(std::string_view key) const;              ///< a whole number

    // Turning values, angles in degrees and lengths in the unit of the tool.
    std::optional<double> getInsertAngle() const;
    std::optional<double> getCornerRadiusIndexed() const;
    std::optional<double> getInsertSize() const;
    std::optional<double> getThickness() const;
    std::optional<double> getLeadingAngle() const;
    std::optional<double> getTrailingAngle() const;
    std::optional<std::string> getInsertSizeSpecificationMode() const;
    std::optional<std::string> getTolerance() const;
    std::optional<std::string> getCrossSection() const;
    std::optional<std::string> getHandString() const;
    std::optional<std::string> getHolderTypeString() const;
    std::optional<std::string> getClamping() const;

protected:
    /// For a tool that is a view of something else and overrides the three below: no text is made or kept.
    Tool() = default;

    /// For a text that is known to be one JSON object: parsed when its value is first asked for.
    struct Unparsed {
        std::string json;
    };
    explicit Tool(Unparsed text);

    /// A number that was stored as a double: as an int where it is whole and an int can hold it, so that 2.0 and 2 are
    /// one property value.
    static Property foldedNumber(double number);

    /// The property under \a key: the first of the key's paths that ends in a text, a number or a boolean.
    virtual std::optional<Property> getRawPropertyImpl(std::string_view key) const;

    /// Makes the value that getToolValue() keeps.
    virtual Json::Value makeToolValue() const;

    /// The identifier, without a parse where the tool knows a shorter way.
    virtual ToolId findToolId() const;

private:
    static std::optional<Property> plainValue(const Json::Value &value);

    std::string m_json;                                        // empty in a view
    mutable std::atomic<const Json::Value *> m_value{nullptr}; // owned; set once
};

} // namespace Varn::ToolLibraries

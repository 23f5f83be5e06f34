#include "platform/tool/Tool.h"

#include "platform/tool/Exception.h"
#include "platform/tool/JsonText.h"
#include "platform/tool/ToolParameterJSONKeyPaths.h"
#include "platform/utils/Messages.h"

#include <QString>

#include <cmath>
#include <limits>

namespace Varn::ToolLibraries {

namespace {

const Json::Value *member(const Json::Value &value, std::string_view name)
{
    return value.isObject() ? value.find(name.data(), name.data() + name.size()) : nullptr;
}

const Json::Value *walk(const Json::Value &tool, const std::list<std::string_view> &path)
{
    const Json::Value *value = &tool;
    for (const std::string_view name : path) {
        value = member(*value, name);
        if (!value)
            return nullptr;
    }
    return value;
}

} // namespace

Tool::Tool(const std::string &json) : m_json(json)
{
    std::string error;
    std::optional<Json::Value> value = JsonText::parse(json, &error);
    if (!value)
        throw InvalidInput("Tool is not valid JSON: " + error);
    if (!value->isObject())
        throw InvalidInput("Tool is not a JSON object");
    m_value = new Json::Value(std::move(*value));
}

Tool::Tool(Unparsed text) : m_json(std::move(text.json)) {}

Tool::Tool(const Tool &other) : JSONSerializable(other), m_json(other.toJson()) {}

Tool &Tool::operator=(const Tool &other)
{
    if (this != &other) {
        m_json = other.toJson();
        delete m_value.exchange(nullptr);
    }
    return *this;
}

Tool::~Tool()
{
    delete m_value.load();
}

std::unique_ptr<Tool> Tool::fromJson(const std::string &json)
{
    return std::make_unique<Tool>(json);
}

std::unique_ptr<Tool> Tool::clone() const
{
    return std::unique_ptr<Tool>(new Tool(Unparsed{toJson()}));
}

std::string Tool::toJson() const
{
    return m_json;
}

const Json::Value &Tool::getToolValue() const
{
    if (const Json::Value *value = m_value.load(std::memory_order_acquire))
        return *value;
    auto made = std::make_unique<const Json::Value>(makeToolValue());
    const Json::Value *expected = nullptr;
    if (m_value.compare_exchange_strong(expected, made.get(), std::memory_order_acq_rel))
        return *made.release();
    return *expected; // another thread was faster
}

Json::Value Tool::makeToolValue() const
{
    if (std::optional<Json::Value> value = JsonText::parse(m_json))
        return std::move(*value);
    // A document that is not checked for it can hold texts that are no UTF-8; U+FFFD stands where they break.
    const QByteArray mended = QString::fromUtf8(m_json.data(), static_cast<qsizetype>(m_json.size())).toUtf8();
    return JsonText::parse(mended.toStdString()).value_or(Json::Value(Json::objectValue));
}

ToolId Tool::getToolId() const
{
    return findToolId();
}

ToolId Tool::findToolId() const
{
    const Json::Value *guid = member(getToolValue(), "guid");
    return ToolId(guid && guid->isString() ? guid->asString() : std::string());
}

std::string Tool::getType() const
{
    return getString("tool_type").value_or(std::string());
}

std::string Tool::getDescription() const
{
    return getString("tool_description").value_or(std::string());
}

std::optional<int> Tool::getToolNumber() const
{
    return getInt("tool_number");
}

int Tool::getToolDocumentId() const
{
    const Json::Value *id = member(getToolValue(), "_document_tool_id");
    return id && id->isInt() ? id->asInt() : 0;
}

std::optional<std::wstring> Tool::get3DGeometryId() const
{
    const Json::Value *id = walk(getToolValue(), {"geometry", "3DGeometry", "id"});
    if (!id || !id->isString())
        return std::nullopt;
    return Messages::fromUTF8ToWideUnicode(id->asString());
}

std::optional<Tool::Property> Tool::getRawProperty(std::string_view key) const
{
    return getRawPropertyImpl(key);
}

Tool::Property Tool::foldedNumber(double number)
{
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    if (number >= lowest && number <= highest && std::round(number) == number)
        return static_cast<int>(number);
    return number;
}

std::optional<Tool::Property> Tool::plainValue(const Json::Value &value)
{
    switch (value.type()) {
    case Json::stringValue:
        return value.asString();
    case Json::booleanValue:
        return value.asBool();
    case Json::realValue:
        return foldedNumber(value.asDouble());
    case Json::intValue:
    case Json::uintValue:
        if (value.isInt())
            return value.asInt();
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

std::optional<Tool::Property> Tool::getRawPropertyImpl(std::string_view key) const
{
    const auto *paths = ToolParameterJSONKeyPaths::find(key);
    if (!paths)
        return std::nullopt;
    for (const auto &path : *paths) {
        const Json::Value *value = walk(getToolValue(), path);
        if (!value)
            continue;
        if (auto property = plainValue(*value))
            return property;
    }
    return std::nullopt;
}

std::optional<std::string> Tool::getString(std::string_view key) const
{
    std::optional<Property> property = getRawProperty(key);
    if (!property || !std::holds_alternative<std::string>(*property))
        return std::nullopt;
    return std::get<std::string>(std::move(*property));
}

std::optional<std::wstring> Tool::getWString(std::string_view key) const
{
    const std::optional<std::string> text = getString(key);
    if (!text)
        return std::nullopt;
    return Messages::fromUTF8ToWideUnicode(*text);
}

std::optional<double> Tool::getDouble(std::string_view key) const
{
    const std::optional<Property> property = getRawProperty(key);
    if (!property)
        return std::nullopt;
    if (const int *whole = std::get_if<int>(&*property))
        return *whole;
    if (const double *number = std::get_if<double>(&*property))
        return *number;
    return std::nullopt;
}

std::optional<int> Tool::getInt(std::string_view key) const
{
    std::optional<Property> property = getRawProperty(key);
    if (property && std::holds_alternative<double>(*property))
        property = foldedNumber(std::get<double>(*property)); // a tool of the platform's JSON keeps whole doubles
    if (!property || !std::holds_alternative<int>(*property))
        return std::nullopt;
    return std::get<int>(*property);
}

std::optional<double> Tool::getInsertAngle() const
{
    return getDouble("tool_insertAngle");
}

std::optional<double> Tool::getCornerRadiusIndexed() const
{
    return getDouble("tool_cornerRadius");
}

std::optional<double> Tool::getInsertSize() const
{
    return getDouble("tool_insertSize");
}

std::optional<double> Tool::getThickness() const
{
    return getDouble("tool_thickness");
}

std::optional<double> Tool::getLeadingAngle() const
{
    return getDouble("tool_leadingAngle");
}

std::optional<double> Tool::getTrailingAngle() const
{
    return getDouble("tool_trailingAngle");
}

std::optional<std::string> Tool::getInsertSizeSpecificationMode() const
{
    return getString("tool_insertSizeSpecificationMode");
}

std::optional<std::string> Tool::getTolerance() const
{
    return getString("tool_tolerance");
}

std::optional<std::string> Tool::getCrossSection() const
{
    return getString("tool_crossSection");
}

std::optional<std::string> Tool::getHandString() const
{
    return getString("tool_hand");
}

std::optional<std::string> Tool::getHolderTypeString() const
{
    return getString("tool_holderType");
}

std::optional<std::string> Tool::getClamping() const
{
    return getString("tool_clamping");
}

} // namespace Varn::ToolLibraries

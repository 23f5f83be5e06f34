#include "platform/ox/JSONRef.h"

#include <json/value.h>

#include <limits>
#include <utility>

namespace Ox {

JSONRef::JSONRef() : m_value(&Json::Value::nullSingleton()) {}

JSONRef::JSONRef(std::shared_ptr<const JSONNode> document, const Json::Value &value)
    : m_document(std::move(document)), m_value(&value)
{
}

const Json::Value *JSONRef::member(std::string_view key) const
{
    if (!isObject())
        return nullptr;
    const char *const begin = key.empty() ? "" : key.data(); // jsoncpp takes no null pointer
    return m_value->find(begin, begin + key.size());
}

bool JSONRef::exists(std::string_view key) const
{
    return member(key) != nullptr;
}

JSONRef JSONRef::operator[](std::string_view key) const
{
    const Json::Value *const value = member(key);
    return value ? JSONRef(m_document, *value) : JSONRef();
}

std::size_t JSONRef::size() const
{
    return m_value->size();
}

JSONRef JSONRef::at(std::size_t index) const
{
    if (!isArray() || index >= size())
        return {};
    return JSONRef(m_document, (*m_value)[static_cast<Json::ArrayIndex>(index)]);
}

bool JSONRef::isNull() const
{
    return m_value->isNull();
}

bool JSONRef::isObject() const
{
    return m_value->type() == Json::objectValue;
}

bool JSONRef::isArray() const
{
    return m_value->type() == Json::arrayValue;
}

bool JSONRef::isString() const
{
    return m_value->isString();
}

bool JSONRef::isBool() const
{
    return m_value->isBool();
}

bool JSONRef::isInt() const
{
    return m_value->isInt() && !isDouble();
}

bool JSONRef::isDouble() const
{
    return m_value->type() == Json::realValue;
}

std::string JSONRef::asHString() const
{
    return isString() ? m_value->asString() : std::string();
}

bool JSONRef::asBool() const
{
    return isBool() && m_value->asBool();
}

std::optional<int> JSONRef::getInt() const
{
    if (!isInt())
        return std::nullopt;
    return m_value->asInt();
}

std::optional<double> JSONRef::getDouble() const
{
    if (!m_value->isNumeric())
        return std::nullopt;
    return m_value->asDouble();
}

} // namespace Ox

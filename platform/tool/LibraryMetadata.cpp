#include "platform/tool/LibraryMetadata.h"

#include "platform/tool/Exception.h"
#include "platform/tool/JsonText.h"
#include "platform/utils/Messages.h"

#include <utility>

namespace Varn::ToolLibraries {

namespace {

using Type = LibraryMetadata::Type;

struct TypeName {
    Type type;
    const char *name;
};

constexpr TypeName typeNames[] = {
    {Type::Document, "document"},
    {Type::Folder, "folder"},
    {Type::Library, "library"},
};

const char *nameOf(Type type)
{
    for (const TypeName &row : typeNames) {
        if (row.type == type)
            return row.name;
    }
    return "";
}

[[noreturn]] void refuse(const std::string &reason)
{
    throw InvalidInput("Library metadata: " + reason);
}

/// Takes a member out of \a object; null for none.
Json::Value take(Json::Value &object, const char *name)
{
    Json::Value value;
    object.removeMember(name, &value);
    return value;
}

std::wstring readName(const Json::Value &name)
{
    if (!name.isNull() && !name.isString())
        refuse("\"name\" is not a text");
    return Messages::fromUTF8ToWideUnicode(name.asString());
}

Type readType(const Json::Value &type)
{
    if (type.isNull())
        refuse("no \"type\"");
    if (!type.isString())
        refuse("\"type\" is not a text");
    for (const TypeName &row : typeNames) {
        if (type.asString() == row.name)
            return row.type;
    }
    refuse("unknown type \"" + type.asString() + "\"");
}

ToolLibraryLocator readUrl(const Json::Value &url)
{
    if (url.isNull())
        throw InvalidInput("No library URL");
    return ToolLibraryLocator::fromJson(url);
}

std::optional<ToolLibraryLocator> readParent(const Json::Value &parent)
{
    if (parent.isNull())
        return std::nullopt;
    return ToolLibraryLocator::fromJson(parent);
}

std::optional<bool> readReadOnly(const Json::Value &readOnly)
{
    if (readOnly.isNull())
        return std::nullopt;
    if (!readOnly.isBool())
        refuse("\"readonly\" is neither true nor false");
    return readOnly.asBool();
}

std::optional<std::string> readFolderId(const Json::Value &folderId)
{
    if (folderId.isNull())
        return std::nullopt;
    if (!folderId.isString())
        refuse("\"folderId\" is not a text");
    return folderId.asString();
}

std::vector<unsigned int> readErrors(const Json::Value &errors)
{
    if (!errors.isNull() && !errors.isArray())
        refuse("\"errors\" is not a list");
    std::vector<unsigned int> codes;
    for (const Json::Value &code : errors) {
        if (!code.isUInt())
            refuse("\"errors\" holds what is not an error code");
        codes.push_back(code.asUInt());
    }
    return codes;
}

} // namespace

LibraryMetadata::LibraryMetadata(std::wstring_view name, Type type, ToolLibraryLocator url,
                                 std::optional<ToolLibraryLocator> parent, std::optional<bool> readOnly)
    : m_name(name), m_type(type), m_url(std::move(url)), m_parent(std::move(parent)), m_readOnly(readOnly)
{
}

void LibraryMetadata::setParent(const ToolLibraryLocator &parent)
{
    m_parent = parent;
}

void LibraryMetadata::setFolderId(const std::optional<std::string> &folderId)
{
    m_folderId = folderId;
}

void LibraryMetadata::setErrors(const std::vector<unsigned int> &errors)
{
    m_errors = errors;
}

std::string LibraryMetadata::toJson() const
{
    return JsonText::print(toJsonValue());
}

Json::Value LibraryMetadata::toJsonValue() const
{
    Json::Value object(Json::objectValue);
    fillJson(object);
    return object;
}

void LibraryMetadata::fillJson(Json::Value &object) const
{
    for (auto other = m_others.begin(); other != m_others.end(); ++other)
        object[other.name()] = *other;
    object["name"] = Messages::fromWideUnicodeToUTF8(m_name);
    object["type"] = nameOf(m_type);
    object["url"] = m_url.toJsonValue();
    if (m_parent)
        object["parent"] = m_parent->toJsonValue();
    if (m_readOnly)
        object["readonly"] = *m_readOnly;
    if (m_folderId)
        object["folderId"] = *m_folderId;
    for (const unsigned int code : m_errors)
        object["errors"].append(code);
}

std::shared_ptr<LibraryMetadata> LibraryMetadata::fromJson(const std::string &json)
{
    std::string error;
    std::optional<Json::Value> value = JsonText::parse(json, &error);
    if (!value)
        refuse("not valid JSON: " + error);
    return fromJsonValue(std::move(*value));
}

std::shared_ptr<LibraryMetadata> LibraryMetadata::fromJsonValue(Json::Value object)
{
    if (!object.isObject())
        refuse("not a JSON object");
    ToolLibraryLocator url = readUrl(take(object, "url"));
    const Type type = readType(take(object, "type"));
    const std::wstring name = readName(take(object, "name"));
    std::optional<ToolLibraryLocator> parent = readParent(take(object, "parent"));
    const std::optional<bool> readOnly = readReadOnly(take(object, "readonly"));
    auto metadata = std::make_shared<LibraryMetadata>(name, type, std::move(url), std::move(parent), readOnly);
    metadata->m_folderId = readFolderId(take(object, "folderId"));
    metadata->m_errors = readErrors(take(object, "errors"));
    if (!object.empty())
        metadata->m_others = std::move(object);
    return metadata;
}

} // namespace Varn::ToolLibraries

#include "host/RpcParameters.h"

#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonConvert.h"
#include "platform/utils/Messages.h"

#include <algorithm>

namespace Quillon {

using Varn::Messages;
using Varn::ToolLibraries::RapidJsonConvert;
using Varn::ToolLibraries::ToolLibraryLocator;

namespace {

using Value = rapidjson::Value;

std::string textOf(const Value &value)
{
    return {value.GetString(), value.GetStringLength()};
}

bool isLocator(const Value &value)
{
    if (value.IsString())
        return true;
    return value.IsObject() && value.MemberCount() == 1 && value.MemberBegin()->name == "path" &&
           value.MemberBegin()->value.IsString();
}

bool isListOf(const Value &value, bool (*test)(const Value &))
{
    return value.IsArray() && std::all_of(value.Begin(), value.End(), test);
}

bool fits(const Value &value, RpcKind kind)
{
    switch (kind) {
    case RpcKind::Text:
        return value.IsString();
    case RpcKind::Integer:
        return value.IsInt();
    case RpcKind::Boolean:
        return value.IsBool();
    case RpcKind::Object:
        return value.IsObject();
    case RpcKind::Locator:
        return isLocator(value);
    case RpcKind::TextList:
        return isListOf(value, [](const Value &element) { return element.IsString(); });
    case RpcKind::LocatorList:
        return isListOf(value, &isLocator);
    case RpcKind::ListOrText:
        return value.IsArray() || value.IsString();
    }
    return false;
}

std::string_view nameOf(RpcKind kind)
{
    switch (kind) {
    case RpcKind::Text:
        return "a text";
    case RpcKind::Integer:
        return "a whole number of 32 bits";
    case RpcKind::Boolean:
        return "true or false";
    case RpcKind::Object:
        return "an object";
    case RpcKind::Locator:
        return "a URL as text or {\"path\": FILE}";
    case RpcKind::TextList:
        return "a list of texts";
    case RpcKind::LocatorList:
        return "a list of URLs as texts or {\"path\": FILE}";
    case RpcKind::ListOrText:
        return "a list or a text";
    }
    return "another kind of value";
}

ToolLibraryLocator toLocator(const Value &value)
{
    if (value.IsString())
        return ToolLibraryLocator(Messages::fromUTF8ToWideUnicode(textOf(value)));
    return ToolLibraryLocator::fromFilePath(Messages::fromUTF8ToWideUnicode(textOf(value.MemberBegin()->value)));
}

} // namespace

RpcParameters::RpcParameters(std::span<const RpcParameter> declared, const rapidjson::Value *values) : m_values(values)
{
    for (const RpcParameter &parameter : declared) {
        const Value *value = find(parameter.name);
        if (!value && !parameter.optional)
            throw RpcParameterError("Missing parameter: " + std::string(parameter.name));
        if (value && !fits(*value, parameter.kind))
            throw RpcParameterError("Parameter " + std::string(parameter.name) + " must be " +
                                    std::string(nameOf(parameter.kind)));
    }
    if (!values)
        return;
    for (const auto &member : values->GetObject()) {
        const std::string name = textOf(member.name);
        if (std::ranges::find(declared, name, &RpcParameter::name) == declared.end())
            throw RpcParameterError("Unknown parameter: " + name);
    }
}

const rapidjson::Value *RpcParameters::find(std::string_view name) const
{
    if (!m_values)
        return nullptr;
    const auto member = m_values->FindMember(Value(rapidjson::StringRef(name.data(), name.size())));
    return member == m_values->MemberEnd() || member->value.IsNull() ? nullptr : &member->value;
}

const rapidjson::Value &RpcParameters::get(std::string_view name) const
{
    const Value *value = find(name);
    if (!value)
        throw RpcParameterError("Missing parameter: " + std::string(name));
    return *value;
}

std::string RpcParameters::text(std::string_view name) const
{
    return textOf(get(name));
}

QString RpcParameters::qText(std::string_view name) const
{
    return QString::fromStdString(text(name));
}

int RpcParameters::integer(std::string_view name) const
{
    return get(name).GetInt();
}

bool RpcParameters::boolean(std::string_view name) const
{
    return get(name).GetBool();
}

const rapidjson::Value &RpcParameters::object(std::string_view name) const
{
    return get(name);
}

ToolLibraryLocator RpcParameters::locator(std::string_view name) const
{
    return toLocator(get(name));
}

std::vector<std::string> RpcParameters::textList(std::string_view name) const
{
    std::vector<std::string> texts;
    for (const Value &element : get(name).GetArray())
        texts.push_back(textOf(element));
    return texts;
}

std::vector<ToolLibraryLocator> RpcParameters::locatorList(std::string_view name) const
{
    std::vector<ToolLibraryLocator> locators;
    for (const Value &element : get(name).GetArray())
        locators.push_back(toLocator(element));
    return locators;
}

std::string RpcParameters::listOrText(std::string_view name) const
{
    const Value &value = get(name);
    return value.IsString() ? textOf(value) : RapidJsonConvert::toString(value);
}

} // namespace Quillon

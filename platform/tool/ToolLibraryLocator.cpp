#include "platform/tool/ToolLibraryLocator.h"

#include "platform/tool/Exception.h"
#include "platform/tool/JsonText.h"
#include "platform/utils/Messages.h"

#include <utility>

namespace Varn::ToolLibraries {

const ToolLibraryLocator ToolLibraryLocator::UserLibrariesFolder(L"all://");
const ToolLibraryLocator ToolLibraryLocator::DocumentsFolder(L"document://");
const ToolLibraryLocator ToolLibraryLocator::HubsFolder(L"hub://");

ToolLibraryLocator::ToolLibraryLocator(std::wstring url) : ToolLibraryLocator(Kind::Url, std::move(url)) {}

ToolLibraryLocator::ToolLibraryLocator(Kind kind, std::wstring text) : m_kind(kind), m_text(std::move(text)) {}

ToolLibraryLocator ToolLibraryLocator::fromFilePath(std::wstring path)
{
    return ToolLibraryLocator(Kind::FilePath, std::move(path));
}

Json::Value ToolLibraryLocator::toJsonValue() const
{
    const std::string text = Messages::fromWideUnicodeToUTF8(m_text);
    if (m_kind == Kind::Url)
        return Json::Value(text);
    Json::Value object(Json::objectValue);
    object["path"] = text;
    return object;
}

std::string ToolLibraryLocator::toJson() const
{
    return JsonText::print(toJsonValue());
}

ToolLibraryLocator ToolLibraryLocator::fromJson(const Json::Value &value)
{
    if (value.isString())
        return ToolLibraryLocator(Messages::fromUTF8ToWideUnicode(value.asString()));
    if (value.isObject() && value.size() == 1 && value["path"].isString())
        return fromFilePath(Messages::fromUTF8ToWideUnicode(value["path"].asString()));
    throw InvalidInput("A library is named by a URL or by {\"path\": FILE}");
}

} // namespace Varn::ToolLibraries

#include "platform/tool/Confirmation.h"

#include "platform/tool/JsonText.h"
#include "platform/utils/Messages.h"

#include <utility>

namespace Varn::ToolLibraries {

namespace {

void printText(std::wstring_view text, std::string &out)
{
    JsonText::printString(Messages::fromWideUnicodeToUTF8(text), out);
}

} // namespace

Confirmation::Confirmation(std::wstring path, const ToolLibraryLocator &url, std::wstring name, int numberOfTools,
                           std::wstring disclaimerText)
    : m_path(std::move(path)),
      m_url(url),
      m_name(std::move(name)),
      m_numberOfTools(numberOfTools),
      m_disclaimerText(std::move(disclaimerText))
{
}

std::string Confirmation::toJson() const
{
    std::string json = "{\"path\":";
    printText(m_path, json);
    json += ",\"url\":" + m_url.toJson() + ",\"name\":";
    printText(m_name, json);
    json += ",\"numberOfTools\":" + std::to_string(m_numberOfTools) + ",\"disclaimerText\":";
    printText(m_disclaimerText, json);
    json += '}';
    return json;
}

} // namespace Varn::ToolLibraries

#include "ToolLibrary/Interface/Private/SearchText.h"

#include "platform/utils/Messages.h"

#include <cstring>
#include <cwctype>

namespace Varn::ToolLibraries::SearchText {

namespace {

constexpr std::wstring_view inchSuffix = L"in";
constexpr std::size_t longestPlain = 32; // up to which a needle that nearly fits everywhere may be compared everywhere

bool isDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9';
}

} // namespace

std::wstring normalised(std::wstring_view text)
{
    std::wstring lower;
    lower.reserve(text.size());
    for (const wchar_t c : text)
        if (!std::iswspace(static_cast<std::wint_t>(c)))
            lower += static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(c)));
    std::wstring result;
    result.reserve(lower.size());
    for (std::size_t at = 0; at < lower.size(); ++at) {
        if (isDigit(lower[at]) && std::wstring_view(lower).substr(at + 1).starts_with(inchSuffix)) {
            result += L'"';
            at += inchSuffix.size();
        } else {
            result += lower[at];
        }
    }
    return result;
}

bool contains(std::wstring_view text, std::wstring_view needle)
{
    if (needle.size() <= longestPlain || needle.size() > text.size())
        return text.find(needle) != std::wstring_view::npos;
    return find(Messages::fromWideUnicodeToUTF8(text), Messages::fromWideUnicodeToUTF8(needle)) !=
           std::string_view::npos;
}

std::size_t find(std::string_view text, std::string_view needle, std::size_t from)
{
    if (needle.size() <= longestPlain || from > text.size())
        return text.find(needle, from);
    const void *found = memmem(text.data() + from, text.size() - from, needle.data(), needle.size());
    return found ? static_cast<std::size_t>(static_cast<const char *>(found) - text.data()) : std::string_view::npos;
}

} // namespace Varn::ToolLibraries::SearchText

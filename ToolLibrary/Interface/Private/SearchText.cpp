#include "ToolLibrary/Interface/Private/SearchText.h"

#include <cwctype>

namespace Varn::ToolLibraries::SearchText {

namespace {

constexpr std::wstring_view inchSuffix = L"in";

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

} // namespace Varn::ToolLibraries::SearchText

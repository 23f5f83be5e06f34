#include "platform/zip/EntryNames.h"

#include "platform/utils/FileSystem.h"
#include "platform/utils/Messages.h"

#include <unicode/uchar.h>

#include <cstddef>

namespace Varn::EntryNames {

namespace {

constexpr std::size_t longestName = 0xFFFF; // the format has 16 bits for it

bool isLetter(wchar_t c)
{
    return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z');
}

bool isSame(wchar_t a, wchar_t b, bool caseSensitive)
{
    return a == b || (!caseSensitive && u_foldCase(static_cast<UChar32>(a), U_FOLD_CASE_DEFAULT) ==
                                            u_foldCase(static_cast<UChar32>(b), U_FOLD_CASE_DEFAULT));
}

} // namespace

bool isSafe(std::wstring_view name)
{
    if (name.size() >= 2 && isLetter(name[0]) && name[1] == L':')
        return false;
    if (Messages::fromWideUnicodeToUTF8(name).size() > longestName)
        return false;
    if (name.ends_with(L'/'))
        name.remove_suffix(1);
    for (;;) {
        const std::size_t end = name.find(L'/');
        if (!FileSystem::isValidFileName(name.substr(0, end)))
            return false;
        if (end == std::wstring_view::npos)
            return true;
        name.remove_prefix(end + 1);
    }
}

bool matches(std::wstring_view name, std::wstring_view pattern, bool caseSensitive)
{
    std::size_t n = 0;
    std::size_t p = 0;
    std::size_t star = std::wstring_view::npos; // the last one met
    std::size_t starEnd = 0;                    // where in the name its text ends so far
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == L'*') {
            star = p++;
            starEnd = n;
        } else if (p < pattern.size() && (pattern[p] == L'?' || isSame(pattern[p], name[n], caseSensitive))) {
            ++p;
            ++n;
        } else if (star != std::wstring_view::npos) {
            p = star + 1;
            n = ++starEnd;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(L'*', p) == std::wstring_view::npos;
}

} // namespace Varn::EntryNames

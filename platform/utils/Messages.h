// Messages.h -- the bridge between UTF-8 and the wide strings of the host's types. Stateless, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <string>
#include <string_view>
#include <vector>

namespace Varn {

class VARN_PLATFORM_EXPORT Messages
{
public:
    /// Wide text of \a utf8. A byte sequence that is no UTF-8 gives U+FFFD in its place; an embedded NUL is kept.
    static std::wstring fromUTF8ToWideUnicode(std::string_view utf8);

    /// UTF-8 of \a wide. What is no Unicode character gives U+FFFD.
    static std::string fromWideUnicodeToUTF8(std::wstring_view wide);

    // The same under the names by which texts of the host's types go to and from narrow ones.
    static std::wstring getAsWideString(std::string_view utf8) { return fromUTF8ToWideUnicode(utf8); }
    static std::string getAsString(std::wstring_view wide) { return fromWideUnicodeToUTF8(wide); }

    /// \a text in upper case after Unicode, whatever the language: a sharp s becomes two letters.
    static std::wstring getUpperCase(std::wstring_view text);
    static std::wstring getLowerCase(std::wstring_view text); ///< likewise

    /// Whether two texts differ in case alone, after Unicode's case folding.
    static bool iequals(std::wstring_view a, std::wstring_view b);

    /// The parts between the separators: one more than there are separators, empty ones among them.
    static std::vector<std::wstring> split(std::wstring_view text, wchar_t separator);
};

} // namespace Varn

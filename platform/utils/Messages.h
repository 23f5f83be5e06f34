// Messages.h -- the bridge between UTF-8 and the wide strings of the host's types. Stateless, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <string>
#include <string_view>

namespace Varn {

class VARN_PLATFORM_EXPORT Messages
{
public:
    /// Wide text of \a utf8. A byte sequence that is no UTF-8 gives U+FFFD in its place; an embedded NUL is kept.
    static std::wstring fromUTF8ToWideUnicode(std::string_view utf8);

    /// UTF-8 of \a wide. What is no Unicode character gives U+FFFD.
    static std::string fromWideUnicodeToUTF8(std::wstring_view wide);

    /// \a text in upper case after Unicode, whatever the language: a sharp s becomes two letters.
    static std::wstring getUpperCase(std::wstring_view text);
};

} // namespace Varn

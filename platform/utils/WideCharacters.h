// WideCharacters.h -- the characters of a wide text, for the sources of this folder. Stateless, any thread.
#pragma once

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace Varn::WideCharacters {

inline constexpr char32_t replacement = 0xFFFD;

/// True for a character of Unicode, NUL among them; false for half of a surrogate pair and values beyond U+10FFFF.
inline bool isCharacter(char32_t c)
{
    return c <= 0x10FFFF && !U_IS_SURROGATE(c);
}

/// The character of \a text at \a i, which moves on behind it. A surrogate pair, as texts of 16 bit units bring along,
/// is one character; what is none comes as it is. REQUIRES: i < text.size().
inline char32_t next(std::wstring_view text, std::size_t &i)
{
    const auto c = static_cast<char32_t>(text[i++]);
    if (!U16_IS_LEAD(c) || i == text.size() || !U16_IS_TRAIL(static_cast<char32_t>(text[i])))
        return c;
    return static_cast<char32_t>(U16_GET_SUPPLEMENTARY(c, static_cast<char32_t>(text[i++])));
}

/// Appends the UTF-8 of \a c, that of the replacement when it is no character.
inline void appendUtf8(std::string &bytes, char32_t c)
{
    char buffer[U8_MAX_LENGTH];
    std::size_t length = 0;
    U8_APPEND_UNSAFE(buffer, length, isCharacter(c) ? c : replacement);
    bytes.append(buffer, length);
}

} // namespace Varn::WideCharacters

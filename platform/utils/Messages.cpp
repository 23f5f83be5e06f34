#include "platform/utils/Messages.h"

#include "platform/utils/WideCharacters.h"

#include <QString>

#include <algorithm>

namespace Varn {

std::wstring Messages::fromUTF8ToWideUnicode(std::string_view utf8)
{
    const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    if (std::ranges::all_of(utf8, isAscii)) // nearly every text: no need of the way through UTF-16
        return {utf8.begin(), utf8.end()};
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())).toStdWString();
}

std::string Messages::fromWideUnicodeToUTF8(std::wstring_view wide)
{
    std::string utf8;
    utf8.reserve(wide.size());
    for (std::size_t i = 0; i < wide.size();)
        WideCharacters::appendUtf8(utf8, WideCharacters::next(wide, i));
    return utf8;
}

std::wstring Messages::getUpperCase(std::wstring_view text)
{
    return QString::fromWCharArray(text.data(), static_cast<qsizetype>(text.size())).toUpper().toStdWString();
}

} // namespace Varn

#include "platform/utils/Messages.h"

#include "platform/utils/WideCharacters.h"

#include <QString>

#include <algorithm>

namespace Varn {

namespace {

QString qtText(std::wstring_view text)
{
    return QString::fromWCharArray(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

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
    return qtText(text).toUpper().toStdWString();
}

std::wstring Messages::getLowerCase(std::wstring_view text)
{
    return qtText(text).toLower().toStdWString();
}

bool Messages::iequals(std::wstring_view a, std::wstring_view b)
{
    return qtText(a).toCaseFolded() == qtText(b).toCaseFolded();
}

std::vector<std::wstring> Messages::split(std::wstring_view text, wchar_t separator)
{
    std::vector<std::wstring> parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.emplace_back(text.substr(0, end));
        if (end == std::wstring_view::npos)
            return parts;
        text.remove_prefix(end + 1);
    }
}

} // namespace Varn

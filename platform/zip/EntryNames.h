// EntryNames.h -- the names of an archive's entries: which may become a path, which match a pattern. Stateless, any
// thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <string_view>

namespace Varn::EntryNames {

/// True for a path that stays below the folder that it is put into, here and on other systems: parts that are valid
/// file names with one '/' between them, and one at the end for a folder. So no '/' at the start, no "." or "..", no
/// '\', no drive letter, no control character, and not more than 65535 bytes of UTF-8.
VARN_PLATFORM_EXPORT bool isSafe(std::wstring_view name);

/// True if the whole \a name fits \a pattern: '*' is any text, with '/' in it too, '?' one character.
VARN_PLATFORM_EXPORT bool matches(std::wstring_view name, std::wstring_view pattern, bool caseSensitive);

} // namespace Varn::EntryNames

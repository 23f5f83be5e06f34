// Format.h -- numbers as texts that every machine and language reads the same. Stateless, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"

#include <optional>
#include <string>
#include <string_view>

namespace Varn {

class VARN_PLATFORM_EXPORT Format
{
public:
    /// The number that \a text is, wholly: decimal digits, at most 4294967295. 0 for any other text.
    static unsigned int getUnsignedInt(std::wstring_view text);

    /// The fewest digits that read back equal: "0.1", "1e+30", "inf", "nan".
    static std::string getDouble(double value);

    /// The inverse, for the whole of \a text; nothing for any other text and for a number beyond a double.
    static std::optional<double> tryDouble(std::string_view text);

    /// A whole decimal number within the range of int, nothing for any other text.
    static std::optional<int> tryInt(std::string_view text);
};

} // namespace Varn

// NCUnit.h -- the unit in which the lengths of a tool are given. Stateless, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "util/utility/Validified.h"

#include <string>
#include <string_view>

namespace Varn {

class VARN_PLATFORM_EXPORT NCUnit
{
public:
    /// The values are those that documents store. A value that is none of them counts as millimeters.
    enum Unit : int {
        inches = 0,
        millimeters = 1,
    };

    /// The unit of "inches" or "millimeters", compared exactly; invalid for any other text, which tools take as
    /// millimeters.
    static Validified<Unit> getAsUnit(std::wstring_view text);

    /// The text that stands under "unit" in a tool map.
    static std::wstring getUnitAsString(Unit unit);

    /// What a length in \a from is multiplied by to be one in \a to. One inch is exactly 25.4 mm (ISO 80000-1).
    static double getUnitConversionFactor(Unit from, Unit to);
};

} // namespace Varn

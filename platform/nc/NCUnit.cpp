#include "platform/nc/NCUnit.h"

namespace Varn {

namespace {

constexpr double millimetersPerInch = 25.4;

} // namespace

Validified<NCUnit::Unit> NCUnit::getAsUnit(std::wstring_view text)
{
    if (text == L"inches")
        return inches;
    return text == L"millimeters" ? Validified<Unit>(millimeters) : Validified<Unit>();
}

std::wstring NCUnit::getUnitAsString(Unit unit)
{
    return unit == inches ? L"inches" : L"millimeters";
}

double NCUnit::getUnitConversionFactor(Unit from, Unit to)
{
    if ((from == inches) == (to == inches))
        return 1.0;
    return from == inches ? millimetersPerInch : 1.0 / millimetersPerInch;
}

} // namespace Varn

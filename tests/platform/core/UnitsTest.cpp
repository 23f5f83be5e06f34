#include "platform/core/Units.h"

#include "platform/nc/NCUnit.h"
#include "platform/tool/Exception.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <set>
#include <string>

using Varn::NCUnit;
using Varn::Units;

namespace {

constexpr int first = Units::UNIT_UNKNOWN;
constexpr int last = Units::UNIT_ROCKWELL_C;

bool areConvertible(Units::Unit from, Units::Unit to)
{
    return Units::getQuantity(from) == Units::getQuantity(to) && Units::getQuantity(from) != Units::Quantity::None;
}

} // namespace

TEST(Units, ConversionsHaveTheFactorsOfTheStandards)
{
    struct Case {
        Units::Unit from;
        Units::Unit to;
        double factor;
    };
    // ISO 80000-1 and NIST SP 811.
    const Case cases[] = {
        {Units::UNIT_INCHES, Units::UNIT_MILLIMETERS, 25.4},
        {Units::UNIT_MILLIMETERS, Units::UNIT_INCHES, 1 / 25.4},
        {Units::UNIT_FEET, Units::UNIT_INCHES, 12},
        {Units::UNIT_THOUSANDTHS_OF_AN_INCH, Units::UNIT_MICROMETERS, 25.4},
        {Units::UNIT_KILOMETERS, Units::UNIT_CENTIMETERS, 100000},
        {Units::UNIT_METERS_PER_MINUTE, Units::UNIT_MILLIMETERS_PER_MINUTE, 1000},
        {Units::UNIT_FEET_PER_MINUTE, Units::UNIT_INCHES_PER_MINUTE, 12},
        {Units::UNIT_INCHES_PER_MINUTE, Units::UNIT_MILLIMETERS_PER_MINUTE, 25.4},
        {Units::UNIT_INCHES_PER_SECOND, Units::UNIT_INCHES_PER_MINUTE, 60},
        {Units::UNIT_METERS_PER_SECOND, Units::UNIT_MILLIMETERS_PER_SECOND, 1000},
        {Units::UNIT_FEET_PER_SECOND, Units::UNIT_METERS_PER_SECOND, 0.3048},
        {Units::UNIT_INCHES_PER_TURN, Units::UNIT_MILLIMETERS_PER_TURN, 25.4},
        {Units::UNIT_INCHES_PER_TOOTH, Units::UNIT_MILLIMETERS_PER_TOOTH, 25.4},
        {Units::UNIT_MINUTES, Units::UNIT_SECONDS, 60},
        {Units::UNIT_KILOWATTS, Units::UNIT_WATTS, 1000},
        {Units::UNIT_BARS, Units::UNIT_PASCALS, 100000},
        {Units::UNIT_POUNDS_PER_SQUARE_INCH, Units::UNIT_BARS, 0.06894757293168},
        {Units::UNIT_CUBIC_FEET_PER_HOUR, Units::UNIT_LITERS_PER_MINUTE, 28.316846592 / 60},
        {Units::UNIT_OUNCES_PER_MINUTE, Units::UNIT_GRAMS_PER_MINUTE, 28.349523125},
        {Units::UNIT_RADIANS, Units::UNIT_DEGREES, 57.29577951308232},
    };
    for (const auto &[from, to, factor] : cases) {
        EXPECT_DOUBLE_EQ(Units::getUnitConversionFactor(from, to), factor) << Units::getName(from);
        EXPECT_DOUBLE_EQ(Units::getUnitConversionFactor(to, from), 1 / factor) << Units::getName(to);
    }
}

TEST(Units, AnInchIsExactlyThatOfATool)
{
    EXPECT_EQ(Units::getUnitConversionFactor(Units::UNIT_INCHES, Units::UNIT_MILLIMETERS),
              NCUnit::getUnitConversionFactor(NCUnit::inches, NCUnit::millimeters));
    EXPECT_EQ(Units::getUnitConversionFactor(Units::UNIT_MILLIMETERS, Units::UNIT_INCHES),
              NCUnit::getUnitConversionFactor(NCUnit::millimeters, NCUnit::inches));
    EXPECT_EQ(Units::getUnitConversionFactor(Units::UNIT_FEET_PER_MINUTE, Units::UNIT_INCHES_PER_MINUTE), 12.0);
    EXPECT_EQ(Units::getUnitConversionFactor(Units::UNIT_METERS_PER_MINUTE, Units::UNIT_MILLIMETERS_PER_MINUTE), 1e3);
}

TEST(Units, ConversionsWithinAQuantityGoBackAndOverAThird)
{
    for (int a = first; a <= last; ++a)
        for (int b = first; b <= last; ++b)
            for (int c = first; c <= last; ++c) {
                const auto from = Units::Unit(a);
                const auto over = Units::Unit(b);
                const auto to = Units::Unit(c);
                if (!areConvertible(from, over) || !areConvertible(over, to))
                    continue;
                const double direct = Units::getUnitConversionFactor(from, to);
                EXPECT_NEAR(Units::getUnitConversionFactor(from, over) * Units::getUnitConversionFactor(over, to) /
                                direct,
                            1, 1e-14)
                    << a << ' ' << b << ' ' << c;
            }
}

TEST(Units, WholeInchesComeOutWhole)
{
    for (int inches = 1; inches <= 10'000; ++inches) {
        const double millimeters = inches * 254 / 10.0;
        ASSERT_EQ(Units::convert(millimeters, Units::UNIT_MILLIMETERS, Units::UNIT_INCHES), inches);
        ASSERT_EQ(Units::convert(inches, Units::UNIT_INCHES, Units::UNIT_MILLIMETERS), millimeters);
    }
    EXPECT_EQ(Units::convert(0.1, Units::UNIT_MILLIMETERS, Units::UNIT_MILLIMETERS), 0.1);
    EXPECT_EQ(Units::convert(0.1, Units::UNIT_MILLIMETERS, Units::UNIT_NONE), 0.1);
}

TEST(Units, NothingLeadsFromOneQuantityToAnother)
{
    for (int a = first - 1; a <= last + 1; ++a)
        for (int b = first - 1; b <= last + 1; ++b) {
            const auto from = Units::Unit(a);
            const auto to = Units::Unit(b);
            if (areConvertible(from, to)) {
                EXPECT_EQ(Units::getUnitConversionFactorNoThrow(from, to), Units::getUnitConversionFactor(from, to));
            } else {
                EXPECT_EQ(Units::getUnitConversionFactorNoThrow(from, to), 1) << a << ' ' << b;
                EXPECT_THROW(Units::getUnitConversionFactor(from, to), Varn::ToolLibraries::InvalidInput)
                    << a << ' ' << b;
            }
        }
    try {
        Units::getUnitConversionFactor(Units::UNIT_INCHES, Units::UNIT_DEGREES);
        ADD_FAILURE() << "inches became degrees";
    } catch (const Varn::ToolLibraries::InvalidInput &error) {
        EXPECT_STREQ(error.what(), "No conversion from inch to degree");
    }
}

TEST(Units, StoredDataReliesOnTheseNumbers)
{
    std::set<int> settled;
    for (int unit = first; unit <= last; ++unit)
        if (Units::isSettled(Units::Unit(unit)))
            settled.insert(unit);
    EXPECT_EQ(settled, (std::set<int>{-2, -1, 6, 8, 12, 14, 16, 21}));
}

TEST(Units, NamesAndSymbolsTellThemApart)
{
    std::set<std::string_view> names;
    std::set<std::string_view> symbols;
    for (int unit = first; unit <= last; ++unit) {
        EXPECT_TRUE(names.insert(Units::getName(Units::Unit(unit))).second) << unit;
        if (unit >= 0) {
            EXPECT_TRUE(symbols.insert(Units::getSymbol(Units::Unit(unit))).second) << unit;
            EXPECT_FALSE(Units::getSymbol(Units::Unit(unit)).empty()) << unit;
        }
    }
    EXPECT_EQ(names.size(), 39u);
    EXPECT_EQ(Units::getSymbol(Units::UNIT_DEGREES), "\xC2\xB0");
    EXPECT_EQ(Units::getSymbol(Units::UNIT_NONE), "");
    EXPECT_EQ(Units::getName(Units::UNIT_INCHES_PER_TOOTH), "inch per tooth");
}

TEST(Units, ANumberThatIsNoUnitCountsAsUnknown)
{
    for (const int number : {INT_MIN, -3, 37, 1000, INT_MAX}) {
        EXPECT_FALSE(Units::isUnit(number));
        EXPECT_EQ(Units::getName(Units::Unit(number)), "unknown");
        EXPECT_EQ(Units::getQuantity(Units::Unit(number)), Units::Quantity::None);
    }
    EXPECT_TRUE(Units::isUnit(Units::UNIT_UNKNOWN));
}

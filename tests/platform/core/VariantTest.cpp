#include "platform/core/Variant.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>
#include <vector>

using Varn::Variant;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

} // namespace

TEST(Variant, KnowsItsKind)
{
    const std::vector<Variant> values = {Variant(), Variant(true), Variant(3), Variant(2.5), Variant(L"text")};
    for (std::size_t i = 0; i < values.size(); ++i) {
        EXPECT_EQ(values[i].isEmpty(), i == 0) << i;
        EXPECT_EQ(values[i].isBool(), i == 1) << i;
        EXPECT_EQ(values[i].isInt(), i == 2) << i;
        EXPECT_EQ(values[i].isDouble(), i == 3) << i;
        EXPECT_EQ(values[i].isText(), i == 4) << i;
    }
    EXPECT_FALSE(Variant(L"").isEmpty()) << "an empty text is a value";
}

TEST(Variant, ANarrowTextIsNoBoolean)
{
    static_assert(!std::is_constructible_v<Variant, const char *>);
    static_assert(std::is_constructible_v<Variant, const wchar_t *>);
    EXPECT_TRUE(Variant(L"false").isText());
}

TEST(Variant, AsInteger)
{
    const std::vector<std::pair<Variant, int>> cases = {
        {Variant(), 0},
        {Variant(true), 1},
        {Variant(false), 0},
        {Variant(-7), -7},
        {Variant(2.4), 2},
        {Variant(2.5), 3},
        {Variant(-2.5), -3},
        {Variant(2.9999999), 3},
        {Variant(1e300), std::numeric_limits<int>::max()},
        {Variant(-infinity), std::numeric_limits<int>::min()},
        {Variant(notANumber), 0},
        {Variant(L"12"), 12},
        {Variant(L" 12.5\n"), 13},
        {Variant(L"+4"), 4},
        {Variant(L"-4"), -4},
        {Variant(L"1e3"), 1000},
        {Variant(L""), 0},
        {Variant(L"12 mm"), 0},
        {Variant(L"inf"), 0},
        {Variant(L"+-4"), 0},
        {Variant(L"true"), 0},
        {Variant(L"99999999999"), std::numeric_limits<int>::max()},
    };
    for (std::size_t i = 0; i < cases.size(); ++i)
        EXPECT_EQ(cases[i].first.getAsInt(), cases[i].second) << "case " << i << ' ' << cases[i].first.getAsString();
}

TEST(Variant, AsDoubleReadsAPointWhateverTheLocale)
{
    EXPECT_EQ(Variant(L"0.125").getAsDouble(), 0.125);
    EXPECT_EQ(Variant(L"0,125").getAsDouble(), 0);
    EXPECT_EQ(Variant(L"-.5").getAsDouble(), -0.5);
    EXPECT_EQ(Variant(L"1e999").getAsDouble(), 0);
    EXPECT_EQ(Variant(L"nan").getAsDouble(), 0);
    EXPECT_EQ(Variant(L"0x10").getAsDouble(), 0);
    EXPECT_EQ(Variant(L"\u0661").getAsDouble(), 0);
    EXPECT_EQ(Variant(true).getAsDouble(), 1);
    EXPECT_EQ(Variant(-3).getAsDouble(), -3);
    EXPECT_EQ(Variant(0.1).getAsDouble(), 0.1);
    EXPECT_EQ(Variant().getAsDouble(), 0);
}

TEST(Variant, AsBoolean)
{
    for (const Variant &value : {Variant(true), Variant(1), Variant(-1), Variant(0.5), Variant(infinity),
                                 Variant(L"true"), Variant(L"1"), Variant(L" 0.5 ")})
        EXPECT_TRUE(value.getAsBool()) << value.getAsString();
    for (const Variant &value :
         {Variant(), Variant(false), Variant(0), Variant(0.0), Variant(-0.0), Variant(notANumber), Variant(L""),
          Variant(L"false"), Variant(L"True"), Variant(L"0"), Variant(L"yes")})
        EXPECT_FALSE(value.getAsBool()) << value.getAsString();
}

TEST(Variant, AsText)
{
    const std::vector<std::pair<Variant, std::wstring>> cases = {
        {Variant(), L""},           {Variant(true), L"true"},
        {Variant(false), L"false"}, {Variant(-12), L"-12"},
        {Variant(2.5), L"2.5"},     {Variant(0.1), L"0.1"},
        {Variant(3.0), L"3"},       {Variant(1e22), L"1e+22"},
        {Variant(L"a b"), L"a b"},  {Variant(L"\u00FC"), L"\u00FC"},
    };
    for (const auto &[value, text] : cases)
        EXPECT_EQ(value.getAsWideString(), text);
    EXPECT_EQ(Variant(L"\u00FC").getAsString(), "\xC3\xBC");
    EXPECT_EQ(Variant(2.5).getAsString(), "2.5");
}

TEST(Variant, TheTextOfADoubleReadsBackEqual)
{
    for (const double number : {1.0 / 3, 0.1, 1e-300, -1.7976931348623157e308, 5e-324, 123456789.123456789})
        EXPECT_EQ(Variant(Variant(number).getAsWideString()).getAsDouble(), number) << number;
}

TEST(Variant, NumbersAreEqualByValueAndOthersByKind)
{
    EXPECT_EQ(Variant(2), Variant(2.0));
    EXPECT_EQ(Variant(), Variant());
    EXPECT_EQ(Variant(L"a"), Variant(std::wstring(L"a")));
    EXPECT_EQ(Variant(0.0), Variant(-0.0));
    EXPECT_FALSE(Variant(2) == Variant(2.5));
    EXPECT_FALSE(Variant(1) == Variant(true));
    EXPECT_FALSE(Variant(1) == Variant(L"1"));
    EXPECT_FALSE(Variant() == Variant(L""));
    EXPECT_FALSE(Variant(notANumber) == Variant(notANumber));
}

TEST(Variant, SubstitutesForThePlaceOfAMessage)
{
    EXPECT_EQ(Variant::getSubstitution(L"Preset %1", Variant(2)), L"Preset 2");
    EXPECT_EQ(Variant::getSubstitution(L"%1", Variant(2.5)), L"2.5");
    EXPECT_EQ(Variant::getSubstitution(L"%1 of %1", Variant(L"a")), L"a of a");
    EXPECT_EQ(Variant::getSubstitution(L"No place", Variant(2)), L"No place");
    EXPECT_EQ(Variant::getSubstitution(L"100 % of %10 and %2, %", Variant(2)), L"100 % of %10 and %2, %");
    EXPECT_EQ(Variant::getSubstitution(L"<%1>", Variant(L"%1")), L"<%1>") << "the value is no message";
    EXPECT_EQ(Variant::getSubstitution(L"<%1>", Variant()), L"<>");
    EXPECT_EQ(Variant::getSubstitution(L"", Variant(1)), L"");
}

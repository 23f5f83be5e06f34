// RecordField.h -- the fields of the tool record as tables, so that comparing, converting, storing and filling a record
// go through one list. Immutable, any thread.
#pragma once

#include <string_view>
#include <tuple>

namespace Varn {

/// What a change between millimeters and inches does to a number.
enum class FieldQuantity {
    Plain,    ///< nothing: angles, counts, codes, turns, powers, texts
    Length,   ///< mm or in
    Feed,     ///< length per minute, turn or tooth: mm or in
    Pressure, ///< bar or psi
    GasFlow,  ///< l/min or cubic feet per hour
    MassFlow, ///< g/min or oz/min
};

/// One member of a struct.
template <typename Struct, typename Member>
struct RecordField {
    Member Struct::*member;
    std::string_view name;       ///< of the parameter of the same value, behind the stem of its group; ASCII
    FieldQuantity quantity;      ///< of a number
    unsigned kinds;              ///< bits, for a struct that serves several kinds; all of them else
    std::string_view switchName; ///< of an optional value: the boolean parameter that says whether there is one
    bool isParameter;            ///< false for what no parameter table holds
};

constexpr unsigned everyKind = ~0u;

template <typename Struct, typename Member>
constexpr auto recordField(Member Struct::*member, std::string_view name, FieldQuantity quantity = FieldQuantity::Plain,
                           unsigned kinds = everyKind, std::string_view switchName = {})
{
    return RecordField<Struct, Member>{member, name, quantity, kinds, switchName, true};
}

/// A field that is stored and compared, but is no parameter.
template <typename Struct, typename Member>
constexpr auto storedField(Member Struct::*member, std::string_view name, FieldQuantity quantity = FieldQuantity::Plain)
{
    return RecordField<Struct, Member>{member, name, quantity, everyKind, {}, false};
}

/// Calls \a visit with each field of \a Struct, in the order of its table, which is a tuple `fields`.
template <typename Struct, typename Visit>
constexpr void forEachField(Visit &&visit)
{
    std::apply([&visit](const auto &...field) { (visit(field), ...); }, Struct::fields);
}

} // namespace Varn

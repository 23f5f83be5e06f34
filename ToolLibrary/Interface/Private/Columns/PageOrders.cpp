#include "ToolLibrary/Interface/Private/Columns/PageOrders.h"

#include "ToolLibrary/Interface/Private/Columns/Ordinal.h"
#include "ToolLibrary/Interface/Private/Columns/PageColumns.h"
#include "ToolLibrary/Interface/Private/Columns/RowUpkeep.h"
#include "ToolLibrary/Interface/Private/NaturalOrder.h"
#include "ToolLibrary/Interface/Private/ToolKeys.h"

#include <cmath>
#include <functional>
#include <utility>

namespace Varn::ToolLibraries {

namespace {

using Key = ToolSorter::Key;
using Ordinals = std::vector<std::uint64_t>; // by row, in the ascending order of a key

constexpr std::size_t mostOrders = 8;
constexpr std::size_t mostKeys = 8; // each needs a column; a request with more of them is sorted tool by tool

std::uint64_t ordinalOf(const PageColumns::Numbers &numbers, ToolRow row)
{
    return numbers.isPresent[row] ? Ordinal::of(numbers.values[row]) : Ordinal::first;
}

std::uint64_t ordinalOf(NCUnit::Unit unit)
{
    static const bool inchesFirst =
        NCUnit::getUnitAsString(NCUnit::inches) < NCUnit::getUnitAsString(NCUnit::millimeters);
    return (unit == NCUnit::inches) != inchesFirst;
}

const PropertyColumn &propertyOf(const Key &key, PageColumns &columns)
{
    return columns.property(ToolKeys::propertyOf(key.text).value_or(""));
}

/// Whether any two rows can be compared by the key.
bool isComparable(const Key &key, PageColumns &columns)
{
    switch (key.kind) {
    case Key::Kind::Name:
        return columns.names().isOrdered();
    case Key::Kind::Number:
        return std::ranges::none_of(columns.numbers(key.text).values, [](double value) { return std::isnan(value); });
    case Key::Kind::Property:
        return propertyOf(key, columns).isComparable();
    case Key::Kind::Type:
    case Key::Kind::Unit:
        break;
    }
    return true;
}

/// Nothing when the values have no order.
std::optional<Ordinals> ordinalsOf(const Key &key, PageColumns &columns)
{
    if (key.kind == Key::Kind::Name)
        return columns.names().ranks();
    if (!isComparable(key, columns))
        return std::nullopt;
    if (key.kind == Key::Kind::Property)
        return propertyOf(key, columns).ordinals();
    Ordinals ordinals(columns.size());
    if (key.kind == Key::Kind::Number) {
        const PageColumns::Numbers &numbers = columns.numbers(key.text);
        for (ToolRow row = 0; row < columns.size(); ++row)
            ordinals[row] = ordinalOf(numbers, row);
        return ordinals;
    }
    const std::vector<PageColumns::Basics> &basics = columns.basics();
    const Ordinals &rankOfType = columns.typeRanks();
    for (ToolRow row = 0; row < columns.size(); ++row)
        ordinals[row] = key.kind == Key::Kind::Unit ? ordinalOf(basics[row].unit) : rankOfType[basics[row].type];
    return ordinals;
}

/// In the ascending order of the key, whose values are comparable.
std::partial_ordering compare(const Key &key, PageColumns &columns, ToolRow a, ToolRow b)
{
    switch (key.kind) {
    case Key::Kind::Name:
        return NaturalOrder::compareNames(columns.names()[a], columns.names()[b]);
    case Key::Kind::Number:
        return ordinalOf(columns.numbers(key.text), a) <=> ordinalOf(columns.numbers(key.text), b);
    case Key::Kind::Type:
        return columns.typeRanks()[columns.basics()[a].type] <=> columns.typeRanks()[columns.basics()[b].type];
    case Key::Kind::Unit:
        return ordinalOf(columns.basics()[a].unit) <=> ordinalOf(columns.basics()[b].unit);
    case Key::Kind::Property:
        break;
    }
    return propertyOf(key, columns).compare(a, b);
}

/// Tools of one GUID, such as those that repeat the member, stay in the order of the library.
bool comesBeforeByGuid(const std::vector<PageColumns::Basics> &basics, ToolRow a, ToolRow b)
{
    const int order = Guid::compare(basics[a].guid, basics[b].guid);
    return order != 0 ? order < 0 : a < b;
}

bool comesBefore(const std::vector<Key> &keys, PageColumns &columns, ToolRow a, ToolRow b)
{
    for (const Key &key : keys) {
        const std::partial_ordering order = compare(key, columns, a, b);
        if (order != 0)
            return (order < 0) != key.isDescending;
    }
    return comesBeforeByGuid(columns.basics(), a, b);
}

} // namespace

const ToolRows *PageOrders::find(std::string_view sortState, PageColumns &columns)
{
    const auto kept = std::ranges::find(m_kept, sortState, &Kept::state);
    if (kept != m_kept.end()) {
        m_kept.splice(m_kept.begin(), m_kept, kept);
    } else {
        Keys keys = ToolSorter::keysOf(sortState);
        std::optional<ToolRows> rows = make(keys, columns);
        m_kept.push_front({std::string(sortState), std::move(keys), std::move(rows)});
        if (m_kept.size() > mostOrders)
            m_kept.pop_back();
    }
    const std::optional<ToolRows> &rows = m_kept.front().rows;
    return rows ? &*rows : nullptr;
}

std::optional<ToolRows> PageOrders::make(const Keys &keys, PageColumns &columns)
{
    struct Entry {
        std::uint64_t ordinal; // of the first key
        ToolRow row;
    };
    if (keys.size() > mostKeys)
        return std::nullopt;
    std::vector<Ordinals> ordinalsOfKeys;
    for (const Key &key : keys) {
        std::optional<Ordinals> ordinals = ordinalsOf(key, columns);
        if (!ordinals)
            return std::nullopt;
        if (key.isDescending)
            std::ranges::transform(*ordinals, ordinals->begin(), std::bit_not());
        ordinalsOfKeys.push_back(std::move(*ordinals));
    }
    const std::vector<PageColumns::Basics> &basics = columns.basics();
    std::vector<Entry> entries;
    entries.reserve(columns.size());
    for (ToolRow row = 0; row < columns.size(); ++row)
        entries.push_back({ordinalsOfKeys.empty() ? 0 : ordinalsOfKeys.front()[row], row});
    sortRows(entries, [&](const Entry &a, const Entry &b) {
        if (a.ordinal != b.ordinal)
            return a.ordinal < b.ordinal;
        for (std::size_t key = 1; key < ordinalsOfKeys.size(); ++key)
            if (ordinalsOfKeys[key][a.row] != ordinalsOfKeys[key][b.row])
                return ordinalsOfKeys[key][a.row] < ordinalsOfKeys[key][b.row];
        return comesBeforeByGuid(basics, a.row, b.row);
    });
    ToolRows rows;
    rows.reserve(entries.size());
    for (const Entry &entry : entries)
        rows.push_back(entry.row);
    return rows;
}

void PageOrders::remove(const ToolRows &removed)
{
    std::erase_if(m_kept, [](const Kept &kept) { return !kept.rows; }); // the others may have an order
    for (Kept &kept : m_kept)
        RowUpkeep::removeRows(*kept.rows, removed);
}

void PageOrders::change(const ToolRows &changed, PageColumns &columns)
{
    std::erase_if(m_kept, [&columns](const Kept &kept) {
        return !kept.rows ||
               !std::ranges::all_of(kept.keys, [&](const Key &key) { return isComparable(key, columns); });
    });
    for (Kept &kept : m_kept) {
        ToolRows &rows = *kept.rows;
        RowUpkeep::takeOut(rows, changed);
        for (const ToolRow row : changed) {
            const auto at = std::ranges::upper_bound(
                rows, row, [&](ToolRow a, ToolRow b) { return comesBefore(kept.keys, columns, a, b); });
            rows.insert(at, row);
        }
    }
}

std::size_t PageOrders::memory() const
{
    std::size_t bytes = 0;
    for (const Kept &kept : m_kept)
        bytes += sizeof kept + kept.state.capacity() + (kept.rows ? kept.rows->capacity() * sizeof(ToolRow) : 0);
    return bytes;
}

} // namespace Varn::ToolLibraries

#include "ToolLibrary/Interface/Private/Columns/PropertyColumn.h"

#include "ToolLibrary/Interface/Private/Columns/Ordinal.h"
#include "ToolLibrary/Interface/Private/Columns/RowUpkeep.h"

#include <cmath>
#include <utility>

namespace Varn::ToolLibraries {

namespace {

constexpr std::size_t fewTexts = 64; // that no tool has any more, and that are not worth the work

} // namespace

std::uint64_t PropertyColumn::idOf(const std::string &text)
{
    const auto [found, isNew] = m_idOfText.try_emplace(text, m_textOfId.size());
    if (isNew)
        m_textOfId.push_back(&found->first);
    return found->second;
}

PropertyColumn::Value PropertyColumn::valueOf(const std::optional<Tool::Property> &value)
{
    if (!value)
        return {Kind::None, Ordinal::last};
    if (const auto *text = std::get_if<std::string>(&*value))
        return {Kind::Text, idOf(*text)};
    if (const auto *whole = std::get_if<int>(&*value))
        return {Kind::Whole, Ordinal::of(*whole)};
    if (const auto *number = std::get_if<double>(&*value))
        return std::isnan(*number) ? Value{Kind::NaN, 0} : Value{Kind::Number, Ordinal::of(*number)};
    return {Kind::Flag, std::get<bool>(*value) ? std::uint64_t{1} : 0};
}

void PropertyColumn::append(const std::optional<Tool::Property> &value)
{
    const Value made = valueOf(value);
    m_kinds.push_back(made.kind);
    m_ordinals.push_back(made.ordinal);
    ++m_counts[std::size_t(made.kind)];
}

void PropertyColumn::replace(ToolRow row, const std::optional<Tool::Property> &value)
{
    const Value made = valueOf(value);
    --m_counts[std::size_t(m_kinds[row])];
    m_kinds[row] = made.kind;
    m_ordinals[row] = made.ordinal;
    ++m_counts[std::size_t(made.kind)];
    if (m_textOfId.size() > 2 * m_kinds.size() + fewTexts)
        forgetUnusedTexts();
}

void PropertyColumn::forgetUnusedTexts()
{
    const auto known = std::exchange(m_idOfText, {}); // the old texts, for as long as they are read
    const std::vector<const std::string *> textOfId = std::exchange(m_textOfId, {});
    for (std::size_t row = 0; row < m_kinds.size(); ++row)
        if (m_kinds[row] == Kind::Text)
            m_ordinals[row] = idOf(*textOfId[m_ordinals[row]]);
}

void PropertyColumn::remove(const ToolRows &removed)
{
    for (const ToolRow row : removed)
        --m_counts[std::size_t(m_kinds[row])];
    RowUpkeep::removeElements(m_kinds, removed);
    RowUpkeep::removeElements(m_ordinals, removed);
}

void PropertyColumn::narrow(const std::set<std::string> &texts, ToolMarks &marks) const
{
    std::vector<std::uint8_t> isWanted(m_textOfId.size());
    for (const std::string &text : texts)
        if (const auto found = m_idOfText.find(text); found != m_idOfText.end())
            isWanted[found->second] = 1;
    for (std::size_t row = 0; row < marks.size(); ++row)
        marks[row] &= std::uint8_t(m_kinds[row] == Kind::Text && isWanted[m_ordinals[row]]);
}

bool PropertyColumn::isComparable() const
{
    const auto present = m_kinds.size() - m_counts[std::size_t(Kind::None)];
    return m_counts[std::size_t(Kind::NaN)] == 0 &&
           std::ranges::any_of(m_counts, [present](std::size_t count) { return count == present; });
}

std::strong_ordering PropertyColumn::compare(ToolRow a, ToolRow b) const
{
    if (m_kinds[a] == Kind::Text && m_kinds[b] == Kind::Text)
        return *m_textOfId[m_ordinals[a]] <=> *m_textOfId[m_ordinals[b]];
    if (m_kinds[a] == Kind::None || m_kinds[b] == Kind::None)
        return (m_kinds[a] == Kind::None) <=> (m_kinds[b] == Kind::None);
    return m_ordinals[a] <=> m_ordinals[b];
}

std::vector<std::uint64_t> PropertyColumn::ordinals() const
{
    if (m_counts[std::size_t(Kind::Text)] == 0)
        return m_ordinals;
    std::vector<std::uint64_t> rankOfId(m_textOfId.size());
    std::uint64_t rank = 0;
    for (const auto &[text, id] : m_idOfText)
        rankOfId[id] = rank++;
    std::vector<std::uint64_t> ordinals;
    ordinals.reserve(m_ordinals.size());
    for (std::size_t row = 0; row < m_ordinals.size(); ++row)
        ordinals.push_back(m_kinds[row] == Kind::Text ? rankOfId[m_ordinals[row]] : m_ordinals[row]);
    return ordinals;
}

std::size_t PropertyColumn::memory() const
{
    std::size_t bytes = m_kinds.capacity() * sizeof(Kind) + m_ordinals.capacity() * sizeof(std::uint64_t);
    constexpr std::size_t nodeOfMap = 48;
    for (const std::string *text : m_textOfId)
        bytes += sizeof(text) + sizeof(std::string) + text->capacity() + nodeOfMap;
    return bytes;
}

} // namespace Varn::ToolLibraries

// KeywordTable.h -- looks up the rows of a constant table by value and by keyword. Immutable, any thread.
#pragma once

#include <algorithm>
#include <array>
#include <compare>
#include <cstddef>
#include <span>
#include <string_view>
#include <type_traits>

namespace Varn {

/// Lookups in \a N rows, prepared when compiling. A row has a member `value`, which is its place, and a member `key` of
/// ASCII characters; keywords are compared exactly, and no lookup allocates. The rows must outlive the table.
template <typename Row, std::size_t N>
class KeywordTable
{
public:
    explicit constexpr KeywordTable(const Row (&rows)[N]) : m_rows(rows)
    {
        for (std::size_t i = 0; i < N; ++i)
            m_byKeyword[i] = i;
        std::sort(m_byKeyword.begin(), m_byKeyword.end(), [&](auto a, auto b) { return rows[a].key < rows[b].key; });
    }

    constexpr std::span<const Row> rows() const { return {m_rows, N}; }

    /// The row of a value; the first row for a value that has none.
    template <typename Value>
    constexpr const Row &row(Value value) const
    {
        const auto place = static_cast<std::size_t>(value);
        return m_rows[place < N ? place : 0];
    }

    /// The row of a keyword, or null.
    constexpr const Row *find(std::string_view keyword) const { return findText(keyword); }
    constexpr const Row *find(std::wstring_view keyword) const { return findText(keyword); }

    /// Each row stands at its value, and no two have one keyword. For static_assert.
    constexpr bool isComplete() const
    {
        for (std::size_t i = 0; i < N; ++i) {
            if (static_cast<std::size_t>(m_rows[i].value) != i)
                return false;
        }
        const auto same = [this](auto a, auto b) { return m_rows[a].key == m_rows[b].key; };
        return std::adjacent_find(m_byKeyword.begin(), m_byKeyword.end(), same) == m_byKeyword.end();
    }

private:
    template <typename Char>
    constexpr const Row *findText(std::basic_string_view<Char> keyword) const
    {
        const auto before = [this](std::size_t row, auto text) { return compare(m_rows[row].key, text) < 0; };
        const auto found = std::lower_bound(m_byKeyword.begin(), m_byKeyword.end(), keyword, before);
        if (found == m_byKeyword.end() || compare(m_rows[*found].key, keyword) != 0)
            return nullptr;
        return &m_rows[*found];
    }

    template <typename Char>
    static constexpr std::strong_ordering compare(std::string_view key, std::basic_string_view<Char> text)
    {
        const auto asNumber = [](auto c) { return static_cast<unsigned long>(std::make_unsigned_t<decltype(c)>(c)); };
        const std::size_t shared = std::min(key.size(), text.size());
        for (std::size_t i = 0; i < shared; ++i) {
            if (const auto order = asNumber(key[i]) <=> asNumber(text[i]); order != 0)
                return order;
        }
        return key.size() <=> text.size();
    }

    const Row *m_rows;
    std::array<std::size_t, N> m_byKeyword{};
};

} // namespace Varn

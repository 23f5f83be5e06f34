#include "ToolLibrary/Interface/Private/Columns/NameColumn.h"

#include "ToolLibrary/Interface/Private/Columns/RowUpkeep.h"
#include "ToolLibrary/Interface/Private/NaturalOrder.h"

#include <numeric>

namespace Varn::ToolLibraries {

namespace {

constexpr int mostLookedAt = 1000; // names that go on as a new one does

} // namespace

std::optional<std::vector<std::uint64_t>> NameColumn::ranks()
{
    if (!m_order)
        makeOrder();
    if (!m_isConsistent)
        return std::nullopt;
    std::vector<std::uint64_t> ranks(m_names.size());
    std::uint64_t rank = 0;
    for (std::size_t i = 0; i < m_order->size(); ++i) {
        if (i > 0 && m_names[(*m_order)[i]] != m_names[(*m_order)[i - 1]])
            ++rank;
        ranks[(*m_order)[i]] = rank;
    }
    return ranks;
}

void NameColumn::makeOrder()
{
    struct Entry {
        NaturalOrder::Key key;
        ToolRow row;
    };
    const auto size = static_cast<ToolRow>(m_names.size());
    std::vector<Entry> entries(size);
    const auto fill = [&](ToolRow begin, ToolRow end) {
        for (ToolRow row = begin; row < end; ++row)
            entries[row] = {NaturalOrder::keyOf(m_names[row]), row};
    };
    sideBySide(
        size, [&] { fill(0, size / 2); }, [&] { fill(size / 2, size); });
    sortRows(entries, [this](const Entry &a, const Entry &b) {
        return a.key != b.key ? a.key < b.key : NaturalOrder::comesBefore(m_names[a.row], m_names[b.row]);
    });
    ToolRows &order = m_order.emplace();
    std::vector<const std::wstring *> names;
    order.reserve(entries.size());
    names.reserve(entries.size());
    for (const Entry &entry : entries) {
        order.push_back(entry.row);
        names.push_back(&m_names[entry.row]);
    }
    m_isConsistent = NaturalOrder::isConsistent(names);
}

void NameColumn::remove(const ToolRows &removed)
{
    RowUpkeep::removeElements(m_names, removed);
    if (isOrdered())
        RowUpkeep::removeRows(*m_order, removed);
    else
        m_order.reset(); // without these, it may be consistent
}

void NameColumn::change(std::vector<Change> changes)
{
    ToolRows rows;
    for (const Change &change : changes)
        rows.push_back(change.row);
    if (isOrdered())
        RowUpkeep::takeOut(*m_order, rows);
    else
        m_order.reset();
    for (Change &change : changes) {
        if (change.row == m_names.size())
            m_names.push_back(std::move(change.name));
        else
            m_names[change.row] = std::move(change.name);
    }
    for (const ToolRow row : rows) {
        if (m_order && !insert(row))
            m_order.reset();
    }
}

/// False when the order can no longer be told to be consistent.
bool NameColumn::insert(ToolRow row)
{
    using Step = NaturalOrder::Step;
    const auto comesBefore = [this](ToolRow a, ToolRow b) { return NaturalOrder::comesBefore(m_names[a], m_names[b]); };
    const auto at = std::upper_bound(m_order->begin(), m_order->end(), row, comesBefore);
    if (at != m_order->begin()) {
        const Step step = NaturalOrder::stepBetween(m_names[*(at - 1)], m_names[row]);
        if (step == Step::Broken || step == Step::Respelt)
            return false;
    }
    int lookedAt = 0;
    for (auto next = at; next != m_order->end(); ++next) {
        const Step step = NaturalOrder::stepBetween(m_names[row], m_names[*next]);
        if (step == Step::Broken || ++lookedAt > mostLookedAt)
            return false;
        if (step != Step::GoesOn)
            break;
    }
    m_order->insert(at, row);
    return true;
}

std::size_t NameColumn::memory() const
{
    std::size_t bytes =
        m_names.capacity() * sizeof(std::wstring) + (m_order ? m_order->capacity() * sizeof(ToolRow) : 0);
    for (const std::wstring &name : m_names)
        bytes += (name.capacity() + 1) * sizeof(wchar_t);
    return bytes;
}

} // namespace Varn::ToolLibraries

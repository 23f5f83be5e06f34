#include "ToolLibrary/Interface/Private/ToolSourceSink/GuidIndex.h"

#include <algorithm>

namespace Varn::ToolLibraries {

void GuidIndex::clear()
{
    *this = GuidIndex();
}

bool GuidIndex::append(const QUuid &guid)
{
    if (m_sequenceOf.contains(guid))
        return false;
    m_sequenceOf.insert(guid, m_next);
    m_sequences.push_back(m_next++);
    return true;
}

std::optional<std::size_t> GuidIndex::find(const QUuid &guid) const
{
    const auto sequence = m_sequenceOf.find(guid);
    if (sequence == m_sequenceOf.end())
        return std::nullopt;
    const auto place = std::ranges::lower_bound(m_sequences, *sequence);
    return static_cast<std::size_t>(place - m_sequences.begin());
}

void GuidIndex::remove(const QUuid &guid, std::size_t position)
{
    m_sequenceOf.remove(guid);
    m_sequences.erase(m_sequences.begin() + static_cast<std::ptrdiff_t>(position));
}

} // namespace Varn::ToolLibraries

#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSource.h"

#include "util/utility/Assert.h"

namespace Varn::ToolLibraries {

ToolSource::~ToolSource() = default;

ToolSource::const_iterator ToolSource::begin() const
{
    return const_iterator(this);
}

ToolSource::const_iterator ToolSource::end() const
{
    return const_iterator();
}

ToolSource::const_iterator::const_iterator(const ToolSource *source) : m_parent(source), m_size(source->numberOfTools())
{
    validate();
}

bool ToolSource::const_iterator::equals(const const_iterator &other) const
{
    if (!m_parent || !other.m_parent)
        return m_parent == other.m_parent;
    VARN_ASSERT_TEXT(m_parent == other.m_parent, "Mismatched iterator parents");
    return m_index == other.m_index;
}

std::unique_ptr<const Tool> ToolSource::const_iterator::operator*() const
{
    VARN_EXPECTS(!isEnd());
    return m_parent->at(m_index);
}

ToolSource::const_iterator &ToolSource::const_iterator::operator++()
{
    ++m_index;
    validate();
    return *this;
}

ToolSource::const_iterator ToolSource::const_iterator::operator++(int n)
{
    const const_iterator before = *this;
    m_index += static_cast<std::uint32_t>(n);
    validate();
    return before;
}

void ToolSource::const_iterator::validate()
{
    if (m_index >= m_size)
        m_parent = nullptr;
}

} // namespace Varn::ToolLibraries

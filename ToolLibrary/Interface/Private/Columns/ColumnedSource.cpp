#include "ToolLibrary/Interface/Private/Columns/ColumnedSource.h"

namespace Varn::ToolLibraries {

ColumnedSource::~ColumnedSource() = default;

ColumnedSource::Use ColumnedSource::useColumns() const
{
    std::unique_lock lock(m_mutex);
    if (!m_columns || !m_columns->refresh())
        m_columns = std::make_unique<PageColumns>(*this);
    return Use(std::move(lock), *m_columns);
}

void ColumnedSource::noteUpdated(ToolRow row)
{
    const std::lock_guard lock(m_mutex);
    if (m_columns)
        m_columns->noteUpdated(row);
}

void ColumnedSource::noteRemoved(ToolRow row)
{
    const std::lock_guard lock(m_mutex);
    if (m_columns)
        m_columns->noteRemoved(row);
}

void ColumnedSource::dropColumns()
{
    const std::lock_guard lock(m_mutex);
    m_columns.reset();
}

} // namespace Varn::ToolLibraries

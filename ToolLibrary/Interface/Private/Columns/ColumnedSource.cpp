#include "ToolLibrary/Interface/Private/Columns/ColumnedSource.h"

namespace Varn::ToolLibraries {

ColumnedSource::~ColumnedSource() = default;

ColumnedSource::Use ColumnedSource::useColumns() const
{
    std::unique_lock lock(m_mutex);
    std::unique_ptr<PageColumns> columns = std::move(m_columns); // gone when a refresh breaks off halfway
    if (!columns || !columns->refresh())
        columns = std::make_unique<PageColumns>(*this);
    m_columns = std::move(columns);
    return Use(std::move(lock), *m_columns);
}

void ColumnedSource::noteUpdated(ToolRow row)
{
    const std::lock_guard lock(m_mutex);
    if (m_columns && !m_columns->noteUpdated(row))
        m_columns.reset();
}

void ColumnedSource::noteRemoved(ToolRow row)
{
    const std::lock_guard lock(m_mutex);
    if (m_columns && !m_columns->noteRemoved(row))
        m_columns.reset();
}

void ColumnedSource::dropColumns()
{
    const std::lock_guard lock(m_mutex);
    m_columns.reset();
}

} // namespace Varn::ToolLibraries

#include "ToolLibrary/Interface/Private/ColumnedSource.h"

namespace Varn::ToolLibraries {

ColumnedSource::~ColumnedSource() = default;

ColumnedSource::Use ColumnedSource::useColumns() const
{
    {
        const std::lock_guard lock(m_mutex);
        if (!m_columns)
            m_columns = std::make_unique<PageColumns>(source());
    }
    return Use(m_mutex, *m_columns);
}

} // namespace Varn::ToolLibraries

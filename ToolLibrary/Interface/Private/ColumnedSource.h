// ColumnedSource.h -- the face of a library that keeps columns of its tools, for those who look for pages of them.
#pragma once

#include "ToolLibrary/Interface/Private/PageColumns.h"

#include <memory>
#include <mutex>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT ColumnedSource
{
public:
    virtual ~ColumnedSource();

    /// The columns, for as long as the object lives that is given; others wait.
    class Use
    {
    public:
        Use(std::mutex &mutex, PageColumns &columns) : m_lock(mutex), m_columns(columns) {}
        PageColumns &operator*() const { return m_columns; }
        PageColumns *operator->() const { return &m_columns; }

    private:
        std::unique_lock<std::mutex> m_lock;
        PageColumns &m_columns;
    };
    Use useColumns() const;

    /// The tool of a row, which leans on the library. REQUIRES: a row of the columns.
    virtual std::unique_ptr<const Tool> toolOfRow(PageColumns::Row row) const = 0;

protected:
    /// Before a write: what is kept holds no longer. Nobody uses the columns meanwhile.
    void dropColumns() { m_columns.reset(); }

private:
    virtual const ToolSource &source() const = 0;

    mutable std::mutex m_mutex;
    mutable std::unique_ptr<PageColumns> m_columns; // made by the first use; guarded by m_mutex
};

} // namespace Varn::ToolLibraries

// ColumnedSource.h -- the face of a library that keeps columns of its tools, for those who look for pages of them.
#pragma once

#include "ToolLibrary/Interface/Private/Columns/PageColumns.h"

#include <memory>
#include <mutex>

namespace Varn {
namespace ToolLibraries {
class Tool;
}
} // namespace Varn

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT ColumnedSource
{
public:
    virtual ~ColumnedSource();

    /// The columns, for as long as the object lives that is given; others wait.
    class Use
    {
    public:
        Use(std::unique_lock<std::mutex> lock, PageColumns &columns) : m_lock(std::move(lock)), m_columns(columns) {}
        PageColumns &operator*() const { return m_columns; }
        PageColumns *operator->() const { return &m_columns; }

    private:
        std::unique_lock<std::mutex> m_lock;
        PageColumns &m_columns;
    };
    Use useColumns() const;

    /// The tool of a row, which leans on the library. REQUIRES: a row of the library. Several threads at once.
    virtual std::unique_ptr<const Tool> toolOfRow(ToolRow row) const = 0;
    virtual ToolRow numberOfRows() const = 0;

protected:
    // Of a write; nobody uses the columns meanwhile.
    void noteUpdated(ToolRow row);
    void noteRemoved(ToolRow row);
    void dropColumns(); ///< for one that leaves no tool where it was

private:
    mutable std::mutex m_mutex;
    mutable std::unique_ptr<PageColumns> m_columns; // made by the first use; guarded by m_mutex
};

} // namespace Varn::ToolLibraries

#include "platform/tool/ToolPageRequest.h"

#include <utility>

namespace Varn::ToolLibraries {

ToolPageRequest::ToolPageRequest(std::vector<ToolLibraryLocator> libraryIds, std::string filtersState, int pageLimit,
                                 int pageOffset, std::string searchQuery, std::string sortState)
    : m_libraryIds(std::move(libraryIds)),
      m_filtersState(std::move(filtersState)),
      m_pageLimit(pageLimit),
      m_pageOffset(pageOffset),
      m_searchQuery(std::move(searchQuery)),
      m_sortState(std::move(sortState))
{
}

} // namespace Varn::ToolLibraries

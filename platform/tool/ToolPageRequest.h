// ToolPageRequest.h -- the question for one page of tools. A value, any thread.
#pragma once

#include "platform/VarnPlatformExport.h"
#include "platform/tool/ToolLibraryLocator.h"

#include <string>
#include <string_view>
#include <vector>

namespace Varn::ToolLibraries {

/// Texts are UTF-8 and taken as they are: whoever answers the request decides what a broken one means.
class VARN_PLATFORM_EXPORT ToolPageRequest
{
public:
    ToolPageRequest(std::vector<ToolLibraryLocator> libraryIds, std::string filtersState, int pageLimit, int pageOffset,
                    std::string searchQuery, std::string sortState);

    /// In the order in which the page lists them.
    const std::vector<ToolLibraryLocator> &libraryIds() const { return m_libraryIds; }
    std::string_view filtersState() const { return m_filtersState; } ///< JSON array of filters
    int pageLimit() const { return m_pageLimit; }                    ///< tools on the page at most
    int pageOffset() const { return m_pageOffset; }                  ///< matching tools before the page
    std::string_view searchQuery() const { return m_searchQuery; }   ///< words as a person types them
    std::string_view sortState() const { return m_sortState; }       ///< JSON array of sort keys

private:
    std::vector<ToolLibraryLocator> m_libraryIds;
    std::string m_filtersState;
    int m_pageLimit;
    int m_pageOffset;
    std::string m_searchQuery;
    std::string m_sortState;
};

} // namespace Varn::ToolLibraries

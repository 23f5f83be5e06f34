#include "ToolLibrary/Interface/ToolLibraryCache.h"
#include "support/VirtualTable.h"

#include <gmock/gmock.h>

using TestSupport::slotOf;
using Varn::ToolLibraries::ToolLibraryCache;

TEST(ToolLibraryCache, TheOperationsStandInTheirSettledOrder)
{
    const std::pair<const char *, std::size_t> operations[] = {
        {"initialLoadTask", slotOf(&ToolLibraryCache::initialLoadTask)},
        {"libraryIndex", slotOf(&ToolLibraryCache::libraryIndex)},
        {"hasLibrary", slotOf(&ToolLibraryCache::hasLibrary)},
        {"getLoadedLibrary", slotOf(&ToolLibraryCache::getLoadedLibrary)},
        {"createLibrary", slotOf(&ToolLibraryCache::createLibrary)},
        {"createHubLibraryAndAddNodes", slotOf(&ToolLibraryCache::createHubLibraryAndAddNodes)},
        {"deleteLibrary", slotOf(&ToolLibraryCache::deleteLibrary)},
        {"duplicateLibrary", slotOf(&ToolLibraryCache::duplicateLibrary)},
        {"editLibrary", slotOf(&ToolLibraryCache::editLibrary)},
        {"createFolder", slotOf(&ToolLibraryCache::createFolder)},
        {"deleteFolder", slotOf(&ToolLibraryCache::deleteFolder)},
        {"editFolder", slotOf(&ToolLibraryCache::editFolder)},
        {"makeUniqueUrl", slotOf(&ToolLibraryCache::makeUniqueUrl)},
        {"setDocumentIndex", slotOf(&ToolLibraryCache::setDocumentIndex)},
        {"refreshDocumentLibraries", slotOf(&ToolLibraryCache::refreshDocumentLibraries)},
        {"refreshCache", slotOf(&ToolLibraryCache::refreshCache)},
        {"getHubLastSyncTime", slotOf(&ToolLibraryCache::getHubLastSyncTime)},
    };
    std::size_t slot = 0;
    for (const auto &[name, found] : operations)
        EXPECT_EQ(found, slot++) << name;
}

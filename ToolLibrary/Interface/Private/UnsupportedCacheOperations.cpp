// Operations of the cache that change libraries and folders, which it does not serve yet.
#include "ToolLibrary/Interface/Private/ToolLibraryCacheInMemory.h"

#include "platform/tool/Exception.h"

namespace Varn::ToolLibraries {

namespace {

[[noreturn]] void refuse()
{
    throw NotSupportedError("Not yet supported");
}

} // namespace

std::shared_ptr<DiskLibrary> ToolLibraryCacheInMemory::createLibrary(ToolLibraryUrl, const QMap<QString, QVariant> &,
                                                                     QMap<QString, QVariant> &)
{
    refuse();
}

void ToolLibraryCacheInMemory::createHubLibraryAndAddNodes()
{
    refuse();
}

void ToolLibraryCacheInMemory::deleteLibrary(ToolLibraryUrl)
{
    refuse();
}

std::shared_ptr<DiskLibrary> ToolLibraryCacheInMemory::duplicateLibrary(ToolLibraryUrl, ToolLibraryUrl,
                                                                        QMap<QString, QVariant> &)
{
    refuse();
}

std::shared_ptr<DiskLibrary> ToolLibraryCacheInMemory::editLibrary(ToolLibraryUrl, QMap<QString, QVariant> &)
{
    refuse();
}

void ToolLibraryCacheInMemory::createFolder(ToolLibraryUrl, QMap<QString, QVariant> &)
{
    refuse();
}

void ToolLibraryCacheInMemory::deleteFolder(ToolLibraryUrl)
{
    refuse();
}

QList<QVariant> ToolLibraryCacheInMemory::editFolder(ToolLibraryUrl, QMap<QString, QVariant> &)
{
    refuse();
}

ToolLibraryCacheInMemory::ToolLibraryUrl ToolLibraryCacheInMemory::makeUniqueUrl(ToolLibraryUrl) const
{
    refuse();
}

} // namespace Varn::ToolLibraries

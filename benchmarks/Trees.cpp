#include "Trees.h"

#include "ToolLibrary/Interface/Factory.h"
#include "ToolLibrary/Interface/Private/LibraryIndexProvider.h"

#include <utility>

namespace Bench {

using namespace Varn::ToolLibraries;

namespace {

class ListedLibraries : public LibraryIndexProvider
{
public:
    explicit ListedLibraries(std::vector<std::wstring> urls) : m_urls(std::move(urls)) {}

    LibraryMetadataTree libraryIndex() const override
    {
        LibraryMetadataTree index = LibraryIndexProvider::libraryIndex();
        for (const std::wstring &url : m_urls)
            index.insert(std::make_shared<LibraryMetadata>(url, LibraryMetadata::Type::Library, ToolLibraryLocator(url),
                                                           ToolLibraryLocator::UserLibrariesFolder, false));
        return index;
    }

private:
    std::vector<std::wstring> m_urls;
};

} // namespace

std::shared_ptr<ToolLibraryCacheInMemory> cacheOf(const std::vector<std::wstring> &urls)
{
    return std::make_shared<ToolLibraryCacheInMemory>(std::make_shared<ListedLibraries>(urls));
}

std::shared_ptr<ToolLibraryInterface> engineOf(const std::vector<std::wstring> &urls)
{
    Factory::Args args;
    args.cache = cacheOf(urls);
    return Factory::make(std::move(args));
}

} // namespace Bench

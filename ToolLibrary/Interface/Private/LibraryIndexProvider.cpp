#include "ToolLibrary/Interface/Private/LibraryIndexProvider.h"

#include "ToolLibrary/CamDocuments.h"
#include "ToolLibrary/Interface/Private/TaskDispatcher.h"
#include "platform/utils/LocaleRegistry.h"
#include "util/utility/Assert.h"

#include <algorithm>
#include <utility>

namespace Varn::ToolLibraries {

LibraryMetadataTree LibraryIndexProvider::libraryIndex() const
{
    LibraryMetadataTree index;
    index.insert(allNode());
    addToUserLibraries(index, getDocumentLibraries(), InsertionPosition::Back);
    return index;
}

LibraryIndexProvider::~LibraryIndexProvider() = default;

LibraryMetadataTree LibraryIndexProvider::getDocumentLibraries() const
{
    std::shared_ptr<Tools::CamDocuments> documents;
    {
        const std::lock_guard lock(m_mutex);
        documents = m_documents;
    }
    if (!documents)
        return LibraryMetadataTree();
    const auto read = [&documents] { return documents->getIndex(); };
    return TaskDispatcher::runOnThread(read, VarnMainThreadExecutor()).get();
}

void LibraryIndexProvider::setDocumentIndex(std::shared_ptr<Tools::CamDocuments> documents)
{
    const std::lock_guard lock(m_mutex);
    m_documents.swap(documents); // what was there goes after the lock
}

void LibraryIndexProvider::addToUserLibraries(LibraryMetadataTree &index, LibraryMetadataTree &&nodes,
                                              InsertionPosition position)
{
    VARN_EXPECTS(index.contains(ToolLibraryLocator::UserLibrariesFolder));
    std::vector<LibraryMetadataTree::Node *> roots = nodes.traverseRootNodes();
    if (position == InsertionPosition::Front)
        std::ranges::reverse(roots);
    for (const LibraryMetadataTree::Node *root : roots) {
        root->metadata()->setParent(ToolLibraryLocator::UserLibrariesFolder);
        index.insert(*root, position);
    }
}

std::shared_ptr<LibraryMetadata> LibraryIndexProvider::allNode()
{
    static const LocalizedMessage name = LocaleRegistry::registerMessage("User Libraries");
    return std::make_shared<LibraryMetadata>(name.asWideString(), LibraryMetadata::Type::Folder,
                                             ToolLibraryLocator::UserLibrariesFolder, std::nullopt, std::nullopt);
}

} // namespace Varn::ToolLibraries

// LibraryIndexProvider.h -- builds the tree of folders and libraries that a person sees. This one knows the open
// documents only; a host may hand in one with more. Any thread.
#pragma once

#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/tool/LibraryMetadataTree.h"

#include <memory>
#include <mutex>

namespace Varn::Tools {
class CamDocuments;
}

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT LibraryIndexProvider
{
public:
    using InsertionPosition = LibraryMetadataTree::InsertionPosition;

    LibraryIndexProvider() = default;
    LibraryIndexProvider(const LibraryIndexProvider &) = delete;
    LibraryIndexProvider &operator=(const LibraryIndexProvider &) = delete;

    /// The whole tree, afresh at each call: "User Libraries", and below it the documents.
    virtual LibraryMetadataTree libraryIndex() const;
    virtual ~LibraryIndexProvider();

    /// The folder "Documents" with what it holds; an empty tree before setDocumentIndex. The documents are asked on the
    /// main thread, so the caller must not keep that one waiting.
    LibraryMetadataTree getDocumentLibraries() const;
    void setDocumentIndex(std::shared_ptr<Tools::CamDocuments> documents);

    /// Moves the roots of \a nodes below "User Libraries", to its front or its back, where they keep their order.
    /// REQUIRES: \a index has that folder.
    static void addToUserLibraries(LibraryMetadataTree &index, LibraryMetadataTree &&nodes, InsertionPosition position);

protected:
    /// The folder "User Libraries", above everything that a person keeps.
    static std::shared_ptr<LibraryMetadata> allNode();

private:
    std::shared_ptr<Tools::CamDocuments> m_documents; // guarded by m_mutex
    mutable std::mutex m_mutex;
};

} // namespace Varn::ToolLibraries

#include "ToolLibrary/CamDocuments.h"

#include "ToolLibrary/IO/LibraryDisplayNames.h"
#include "platform/core/VarnDocument.h"
#include "platform/utils/Guid.h"
#include "platform/utils/Thread.h"
#include "util/utility/Assert.h"

#include <set>
#include <utility>

namespace Varn::Tools {

using ToolLibraries::LibraryMetadata;
using ToolLibraries::LibraryMetadataNode;
using ToolLibraries::LibraryMetadataTree;
using ToolLibraries::ToolLibraryLocator;

namespace {

std::wstring uniqueTitle(const std::wstring &title, std::set<std::wstring> &taken)
{
    std::wstring name = title;
    for (int counter = 2; !taken.insert(name).second; ++counter)
        name = title + L" [" + std::to_wstring(counter) + L"]";
    return name;
}

} // namespace

CamDocuments::CamDocuments()
{
    refresh();
}

CamDocuments::~CamDocuments() = default;

void CamDocuments::refresh()
{
    VARN_ASSERT_TEXT(Thread::isMainThread(), "VarnDocument::openDocuments is not safe to access from another thread");
    QList<ToolLibraryUrl> urls;
    for (const SafePointer<VarnDocument> &document : VarnDocument::openDocuments())
        if (isValid(document))
            urls.append(urlOf(document));
    const std::lock_guard lock(m_mutex);
    m_urls.swap(urls);
}

SafePointer<VarnDocument> CamDocuments::active() const
{
    const std::lock_guard lock(m_mutex);
    return m_active;
}

void CamDocuments::setActive(SafePointer<VarnDocument> document)
{
    const std::lock_guard lock(m_mutex);
    m_active = std::move(document);
}

SafePointer<VarnDocument> CamDocuments::document(const ToolLibraryUrl &url) const
{
    VARN_ASSERT(url.isDocumentLibrary());
    const Guid guid = Guid::fromString(url.documentUrl().libraryPath().toStdString());
    if (guid.isNull())
        return {};
    SafePointer<VarnDocument> found = VarnDocument::getOpenDocument(guid);
    return isValid(found) ? found : SafePointer<VarnDocument>();
}

std::vector<SafePointer<VarnDocument>> CamDocuments::documents() const
{
    std::vector<SafePointer<VarnDocument>> found;
    for (const ToolLibraryUrl &url : lastUrls())
        if (SafePointer<VarnDocument> open = document(url))
            found.push_back(std::move(open));
    return found;
}

LibraryMetadataTree CamDocuments::getIndex() const
{
    std::vector<LibraryMetadataNode> nodes;
    std::set<std::wstring> taken;
    const SafePointer<VarnDocument> activeDocument = active();
    for (const ToolLibraryUrl &url : lastUrls()) {
        const SafePointer<VarnDocument> open = document(url);
        if (!open)
            continue;
        const bool isActive = open == activeDocument;
        const auto metadata = std::make_shared<DocumentLibraryMetadata>(uniqueTitle(open->title(), taken), url,
                                                                        isActive, std::vector<SetupMetadata>{});
        metadata->setParent(ToolLibraryLocator::DocumentsFolder);
        nodes.emplace(isActive ? nodes.begin() : nodes.end(), std::shared_ptr<LibraryMetadata>(metadata));
    }
    const auto root = std::make_shared<LibraryMetadata>(LibraryDisplayNames::documentsRoot().toStdWString(),
                                                        LibraryMetadata::Type::Folder,
                                                        ToolLibraryLocator::DocumentsFolder, std::nullopt, false);
    return LibraryMetadataTree(LibraryMetadataNode(root, std::move(nodes)));
}

ToolLibraryUrl CamDocuments::urlOf(const Guid &guid)
{
    return ToolLibraryUrl(QStringLiteral("document://%1").arg(QString::fromStdString(guid.asString())));
}

ToolLibraryUrl CamDocuments::urlOf(const VarnDocument &document)
{
    return urlOf(document.guid());
}

ToolLibraryUrl CamDocuments::urlOf(const SafePointer<VarnDocument> &document)
{
    VARN_ASSERT(document.isValid());
    return document ? urlOf(*document) : ToolLibraryUrl();
}

QList<QString> CamDocuments::urls() const
{
    QList<QString> texts;
    for (const ToolLibraryUrl &url : lastUrls())
        texts.append(url.url());
    return texts;
}

QList<ToolLibraryUrl> CamDocuments::lastUrls() const
{
    const std::lock_guard lock(m_mutex);
    return m_urls;
}

bool CamDocuments::isValid(const SafePointer<VarnDocument> &document)
{
    return document && document->isDocumentOpen();
}

} // namespace Varn::Tools

#include "platform/core/VarnDocument.h"

#include "platform/utils/Thread.h"
#include "util/utility/Assert.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace Varn {

namespace {

struct OpenDocuments {
    std::mutex mutex;
    std::vector<VarnDocument *> documents; // guarded by mutex; none of them is being destroyed
};

OpenDocuments &open()
{
    static OpenDocuments instance;
    return instance;
}

} // namespace

VarnDocument::VarnDocument(std::wstring title) : m_guid(Guid::create()), m_title(std::move(title)) {}

std::unique_ptr<VarnDocument> VarnDocument::create(std::wstring title)
{
    VARN_EXPECTS(Thread::isMainThread());
    std::unique_ptr<VarnDocument> document(new VarnDocument(std::move(title)));
    const std::lock_guard lock(open().mutex);
    open().documents.push_back(document.get());
    return document;
}

VarnDocument::~VarnDocument()
{
    close();
}

void VarnDocument::close()
{
    VARN_EXPECTS(Thread::isMainThread());
    const std::lock_guard lock(open().mutex);
    std::erase(open().documents, this);
}

bool VarnDocument::isDocumentOpen() const
{
    const std::lock_guard lock(open().mutex);
    return std::find(open().documents.begin(), open().documents.end(), this) != open().documents.end();
}

std::vector<SafePointer<VarnDocument>> VarnDocument::openDocuments()
{
    const std::lock_guard lock(open().mutex);
    return {open().documents.begin(), open().documents.end()};
}

SafePointer<VarnDocument> VarnDocument::getOpenDocument(const Guid &guid)
{
    const std::lock_guard lock(open().mutex);
    for (VarnDocument *document : open().documents) {
        if (document->m_guid == guid)
            return document;
    }
    return nullptr;
}

} // namespace Varn

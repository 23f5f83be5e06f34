// VarnDocument.h -- a document that is open in this process.
//
// Documents are made, used and destroyed on the main thread. The list of the open ones has a lock, so that reading it
// elsewhere is no fault in itself; but nothing keeps a document alive there, and only the main thread may follow a
// pointer to one.
#pragma once

#include "platform/utils/Guid.h"
#include "util/utility/SafePointer.h"

#include <memory>
#include <string>
#include <vector>

namespace Varn {

class VARN_PLATFORM_EXPORT VarnDocument : public SafePointerTarget
{
public:
    /// A new document, open at once, with a GUID of its own. Two documents may have one title.
    static std::unique_ptr<VarnDocument> create(std::wstring title);

    /// Closes the document, if it is still open.
    ~VarnDocument();
    VarnDocument(const VarnDocument &) = delete;
    VarnDocument &operator=(const VarnDocument &) = delete;

    const Guid &guid() const { return m_guid; }
    const std::wstring &title() const { return m_title; }

    /// Takes the document off the list of the open ones, for good, while the object lives on.
    void close();
    bool isDocumentOpen() const;

    /// The open documents in the order in which they were opened.
    static std::vector<SafePointer<VarnDocument>> openDocuments();

    /// The open document of that GUID, or null.
    static SafePointer<VarnDocument> getOpenDocument(const Guid &guid);

private:
    explicit VarnDocument(std::wstring title);

    Guid m_guid;
    std::wstring m_title;
};

} // namespace Varn

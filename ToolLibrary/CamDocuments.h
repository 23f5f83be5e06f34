// CamDocuments.h -- the open documents as the tool library sees them: by URL, with one of them active.
//
// The list changes only in refresh(), which runs on the main thread; the other operations may be called on any thread
// while no refresh is under way.
#pragma once

#include "ToolLibrary/IO/ToolLibraryUrl.h"
#include "ToolLibrary/ToolLibraryExport.h"
#include "util/utility/SafePointer.h"

#include <QList>
#include <QString>

#include <vector>

namespace Varn {
class Guid;
class VarnDocument;
} // namespace Varn

namespace Varn::Tools {

class TOOL_LIBRARY_EXPORT CamDocuments
{
public:
    /// Takes over the open documents, as refresh does.
    CamDocuments();
    ~CamDocuments();
    CamDocuments(const CamDocuments &) = delete;
    CamDocuments &operator=(const CamDocuments &) = delete;

    /// Takes over which documents are open. Main thread.
    void refresh();

    SafePointer<VarnDocument> active() const;
    void setActive(SafePointer<VarnDocument> document);

    /// The open document that \a url names, or null. REQUIRES: url.isDocumentLibrary().
    SafePointer<VarnDocument> document(const ToolLibraryUrl &url) const;

    /// Those of the last refresh that are still open, in their order.
    std::vector<SafePointer<VarnDocument>> documents() const;

    /// "document://" and the GUID; a default URL for a null pointer.
    static ToolLibraryUrl urlOf(const Guid &guid);
    static ToolLibraryUrl urlOf(const VarnDocument &document);
    static ToolLibraryUrl urlOf(const SafePointer<VarnDocument> &document);

    /// The URLs of the last refresh.
    QList<QString> urls() const;

private:
    static bool isValid(const SafePointer<VarnDocument> &document);

    QList<ToolLibraryUrl> m_urls;
    SafePointer<VarnDocument> m_active;
};

} // namespace Varn::Tools

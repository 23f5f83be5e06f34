// CamDocuments.h -- the open documents as the tool library sees them: by URL, with one of them active.
//
// Any thread may ask; refresh() and getIndex(), which look into the documents, run on the main thread. There documents
// close too, so that is the place to follow the pointers that the others give.
#pragma once

#include "ToolLibrary/IO/ToolLibraryUrl.h"
#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/tool/LibraryMetadataTree.h"
#include "platform/tool/ToolId.h"
#include "util/utility/SafePointer.h"

#include <QList>
#include <QString>

#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace Varn {
class Guid;
class VarnDocument;
} // namespace Varn

namespace Varn::Tools {

class TOOL_LIBRARY_EXPORT CamDocuments
{
public:
    struct StrategyMetadata {
        std::wstring name;        ///< by which programs know it
        std::wstring displayName; ///< in the language of the moment
    };
    /// A use of a tool by an operation.
    struct OperationMetadata {
        std::wstring name;
        StrategyMetadata strategy;
        std::optional<ToolLibraries::ToolId> toolId;
    };
    struct SetupMetadata {
        std::wstring name;
        std::vector<OperationMetadata> operations;
    };

    /// The node of a document. Its JSON has beside the members of every node "activeDocument", true and only for that
    /// one, and "setups":[{"name","operations":[{"name","strategy":{"name"},"toolID"}]}]; an operation without a tool
    /// has no "toolID".
    class TOOL_LIBRARY_EXPORT DocumentLibraryMetadata : public ToolLibraries::LibraryMetadata
    {
    public:
        DocumentLibraryMetadata(std::wstring_view name, ToolLibraries::ToolLibraryLocator url, bool isActiveDocument,
                                std::vector<SetupMetadata> setups);

        bool isActiveDocument() const { return m_isActiveDocument; }
        const std::vector<SetupMetadata> &setups() const { return m_setups; }

    protected:
        void fillJson(Json::Value &object) const override;

    private:
        bool m_isActiveDocument;
        std::vector<SetupMetadata> m_setups;
    };

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

    /// The folder "Documents" with a node for each document of the last refresh that is still open: the active one
    /// first, then the others in their order. Of several with one title the second is "TITLE [2]". Main thread.
    ToolLibraries::LibraryMetadataTree getIndex() const;

    /// "document://" and the GUID; a default URL for a null pointer.
    static ToolLibraryUrl urlOf(const Guid &guid);
    static ToolLibraryUrl urlOf(const VarnDocument &document);
    static ToolLibraryUrl urlOf(const SafePointer<VarnDocument> &document);

    /// The URLs of the last refresh.
    QList<QString> urls() const;

private:
    static bool isValid(const SafePointer<VarnDocument> &document);

    QList<ToolLibraryUrl> lastUrls() const;

    QList<ToolLibraryUrl> m_urls;       // guarded by m_mutex
    SafePointer<VarnDocument> m_active; // guarded by m_mutex
    mutable std::mutex m_mutex;
};

} // namespace Varn::Tools

// RapidjsonToolLibrary.h -- a whole library as one parsed JSON document, read and changed in place.
//
// Whatever a file's format, loading ends here. The document is {"data":[tool, ...],"version":N}; other members of the
// root are kept. Tools handed out point into the document. Readers may share it between threads while nothing writes.
#pragma once

#include "ToolLibrary/Interface/Private/Columns/ColumnedSource.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/LibraryTextWriter.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/DiskLibrary.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/GuidIndex.h"

#include <QJsonDocument>

#include <rapidjson/document.h>

namespace Varn {
class Abortable;
class Guid;
} // namespace Varn

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT RapidjsonToolLibrary : public DiskLibrary, public ColumnedSource
{
public:
    /// Takes the document over, drops tools without a GUID of their own (the first of several with one GUID stays),
    /// brings the tools to the current format version and checks them. Throws LibraryFormatError for a document that is
    /// no library; a version above the current one is kept as it is.
    explicit RapidjsonToolLibrary(rapidjson::Document document);
    ~RapidjsonToolLibrary() override;

    /// Throws LibraryFormatError "Failed to parse library JSON" for bad text and for an abort, else as the constructor.
    static std::shared_ptr<RapidjsonToolLibrary> fromString(const std::string &text, const Abortable &abortable);
    static std::shared_ptr<RapidjsonToolLibrary> fromDocument(const QJsonDocument &document,
                                                              const Abortable &abortable);

    // Sink. The memory of a replaced or removed tool is given back with the library. A text that is no JSON object
    // throws InvalidInput "Unable to create tool".
    Ox::expected<void, ToolSinkError> createTool(ToolId id, const Tool &tool) override; ///< at the end
    Ox::expected<void, ToolSinkError> updateTool(ToolId id, const Tool &tool) override; ///< in its place
    Ox::expected<void, ToolSinkError> removeTool(ToolId id) override;                   ///< the others keep their order

    /// Nothing to do: a file has no remote image.
    Ox::expected<void, ToolSinkError> syncTool(const ToolId &id) override;

    // Source. A lookup by id takes a time that does not grow with the library.
    std::string toJson() const override;
    std::optional<std::shared_ptr<Tool>> get(ToolId id) const override;
    unsigned int numberOfTools() const override;
    std::vector<ToolId> getToolIds() const override;
    int getVersion() const override; ///< 1 when the document has none

    QMap<QString, QVariant> toQVariantMap() const override;

    /// Prints the library as it is saved, the text that toQVariantMap() gives through a QJsonDocument, without a copy
    /// of anything. With \a newGuids each tool of the text gets a GUID of its own and is no document tool any more.
    /// False when the sink was.
    bool printIndented(const LibraryTextWriter::Sink &sink, bool newGuids = false) const;

    /// The library as one goes across the interface: the tools in the order of their GUIDs, the version, nothing else.
    std::string toEnvelope() const;

    std::unique_ptr<const Tool> toolOfRow(ToolRow row) const override { return at(row); }
    ToolRow numberOfRows() const override { return numberOfTools(); }

private:
    std::unique_ptr<const Tool> at(unsigned int index) const override;
    void sanitise() override;

    const rapidjson::Value *find(const ToolId &id) const;
    rapidjson::Value &getDataArray();
    static rapidjson::Document parse(const Tool &tool);
    static void applyGuid(const Guid &guid, rapidjson::Document &tool);
    static std::unique_ptr<Tool> toolFromJson(const rapidjson::Value &value);

    void upgrade();
    void removeToolsWithDuplicateGuids();
    void validateSchema() const;
    static void validateNonNegativeGaugeLength(const rapidjson::Value &tool);
    static void validateNonEmptyPresetsArray(const rapidjson::Value &tool);
    static void validateUnitValue(const rapidjson::Value &tool);

    rapidjson::Document m_doc;
    rapidjson::Value *m_tools = nullptr; // the array under "data"; found anew when the members of the root change
    GuidIndex m_index;                   // of that array
};

} // namespace Varn::ToolLibraries

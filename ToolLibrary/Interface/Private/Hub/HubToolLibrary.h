// HubToolLibrary.h -- a library whose tools live on the hub. It holds no tool, only how to ask for each.
//
// Tools of one library may be written on several threads at once, while others read: the list of tools has a lock of
// its own, which is not held while the hub works.
#pragma once

#include "ToolLibrary/Interface/Private/ToolSourceSink/DiskLibrary.h"
#include "platform/utils/Guid.h"

#include <QList>
#include <QVariant>

#include <cstddef>
#include <map>
#include <set>
#include <shared_mutex>

namespace Varn::ToolLibraries {

class TOOL_LIBRARY_EXPORT HubToolLibrary : public DiskLibrary
{
public:
    /// The library as the hub lists it.
    /// \param tools maps with "toolId", the hub's id, and "guid"; of several with one GUID the first stays
    HubToolLibrary(const std::string &libraryId, const QList<QVariant> &tools);

    /// A new library of the hub, filled with the tools of a library document. Blocks until the hub has them all; a tool
    /// that it refuses is left out.
    HubToolLibrary(const std::string &libraryId, const QMap<QString, QVariant> &library);

    ~HubToolLibrary() override;

    // Sink. A refusal of the hub is a ToolSinkError around its exception, an unknown id one around ToolMissing.
    Ox::expected<void, ToolSinkError> createTool(ToolId id, const Tool &tool) override; ///< a taken id is replaced
    Ox::expected<void, ToolSinkError> updateTool(ToolId id, const Tool &tool) override;
    Ox::expected<void, ToolSinkError> removeTool(ToolId id) override;

    /// Fetches the tool from the service. One that is gone there leaves the library, and is a refusal all the same.
    Ox::expected<void, ToolSinkError> syncTool(const ToolId &id) override;

    /// In the order of the GUIDs. Tools that the hub does not give are left out.
    std::string toJson() const override;

    /// Also nothing for a tool that the hub does not give; a walk meets null there.
    std::optional<std::shared_ptr<Tool>> get(ToolId id) const override;
    unsigned int numberOfTools() const override;
    std::vector<ToolId> getToolIds() const override; ///< in the order of the GUIDs, unlike a walk
    int getVersion() const override;                 ///< the current one: the hub brings its tools up to date

    QMap<QString, QVariant> toQVariantMap() const override;

protected:
    /// Throws Exception "Not implemented yet!": it is not for a client to repair what the hub keeps.
    void sanitise() override;

private:
    struct GuidOrder {
        bool operator()(const Guid &a, const Guid &b) const { return Guid::compare(a, b) < 0; }
    };
    /// The GUID under which a new tool goes to the hub; not its own where that was taken.
    struct Place {
        Guid guid;
        bool isReplaced = false;
    };

    std::unique_ptr<const Tool> at(unsigned int index) const override;

    void processToolsAsync(const QList<QVariant> &tools);
    Ox::expected<std::string, ToolSinkError> processSingleTool(const QVariant &tool, const Place &place) const;
    Ox::expected<std::string, ToolSinkError> createOnHub(const Tool &tool, const Place &place) const;

    bool has(const Guid &guid) const; ///< REQUIRES: m_mutex is held
    Place reserve(const Guid &guid);
    void release(const Guid &guid);
    void keep(const Guid &guid, const std::string &hubToolId);
    void forget(const Guid &guid);
    std::optional<std::string> hubToolIdOf(const Guid &guid) const;

    std::vector<std::string> m_toolIds;                   // guarded by m_mutex
    std::map<Guid, std::size_t, GuidOrder> m_guidToIndex; // into m_toolIds; guarded by m_mutex
    std::string m_libraryId;                              // the hub's folder identifier
    std::set<Guid, GuidOrder> m_reserved;                 // of tools on their way to the hub; guarded by m_mutex
    mutable std::shared_mutex m_mutex;
};

} // namespace Varn::ToolLibraries

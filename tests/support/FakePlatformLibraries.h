// FakePlatformLibraries.h -- a hub in memory, which fails where a test wants it to, and what puts it in. Any thread.
#pragma once

#include "platform/hub/ToolLibraryWrappers.h"
#include "platform/ox/AppLogMgr.h"
#include "platform/utils/Abortable.h"

#include <QJsonDocument>

#include <algorithm>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace TestSupport {

/// Hub tool ids are "tool-1", "tool-2" in the order of their making; an update adds a "+". Nodes are only counted.
class FakePlatformLibraries : public Varn::IPlatformLibrariesInterface
{
public:
    using HubFailure = Ox::HubLibrariesCache::Exception;
    using RefreshResult = Varn::LibrariesPlatform::HubLibraryRefreshResult;
    using LibraryMetadataTree = Varn::ToolLibraries::LibraryMetadataTree;

    // What a test sets before the hub is used.
    LibraryMetadataTree tree;                           ///< what index() gives and addHubLibraryNodes() makes
    std::function<void(const std::string &)> meanwhile; ///< runs inside of each operation, with its name
    QStringList childNames;
    RefreshResult libraryNodes;
    RefreshResult items;
    std::optional<std::chrono::system_clock::time_point> syncTime;

    /// Lets every call of that operation fail.
    template <typename Failure = HubFailure>
    void failAt(const std::string &operation, const std::string &text)
    {
        const std::lock_guard lock(m_mutex);
        m_failures[operation] =
            std::make_shared<Failure>(text, L"translated " + std::wstring(text.begin(), text.end()));
    }
    void recover()
    {
        const std::lock_guard lock(m_mutex);
        m_failures.clear();
    }

    /// A tool that somebody else puts on the hub; gives its hub tool id.
    std::string put(const std::string &libraryId, const std::string &json)
    {
        const std::lock_guard lock(m_mutex);
        m_tools.push_back({"tool-" + std::to_string(++m_made), libraryId, json});
        return m_tools.back().id;
    }

    /// A tool that somebody else takes from the hub.
    void drop(const std::string &hubToolId)
    {
        const std::lock_guard lock(m_mutex);
        std::erase_if(m_tools, [&](const Entry &entry) { return entry.id == hubToolId; });
    }

    /// "library json" of a tool; empty without it.
    std::string held(const std::string &hubToolId) const
    {
        const std::lock_guard lock(m_mutex);
        const Entry *entry = find(hubToolId);
        return entry ? entry->libraryId + " " + entry->json : std::string();
    }

    /// Each call so far: the operation and its arguments, by blanks.
    std::vector<std::string> calls() const
    {
        const std::lock_guard lock(m_mutex);
        return m_calls;
    }

    Result<LibraryMetadataTree> index() const override
    {
        return begin("index").map([this] { return LibraryMetadataTree::fromJson(tree.toJson()); }); // nodes of its own
    }
    Result<void> addHubLibraryNodes(LibraryMetadataTree &target) override
    {
        return begin("addHubLibraryNodes").map([&] {
            for (const auto *root : tree.traverseRootNodes())
                target.insert(*root, LibraryMetadataTree::InsertionPosition::Back);
        });
    }
    Result<void> listTools(const std::string &libraryId, QList<QVariant> &tools,
                           const Varn::Abortable &abortable) const override
    {
        return begin("listTools", libraryId).and_then([&]() -> Result<void> {
            if (abortable.isAborted())
                return failure("Listing aborted");
            const std::lock_guard lock(m_mutex);
            for (const Entry &entry : m_tools) {
                if (entry.libraryId == libraryId)
                    tools.append(listed(entry));
            }
            return {};
        });
    }
    Result<QStringList> listChildNames(const std::string &parent) const override
    {
        return begin("listChildNames", parent).map([this] { return childNames; });
    }
    Result<void> checkNodeEditable(const std::string &id) const override { return begin("checkNodeEditable", id); }
    Result<std::string> createNode(const QString &kind, const QString &name, const std::string &parent) override
    {
        return begin("createNode", kind.toStdString(), name.toStdString(), parent).map([this] {
            const std::lock_guard lock(m_mutex);
            return "node-" + std::to_string(++m_made);
        });
    }
    Result<void> deleteNode(const std::string &id) override { return begin("deleteNode", id); }
    Result<void> updateNode(const std::string &id, const QString &name, const std::string &parent) override
    {
        return begin("updateNode", id, name.toStdString(), parent);
    }
    RefreshResult fetchLibraryNodes() override
    {
        const auto begun = begin("fetchLibraryNodes");
        return begun ? libraryNodes : RefreshResult(begun.error());
    }
    RefreshResult fetchItems() override
    {
        const auto begun = begin("fetchItems");
        return begun ? items : RefreshResult(begun.error());
    }
    std::optional<std::chrono::system_clock::time_point> lastSyncTime() const override
    {
        return begin("lastSyncTime") ? syncTime : std::nullopt;
    }
    Result<std::shared_ptr<const Ox::JSONNode>> getTool(const std::string &id) const override
    {
        return begin("getTool", id).and_then([&]() -> Result<std::shared_ptr<const Ox::JSONNode>> {
            const std::lock_guard lock(m_mutex);
            const Entry *entry = find(id);
            if (!entry)
                return gone(id);
            return Ox::JSONNode::parse(entry->json);
        });
    }
    Result<std::string> createTool(const std::string &libraryId, const std::string &json) override
    {
        return begin("createTool", libraryId, json).map([&] { return put(libraryId, json); });
    }
    Result<std::string> updateTool(const std::string &id, const std::string &libraryId,
                                   const std::string &json) override
    {
        return begin("updateTool", id, libraryId, json).and_then([&]() -> Result<std::string> {
            const std::lock_guard lock(m_mutex);
            Entry *entry = find(id);
            if (!entry)
                return gone(id);
            *entry = {id + "+", libraryId, json};
            return entry->id;
        });
    }
    Result<void> removeTool(const std::string &id) override
    {
        return begin("removeTool", id).map([&] { drop(id); });
    }
    Result<void> syncTool(const std::string &id) override
    {
        return begin("syncTool", id).and_then([&]() -> Result<void> {
            const std::lock_guard lock(m_mutex);
            return find(id) ? Result<void>() : gone(id);
        });
    }

private:
    struct Entry {
        std::string id;
        std::string libraryId;
        std::string json;
    };

    static Ox::unexpected<Failure> failure(const std::string &text)
    {
        return Ox::unexpected<Failure>(std::make_shared<HubFailure>(text));
    }
    static Ox::unexpected<Failure> gone(const std::string &id)
    {
        return Ox::unexpected<Failure>(std::make_shared<Ox::HubLibrariesCache::HubItemMissingError>(id + " is gone"));
    }
    static QVariantMap listed(const Entry &entry)
    {
        QVariantMap map = QJsonDocument::fromJson(QByteArray::fromStdString(entry.json)).toVariant().toMap();
        map.insert(QStringLiteral("toolId"), QString::fromStdString(entry.id));
        return map;
    }

    template <typename... Arguments>
    Result<void> begin(const std::string &operation, const Arguments &...arguments) const
    {
        if (meanwhile)
            meanwhile(operation);
        const std::lock_guard lock(m_mutex);
        m_calls.push_back((operation + ... + (" " + arguments)));
        const auto found = m_failures.find(operation);
        return found == m_failures.end() ? Result<void>() : Ox::unexpected<Failure>(found->second);
    }

    // REQUIRE: m_mutex is held.
    Entry *find(const std::string &id) { return const_cast<Entry *>(std::as_const(*this).find(id)); }
    const Entry *find(const std::string &id) const
    {
        const auto found = std::ranges::find(m_tools, id, &Entry::id);
        return found == m_tools.end() ? nullptr : &*found;
    }

    mutable std::mutex m_mutex; // guards what is below
    std::vector<Entry> m_tools;
    std::map<std::string, std::shared_ptr<HubFailure>> m_failures;
    mutable std::vector<std::string> m_calls;
    int m_made = 0;
};

/// Puts a hub in, or the reason why there is none, and collects the lines of the log until it dies; then all is as
/// before. Not nested.
class HubInUse
{
public:
    explicit HubInUse(const std::shared_ptr<Varn::IPlatformLibrariesInterface> &hub)
        : HubInUse(Setting{gsl::make_not_null(hub)})
    {
    }
    /// No hub, for the reason \a text.
    explicit HubInUse(const std::string &text)
        : HubInUse(Setting{Ox::unexpected<Varn::ToolLibraryWrappers::Failure>(
              std::make_shared<Ox::HubLibrariesCache::Exception>(text))})
    {
    }
    ~HubInUse()
    {
        Varn::ToolLibraryWrappers::setPlatformLibrariesInterface(m_previous);
        Ox::AppLogMgr::setSink(m_previousSink);
    }
    HubInUse(const HubInUse &) = delete;
    HubInUse &operator=(const HubInUse &) = delete;

    /// "level text" of each line so far.
    std::vector<std::string> log() const
    {
        const std::lock_guard lock(m_mutex);
        return m_log;
    }

private:
    struct Setting {
        Varn::ToolLibraryWrappers::Hub hub;
    };
    explicit HubInUse(Setting setting)
        : m_previous(Varn::ToolLibraryWrappers::setPlatformLibrariesInterface(std::move(setting.hub)))
    {
        m_previousSink = Ox::AppLogMgr::setSink([this](int level, std::string_view text) {
            const std::lock_guard lock(m_mutex);
            m_log.push_back(std::to_string(level) + " " + std::string(text));
        });
    }

    Varn::ToolLibraryWrappers::Hub m_previous;
    Ox::AppLogMgr::Sink m_previousSink;
    mutable std::mutex m_mutex;
    std::vector<std::string> m_log; // guarded by m_mutex
};

} // namespace TestSupport

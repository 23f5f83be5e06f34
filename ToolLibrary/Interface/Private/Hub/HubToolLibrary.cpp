#include "ToolLibrary/Interface/Private/Hub/HubToolLibrary.h"

#include "ToolLibrary/Interface/Private/JsonManipulation/JsonConvert.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/OxJsonTool.h"
#include "ToolLibrary/ToolVariantMapUtil.h"
#include "platform/core/ToolLibraryVersion.h"
#include "platform/hub/ToolLibraryWrappers.h"
#include "platform/ox/AppLogMgr.h"
#include "platform/tool/Exception.h"
#include "util/utility/Assert.h"

#include <algorithm>
#include <atomic>
#include <functional>
#include <future>
#include <mutex>
#include <system_error>
#include <utility>

namespace Varn::ToolLibraries {

namespace {

constexpr int detailLevel = 3;

/// How many tools are on their way to the hub at once: it is waited for more than worked with.
constexpr std::size_t concurrentTools = 8;

using Failure = IPlatformLibrariesInterface::Failure;

void log(const std::string &line)
{
    Ox::AppLogMgr::appLog(detailLevel, "HubToolLibrary: " + line);
}

void logNoHub(const Failure &failure)
{
    log(std::string("Failed to get platform libraries interface. Error: ") + failure->what());
}

void logNoTool(const std::string &hubToolId, const Failure &failure)
{
    log("Failed to find tool in cache: " + hubToolId + ". Error: " + failure->what());
}

Ox::unexpected<ToolSinkError> refusal(const Failure &failure)
{
    return Ox::unexpected<ToolSinkError>(ToolSinkError(failure));
}

Ox::unexpected<ToolSinkError> missing(const ToolId &id)
{
    const std::string text = "Tool " + id.guid().asString() + " does not exist!";
    return Ox::unexpected<ToolSinkError>(
        ToolSinkError(std::shared_ptr<Exception>(std::make_shared<ToolMissing>(text))));
}

std::string withGuid(const Guid &guid, const std::string &toolJson)
{
    QVariantMap map = JsonConvert::toQVariantMap(toolJson);
    Tools::ToolVariantMapUtil::applyGUID(QString::fromStdString(guid.asString()), map);
    return JsonConvert::fromQVariantMap(map);
}

/// Empty for what is no list: Qt would make one of the characters of a text.
QList<QVariant> toolsIn(const QMap<QString, QVariant> &library)
{
    const QVariant data = library.value(QStringLiteral("data"));
    return data.typeId() == QMetaType::QVariantList ? data.toList() : QList<QVariant>();
}

Guid guidIn(const QVariantMap &tool)
{
    return Guid::fromString(tool.value(QStringLiteral("guid")).toString().toStdString());
}

/// Null, and a line in the log, when the hub does not give the tool.
std::unique_ptr<Tool> fetch(const std::string &hubToolId)
{
    const auto hub = ToolLibraryWrappers::getPlatformLibrariesInterface();
    if (!hub) {
        VARN_FAIL(hub.error()->what());
        logNoHub(hub.error());
        return nullptr;
    }
    const auto node = (*hub)->getTool(hubToolId);
    if (!node) {
        logNoTool(hubToolId, node.error());
        return nullptr;
    }
    return std::make_unique<OxJsonTool>(*node);
}

/// Calls \a job, which throws nothing, with each number below \a count, some at once. Where the system gives no further
/// thread those that are there do it all.
void forEachAtOnce(std::size_t count, const std::function<void(std::size_t)> &job)
{
    std::atomic<std::size_t> next{0};
    const auto work = [&] {
        for (std::size_t i = next++; i < count; i = next++)
            job(i);
    };
    std::vector<std::future<void>> helpers;
    try {
        while (helpers.size() + 1 < std::min(count, concurrentTools))
            helpers.push_back(std::async(std::launch::async, work));
    } catch (const std::system_error &) {
    }
    work();
    for (std::future<void> &helper : helpers)
        helper.get();
}

} // namespace

HubToolLibrary::HubToolLibrary(const std::string &libraryId, const QList<QVariant> &tools) : m_libraryId(libraryId)
{
    for (const QVariant &variant : tools) {
        const QVariantMap tool = variant.toMap();
        VARN_ASSERT_TEXT(tool.contains(QStringLiteral("toolId")), "Expected Hub tool to contain ID.");
        VARN_ASSERT_TEXT(tool.contains(QStringLiteral("guid")), "Expected Hub tool to contain Guid.");
        const Guid guid = guidIn(tool);
        if (m_guidToIndex.contains(guid)) {
            VARN_FAIL("Tools with duplicate GUIDs found: " + guid.asString());
            log("Tools with duplicate GUIDs found: " + guid.asString());
            continue;
        }
        keep(guid, tool.value(QStringLiteral("toolId")).toString().toStdString());
    }
}

HubToolLibrary::HubToolLibrary(const std::string &libraryId, const QMap<QString, QVariant> &library)
    : m_libraryId(libraryId)
{
    processToolsAsync(toolsIn(library));
}

HubToolLibrary::~HubToolLibrary() = default;

void HubToolLibrary::processToolsAsync(const QList<QVariant> &tools)
{
    // Places are given, and results taken, in the order of the list, so that the library does not depend on which tool
    // the hub has first.
    std::vector<Place> places;
    for (const QVariant &tool : tools)
        places.push_back(reserve(guidIn(tool.toMap())));
    std::vector<Ox::expected<std::string, ToolSinkError>> hubToolIds(places.size());
    forEachAtOnce(places.size(), [&](std::size_t i) {
        hubToolIds[i] = processSingleTool(tools[static_cast<qsizetype>(i)], places[i]);
    });
    for (std::size_t i = 0; i < places.size(); ++i) {
        VARN_ASSERT_TEXT(hubToolIds[i].has_value(), hubToolIds[i].error().what());
        if (hubToolIds[i])
            keep(places[i].guid, *hubToolIds[i]);
        release(places[i].guid);
    }
}

Ox::expected<std::string, ToolSinkError> HubToolLibrary::processSingleTool(const QVariant &tool,
                                                                           const Place &place) const
{
    try {
        return createOnHub(Tool(JsonConvert::fromQVariantMap(tool.toMap())), place);
    } catch (const Exception &failure) {
        return Ox::unexpected<ToolSinkError>(
            ToolSinkError(std::make_shared<Exception>(failure.what(), failure.translatedWhat())));
    }
}

Ox::expected<std::string, ToolSinkError> HubToolLibrary::createOnHub(const Tool &tool, const Place &place) const
{
    const std::string json = place.isReplaced ? withGuid(place.guid, tool.toJson()) : tool.toJson();
    const auto hub = ToolLibraryWrappers::getPlatformLibrariesInterface();
    if (!hub)
        return refusal(hub.error());
    auto hubToolId = (*hub)->createTool(m_libraryId, json);
    if (!hubToolId)
        return refusal(hubToolId.error());
    return std::move(*hubToolId);
}

Ox::expected<void, ToolSinkError> HubToolLibrary::createTool(ToolId id, const Tool &tool)
{
    const Place place = reserve(id.guid());
    const auto released = gsl::finally([&] { release(place.guid); });
    return createOnHub(tool, place).map([&](const std::string &hubToolId) { keep(place.guid, hubToolId); });
}

Ox::expected<void, ToolSinkError> HubToolLibrary::updateTool(ToolId id, const Tool &tool)
{
    const auto hubToolId = hubToolIdOf(id.guid());
    if (!hubToolId)
        return missing(id);
    const std::string json = withGuid(id.guid(), tool.toJson());
    const auto hub = ToolLibraryWrappers::getPlatformLibrariesInterface();
    if (!hub)
        return refusal(hub.error());
    const auto newId = (*hub)->updateTool(*hubToolId, m_libraryId, json);
    if (!newId)
        return refusal(newId.error());
    const std::unique_lock lock(m_mutex);
    if (const auto found = m_guidToIndex.find(id.guid()); found != m_guidToIndex.end())
        m_toolIds[found->second] = *newId;
    return {};
}

Ox::expected<void, ToolSinkError> HubToolLibrary::removeTool(ToolId id)
{
    const auto hubToolId = hubToolIdOf(id.guid());
    if (!hubToolId)
        return missing(id);
    const auto hub = ToolLibraryWrappers::getPlatformLibrariesInterface();
    if (!hub)
        return refusal(hub.error());
    if (const auto removed = (*hub)->removeTool(*hubToolId); !removed)
        return refusal(removed.error());
    forget(id.guid());
    return {};
}

Ox::expected<void, ToolSinkError> HubToolLibrary::syncTool(const ToolId &id)
{
    const auto hubToolId = hubToolIdOf(id.guid());
    if (!hubToolId)
        return missing(id);
    const auto hub = ToolLibraryWrappers::getPlatformLibrariesInterface();
    if (!hub)
        return refusal(hub.error());
    const auto synced = (*hub)->syncTool(*hubToolId);
    if (synced)
        return {};
    if (dynamic_cast<const Ox::HubLibrariesCache::HubItemMissingError *>(synced.error().get().get()))
        forget(id.guid());
    return refusal(synced.error());
}

std::string HubToolLibrary::toJson() const
{
    std::vector<std::string> hubToolIds; // in the order of the GUIDs
    {
        const std::shared_lock lock(m_mutex);
        for (const auto &[guid, index] : m_guidToIndex)
            hubToolIds.push_back(m_toolIds[index]);
    }
    std::string json = "{\"data\":[";
    const auto hub = ToolLibraryWrappers::getPlatformLibrariesInterface();
    if (!hub)
        logNoHub(hub.error());
    for (const std::string &hubToolId : hub ? hubToolIds : std::vector<std::string>()) {
        if (const auto node = (*hub)->getTool(hubToolId))
            json.append((*node)->stringify()).append(",");
        else
            logNoTool(hubToolId, node.error());
    }
    if (json.back() == ',')
        json.pop_back();
    return json + "], \"version\":" + std::to_string(getVersion()) + "}";
}

std::optional<std::shared_ptr<Tool>> HubToolLibrary::get(ToolId id) const
{
    const auto hubToolId = hubToolIdOf(id.guid());
    if (!hubToolId)
        return std::nullopt;
    std::shared_ptr<Tool> tool = fetch(*hubToolId);
    return tool ? std::optional(std::move(tool)) : std::nullopt;
}

std::unique_ptr<const Tool> HubToolLibrary::at(unsigned int index) const
{
    VARN_EXPECTS(index < numberOfTools());
    std::string hubToolId;
    {
        const std::shared_lock lock(m_mutex);
        if (index >= m_toolIds.size())
            return nullptr;
        hubToolId = m_toolIds[index];
    }
    return fetch(hubToolId);
}

unsigned int HubToolLibrary::numberOfTools() const
{
    const std::shared_lock lock(m_mutex);
    return static_cast<unsigned int>(m_toolIds.size());
}

std::vector<ToolId> HubToolLibrary::getToolIds() const
{
    const std::shared_lock lock(m_mutex);
    std::vector<ToolId> ids;
    ids.reserve(m_guidToIndex.size());
    for (const auto &[guid, index] : m_guidToIndex)
        ids.emplace_back(guid);
    return ids;
}

int HubToolLibrary::getVersion() const
{
    return ToolLibraryVersion::latestVersion();
}

QMap<QString, QVariant> HubToolLibrary::toQVariantMap() const
{
    return JsonConvert::toQVariantMap(toJson());
}

void HubToolLibrary::sanitise()
{
    throw Exception("Not implemented yet!");
}

bool HubToolLibrary::has(const Guid &guid) const
{
    return m_guidToIndex.contains(guid) || m_reserved.contains(guid);
}

/// Takes the GUID until release(), so that of two tools that arrive at once with one GUID only one gets it.
HubToolLibrary::Place HubToolLibrary::reserve(const Guid &guid)
{
    const std::unique_lock lock(m_mutex);
    const bool isTaken = has(guid);
    VARN_ASSERT_TEXT(!isTaken, "Tool already exists!");
    const Place place{isTaken ? Guid::create() : guid, isTaken};
    m_reserved.insert(place.guid);
    return place;
}

void HubToolLibrary::release(const Guid &guid)
{
    const std::unique_lock lock(m_mutex);
    m_reserved.erase(guid);
}

void HubToolLibrary::keep(const Guid &guid, const std::string &hubToolId)
{
    const std::unique_lock lock(m_mutex);
    m_guidToIndex[guid] = m_toolIds.size();
    m_toolIds.push_back(hubToolId);
}

void HubToolLibrary::forget(const Guid &guid)
{
    const std::unique_lock lock(m_mutex);
    const auto found = m_guidToIndex.find(guid);
    if (found == m_guidToIndex.end())
        return; // another thread was faster
    const std::size_t erased = found->second;
    m_toolIds.erase(m_toolIds.begin() + static_cast<std::ptrdiff_t>(erased));
    m_guidToIndex.erase(found);
    for (auto &[other, index] : m_guidToIndex) {
        if (index > erased)
            --index;
    }
}

std::optional<std::string> HubToolLibrary::hubToolIdOf(const Guid &guid) const
{
    const std::shared_lock lock(m_mutex);
    const auto found = m_guidToIndex.find(guid);
    if (found == m_guidToIndex.end())
        return std::nullopt;
    return m_toolIds[found->second];
}

} // namespace Varn::ToolLibraries

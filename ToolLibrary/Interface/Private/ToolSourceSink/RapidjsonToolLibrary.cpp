#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidjsonToolLibrary.h"

#include "ToolLibrary/Interface/Private/JsonManipulation/JsonConvert.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonConvert.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonLibraryWriter.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidJsonTool.h"
#include "ToolLibrary/ToolFormatMigrator.h"
#include "platform/core/ToolLibraryVersion.h"
#include "platform/tool/Exception.h"
#include "platform/utils/Abortable.h"
#include "util/utility/Assert.h"

#include <QUuid>

#include <algorithm>
#include <utility>

namespace Varn::ToolLibraries {

namespace {

using Value = rapidjson::Value;

/// The member's value, or null.
const Value *memberOf(const Value &object, const char *name)
{
    const auto found = object.FindMember(name);
    return found == object.MemberEnd() ? nullptr : &found->value;
}

/// The GUID of a tool; null when it has none that can be read.
QUuid guidOf(const Value &tool)
{
    const Value *guid = memberOf(tool, "guid");
    if (!guid || !guid->IsString())
        return QUuid();
    return QUuid::fromString(QUtf8StringView(guid->GetString(), static_cast<qsizetype>(guid->GetStringLength())));
}

/// Takes every member of that name out: a text may repeat it. The last member moves into the place of one taken out.
void removeMembers(Value &object, const char *name)
{
    for (rapidjson::SizeType i = object.MemberCount(); i-- > 0;) {
        const auto member = object.MemberBegin() + i;
        if (member->name == name)
            object.RemoveMember(member);
    }
}

void requireObjects(const Value &tools)
{
    const auto elements = tools.GetArray();
    if (!std::ranges::all_of(elements, [](const Value &tool) { return tool.IsObject(); }))
        throw LibraryFormatError("JSON tool data format is invalid");
}

/// Cuts the array to its first \a length elements.
void truncate(Value &array, rapidjson::SizeType length)
{
    if (length < array.Size())
        array.Erase(array.Begin() + length, array.End());
}

/// What migration has made of a tool, or null when the tool does not survive it.
Value migrated(const Value &tool, int version, RapidJsonConvert::Allocator &allocator)
{
    QVariantMap map = RapidJsonConvert::toQVariant(tool).toMap();
    Tools::ToolFormatMigrator::fixMap(map, version);
    const bool kept = map.contains(QStringLiteral("guid")) && map.contains(QStringLiteral("type")) &&
                      map.value(QStringLiteral("type")) != QStringLiteral("unspecified");
    return kept ? RapidJsonConvert::fromQVariant(map, allocator) : Value();
}

/// Brings every tool of \a tools from \a version to the current format; those that migration gives up are dropped.
void upgradeTools(Value &tools, int version, RapidJsonConvert::Allocator &allocator)
{
    rapidjson::SizeType kept = 0;
    for (Value &tool : tools.GetArray()) {
        Value current = migrated(tool, version, allocator);
        if (!current.IsNull())
            tools[kept++] = std::move(current);
    }
    truncate(tools, kept);
}

template <typename Failure>
Ox::unexpected<ToolSinkError> refusal(const std::string &text)
{
    return Ox::unexpected<ToolSinkError>(ToolSinkError(std::shared_ptr<Exception>(std::make_shared<Failure>(text))));
}

} // namespace

RapidjsonToolLibrary::RapidjsonToolLibrary(rapidjson::Document document) : m_doc(std::move(document))
{
    if (!m_doc.IsObject())
        throw LibraryFormatError("JSON tool library should be an object");
    removeToolsWithDuplicateGuids();
    if (getVersion() < ToolLibraryVersion::latestVersion())
        upgrade();
    validateSchema();
}

RapidjsonToolLibrary::~RapidjsonToolLibrary() = default;

std::shared_ptr<RapidjsonToolLibrary> RapidjsonToolLibrary::fromString(const std::string &text,
                                                                       const Abortable &abortable)
{
    rapidjson::Document document;
    if (!RapidJsonLibraryWriter(&document).acceptJsonString(text, abortable))
        throw LibraryFormatError("Failed to parse library JSON");
    return std::make_shared<RapidjsonToolLibrary>(std::move(document));
}

std::shared_ptr<RapidjsonToolLibrary> RapidjsonToolLibrary::fromDocument(const QJsonDocument &document,
                                                                         const Abortable &abortable)
{
    return fromString(JsonConvert::fromQJsonDocument(document), abortable);
}

Ox::expected<void, ToolSinkError> RapidjsonToolLibrary::createTool(ToolId id, const Tool &tool)
{
    if (find(id))
        return refusal<AccessError>("Tool " + id.guid().asString() + " already exists");
    rapidjson::Document parsed = parse(tool);
    applyGuid(id.guid(), parsed);
    m_tools->PushBack(Value(parsed, m_doc.GetAllocator()), m_doc.GetAllocator());
    m_index.append(id.guid().uuid());
    return {};
}

Ox::expected<void, ToolSinkError> RapidjsonToolLibrary::updateTool(ToolId id, const Tool &tool)
{
    const auto position = m_index.find(id.guid().uuid());
    if (!position)
        return refusal<ToolMissing>("Tool not found in library");
    rapidjson::Document parsed = parse(tool);
    applyGuid(id.guid(), parsed);
    noteUpdated(static_cast<ToolRow>(*position));
    (*m_tools)[static_cast<rapidjson::SizeType>(*position)].CopyFrom(parsed, m_doc.GetAllocator());
    return {};
}

Ox::expected<void, ToolSinkError> RapidjsonToolLibrary::removeTool(ToolId id)
{
    const auto position = m_index.find(id.guid().uuid());
    if (!position)
        return refusal<ToolMissing>("Tool not found in library");
    noteRemoved(static_cast<ToolRow>(*position));
    m_tools->Erase(m_tools->Begin() + *position);
    m_index.remove(id.guid().uuid(), *position);
    return {};
}

Ox::expected<void, ToolSinkError> RapidjsonToolLibrary::syncTool(const ToolId &)
{
    return {};
}

std::string RapidjsonToolLibrary::toJson() const
{
    VARN_ASSERT(!m_doc.HasParseError());
    return RapidJsonConvert::toString(m_doc);
}

std::optional<std::shared_ptr<Tool>> RapidjsonToolLibrary::get(ToolId id) const
{
    const Value *tool = find(id);
    if (!tool)
        return std::nullopt;
    return std::shared_ptr<Tool>(toolFromJson(*tool));
}

unsigned int RapidjsonToolLibrary::numberOfTools() const
{
    return m_tools->Size();
}

std::vector<ToolId> RapidjsonToolLibrary::getToolIds() const
{
    std::vector<ToolId> ids;
    ids.reserve(numberOfTools());
    for (const Value &tool : m_tools->GetArray())
        ids.emplace_back(Guid(guidOf(tool)));
    return ids;
}

int RapidjsonToolLibrary::getVersion() const
{
    const Value *version = memberOf(m_doc, "version");
    return version && version->IsInt() ? version->GetInt() : 1;
}

QMap<QString, QVariant> RapidjsonToolLibrary::toQVariantMap() const
{
    return RapidJsonConvert::toQVariant(m_doc).toMap();
}

bool RapidjsonToolLibrary::printIndented(const LibraryTextWriter::Sink &sink, bool newGuids) const
{
    return newGuids ? LibraryTextWriter::printWithNewGuids(m_doc, sink) : LibraryTextWriter::print(m_doc, sink);
}

std::string RapidjsonToolLibrary::toEnvelope() const
{
    constexpr const char *byGuid = "";
    const ToolRows order = *useColumns()->order(byGuid); // GUIDs always have an order
    std::string text;
    LibraryTextWriter::printCompact(*m_tools, order, getVersion(), [&text](std::string_view block) {
        text += block;
        return true;
    });
    return text;
}

std::unique_ptr<const Tool> RapidjsonToolLibrary::at(unsigned int index) const
{
    VARN_EXPECTS(index < numberOfTools());
    // A walk that goes on after a removal gets nothing at its end, rather than what lies behind the array.
    return index < m_tools->Size() ? RapidJsonTool::view(&(*m_tools)[index]) : nullptr;
}

void RapidjsonToolLibrary::sanitise()
{
    dropColumns();
    removeToolsWithDuplicateGuids();
    if (getVersion() < ToolLibraryVersion::latestVersion())
        upgrade();
}

const rapidjson::Value *RapidjsonToolLibrary::find(const ToolId &id) const
{
    const auto position = m_index.find(id.guid().uuid());
    return position ? &(*m_tools)[static_cast<rapidjson::SizeType>(*position)] : nullptr;
}

rapidjson::Value &RapidjsonToolLibrary::getDataArray()
{
    const Value *data = memberOf(m_doc, "data");
    if (!data)
        throw LibraryFormatError("JSON tool library has no data");
    if (!data->IsArray())
        throw LibraryFormatError("Data member must be an array");
    return const_cast<Value &>(*data);
}

rapidjson::Document RapidjsonToolLibrary::parse(const Tool &tool)
{
    rapidjson::Document parsed;
    if (!RapidJsonLibraryWriter(&parsed).acceptJsonString(tool.toJson(), AbortableImpl()) || !parsed.IsObject())
        throw InvalidInput("Unable to create tool");
    return parsed;
}

void RapidjsonToolLibrary::applyGuid(const Guid &guid, rapidjson::Document &tool)
{
    removeMembers(tool, "guid");
    tool.AddMember("guid", Value(guid.asString(), tool.GetAllocator()), tool.GetAllocator());
}

std::unique_ptr<Tool> RapidjsonToolLibrary::toolFromJson(const rapidjson::Value &value)
{
    return std::make_unique<RapidJsonTool>(&value);
}

void RapidjsonToolLibrary::upgrade()
{
    upgradeTools(*m_tools, std::max(getVersion(), 0), m_doc.GetAllocator());
    removeMembers(m_doc, "version");
    m_doc.AddMember("version", ToolLibraryVersion::latestVersion(), m_doc.GetAllocator());
    // A tool that repeated its "guid" has been known by the first; the way through a map leaves the last.
    removeToolsWithDuplicateGuids();
}

void RapidjsonToolLibrary::removeToolsWithDuplicateGuids()
{
    Value &tools = getDataArray();
    requireObjects(tools);
    m_tools = &tools;
    m_index.clear();
    rapidjson::SizeType kept = 0;
    for (rapidjson::SizeType i = 0; i < tools.Size(); ++i) {
        const QUuid guid = guidOf(tools[i]);
        if (guid.isNull() || !m_index.append(guid))
            continue;
        if (kept != i)
            tools[kept].Swap(tools[i]);
        ++kept;
    }
    truncate(tools, kept);
}

void RapidjsonToolLibrary::validateSchema() const
{
    requireObjects(*m_tools);
    for (const Value &tool : m_tools->GetArray()) {
        validateNonNegativeGaugeLength(tool);
        validateNonEmptyPresetsArray(tool);
        validateUnitValue(tool);
    }
}

void RapidjsonToolLibrary::validateNonNegativeGaugeLength(const rapidjson::Value &tool)
{
    const Value *holder = memberOf(tool, "holder");
    if (!holder)
        return;
    if (!holder->IsObject())
        throw LibraryFormatError("Tool 'holder' must be an object");
    const Value *length = memberOf(*holder, "gaugeLength");
    if (length && (!length->IsNumber() || length->GetDouble() < 0))
        throw LibraryFormatError("Tool 'gaugeLength' must be a non-negative number");
}

void RapidjsonToolLibrary::validateNonEmptyPresetsArray(const rapidjson::Value &tool)
{
    const Value *startValues = memberOf(tool, "start-values");
    if (!startValues)
        return;
    if (!startValues->IsObject())
        throw LibraryFormatError("Tool 'start-values' must be an object");
    const Value *presets = memberOf(*startValues, "presets");
    if (!presets || !presets->IsArray() || presets->Empty())
        throw LibraryFormatError("Tool 'presets' must be a non-empty array");
}

void RapidjsonToolLibrary::validateUnitValue(const rapidjson::Value &tool)
{
    const Value *unit = memberOf(tool, "unit");
    if (!unit || unit->IsNull())
        return;
    if (!unit->IsString() || (*unit != "millimeters" && *unit != "inches"))
        throw LibraryFormatError("Tool 'unit' must be 'millimeters' or 'inches'");
}

} // namespace Varn::ToolLibraries

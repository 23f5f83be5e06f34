#include "ToolLibrary/Interface/Private/ToolLibraryInterfaceImpl.h"

#include "ToolLibrary/CamDocuments.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/JsonConvert.h"
#include "ToolLibrary/Interface/Private/TaskDispatcher.h"
#include "ToolLibrary/Interface/Private/ToolLibraryAnalytics.h"
#include "ToolLibrary/Interface/Private/ToolPageAggregator.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/DiskLibrary.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidjsonToolLibrary.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolLibraryLocatorInterrogator.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSourceLoader.h"
#include "ToolLibrary/Interface/ToolLibraryCache.h"
#include "ToolLibrary/Interface/mode/ModeConfiguration.h"
#include "ToolLibrary/Util/Tool3DGeometryMap.h"
#include "ToolLibrary/Util/Tool3DGeometryUtil.h"
#include "platform/core/Options.h"
#include "platform/core/ToolLibraryVersion.h"
#include "platform/core/VarnDocument.h"
#include "platform/tool/Exception.h"
#include "platform/tool/UserInteraction.h"
#include "platform/utils/Abortable.h"
#include "platform/utils/Messages.h"
#include "util/utility/Assert.h"

#include <typeinfo>
#include <utility>

namespace Varn::ToolLibraries {

using Tools::CamDocuments;
using Tools::ToolLibraryUrl;

namespace {

/// Tells of the load of a file, unless it is one of the libraries that came with the program.
void reportLoad(const ToolLibraryLocator &locator, const ToolSource &source)
{
    const ToolLibraryUrl url(locator);
    if (!ToolLibraryLocatorInterrogator(locator).isLocalFile() || url.isSystemLibrary())
        return;
    const char *type = url.isCloudLibrary() ? "cloud" : url.isLocalLibrary() ? "local" : "other";
    ToolLibraryAnalytics::sendReport(QStringLiteral("LOAD_TOOL_LIBRARY"),
                                     {{QStringLiteral("type"), QString::fromLatin1(type)},
                                      {QStringLiteral("extension"), url.extension().mid(1)},
                                      {QStringLiteral("numberOfTools"), source.numberOfTools()}});
}

void reportNumberOfLibraries(const LibraryMetadataTree &index)
{
    int local = 0;
    int cloud = 0;
    for (const auto &node : index.traverse()) {
        if (node->metadata()->type() != LibraryMetadata::Type::Library)
            continue;
        const ToolLibraryUrl url(node->metadata()->url());
        local += url.isLocalLibrary() ? 1 : 0;
        cloud += url.isCloudLibrary() ? 1 : 0;
    }
    ToolLibraryAnalytics::sendReport(
        QStringLiteral("NUMBER_OF_LIBRARIES"),
        {{QStringLiteral("numberOfLocalLibraries"), local}, {QStringLiteral("numberOfCloudLibraries"), cloud}});
}

/// The tools of one library on a page. A file can break between two looks at it; then its failure stands in the place
/// of the list, and must not pass for an empty library.
QVariantList toolsOf(const QVariant &entry)
{
    if (entry.typeId() != QMetaType::QVariantMap)
        return entry.toList();
    const QVariantMap failure = entry.toMap().value(QStringLiteral("error")).toMap();
    const QVariant translated = failure.value(QStringLiteral("translatedText"));
    throw LibraryLoadError(failure.value(QStringLiteral("developerText")).toString().toStdString(),
                           translated.isValid() ? std::optional(translated.toString().toStdWString()) : std::nullopt);
}

} // namespace

ToolLibraryInterfaceImpl::ToolLibraryInterfaceImpl(std::shared_ptr<ModeConfiguration> modeConfiguration,
                                                   std::shared_ptr<ToolLibraryCache> cache,
                                                   std::shared_ptr<UserInteraction> userInteraction)
    : m_camDocuments(std::make_shared<CamDocuments>()),
      m_modeConfiguration(std::move(modeConfiguration)),
      m_cachedLibraries(std::move(cache)),
      m_userInteraction(std::move(userInteraction))
{
    VARN_ASSERT(!!m_modeConfiguration);
    VARN_ASSERT(!!m_cachedLibraries);
    VARN_ASSERT(!!m_userInteraction);
    m_cachedLibraries->setDocumentIndex(m_camDocuments);
}

ToolLibraryInterfaceImpl::ToolLibraryInterfaceImpl(SafePointer<VarnDocument> document,
                                                   std::shared_ptr<ModeConfiguration> modeConfiguration,
                                                   std::shared_ptr<ToolLibraryCache> cache,
                                                   std::shared_ptr<UserInteraction> userInteraction)
    : ToolLibraryInterfaceImpl(std::move(modeConfiguration), std::move(cache), std::move(userInteraction))
{
    VARN_EXPECTS(m_camDocuments);
    m_camDocuments->setActive(std::move(document));
}

ToolLibraryInterfaceImpl::~ToolLibraryInterfaceImpl() = default;

void ToolLibraryInterfaceImpl::setModeConfiguration(std::shared_ptr<ModeConfiguration> modeConfiguration)
{
    VARN_ASSERT(!!modeConfiguration);
    m_modeConfiguration = std::move(modeConfiguration);
}

std::shared_ptr<Abortable> ToolLibraryInterfaceImpl::initialLoadTask() const
{
    return m_cachedLibraries->initialLoadTask();
}

LibraryMetadataTree ToolLibraryInterfaceImpl::toolLibrariesIndex() const
{
    LibraryMetadataTree index = m_cachedLibraries->libraryIndex();
    reportNumberOfLibraries(index);
    return index;
}

std::unique_ptr<ToolLibrary> ToolLibraryInterfaceImpl::library(const ToolLibraryLocator &locator)
{
    const std::shared_ptr<ToolSource> source = getToolSource(locator);
    reportLoad(locator, *source);
    if (const auto *printable = printableSource(*source))
        return ToolLibrary::make(printable->toEnvelope(), printable->getVersion(), printable->numberOfTools());
    const ToolPageRequest request({locator}, "[]", static_cast<int>(source->numberOfTools()), 0, "", "");
    const QVariantMap page = JsonConvert::toQVariantMap(fetchTools(request)->toJson());
    const QVariantMap data = page.value(QStringLiteral("data")).toMap();
    const QString url = QString::fromStdString(Messages::fromWideUnicodeToUTF8(locator.url())); // as the page names it
    VARN_ASSERT_TEXT(data.contains(url), "Tool page should contain library url");
    const QVariantList tools = toolsOf(data.value(url));
    const QVariantMap library{
        {QStringLiteral("data"), tools},
        {QStringLiteral("version"), page.value(QStringLiteral("version"), ToolLibraryVersion::latestVersion())}};
    return ToolLibrary::make(JsonConvert::fromQVariantMap(library), library.value(QStringLiteral("version")).toInt(),
                             static_cast<std::size_t>(tools.size()));
}

/// The library that prints at once what a page of all its tools would come to. Null where that page could be another
/// one: for other sources, when tools are validated, and when a class derived from this one makes the pages.
const RapidjsonToolLibrary *ToolLibraryInterfaceImpl::printableSource(const ToolSource &source) const
{
    const auto *library = dynamic_cast<const RapidjsonToolLibrary *>(&source);
    const bool isPrintable = library && library->getVersion() == ToolLibraryVersion::latestVersion() &&
                             !Options::getEnableToolValidation() && typeid(*this) == typeid(ToolLibraryInterfaceImpl);
    return isPrintable ? library : nullptr;
}

std::unique_ptr<ToolPage> ToolLibraryInterfaceImpl::fetchTools(const ToolPageRequest &request)
{
    const ToolPageAggregator aggregator([this](const ToolLibraryLocator &locator) { return getToolSource(locator); });
    return validatePageTools(aggregator.fetchPage(request));
}

std::optional<ToolLibraryLocator> ToolLibraryInterfaceImpl::getActiveDocumentUrl() const
{
    VARN_ASSERT(m_camDocuments);
    const SafePointer<VarnDocument> active = m_camDocuments->active();
    if (!active)
        return std::nullopt;
    return CamDocuments::urlOf(active);
}

ToolLibraryLocator ToolLibraryInterfaceImpl::getDocumentUrl(const VarnDocument &document) const
{
    return CamDocuments::urlOf(document);
}

std::optional<const LibraryTool> ToolLibraryInterfaceImpl::findToolById(ToolId toolId)
{
    const LibraryMetadataTree index = m_cachedLibraries->libraryIndex();
    for (const auto &node : index.traverse()) {
        if (node->metadata()->type() != LibraryMetadata::Type::Library)
            continue;
        const ToolLibraryLocator &locator = node->metadata()->url();
        // A vendor node stands for a library that this machine may not have; there is nothing to load behind it.
        if (ToolLibraryUrl(locator).protocol() == ToolLibraryUrl::Vendor)
            continue;
        if (std::optional<const LibraryTool> found = findToolById(locator, toolId))
            return found;
    }
    return std::nullopt;
}

std::optional<const LibraryTool> ToolLibraryInterfaceImpl::findToolById(ToolLibraryLocator library, ToolId toolId)
{
    const std::shared_ptr<DiskLibrary> source = getDocumentOrCacheLibrary(ToolLibraryUrl(library));
    const std::optional<std::shared_ptr<Tool>> tool = source->get(toolId);
    if (!tool)
        return std::nullopt;
    return LibraryTool(library, (*tool)->clone());
}

std::vector<ToolLibraryLocator> ToolLibraryInterfaceImpl::getAllLibraryUrls() const
{
    std::vector<ToolLibraryLocator> urls;
    const LibraryMetadataTree index = m_cachedLibraries->libraryIndex();
    for (const auto &node : index.traverse())
        if (node->metadata()->type() != LibraryMetadata::Type::Folder)
            urls.push_back(node->metadata()->url());
    return urls;
}

std::vector<LibraryTool> ToolLibraryInterfaceImpl::getToolsFromLibrary(ToolLibraryLocator library) const
{
    const std::shared_ptr<const ToolSource> source = getDocumentOrCacheLibrary(ToolLibraryUrl(library));
    std::vector<LibraryTool> tools;
    tools.reserve(source->numberOfTools());
    const auto end = source->end();
    for (auto at = source->begin(); !(at == end); ++at)
        if (const std::unique_ptr<const Tool> tool = *at) // null for a tool that the hub's cache has lost
            tools.emplace_back(library, tool->clone());   // what the walk gives leans on the library
    return tools;
}

void ToolLibraryInterfaceImpl::setActiveDocument(SafePointer<VarnDocument> document)
{
    VARN_EXPECTS(m_camDocuments);
    m_camDocuments->setActive(std::move(document));
}

void ToolLibraryInterfaceImpl::refreshDocumentLibraries()
{
    VARN_EXPECTS(m_camDocuments);
    TaskDispatcher::runOnThread([this] { m_camDocuments->refresh(); }, VarnMainThreadExecutor()).get();
    m_cachedLibraries->refreshDocumentLibraries();
}

std::shared_ptr<ToolSource> ToolLibraryInterfaceImpl::getToolSource(const ToolLibraryLocator &locator) const
{
    const ToolLibraryUrl url(locator);
    const AbortableImpl never; // nobody holds it who could abort
    std::shared_ptr<ToolSource> source;
    if (m_cachedLibraries->hasLibrary(url))
        source = m_cachedLibraries->getLoadedLibrary(url);
    else
        source = ToolSourceLoader::load(locator, never);
    if (Tools::Tool3DGeometryUtil::requiresLocal3DGeometry(url))
        Tool3DGeometryMap::populateFromLibraryUrl(url);
    return source;
}

std::shared_ptr<DiskLibrary> ToolLibraryInterfaceImpl::getDocumentLibrary(const ToolLibraryUrl &url) const
{
    VARN_EXPECTS(url.isDocumentLibrary());
    const auto find = [this, &url] {
        if (!m_camDocuments->document(url))
            throw LibraryMissing("Document not found");
    };
    TaskDispatcher::runOnThread(find, VarnMainThreadExecutor()).get();
    throw NotSupportedError("Not yet supported");
}

std::shared_ptr<DiskLibrary> ToolLibraryInterfaceImpl::getDocumentOrCacheLibrary(const ToolLibraryUrl &url) const
{
    return url.isDocumentLibrary() ? getDocumentLibrary(url) : m_cachedLibraries->getLoadedLibrary(url);
}

std::unique_ptr<ToolPage> ToolLibraryInterfaceImpl::validatePageTools(std::unique_ptr<ToolPage> page) const
{
    // A page that was to be checked and was not must not look as if it had been.
    if (Options::getEnableToolValidation())
        throw NotSupportedError("Not yet supported");
    return page;
}

} // namespace Varn::ToolLibraries

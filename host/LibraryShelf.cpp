#include "host/LibraryShelf.h"

#include "ToolLibrary/Interface/Private/ToolSourceSink/DiskLibrary.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSourceLoader.h"
#include "platform/tool/Exception.h"
#include "platform/utils/Abortable.h"
#include "platform/utils/LocaleRegistry.h"

#include <QDir>
#include <QFileInfo>

#include <utility>

namespace Quillon {

using namespace Varn::ToolLibraries;
using Varn::LocaleRegistry;

namespace {

[[noreturn]] void refuse()
{
    throw NotSupportedError("Not yet supported");
}

std::shared_ptr<LibraryMetadata> node(const LibraryShelf::ToolLibraryUrl &url, LibraryMetadata::Type type,
                                      const ToolLibraryLocator &parent, bool readOnly)
{
    return std::make_shared<LibraryMetadata>(url.libraryDisplayName().toStdWString(), type, url, parent, readOnly);
}

} // namespace

/// One library, read by whoever asks first; a failure stays.
struct LibraryShelf::Load {
    std::once_flag once;
    std::shared_ptr<DiskLibrary> library;
    std::exception_ptr failure;
};

LibraryShelf::LibraryShelf() : m_loads(std::make_shared<Varn::AbortableImpl>())
{
    m_index.insert(std::make_shared<LibraryMetadata>(
        LocaleRegistry::registerMessage("User Libraries").asWideString(), LibraryMetadata::Type::Folder,
        ToolLibraryLocator::UserLibrariesFolder, std::nullopt, std::nullopt));
    addFolder(ToolLibraryUrl(QStringLiteral("Local"), ToolLibraryUrl::Local));
    addFolder(ToolLibraryUrl(QStringLiteral("Samples"), ToolLibraryUrl::System));
}

LibraryShelf::~LibraryShelf() = default;

void LibraryShelf::addFolder(const ToolLibraryUrl &folder)
{
    const bool readOnly = folder.isSystemLibrary();
    m_index.insert(node(folder, LibraryMetadata::Type::Folder, ToolLibraryLocator::UserLibrariesFolder, readOnly));
    const QDir dir(folder.fullFilePath());
    for (const QString &name : dir.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name)) {
        const ToolLibraryUrl url = folder.makeChildUrl(name);
        if (url.isLibraryFile())
            m_index.insert(node(url, LibraryMetadata::Type::Library, folder, readOnly));
    }
}

std::shared_ptr<Varn::Abortable> LibraryShelf::initialLoadTask() const
{
    return m_loads;
}

LibraryMetadataTree LibraryShelf::libraryIndex() const
{
    return m_index;
}

bool LibraryShelf::hasLibrary(ToolLibraryUrl url) const
{
    return loadOf(url) != nullptr;
}

std::shared_ptr<LibraryShelf::Load> LibraryShelf::loadOf(const ToolLibraryUrl &url) const
{
    const std::lock_guard lock(m_mutex);
    const auto known = m_libraries.find(url);
    if (known != m_libraries.end())
        return known->second;
    const bool onShelf = (url.isLocalLibrary() || url.isSystemLibrary()) && url.isLibraryFile();
    if (!onShelf || !QFileInfo(url.fullFilePath()).isFile())
        return nullptr;
    return m_libraries.emplace(url, std::make_shared<Load>()).first->second;
}

std::shared_ptr<DiskLibrary> LibraryShelf::getLoadedLibrary(ToolLibraryUrl url) const
{
    if (!url.isLibrary())
        throw InvalidInput("Not a library URL");
    const std::shared_ptr<Load> load = loadOf(url);
    if (!load)
        throw LibraryMissing("Unable to find tool library " + url.url().toStdString());
    std::call_once(load->once, [&] {
        try {
            load->library = ToolSourceLoader::loadFromNonDocument(url, *m_loads);
        } catch (...) {
            load->failure = std::current_exception();
        }
    });
    if (load->failure)
        std::rethrow_exception(load->failure);
    return load->library;
}

std::shared_ptr<DiskLibrary> LibraryShelf::createLibrary(ToolLibraryUrl, const QMap<QString, QVariant> &,
                                                         QMap<QString, QVariant> &)
{
    refuse();
}

void LibraryShelf::createHubLibraryAndAddNodes()
{
    refuse();
}

void LibraryShelf::deleteLibrary(ToolLibraryUrl)
{
    refuse();
}

std::shared_ptr<DiskLibrary> LibraryShelf::duplicateLibrary(ToolLibraryUrl, ToolLibraryUrl, QMap<QString, QVariant> &)
{
    refuse();
}

std::shared_ptr<DiskLibrary> LibraryShelf::editLibrary(ToolLibraryUrl, QMap<QString, QVariant> &)
{
    refuse();
}

void LibraryShelf::createFolder(ToolLibraryUrl, QMap<QString, QVariant> &)
{
    refuse();
}

void LibraryShelf::deleteFolder(ToolLibraryUrl)
{
    refuse();
}

QList<QVariant> LibraryShelf::editFolder(ToolLibraryUrl, QMap<QString, QVariant> &)
{
    refuse();
}

LibraryShelf::ToolLibraryUrl LibraryShelf::makeUniqueUrl(ToolLibraryUrl) const
{
    refuse();
}

void LibraryShelf::setDocumentIndex(std::shared_ptr<Varn::Tools::CamDocuments>)
{
    // The shelf shows no documents.
}

void LibraryShelf::refreshDocumentLibraries()
{
    // The shelf shows no documents.
}

Varn::LibrariesPlatform::HubLibraryRefreshResult LibraryShelf::refreshCache(const std::string &)
{
    refuse();
}

std::optional<std::chrono::system_clock::time_point> LibraryShelf::getHubLastSyncTime() const
{
    return std::nullopt;
}

} // namespace Quillon

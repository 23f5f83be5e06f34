#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSourceLoader.h"

#include "ToolLibrary/IO/ZipToolFormat.h"
#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonLibraryWriter.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidjsonToolLibrary.h"
#include "platform/core/FeatureFlag.h"
#include "platform/core/VarnDocument.h"
#include "platform/tool/Exception.h"
#include "platform/utils/Abortable.h"
#include "platform/utils/FileSystem.h"
#include "platform/utils/Messages.h"
#include "util/utility/Assert.h"

#include <utility>

namespace Varn::ToolLibraries {

namespace {

constexpr const char *notYetSupported = "Not yet supported";

/// The open document that the locator names, or that holds the setup that it names.
SafePointer<VarnDocument> openDocument(const ToolLibraryLocatorInterrogator &locator)
{
    const QString guid = locator.url().documentUrl().libraryPath();
    SafePointer<VarnDocument> document = VarnDocument::getOpenDocument(Guid::fromString(guid.toStdString()));
    if (!document)
        throw LibraryMissing("No document with the given URL is open.");
    return document;
}

/// A file in a format of other programs.
bool isLegacy(const ToolLibraryLocatorInterrogator &locator)
{
    return locator.isLocalZet() || locator.isLocalMasterCamHolders() || locator.isLocalMasterCamTools() ||
           locator.isLocalUnigraphicsNX();
}

} // namespace

std::shared_ptr<ToolSource> ToolSourceLoader::load(const ToolLibraryLocator &locator, const Abortable &abortable)
{
    const ToolLibraryLocatorInterrogator interrogator(locator);
    if (interrogator.isSetup())
        return loadFromSetup(interrogator);
    if (interrogator.isDocument())
        return loadFromDocument(interrogator);
    return loadFromNonDocument(locator, abortable);
}

std::shared_ptr<DiskLibrary> ToolSourceLoader::loadFromNonDocument(const ToolLibraryLocator &locator,
                                                                   const Abortable &abortable)
{
    rapidjson::Document document;
    loadFromNonDocument(ToolLibraryLocatorInterrogator(locator), RapidJsonLibraryWriter(&document), abortable);
    return std::make_shared<RapidjsonToolLibrary>(std::move(document));
}

void ToolSourceLoader::loadFromNonDocument(const ToolLibraryLocatorInterrogator &locator, const JsonConsumer &consumer,
                                           const Abortable &abortable)
{
    VARN_EXPECTS(!locator.isDocument());
    // A hub library has a loader of its own: its URL ends like a file, but there is none on this machine.
    if (!locator.isValidLibraryLocator() || locator.isHub())
        throw InvalidInput("Invalid library locator.");
    if (locator.isLocalJson())
        return loadFromJson(locator, consumer, abortable);
    if (locator.isLocalCsv())
        return loadFromCSV(locator, consumer, abortable);
    if (locator.isLocalTsv())
        throw InvalidInput("Unsupported format.");
    if (locator.isLocalZip())
        return loadFromGTCPackage(locator, consumer, abortable);
    try {
        if (locator.isLocalZippedJson())
            loadFromZippedJson(locator, consumer, abortable);
        else
            loadFromOtherKnownFormat(locator, consumer, abortable);
    } catch (const LibraryLoadError &) {
        loadInPlaceOfOther(locator, consumer, abortable);
    }
}

void ToolSourceLoader::loadFromJson(const ToolLibraryLocatorInterrogator &locator, const JsonConsumer &consumer,
                                    const Abortable &abortable)
{
    const std::wstring path = locator.filePath();
    if (!consumer.acceptJsonFile(path, abortable))
        throw LibraryFormatError("Failed to read or parse JSON file: " + Messages::fromWideUnicodeToUTF8(path));
}

void ToolSourceLoader::loadFromCSV(const ToolLibraryLocatorInterrogator &locator, const JsonConsumer &,
                                   const Abortable &)
{
    VARN_EXPECTS(locator.isLocalCsv());
    throw NotSupportedError(notYetSupported);
}

void ToolSourceLoader::loadFromGTCPackage(const ToolLibraryLocatorInterrogator &locator, const JsonConsumer &,
                                          const Abortable &)
{
    VARN_EXPECTS(locator.isLocalZip());
    if (!FeatureFlag::enabled("tool-gtc-import", true))
        throw UnknownError("tool-gtc-import Feature Flag is not enabled.");
    throw NotSupportedError(notYetSupported);
}

void ToolSourceLoader::loadFromZippedJson(const ToolLibraryLocatorInterrogator &locator, const JsonConsumer &consumer,
                                          const Abortable &abortable)
{
    VARN_EXPECTS(locator.isLocalZippedJson());
    const QString documentName = Tools::ZipToolFormat::documentEntry;
    const std::wstring path = locator.filePath();
    Tools::ZipToolFormat archive(QString::fromStdWString(path));
    QByteArray document;
    // The names are asked for only when something is wrong: each reading call reads the whole archive.
    if (!archive.getData(documentName, document, abortable))
        throw LibraryLoadError(archive.getFileNames().contains(documentName) ? "Couldn't read tools.json"
                                                                             : "No tools.json in zip file");
    if (!consumer.acceptJsonBytes(document, abortable))
        throw LibraryFormatError("Failed to parse JSON from tools.json: " + Messages::fromWideUnicodeToUTF8(path));
}

/// There is no reader of these formats yet, and anything may stand behind a name that says nothing.
void ToolSourceLoader::loadFromOtherKnownFormat(const ToolLibraryLocatorInterrogator &locator, const JsonConsumer &,
                                                const Abortable &)
{
    VARN_EXPECTS(locator.isLocalFile());
    throw LibraryLoadError("Unknown error loading library");
}

/// The second try, for a file that is not what its name says. A real file in a format that has no reader is not called
/// broken.
void ToolSourceLoader::loadInPlaceOfOther(const ToolLibraryLocatorInterrogator &locator, const JsonConsumer &consumer,
                                          const Abortable &abortable)
{
    try {
        loadFromJson(locator, consumer, abortable);
    } catch (const LibraryFormatError &) {
        if (isLegacy(locator) && FileSystem::isFile(locator.filePath()) && !abortable.isAborted())
            throw NotSupportedError(notYetSupported);
        throw;
    }
}

std::shared_ptr<DiskLibrary> ToolSourceLoader::loadFromDocument(const ToolLibraryLocatorInterrogator &locator)
{
    VARN_EXPECTS(locator.isDocument());
    openDocument(locator);
    throw NotSupportedError(notYetSupported);
}

std::shared_ptr<ToolSource> ToolSourceLoader::loadFromSetup(const ToolLibraryLocatorInterrogator &locator)
{
    VARN_EXPECTS(locator.isSetup());
    openDocument(locator);
    throw NotSupportedError(notYetSupported);
}

} // namespace Varn::ToolLibraries

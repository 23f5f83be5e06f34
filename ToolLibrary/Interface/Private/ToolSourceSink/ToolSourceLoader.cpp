#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolSourceLoader.h"

#include "ToolLibrary/Interface/Private/JsonManipulation/RapidJsonLibraryWriter.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidjsonToolLibrary.h"
#include "platform/core/VarnDocument.h"
#include "platform/tool/Exception.h"
#include "platform/utils/Messages.h"
#include "util/utility/Assert.h"

#include <utility>

namespace Varn::ToolLibraries {

std::shared_ptr<ToolSource> ToolSourceLoader::load(const ToolLibraryLocator &locator, const Abortable &abortable)
{
    const ToolLibraryLocatorInterrogator interrogator(locator);
    if (interrogator.isSetup() || interrogator.isDocument())
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
    if (locator.isLocalTsv())
        throw InvalidInput("Unsupported format.");
    if (locator.isLocalCsv() || locator.isLocalZip())
        throw NotSupportedError("Not yet supported");
    // Any other file may be a library document under a name of its own.
    loadFromJson(locator, consumer, abortable);
}

void ToolSourceLoader::loadFromJson(const ToolLibraryLocatorInterrogator &locator, const JsonConsumer &consumer,
                                    const Abortable &abortable)
{
    const std::wstring path = locator.filePath();
    if (!consumer.acceptJsonFile(path, abortable))
        throw LibraryFormatError("Failed to read or parse JSON file: " + Messages::fromWideUnicodeToUTF8(path));
}

std::shared_ptr<DiskLibrary> ToolSourceLoader::loadFromDocument(const ToolLibraryLocatorInterrogator &locator)
{
    const QString guid = locator.url().documentUrl().libraryPath();
    if (!VarnDocument::getOpenDocument(Guid::fromString(guid.toStdString())))
        throw LibraryMissing("No document with the given URL is open.");
    throw NotSupportedError("Not yet supported");
}

} // namespace Varn::ToolLibraries

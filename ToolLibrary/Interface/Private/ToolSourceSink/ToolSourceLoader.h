// ToolSourceLoader.h -- the one place that knows which file format goes where. Stateless; any thread, but a load may
// take long and is meant for a worker.
#pragma once

#include "ToolLibrary/Interface/Private/ToolSourceSink/DiskLibrary.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolLibraryLocatorInterrogator.h"
#include "ToolLibrary/ToolLibraryExport.h"
#include "platform/tool/ToolLibraryLocator.h"

#include <memory>

namespace Varn {
class Abortable;
}

namespace Varn::ToolLibraries {

class JsonConsumer;

class TOOL_LIBRARY_EXPORT ToolSourceLoader
{
public:
    /// Reads what \a locator names, afresh at each call. Throws InvalidInput for what is no library to be read here,
    /// LibraryMissing for a document that isn't open, LibraryFormatError for a file that isn't there or is no library,
    /// NotSupportedError for a format that has no reader. A file of another format than its name says, or of a name
    /// that says none, is tried as a library document.
    static std::shared_ptr<ToolSource> load(const ToolLibraryLocator &locator, const Abortable &abortable);

    /// The same for anything but a document or a setup.
    static std::shared_ptr<DiskLibrary> loadFromNonDocument(const ToolLibraryLocator &locator,
                                                            const Abortable &abortable);

private:
    static void loadFromNonDocument(const ToolLibraryLocatorInterrogator &locator, const JsonConsumer &consumer,
                                    const Abortable &abortable);
    static void loadFromJson(const ToolLibraryLocatorInterrogator &locator, const JsonConsumer &consumer,
                             const Abortable &abortable);
    static void loadFromCSV(const ToolLibraryLocatorInterrogator &locator, const JsonConsumer &consumer,
                            const Abortable &abortable);
    static void loadFromGTCPackage(const ToolLibraryLocatorInterrogator &locator, const JsonConsumer &consumer,
                                   const Abortable &abortable);
    static void loadFromZippedJson(const ToolLibraryLocatorInterrogator &locator, const JsonConsumer &consumer,
                                   const Abortable &abortable);
    static void loadFromOtherKnownFormat(const ToolLibraryLocatorInterrogator &locator, const JsonConsumer &consumer,
                                         const Abortable &abortable);
    static void loadInPlaceOfOther(const ToolLibraryLocatorInterrogator &locator, const JsonConsumer &consumer,
                                   const Abortable &abortable);
    static std::shared_ptr<DiskLibrary> loadFromDocument(const ToolLibraryLocatorInterrogator &locator);
    static std::shared_ptr<ToolSource> loadFromSetup(const ToolLibraryLocatorInterrogator &locator);
};

} // namespace Varn::ToolLibraries

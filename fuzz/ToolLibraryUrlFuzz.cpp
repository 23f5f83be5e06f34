// ToolLibraryUrlFuzz.cpp -- any text as the URL of a node. Every question has an answer or a documented exception.
#include "ToolLibrary/IO/ToolLibraryUrl.h"
#include "platform/tool/Exception.h"
#include "util/utility/SafePointer.h"

#include <cstdint>
#include <cstdlib>

using Varn::Tools::ToolLibraryUrl;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const ToolLibraryUrl url(QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
    if (url.isLibrary() == url.isFolder() || !(ToolLibraryUrl(url.url()) == url))
        std::abort();
    url.libraryName();
    url.libraryDisplayName();
    url.setupName();
    url.convertTo(QStringLiteral(".tools"));
    url.documentUrl();
    url.libraryFileSystemPath();
    try {
        url.fullFilePath();
    } catch (const Varn::ToolLibraries::Exception &) {
    } catch (const Varn::NullPointerException &) { // no cloud folder is configured
    }
    for (ToolLibraryUrl at = url; !(at.parentUrl() == at); at = at.parentUrl())
        if (at.parentUrl().url().size() >= at.url().size())
            std::abort();
    return 0;
}

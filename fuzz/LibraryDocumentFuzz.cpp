// LibraryDocumentFuzz.cpp -- any bytes as a library document. What loads must print, and read back with the same tools.
// (Not to the same text: the reader of numbers may be off by the last bit.)
#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidjsonToolLibrary.h"
#include "platform/tool/Exception.h"
#include "platform/utils/Abortable.h"

#include <cstdint>
#include <cstdlib>
#include <string>

using namespace Varn::ToolLibraries;

namespace {

std::shared_ptr<RapidjsonToolLibrary> read(const std::string &text)
{
    try {
        return RapidjsonToolLibrary::fromString(text, Varn::AbortableImpl());
    } catch (const Exception &) {
        return nullptr;
    }
}

void lookInto(const RapidjsonToolLibrary &library)
{
    const auto end = library.end();
    for (auto at = library.begin(); !(at == end); ++at) {
        const std::unique_ptr<const Tool> tool = *at;
        tool->getToolValue();
        for (const char *key : {"tool_type", "tool_unit", "tool_diameter", "tool_number", "tool_comment"})
            tool->getRawProperty(key);
        tool->clone()->getToolId();
    }
    for (const ToolId &id : library.getToolIds())
        if (!library.get(id))
            std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto library = read(std::string(reinterpret_cast<const char *>(data), size));
    if (!library)
        return 0;
    lookInto(*library);
    const auto again = read(library->toJson());
    if (!again || again->getToolIds() != library->getToolIds())
        std::abort();
    return 0;
}

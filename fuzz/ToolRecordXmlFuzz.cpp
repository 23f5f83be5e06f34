// ToolRecordXmlFuzz.cpp -- any text as the XML form of a tool record. What is read comes back from what is written of
// it, stands in both units, and fills a table of parameters.
#include "MemoryFile.h"
#include "platform/core/ParameterTable.h"
#include "platform/core/ToolSpecification.h"
#include "platform/ox/XMLDocument.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

using FuzzSupport::expect;
using FuzzSupport::MemoryFile;
using Varn::NCUnit;
using Varn::ToolSpecification;

namespace {

constexpr ToolSpecification::ComparisonOptions exactly{0, ToolSpecification::ComparisonOptions::IDENTITY_COMPARED,
                                                       std::nullopt};

std::string textOf(const ToolSpecification &tool)
{
    Ox::XMLDocument document("tool");
    tool.exportTo(document.root());
    return document.toString();
}

std::optional<ToolSpecification> read(std::string_view text)
{
    const MemoryFile file(text);
    Ox::Status status;
    const Ox::XMLDocument document(file.path(), status, true);
    ToolSpecification tool;
    const auto result = tool.importFrom(document.root());
    if (!result) {
        expect(!result.error().empty());
        expect(tool.isSame(ToolSpecification(), exactly));
        return std::nullopt;
    }
    return tool;
}

void useEverything(ToolSpecification tool)
{
    expect(!tool.getAsTabbedValues(true).empty());
    const auto table = tool.createParameterTable(true);
    ToolSpecification(tool).syncFromParameters(table, true);
    for (const auto unit : {NCUnit::inches, NCUnit::millimeters}) {
        tool.convertToUnit(unit);
        expect(tool.getUnit() == unit);
    }
    tool.invalidate();
    expect(tool.isSame(ToolSpecification(tool), exactly));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto tool = read({reinterpret_cast<const char *>(data), size});
    if (!tool)
        return 0;
    const std::string text = textOf(*tool);
    const auto back = read(text);
    expect(back && back->isSame(*tool, exactly));
    expect(textOf(*back) == text);
    useEverything(*tool);
    return 0;
}

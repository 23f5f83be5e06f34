#include "ToolLibrary/Interface/Private/ToolLibraryInterfaceImpl.h"
#include "support/Failure.h"
#include "support/FakeLibraryCache.h"

#include "ToolLibrary/Interface/APIUserInteraction.h"
#include "ToolLibrary/Interface/mode/ManageModeConfiguration.h"
#include "platform/core/ToolSpecification.h"

#include <gmock/gmock.h>

#include <array>

using namespace TestSupport;
using namespace Varn;
using namespace Varn::ToolLibraries;

namespace {

struct Row {
    const char *name;
    void (*call)(ToolLibraryInterface &engine);
};

const ToolLibraryLocator library(L"toollibraryroot://Local/a.json");
const LibraryMetadataList noNodes;
const std::vector<LibraryTool> noTools;
const std::map<std::wstring, ToolLibraryLocator> noTargets;
const ToolId noId{std::string()};

void renderATool(ToolLibraryInterface &engine)
{
    // Nobody may touch the renderer of an operation that is refused.
    alignas(std::max_align_t) static std::array<std::byte, 64> nowhere;
    engine.renderTool(ToolSpecification(), reinterpret_cast<Tools::ToolRenderer &>(nowhere));
}

// clang-format off
const Row refused[] = {
    // name                          call
    { "fetchUnusedTools",             [](auto &engine) { engine.fetchUnusedTools(library); } },
    { "createLibraries",              [](auto &engine) { engine.createLibraries(noNodes); } },
    { "createHubLibrary",             [](auto &engine) { engine.createHubLibrary(); } },
    { "deleteLibraries",              [](auto &engine) { engine.deleteLibraries(noNodes); } },
    { "duplicateLibraries",           [](auto &engine) { engine.duplicateLibraries(noNodes); } },
    { "pasteNodes",                   [](auto &engine) { engine.pasteNodes(noNodes, L"all://"); } },
    { "editLibraries",                [](auto &engine) { engine.editLibraries(noNodes); } },
    { "createFolders",                [](auto &engine) { engine.createFolders(noNodes); } },
    { "deleteFolders",                [](auto &engine) { engine.deleteFolders(noNodes); } },
    { "editFolders",                  [](auto &engine) { engine.editFolders(noNodes); } },
    { "exportLibraries",              [](auto &engine) { engine.exportLibraries({library}); } },
    { "importLibraries",              [](auto &engine) { engine.importLibraries(library); } },
    { "importConfirmedLibraries",     [](auto &engine) { engine.importConfirmedLibraries(noTargets); } },
    { "importTools",                  [](auto &engine) { engine.importTools(library); } },
    { "importConfirmedTools",         [](auto &engine) { engine.importConfirmedTools(noTargets); } },
    { "import3DTool of a path",       [](auto &engine) { engine.import3DTool(L"a.step"); } },
    { "import3DTool",                 [](auto &engine) { engine.import3DTool(); } },
    { "createTools",                  [](auto &engine) { engine.createTools(noTools); } },
    { "deleteTools",                  [](auto &engine) { engine.deleteTools(noTools); } },
    { "editTools",                    [](auto &engine) { engine.editTools(noTools); } },
    { "mergeTools",                   [](auto &engine) { engine.mergeTools(library, noTools); } },
    { "selectToolForOperation",       [](auto &engine) { engine.selectToolForOperation(library, noId, {}, {}, ToolSelectType{}, {}); } },
    { "editToolPageOnlyModeSettings", [](auto &engine) { engine.editToolPageOnlyModeSettings(); } },
    { "renderTool",                   renderATool },
    { "reportError",                  [](auto &engine) { engine.reportError(ReportErrorPayload::fromJson("{}")); } },
    { "openExternalLink",             [](auto &engine) { engine.openExternalLink("https://example.com"); } },
    { "getNextAvailableToolNumber",   [](auto &engine) { engine.getNextAvailableToolNumber(library); } },
    { "getToolSelectionType",         [](auto &engine) { engine.getToolSelectionType(); } },
    { "getToolSpecificationFromJson", [](auto &engine) { ToolSpecification record; engine.getToolSpecificationFromJson("{}", record); } },
    { "getLatestTools",               [](auto &engine) { engine.getLatestTools(noTools); } },
    { "refreshHubLibraries",          [](auto &engine) { engine.refreshHubLibraries(); } },
    { "getHubLastSyncTime",           [](auto &engine) { engine.getHubLastSyncTime(); } },
};
// clang-format on

} // namespace

TEST(UnsupportedOperations, AnswerThatTheyAreNotThereYet)
{
    const auto cache = std::make_shared<FakeLibraryCache>();
    cache->add(library.url(), R"({"data":[]})");
    ToolLibraryInterfaceImpl engine(std::make_shared<ManageModeConfiguration>(), cache,
                                    std::make_shared<APIUserInteraction>());
    for (const Row &row : refused)
        EXPECT_EQ(failureOf([&] { row.call(engine); }), "NotSupportedError: Not yet supported") << row.name;
    EXPECT_EQ(cache->loads(), 0) << "nothing is looked at for a call that is refused";
}

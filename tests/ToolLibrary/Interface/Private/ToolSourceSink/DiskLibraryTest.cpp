#include "ToolLibrary/Interface/Private/ToolSourceSink/DiskLibrary.h"
#include "ToolLibrary/Interface/Private/ToolSourceSink/RapidjsonToolLibrary.h"
#include "support/LibraryFile.h"
#include "support/VirtualTable.h"

#include "platform/utils/Abortable.h"

#include <gmock/gmock.h>

using namespace TestSupport;
using namespace Varn::ToolLibraries;

namespace {

/// Reaches what only libraries themselves may call.
struct InsideDiskLibrary : DiskLibrary {
    static auto sanitiseOperation() { return &InsideDiskLibrary::sanitise; }
};

} // namespace

TEST(DiskLibrary, TheOperationsOfASinkStandInTheirSettledOrder)
{
    EXPECT_EQ(slotOf(&ToolSink::createTool), 0u);
    EXPECT_EQ(slotOf(&ToolSink::updateTool), 1u);
    EXPECT_EQ(slotOf(&ToolSink::removeTool), 2u); // the destructor behind it takes two
    EXPECT_EQ(slotOf(&DiskLibrary::syncTool), 5u);
    EXPECT_EQ(slotOf(InsideDiskLibrary::sanitiseOperation()), 6u);
    EXPECT_EQ(slotOf(&ExportableLibrary::toQVariantMap), 0u);
}

TEST(DiskLibrary, IsASinkThenASourceThenExportable)
{
    const auto library = RapidjsonToolLibrary::fromString(libraryText({toolText(1)}), Varn::AbortableImpl());
    const DiskLibrary *whole = library.get();
    const auto addressOf = [](const void *face) { return reinterpret_cast<std::uintptr_t>(face); };
    const std::uintptr_t sink = addressOf(static_cast<const ToolSink *>(whole));
    const std::uintptr_t source = addressOf(static_cast<const ToolSource *>(whole));
    const std::uintptr_t exportable = addressOf(static_cast<const ExportableLibrary *>(whole));
    EXPECT_EQ(sink, addressOf(whole));
    EXPECT_EQ(source, sink + sizeof(void *));
    EXPECT_EQ(exportable, source + sizeof(void *));
    EXPECT_EQ(sizeof(DiskLibrary), 3 * sizeof(void *)) << "it has no members of its own";
}

TEST(DiskLibrary, ItsFacesShareTheLibrary)
{
    std::shared_ptr<DiskLibrary> library =
        RapidjsonToolLibrary::fromString(libraryText({toolText(1)}), Varn::AbortableImpl());
    const std::weak_ptr<DiskLibrary> watch = library;
    std::shared_ptr<ToolSource> source = library;
    library.reset();
    EXPECT_EQ(source->numberOfTools(), 1u);
    source.reset(); // dies whole through any of its faces
    EXPECT_TRUE(watch.expired());
}

#include "platform/hub/IPlatformLibrariesInterface.h"

#include "support/FakePlatformLibraries.h"
#include "support/VirtualTable.h"

#include <gtest/gtest.h>

using namespace TestSupport;
using Hub = Varn::IPlatformLibrariesInterface;

TEST(IPlatformLibrariesInterface, TheOperationsStandInTheirSettledOrder)
{
    const std::size_t slots[] = {
        slotOf(&Hub::index),          slotOf(&Hub::addHubLibraryNodes), slotOf(&Hub::listTools),
        slotOf(&Hub::listChildNames), slotOf(&Hub::checkNodeEditable),  slotOf(&Hub::createNode),
        slotOf(&Hub::deleteNode),     slotOf(&Hub::updateNode),         slotOf(&Hub::fetchLibraryNodes),
        slotOf(&Hub::fetchItems),     slotOf(&Hub::lastSyncTime),       slotOf(&Hub::getTool),
        slotOf(&Hub::createTool),     slotOf(&Hub::updateTool),         slotOf(&Hub::removeTool),
        slotOf(&Hub::syncTool),
    };
    for (std::size_t i = 0; i < std::size(slots); ++i)
        EXPECT_EQ(slots[i], i);
}

TEST(IPlatformLibrariesInterface, APointerToAHubThatDiedIsNull)
{
    auto hub = std::make_unique<FakePlatformLibraries>();
    const Varn::SafePointer<Hub> pointer(hub.get());
    EXPECT_EQ(pointer.get(), hub.get());
    hub.reset();
    EXPECT_FALSE(pointer);
    EXPECT_THROW(pointer->index(), Varn::NullPointerException);
}

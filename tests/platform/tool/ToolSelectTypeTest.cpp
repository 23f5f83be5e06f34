#include "platform/tool/ToolSelectType.h"

#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

TEST(ToolSelectTypeTest, HasTheNumbersThatHostsKnow)
{
    EXPECT_EQ(int(ToolSelectType::Operation), 0);
    EXPECT_EQ(int(ToolSelectType::Reference), 1);
    EXPECT_EQ(int(ToolSelectType::Template), 2);
}

} // namespace Varn::ToolLibraries

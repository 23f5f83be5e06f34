#include "ToolLibrary/ToolFormatMigrator.h"
#include "support/Failure.h"

#include <gmock/gmock.h>

using TestSupport::failureOf;
using Varn::Tools::ToolFormatMigrator;

namespace {

QVariantMap someTool()
{
    return {{"guid", "11111111-2222-4333-8444-000000000001"},
            {"type", "drill"},
            {"start-values", QVariant()},
            {"geometry", QVariantMap{{"DC", 6.0}}}};
}

} // namespace

TEST(ToolFormatMigrator, ACurrentOrNewerToolStaysAsItIs)
{
    for (const int version : {36, 37, 1000, 2147483647}) {
        QVariantMap tool = someTool();
        ToolFormatMigrator::fixMap(tool, version);
        EXPECT_EQ(tool, someTool()) << version;
        QVariantMap empty;
        ToolFormatMigrator::fixMap(empty, version);
        EXPECT_TRUE(empty.isEmpty());
    }
}

TEST(ToolFormatMigrator, AnOlderToolIsRefusedUnchanged)
{
    for (int version = -1; version < 36; ++version) {
        QVariantMap tool = someTool();
        EXPECT_EQ(failureOf([&] { ToolFormatMigrator::fixMap(tool, version); }),
                  "NotSupportedError: Tools of format version " + std::to_string(version) +
                      " cannot be migrated to version 36 yet");
        EXPECT_EQ(tool, someTool());
    }
}

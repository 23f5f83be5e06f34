#include "ToolLibrary/Util/Tool3DGeometryUtil.h"

#include <gtest/gtest.h>

using namespace Varn::Tools;

TEST(Tool3DGeometryUtil, LocalCustomAndCloudNodesKeepTheirSolidsInFiles)
{
    struct Row {
        const char *url;
        bool answer;
    };
    const Row rows[] = {
        {"toollibraryroot://Local/a.json", true},
        {"custom://a.json", true},
        {"cloud://a.json", true},
        {"hub://p/a.hub", false},
        {"vendor://a.json", false},
        {"document://a", false},
        {"systemlibraryroot://Samples/a.json", false},
        {"/home/me/a.json", false},
    };
    for (const Row &row : rows)
        EXPECT_EQ(Tool3DGeometryUtil::requiresLocal3DGeometry(ToolLibraryUrl(QString::fromLatin1(row.url))), row.answer)
            << row.url;
}

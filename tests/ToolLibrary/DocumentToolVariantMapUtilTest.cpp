#include "ToolLibrary/DocumentToolVariantMapUtil.h"

#include "support/Asserts.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using Varn::Tools::DocumentToolVariantMapUtil;

namespace {

const QVariantMap plain{{"guid", "a"}};
const QVariantMap onlyId{{"guid", "a"}, {"_document_tool_id", 3}};
const QVariantMap onlyReference{{"guid", "a"}, {"_document_tool_reference_guid", "r"}};

} // namespace

TEST(DocumentToolVariantMapUtil, TheMarksOfADocumentToolComeAndGo)
{
    const TestSupport::Asserts asserts;
    QVariantMap tool = plain;
    DocumentToolVariantMapUtil::addDocumentToolInformation(tool, 4000000000u, "r");
    EXPECT_TRUE(DocumentToolVariantMapUtil::isDocumentTool(tool));
    EXPECT_EQ(DocumentToolVariantMapUtil::getDocumentToolId(tool), 4000000000u);
    EXPECT_EQ(DocumentToolVariantMapUtil::getDocumentToolReferenceGuid(tool), "r");
    EXPECT_THAT(tool.keys(), ElementsAre("_document_tool_id", "_document_tool_reference_guid", "guid"));
    DocumentToolVariantMapUtil::removeDocumentToolInformation(tool);
    EXPECT_EQ(tool, plain);
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(DocumentToolVariantMapUtil, MarkingTwiceReplacesTheMarksAndAsserts)
{
    QVariantMap tool = plain;
    DocumentToolVariantMapUtil::addDocumentToolInformation(tool, 1, "first");
    const TestSupport::Asserts asserts;
    DocumentToolVariantMapUtil::addDocumentToolInformation(tool, 2, "second");
    EXPECT_THAT(asserts.messages(), ElementsAre("!isDocumentTool(toolVariantMap)"));
    EXPECT_EQ(DocumentToolVariantMapUtil::getDocumentToolId(tool), 2u);
    EXPECT_EQ(DocumentToolVariantMapUtil::getDocumentToolReferenceGuid(tool), "second");
}

TEST(DocumentToolVariantMapUtil, OneMarkAloneMakesNoDocumentTool)
{
    for (const QVariantMap &tool : {plain, onlyId, onlyReference}) {
        EXPECT_FALSE(DocumentToolVariantMapUtil::isDocumentTool(tool));
        EXPECT_EQ(DocumentToolVariantMapUtil::getDocumentToolId(tool), 0u);
    }
}

TEST(DocumentToolVariantMapUtil, AskingForTheReferenceOfAnotherToolAsserts)
{
    EXPECT_EQ(DocumentToolVariantMapUtil::getDocumentToolReferenceGuid(plain), "");
    const TestSupport::Asserts asserts;
    EXPECT_EQ(DocumentToolVariantMapUtil::getDocumentToolReferenceGuid(onlyId), "");
    EXPECT_EQ(DocumentToolVariantMapUtil::getDocumentToolReferenceGuid(onlyReference), "r");
    EXPECT_THAT(asserts.messages(), ElementsAre("isDocumentTool(toolVariantMap)", "isDocumentTool(toolVariantMap)"));
}

TEST(DocumentToolVariantMapUtil, RemovingTakesASingleMarkToo)
{
    for (QVariantMap tool : {plain, onlyId, onlyReference}) {
        DocumentToolVariantMapUtil::removeDocumentToolInformation(tool);
        EXPECT_EQ(tool, plain);
    }
}

TEST(DocumentToolVariantMapUtil, AnIdThatCameThroughJsonIsADouble)
{
    EXPECT_EQ(DocumentToolVariantMapUtil::getDocumentToolId(
                  {{"_document_tool_id", 3.0}, {"_document_tool_reference_guid", "r"}}),
              3u);
}

#include "platform/ox/Status.h"

#include <gtest/gtest.h>

using Ox::Status;
using Ox::StatusCode;
using Severity = Ox::StatusCode::Severity;

TEST(Status, ANewOneIsOkAndEmpty)
{
    const Status status;
    EXPECT_TRUE(status.isOk());
    EXPECT_FALSE(status.hasWarnings());
    EXPECT_TRUE(status.getTopLevelStatusCodes().empty());
    EXPECT_TRUE(status.description().isEmpty());
}

TEST(Status, AnErrorIsNotOk)
{
    Status status;
    status.addCode("SERVER_ERROR", "The server does not answer");
    EXPECT_FALSE(status.isOk());
    EXPECT_FALSE(status.hasWarnings());
    ASSERT_EQ(status.getTopLevelStatusCodes().size(), 1U);
    const StatusCode &code = status.getTopLevelStatusCodes().front();
    EXPECT_EQ(code.code(), "SERVER_ERROR");
    EXPECT_EQ(code.message(), "The server does not answer");
    EXPECT_FALSE(code.isWarning());
    EXPECT_TRUE(code.children().empty());
}

TEST(Status, WarningsLeaveItOk)
{
    Status status;
    status.addCode("PARTIAL_SYNC_SUCCESS", "2 of 3 libraries", Severity::Warning);
    EXPECT_TRUE(status.isOk());
    EXPECT_TRUE(status.hasWarnings());
    EXPECT_TRUE(status.getTopLevelStatusCodes().front().isWarning());
    status.addCode("SERVER_ERROR", "");
    EXPECT_FALSE(status.isOk());
    EXPECT_TRUE(status.hasWarnings());
}

TEST(Status, CodesKeepTheirOrderAndMayRepeat)
{
    Status status;
    for (const char *code : {"B", "A", "B"})
        status.addCode(code, QString());
    QString codes;
    for (const StatusCode &code : status.getTopLevelStatusCodes())
        codes += code.code();
    EXPECT_EQ(codes, "BAB");
}

TEST(Status, NestedCodesStayBelowTheirOwn)
{
    StatusCode cause("TIMEOUT", "No answer for 30 s");
    cause.addChild(StatusCode("SOCKET"));
    StatusCode code("PARTIAL_SYNC_SUCCESS", "2 of 3 libraries", Severity::Warning);
    code.addChild(cause);
    Status status;
    status.addCode(code);
    ASSERT_EQ(status.getTopLevelStatusCodes().size(), 1U);
    EXPECT_EQ(status.getTopLevelStatusCodes()[0].children()[0].code(), "TIMEOUT");
    EXPECT_EQ(status.getTopLevelStatusCodes()[0].children()[0].children()[0].code(), "SOCKET");
    EXPECT_TRUE(status.isOk()) << "an error below a warning explains it";
}

TEST(Status, TheDescriptionIsALineForEachCode)
{
    StatusCode cause("TIMEOUT", "No answer for 30 s");
    cause.addChild(StatusCode("SOCKET"));
    StatusCode code("SERVER_ERROR", "The server failed");
    code.addChild(cause);
    Status status;
    status.addCode(code);
    status.addCode("LAST", "Nothing was saved");
    EXPECT_EQ(status.description(), "The server failed\n  No answer for 30 s\n    SOCKET\nNothing was saved");
}

TEST(Status, ACopyHasItsOwnCodes)
{
    Status status;
    const Status copy = status;
    status.addCode("A", "a");
    EXPECT_TRUE(copy.isOk());
}

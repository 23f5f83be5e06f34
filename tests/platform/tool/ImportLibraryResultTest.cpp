#include "platform/tool/ImportLibraryResult.h"

#include <gtest/gtest.h>

namespace Varn::ToolLibraries {

namespace {

std::shared_ptr<LibraryMetadata> library()
{
    return LibraryMetadata::fromJson(R"({"name":"n","type":"library","url":"u"})");
}

} // namespace

TEST(ImportLibraryResultTest, AnExceptionLeavesNoItem)
{
    const ImportLibraryResult result(IOError("File already exists", L"Datei existiert"));
    EXPECT_TRUE(result.hasError());
    EXPECT_EQ(result.item(), nullptr);
    EXPECT_EQ(result.toJson(), R"({"item":null,"error":{"developerText":"File already exists",)"
                               R"("translatedText":"Datei existiert"}})");
}

TEST(ImportLibraryResultTest, SuccessIsTheNodeAlone)
{
    const ImportLibraryResult result(library());
    EXPECT_FALSE(result.hasError());
    EXPECT_FALSE(result.confirmation());
    EXPECT_FALSE(result.warning());
    EXPECT_EQ(result.toJson(), R"({"item":{"name":"n","type":"library","url":"u"}})");
}

TEST(ImportLibraryResultTest, AQuestionIsNoError)
{
    const Confirmation confirmation(L"/a.zip", ToolLibraryLocator(L"u"), L"n", 2, L"terms");
    const ImportLibraryResult result(library(), confirmation);
    EXPECT_FALSE(result.hasError());
    EXPECT_EQ(result.confirmation()->path(), L"/a.zip");
    EXPECT_EQ(result.toJson(), R"({"item":{"name":"n","type":"library","url":"u"},"confirmation":{"path":"/a.zip",)"
                               R"("url":"u","name":"n","numberOfTools":2,"disclaimerText":"terms"}})");
}

TEST(ImportLibraryResultTest, AWarningIsNoError)
{
    const ImportLibraryResult result(library(), std::string("Failed to import 1 tools from \"n\""));
    EXPECT_FALSE(result.hasError());
    EXPECT_EQ(result.warning(), "Failed to import 1 tools from \"n\"");
    EXPECT_EQ(result.toJson(), R"({"item":{"name":"n","type":"library","url":"u"},)"
                               R"("warning":"Failed to import 1 tools from \"n\""})");
}

TEST(ImportLibrariesResultTest, EachResultPrintsItsOwnKind)
{
    ImportLibrariesResult results;
    results.append(ImportLibraryResult(library(), std::string("w")));
    results.append(ImportLibraryResult(IOError("x")));
    EXPECT_EQ(results.toJson(), R"([{"item":{"name":"n","type":"library","url":"u"},"warning":"w"},)"
                                R"({"item":null,"error":{"developerText":"x"}}])");
}

} // namespace Varn::ToolLibraries

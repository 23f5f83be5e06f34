#include "ToolLibrary/Interface/APIUserInteraction.h"
#include "platform/tool/ToolLibraryLocator.h"
#include "support/Asserts.h"

#include <gmock/gmock.h>

#include <cstring>

using namespace Varn::ToolLibraries;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const ToolLibraryLocator library(L"toollibraryroot://Local/a.json");

/// The four prompts that take a queued path, in one form.
struct Prompt {
    const char *assertion;
    void (APIUserInteraction::*queue)(const std::wstring &);
    std::vector<std::wstring> (*ask)(UserInteraction &);
    std::vector<std::wstring> nothing;
};

std::vector<std::wstring> askExport(UserInteraction &user)
{
    return {user.promptWhereToExportToolLibrary(library)};
}

std::vector<std::wstring> askLibraries(UserInteraction &user)
{
    return user.promptWhichToolLibrariesToImport();
}

std::vector<std::wstring> askTools(UserInteraction &user)
{
    return user.promptWhichToolsToImport();
}

std::vector<std::wstring> ask3DTool(UserInteraction &user)
{
    return {user.promptWhich3DToolToImport()};
}

const Prompt prompts[] = {
    {"Expected tool library export to be queued.", &APIUserInteraction::setWhereToExportToolLibrary, &askExport, {L""}},
    {"Expected tool library import to be queued.", &APIUserInteraction::setWhichToolLibraryToImport, &askLibraries, {}},
    {"Expected tool import to be queued.", &APIUserInteraction::setWhichToolToImport, &askTools, {}},
    {"Expected 3D tool import to be queued.", &APIUserInteraction::setWhich3DToolToImport, &ask3DTool, {L""}},
};

} // namespace

TEST(APIUserInteraction, AQueuedPathServesOneQuestion)
{
    for (const Prompt &prompt : prompts) {
        const TestSupport::Asserts asserts;
        APIUserInteraction user;
        (user.*prompt.queue)(L"/tmp/\u00fc.json");
        EXPECT_THAT(prompt.ask(user), ElementsAre(L"/tmp/\u00fc.json")) << prompt.assertion;
        EXPECT_THAT(asserts.messages(), IsEmpty());
        EXPECT_EQ(prompt.ask(user), prompt.nothing) << prompt.assertion;
        EXPECT_THAT(asserts.messages(), ElementsAre(prompt.assertion));
    }
}

TEST(APIUserInteraction, AQuestionWithoutAnAnswerGetsAnEmptyOne)
{
    for (const Prompt &prompt : prompts) {
        APIUserInteraction user;
        EXPECT_EQ(prompt.ask(user), prompt.nothing) << prompt.assertion;
    }
}

TEST(APIUserInteraction, ASecondAnswerTakesThePlaceOfTheFirst)
{
    for (const Prompt &prompt : prompts) {
        APIUserInteraction user;
        (user.*prompt.queue)(L"first");
        (user.*prompt.queue)(L"second");
        EXPECT_THAT(prompt.ask(user), ElementsAre(L"second"));
        EXPECT_EQ(prompt.ask(user), prompt.nothing);
    }
}

TEST(APIUserInteraction, AnEmptyPathIsAnAnswerToo)
{
    for (const Prompt &prompt : prompts) {
        const TestSupport::Asserts asserts;
        APIUserInteraction user;
        (user.*prompt.queue)(L"");
        EXPECT_THAT(prompt.ask(user), ElementsAre(L"")) << prompt.assertion;
        EXPECT_THAT(asserts.messages(), IsEmpty());
    }
}

TEST(APIUserInteraction, EachQuestionHasItsOwnAnswer)
{
    APIUserInteraction user;
    for (const Prompt &prompt : prompts)
        (user.*prompt.queue)(std::wstring(prompt.assertion, prompt.assertion + std::strlen(prompt.assertion)));
    for (const std::size_t index : {3, 1, 0, 2}) {
        const std::string_view own = prompts[index].assertion;
        EXPECT_THAT(prompts[index].ask(user), ElementsAre(std::wstring(own.begin(), own.end())));
    }
}

TEST(APIUserInteraction, TheChoiceOfOverwritingStays)
{
    const TestSupport::Asserts asserts;
    APIUserInteraction user;
    EXPECT_EQ(static_cast<int>(user.promptToOverwriteTool({L"a"})), 0) << "never queued";
    for (const int choice : {1, 2, 0, 2}) {
        user.setOverwriteToolFeedAndSpeed(static_cast<ToolOverwriteChoice>(choice));
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(static_cast<int>(user.promptToOverwriteTool({L"a", L"b"})), choice);
        EXPECT_EQ(static_cast<int>(user.promptToOverwriteTool({})), choice);
    }
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

TEST(APIUserInteraction, ALinkIsNeverOpened)
{
    APIUserInteraction user;
    EXPECT_FALSE(user.openExternalLink("https://example.com"));

    const TestSupport::Asserts asserts;
    EXPECT_FALSE(user.openExternalLink("https://example.com"));
    EXPECT_THAT(asserts.messages(),
                ElementsAre("This method is not expected to be used by the Quillon Tool Library API."));
}

TEST(APIUserInteraction, AReportIsNotSent)
{
    const TestSupport::Asserts asserts;
    APIUserInteraction user;
    int standIn = 0; // what a report holds is not looked at
    EXPECT_FALSE(user.sendReport(reinterpret_cast<ErrorReport &>(standIn)));
    EXPECT_THAT(asserts.messages(), IsEmpty());
}

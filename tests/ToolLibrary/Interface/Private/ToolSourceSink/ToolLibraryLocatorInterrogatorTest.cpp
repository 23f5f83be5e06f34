#include "ToolLibrary/Interface/Private/ToolSourceSink/ToolLibraryLocatorInterrogator.h"
#include "support/Asserts.h"
#include "support/TestPaths.h"

#include <gmock/gmock.h>

using namespace Varn::ToolLibraries;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Interrogator = ToolLibraryLocatorInterrogator;
using Test = bool (Interrogator::*)() const;

struct FormatPredicate {
    const char *name;
    Test test;
};

const FormatPredicate formats[] = {
    {"Zet", &Interrogator::isLocalZet},
    {"Json", &Interrogator::isLocalJson},
    {"Tools", &Interrogator::isLocalZippedJson},
    {"Tsv", &Interrogator::isLocalTsv},
    {"Csv", &Interrogator::isLocalCsv},
    {"MasterCamHolders", &Interrogator::isLocalMasterCamHolders},
    {"MasterCamTools", &Interrogator::isLocalMasterCamTools},
    {"UnigraphicsNX", &Interrogator::isLocalUnigraphicsNX},
    {"Zip", &Interrogator::isLocalZip},
};

/// The names of all formats that the locator is said to have.
std::string formatOf(const ToolLibraryLocator &locator)
{
    const Interrogator interrogator(locator);
    std::string names;
    for (const FormatPredicate &format : formats)
        if ((interrogator.*format.test)())
            names += format.name;
    return names;
}

Interrogator url(const std::wstring &text)
{
    return Interrogator(ToolLibraryLocator(text));
}

Interrogator path(const std::wstring &text)
{
    return Interrogator(ToolLibraryLocator::fromFilePath(text));
}

} // namespace

TEST(ToolLibraryLocatorInterrogator, AFilePathHasTheFormatOfItsEndInAnyCase)
{
    struct Row {
        const wchar_t *path;
        const char *format;
    };
    const Row rows[] = {
        {L"/a/b.zetlib", "Zet"},
        {L"/a/b.json", "Json"},
        {L"/a/b.JSON", "Json"},
        {L"/a/b.Json", "Json"},
        {L"/a/b.tools", "Tools"},
        {L"/a/b.tsv", "Tsv"},
        {L"/a/b.TSV", "Tsv"},
        {L"/a/b.csv", "Csv"},
        {L"/a/b.holderstxt", "MasterCamHolders"},
        {L"/a/b.HoldersTxt", "MasterCamHolders"},
        {L"/a/b.txt", "MasterCamTools"},
        {L"/a/b.dat", "UnigraphicsNX"},
        {L"/a/b.zip", "Zip"},
        {L"/a/b.hub", ""},
        {L"/a/b", ""},
        {L"/a.json/b", ""},
        {L"", ""},
    };
    for (const Row &row : rows)
        EXPECT_EQ(formatOf(ToolLibraryLocator::fromFilePath(row.path)), row.format) << std::wstring(row.path).size();
}

TEST(ToolLibraryLocatorInterrogator, AUrlHasOneOfThreeFormatsAsItIsWritten)
{
    struct Row {
        const wchar_t *url;
        const char *format;
    };
    const Row rows[] = {
        {L"toollibraryroot://a.zetlib", "Zet"}, {L"toollibraryroot://a.json", "Json"}, {L"cloud://a.tools", "Tools"},
        {L"toollibraryroot://a.JSON", ""},      {L"toollibraryroot://a.tsv", ""},      {L"toollibraryroot://a.csv", ""},
        {L"toollibraryroot://a.zip", ""},       {L"toollibraryroot://a", ""},          {L"document://a.json", "Json"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(formatOf(ToolLibraryLocator(row.url)), row.format) << QString::fromWCharArray(row.url).toStdString();
}

TEST(ToolLibraryLocatorInterrogator, TellsWhatALocatorNames)
{
    struct Row {
        Interrogator locator;
        bool localFile, document, setup, hub, valid;
    };
    const Row rows[] = {
        {path(L"/a/b.anything"), true, false, false, false, true},
        {path(L"document://a"), true, false, false, false, true}, // a path, whatever it looks like
        {path(L"hub://a.hub"), true, false, false, false, true},
        {url(L"toollibraryroot://Local/a.json"), true, false, false, false, true},
        {url(L"toollibraryroot://a.JSON"), false, false, false, false, false},
        {url(L"toollibraryroot://Local"), false, false, false, false, false},
        {url(L"hub://p/x.hub"), true, false, false, true, true},
        {url(L"hub://p"), false, false, false, false, false},
        {url(L"document://a"), false, true, false, false, true},
        {url(L"document://a/b"), false, false, true, false, true},
        {url(L"document://"), false, false, false, false, false},
        {url(L"all://"), false, false, false, false, false},
        {url(L"all://a.json"), true, false, false, false, false},
        {url(L"http://h/a.json"), true, false, false, false, false},
        {url(L"a.json"), true, false, false, false, false},
        {url(L"vendor://a.json"), true, false, false, false, true},
        {url(L""), false, false, false, false, false},
    };
    for (const Row &row : rows) {
        const auto number = &row - rows;
        EXPECT_EQ(row.locator.isLocalFile(), row.localFile) << number;
        EXPECT_EQ(row.locator.isDocument(), row.document) << number;
        EXPECT_EQ(row.locator.isSetup(), row.setup) << number;
        EXPECT_EQ(row.locator.isHub(), row.hub) << number;
        EXPECT_EQ(row.locator.isValidLibraryLocator(), row.valid) << number;
    }
}

TEST(ToolLibraryLocatorInterrogator, AHubLibraryHasNoFormatHere)
{
    const TestSupport::Asserts asserts;
    EXPECT_FALSE(url(L"hub://p/x.hub").isLocalJson());
    EXPECT_THAT(asserts.messages(), ElementsAre("Restricted flow"));
}

TEST(ToolLibraryLocatorInterrogator, ThePlaceOnDiskIsThePathOrThatOfTheUrl)
{
    const TestSupport::TestPaths paths;
    EXPECT_EQ(path(L"/a/b.json").filePath(), L"/a/b.json");
    EXPECT_EQ(url(L"toollibraryroot://Local/a.json").filePath(), paths.local(u"Local/a.json").toStdWString());
    const TestSupport::Asserts asserts;
    url(L"toollibraryroot://Local").filePath();
    EXPECT_THAT(asserts.messages(), ElementsAre("isLocalFile()"));
}

TEST(ToolLibraryLocatorInterrogator, OnlyAUrlIsOne)
{
    const TestSupport::Asserts asserts;
    EXPECT_EQ(url(L"cloud://a.json").url().url().toStdString(), "cloud://a.json");
    EXPECT_THAT(asserts.messages(), IsEmpty());
    path(L"/a.json").url();
    EXPECT_THAT(asserts.messages(), Contains("isUrl()"));
}

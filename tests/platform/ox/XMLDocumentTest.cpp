#include "platform/ox/XMLDocument.h"
#include "platform/utils/FileInputStream.h"
#include "platform/utils/FileOutputStream.h"
#include "platform/utils/FileSystem.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <sys/stat.h>

using namespace std::string_literals;
using Ox::Status;
using Ox::XMLDocument;
using testing::HasSubstr;
using testing::StartsWith;
using Varn::FileInputStream;
using Varn::FileOutputStream;
using Varn::FileSystem;

namespace {

class XMLDocumentTest : public testing::Test
{
protected:
    std::wstring at(std::wstring_view name) const { return FileSystem::combine(m_folder.path().toStdWString(), name); }
    std::wstring write(std::string_view content) const
    {
        EXPECT_TRUE(FileOutputStream(at(L"document.xml")).write(content));
        return at(L"document.xml");
    }
    // What reading such a file ends in, without the folder of the file; empty when all went well.
    std::string errorOf(std::string_view content, bool validate = false) const
    {
        Status status;
        const XMLDocument document(write(content), status, validate);
        EXPECT_EQ(status.isOk(), document.root().exists());
        return status.description().mid(status.isOk() ? 0 : m_folder.path().size() + 1).toStdString();
    }

    QTemporaryDir m_folder;
};

std::string nested(int levels)
{
    std::string text;
    for (int i = 0; i < levels; ++i)
        text += "<a>";
    for (int i = 0; i < levels; ++i)
        text += "</a>";
    return text;
}

} // namespace

TEST_F(XMLDocumentTest, ReadsAFile)
{
    Status status;
    const XMLDocument document(write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- c --><a><b>\u00e4</b></a>\n"),
                               status, true);
    EXPECT_TRUE(status.isOk());
    EXPECT_EQ(document.root().key(), "a");
    EXPECT_EQ(document.root().findChild("b").text(), "\u00e4");
}

TEST_F(XMLDocumentTest, ReadsEveryEncodingThatSaysWhatItIs)
{
    struct Row {
        const char *name;
        std::string content;
    };
    const std::string text = "<a>\xE4</a>";
    std::string utf16le = "\xFF\xFE";
    std::string utf16be = "\xFE\xFF";
    for (const char c : text) {
        utf16le += {c, '\0'};
        utf16be += {'\0', c};
    }
    const Row rows[] = {
        {"UTF-8", "<a>\u00e4</a>"},
        {"UTF-8 with a byte order mark", "\xEF\xBB\xBF<a>\u00e4</a>"},
        {"UTF-16, low byte first", utf16le},
        {"UTF-16, high byte first", utf16be},
        {"Latin-1", "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?>" + text},
    };
    for (const Row &row : rows) {
        for (const bool validate : {false, true}) {
            Status status;
            const XMLDocument document(write(row.content), status, validate);
            EXPECT_TRUE(status.isOk()) << row.name << ": " << status.description().toStdString();
            EXPECT_EQ(document.root().text(), "\u00e4") << row.name;
        }
    }
}

TEST_F(XMLDocumentTest, ABrokenFileIsNamedWithItsPlace)
{
    struct Row {
        const char *content;
        const char *error;
    };
    const Row rows[] = {
        {"", "document.xml:1:1: No document element found"},
        {"  \n ", "document.xml:2:2: No document element found"},
        {"just a text", "document.xml:1:12: No document element found"},
        {"<?xml version=\"1.0\"?>", "document.xml:1:22: No document element found"},
        {"<a>", "document.xml:1:3: Start-end tags mismatch"},
        {"<a>\n<b>\n</a>", "document.xml:3:3: Start-end tags mismatch"},
        {"<a><b></b", "document.xml:1:9: Error parsing end element tag"},
        {"<a b=c/>", "document.xml:1:6: Error parsing element attribute"},
        {"<a b='c/>", "document.xml:1:7: Error parsing element attribute"},
        {"<a><![CDATA[x</a>", "document.xml:1:13: Error parsing CDATA section"},
        {"<a><!-- x</a>", "document.xml:1:13: Error parsing comment"},
        {"<!DOCTYPE a [<a/>", "document.xml:1:14: Error parsing document type declaration"},
        {"<1/>", "document.xml:1:2: Could not determine tag type"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(errorOf(row.content), row.error) << row.content;
}

TEST_F(XMLDocumentTest, AFailureIsAnErrorWithACode)
{
    Status status;
    const XMLDocument broken(write("<a>"), status, false);
    const XMLDocument missing(at(L"missing.xml"), status, false);
    ASSERT_EQ(status.getTopLevelStatusCodes().size(), 2U);
    EXPECT_EQ(status.getTopLevelStatusCodes()[0].code(), "XML_MALFORMED");
    EXPECT_EQ(status.getTopLevelStatusCodes()[1].code(), "XML_UNREADABLE");
    EXPECT_FALSE(status.hasWarnings());

    const XMLDocument good(write("<a/>"), status, false);
    EXPECT_TRUE(good.root().exists()) << "a status that was not ok does not matter";
    EXPECT_FALSE(status.isOk());
}

TEST_F(XMLDocumentTest, WhatIsNoFileCannotBeRead)
{
    ASSERT_EQ(::mkfifo(FileSystem::toPath(at(L"pipe")).c_str(), 0600), 0);
    for (const std::wstring &path : {at(L"missing \u5de5.xml"), at(L""), at(L"pipe"), L""s}) {
        Status status;
        const XMLDocument document(path, status, false);
        EXPECT_EQ(status.description(), QString::fromStdWString(path) + ": cannot be read");
        EXPECT_FALSE(document.root().exists());
    }
}

TEST_F(XMLDocumentTest, OnlyAValidatingReadingRefusesSmallFaults)
{
    struct Row {
        const char *name;
        std::string content;
    };
    const Row rows[] = {
        {"an attribute given twice", "<a b='1' b='2'/>"},
        {"two roots", "<a/><b/>"},
        {"text behind the root", "<a/>text"},
        {"an entity that nobody defined", "<a>&nobody;</a>"},
        {"a bare ampersand", "<a>x & y</a>"},
        {"broken UTF-8", "<a>\xFF</a>"},
        {"a control character", "<a>\x01</a>"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(errorOf(row.content, false), "") << row.name;
        EXPECT_THAT(errorOf(row.content, true), StartsWith("document.xml:1:")) << row.name;
    }
}

TEST_F(XMLDocumentTest, NoEntityIsExpanded)
{
    std::string bomb = "<?xml version=\"1.0\"?><!DOCTYPE a [<!ENTITY e0 \"ha\">";
    for (int i = 1; i < 30; ++i) {
        const std::string previous = "&e" + std::to_string(i - 1) + ";";
        bomb += "<!ENTITY e" + std::to_string(i) + " \"" + previous + previous + "\">";
    }
    Status status;
    const XMLDocument document(write(bomb + "]><a>&e29;</a>"), status, false);
    EXPECT_TRUE(status.isOk());
    EXPECT_EQ(document.root().text(), "&e29;");

    Status external;
    const XMLDocument reader(write("<!DOCTYPE a [<!ENTITY x SYSTEM \"file:///etc/hostname\">]><a>&x;</a>"), external,
                             false);
    EXPECT_EQ(reader.root().text(), "&x;");
}

TEST_F(XMLDocumentTest, AValidatingReadingEndsABombEarly)
{
    std::string bomb = "<!DOCTYPE a [<!ENTITY e0 \"" + std::string(100, 'x') + "\">";
    for (int i = 1; i < 30; ++i) {
        const std::string previous = "&e" + std::to_string(i - 1) + ";";
        bomb += "<!ENTITY e" + std::to_string(i) + " \"" + previous + previous + "\">";
    }
    EXPECT_THAT(errorOf(bomb + "]><a>&e29;</a>", true), StartsWith("document.xml:1:"));
}

TEST_F(XMLDocumentTest, AThousandElementsDeepIsTheLimit)
{
    EXPECT_EQ(errorOf(nested(1000)), "");
    EXPECT_EQ(errorOf(nested(1000), true), "");
    EXPECT_EQ(errorOf(nested(1001)), "document.xml: Nested deeper than 1000 elements");
    EXPECT_EQ(errorOf(nested(1'000'000)), "document.xml: Nested deeper than 1000 elements");
    EXPECT_THAT(errorOf(nested(1'000'000).substr(0, 3'000'000)), HasSubstr("Start-end tags mismatch"));
}

TEST_F(XMLDocumentTest, WideAndLongDocumentsAreFine)
{
    std::string wide = "<a>";
    for (int i = 0; i < 50'000; ++i)
        wide += "<b/>";
    Status status;
    const XMLDocument document(write(wide + "<c>" + std::string(1'000'000, 'x') + "</c></a>"), status, false);
    ASSERT_TRUE(status.isOk());
    EXPECT_EQ(document.root().getChildren("b").size(), 50'000U);
    EXPECT_EQ(document.root().findChild("c").text().size(), 1'000'000U);
}

TEST_F(XMLDocumentTest, EveryCutOfADocumentEndsWell)
{
    const std::string whole =
        "<?xml version='1.0'?><!DOCTYPE a [<!ENTITY e 'x'>]><a b='&lt;'><!-- c --><![CDATA[d]]>&#65;<e/><f>g</f></a>";
    for (std::size_t length = 0; length < whole.size(); ++length) {
        for (const bool validate : {false, true})
            EXPECT_NE(errorOf(std::string_view(whole).substr(0, length), validate), "") << length;
    }
    EXPECT_EQ(errorOf(whole, true), "");
}

TEST_F(XMLDocumentTest, EveryByteMayBeBroken)
{
    const std::string whole = "<?xml version='1.0'?><a b='&lt;'><!-- c --><![CDATA[d]]>&#65;<e/><f>g</f></a>";
    const char wrong[] = {'\0', '<', '>', '&', '\xFF'}; // in turn, for each of them is a write to the disk
    for (std::size_t i = 0; i < whole.size(); ++i) {
        std::string broken = whole;
        broken[i] = wrong[i % std::size(wrong)];
        for (const bool validate : {false, true}) {
            Status status;
            const XMLDocument document(write(broken), status, validate);
            EXPECT_EQ(status.isOk(), document.root().exists()) << i;
        }
    }
}

TEST_F(XMLDocumentTest, ANewDocumentHasItsRootAlone)
{
    const XMLDocument document("settings");
    EXPECT_EQ(document.root().key(), "settings");
    EXPECT_EQ(document.toString(), "<?xml version=\"1.0\"?>\n<settings />\n");
    EXPECT_FALSE(XMLDocument("no name").root().exists());
}

TEST_F(XMLDocumentTest, PrintsOneElementALine)
{
    XMLDocument document("settings");
    document.root().addChild("folder").setText("/tmp");
    document.root().addChild("filters").addChild("filter");
    EXPECT_EQ(document.toString(), "<?xml version=\"1.0\"?>\n"
                                   "<settings>\n"
                                   "  <folder>/tmp</folder>\n"
                                   "  <filters>\n"
                                   "    <filter />\n"
                                   "  </filters>\n"
                                   "</settings>\n");
}

TEST_F(XMLDocumentTest, SavesAndReadsBack)
{
    const std::wstring path = at(L"\u5de5\u5177 settings.xml");
    XMLDocument document("settings");
    document.root().addChild("folder").setText("/home/\u00e4");
    EXPECT_TRUE(document.save(path).isOk());
    EXPECT_EQ(FileInputStream(path).readAll(), document.toString());
    Status status;
    const XMLDocument again(path, status, true);
    EXPECT_TRUE(status.isOk());
    EXPECT_EQ(again.root().findChild("folder").text(), "/home/\u00e4");
    EXPECT_EQ(again.toString(), document.toString());
}

TEST_F(XMLDocumentTest, ASaveReplacesTheFileAndLeavesNothingElse)
{
    const std::wstring path = write("<old>" + std::string(1000, 'x') + "</old>");
    EXPECT_TRUE(XMLDocument("new").save(path).isOk());
    EXPECT_EQ(FileInputStream(path).readAll(), XMLDocument("new").toString());
    EXPECT_EQ(FileSystem::getFiles(at(L""), L"*").size(), 1U);
}

TEST_F(XMLDocumentTest, ASaveThatFailsNamesTheFile)
{
    ASSERT_FALSE(FileSystem::createFolders(at(L"folder")));
    for (const wchar_t *name : {L"missing/settings.xml", L"folder"}) {
        const Status status = XMLDocument("settings").save(at(name));
        ASSERT_EQ(status.getTopLevelStatusCodes().size(), 1U);
        EXPECT_EQ(status.getTopLevelStatusCodes()[0].code(), "XML_UNWRITABLE");
        EXPECT_THAT(status.description().toStdString(),
                    StartsWith(QString::fromStdWString(at(name)).toStdString() + ": "));
    }
    EXPECT_TRUE(FileSystem::isDirectory(at(L"folder")));
}

TEST_F(XMLDocumentTest, ADocumentCanBeHandedOn)
{
    XMLDocument first("a");
    XMLDocument second(std::move(first));
    EXPECT_EQ(second.root().key(), "a");
    first = XMLDocument("b");
    EXPECT_EQ(first.root().key(), "b");
}

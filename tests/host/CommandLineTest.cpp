#include "host/CommandLine.h"
#include "support/FakePlatformLibraries.h"
#include "support/FileContent.h"
#include "support/LibraryFile.h"
#include "support/Rights.h"
#include "support/TestPaths.h"

#include "ToolLibrary/IO/ZipToolFormat.h"

#include <gmock/gmock.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

using namespace Quillon;
using namespace TestSupport;
using namespace Varn::ToolLibraries;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;
using testing::UnorderedElementsAre;
using Varn::Tools::ZipToolFormat;

namespace {

struct Outcome {
    ExitStatus status;
    std::string out;
    std::string err;
};

Outcome run(const std::vector<std::string> &arguments, const std::string &input = {}, std::size_t width = 0,
            bool errIsTerminal = false)
{
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream err;
    const ExitStatus status = runCommandLine(arguments, {in, out, err, width, errIsTerminal});
    return {status, out.str(), err.str()};
}

/// Tells whether anything was written to it.
class WatchedBuffer : public std::stringbuf
{
public:
    bool isWritten() const { return m_isWritten; }

protected:
    std::streamsize xsputn(const char *text, std::streamsize count) override
    {
        m_isWritten = true;
        return std::stringbuf::xsputn(text, count);
    }

private:
    std::atomic<bool> m_isWritten{false};
};

/// A hub with the library "hub://a.hub", whose identifier is "id".
std::shared_ptr<FakePlatformLibraries> hubWithALibrary()
{
    auto hub = std::make_shared<FakePlatformLibraries>();
    const auto add = [&](const wchar_t *url, LibraryMetadata::Type type, std::optional<ToolLibraryLocator> parent) {
        auto node = std::make_shared<LibraryMetadata>(L"node", type, ToolLibraryLocator(url), std::move(parent), false);
        node->setFolderId(std::string("id"));
        hub->tree.insert(node);
    };
    add(L"hub://", LibraryMetadata::Type::Folder, std::nullopt);
    add(L"hub://a.hub", LibraryMetadata::Type::Library, ToolLibraryLocator::HubsFolder);
    return hub;
}

std::string contentOf(const std::string &path)
{
    return TestSupport::contentOf(QString::fromStdString(path));
}

class CommandLine : public testing::Test
{
protected:
    CommandLine()
    {
        writeFile(m_paths.loose(u"lib.json"),
                  libraryText({toolText(2, R"("type":"drill","unit":"millimeters","description":"Drill 6 mm",)"
                                           R"("geometry":{"DC":6},"post-process":{"number":12},"vendor":"V")"),
                               toolText(1, R"("type":"odd one","description":"Bohrer \u00d8")")}));
    }

    std::string file() const { return m_paths.loose(u"lib.json").toStdString(); }

    TestPaths m_paths;
};

} // namespace

TEST_F(CommandLine, ToolsAreShownAsATableWithACount)
{
    const Outcome table = run({"tools", file()});
    EXPECT_EQ(table.status, Done);
    EXPECT_EQ(table.out, "Id        No  Description  Type     Diameter  Unit  Vendor  Product id\n"
                         "--------  --  -----------  -------  --------  ----  ------  ----------\n"
                         "11111111      Bohrer Ø     odd one\n"
                         "11111111  12  Drill 6 mm   Drill           6  mm    V\n"
                         "\n"
                         "Tools 1 to 2 of 2\n");
    EXPECT_EQ(table.err, "");
}

TEST_F(CommandLine, APageBeginsAtItsOffset)
{
    EXPECT_THAT(run({"tools", file(), "--limit", "1", "--offset", "1"}).out, HasSubstr("Tools 2 to 2 of 2\n"));
    EXPECT_EQ(run({"tools", file(), "--offset", "5"}).out, "No tools of 2\n");
    EXPECT_EQ(run({"tools", file(), "--limit", "0"}).out, "No tools of 2\n");
}

TEST_F(CommandLine, TheTableFitsTheTerminal)
{
    std::istringstream lines(run({"tools", file()}, "", 60).out);
    for (std::string line; std::getline(lines, line);)
        EXPECT_LE(QString::fromStdString(line).size(), 60) << line;
}

TEST_F(CommandLine, JsonIsThePageOfTheEngine)
{
    EXPECT_THAT(run({"tools", file(), "--json"}).out, StartsWith(R"({"data":{")" + file() + R"(":[{"description")"));
}

TEST_F(CommandLine, OneToolIsShownWithAllItsValues)
{
    const Outcome shown = run({"show", file(), guidOf(2)});
    EXPECT_EQ(shown.status, Done);
    EXPECT_THAT(shown.out, HasSubstr("geometry.DC          6\n"));
    EXPECT_THAT(shown.out, HasSubstr("post-process.number  12\n"));
    EXPECT_THAT(run({"show", file(), guidOf(2), "--json"}).out, StartsWith(R"({"guid":")" + guidOf(2)));
    EXPECT_EQ(run({"show", file(), QString::fromStdString(guidOf(2)).toUpper().toStdString()}).status, Done);
}

TEST_F(CommandLine, AToolMustBeNamedSoThatItIsTheOnlyOne)
{
    const Outcome several = run({"show", file(), "1111"});
    EXPECT_EQ(several.status, Failed);
    EXPECT_EQ(several.err, file() + ": Several tools begin with 1111: " + guidOf(2) + ", " + guidOf(1) + "\n");
    EXPECT_EQ(run({"show", file(), "ffff"}).err, file() + ": Tool not found: ffff\n");
    EXPECT_EQ(run({"show", file(), ""}).status, Failed);
}

TEST_F(CommandLine, AFailureIsOneLineThatNamesTheFile)
{
    const std::string missing = m_paths.loose(u"missing.json").toStdString();
    const Outcome failed = run({"tools", missing});
    EXPECT_EQ(failed.status, Failed);
    EXPECT_EQ(failed.out, "");
    EXPECT_EQ(failed.err, missing + ": Failed to read or parse JSON file: " + missing + "\n");
    EXPECT_EQ(run({"tools", "toollibraryroot://Local"}).err, "toollibraryroot://Local: Invalid library locator.\n");
    EXPECT_EQ(run({"tools", "a\nb.json"}).err.find('\n'), run({"tools", "a\nb.json"}).err.size() - 1);
}

TEST_F(CommandLine, WrongWordsAreWrongUsage)
{
    for (const std::vector<std::string> &arguments : {std::vector<std::string>{},
                                                      {"nonsense"},
                                                      {"tools"},
                                                      {"tools", "a", "b"},
                                                      {"tools", file(), "--limit", "-1"},
                                                      {"tools", file(), "--limit", "x"},
                                                      {"show", file()},
                                                      {"tools", file(), "--nonsense"}}) {
        const Outcome wrong = run(arguments);
        EXPECT_EQ(wrong.status, WrongUsage);
        EXPECT_NE(wrong.err, "");
        EXPECT_EQ(wrong.out, "");
    }
}

TEST_F(CommandLine, HelpIsThereAtEachLevelWithAnExample)
{
    for (const std::vector<std::string> &arguments :
         {std::vector<std::string>{"--help"}, {"tools", "--help"}, {"show", "--help"}, {"rpc", "--help"}}) {
        const Outcome help = run(arguments);
        EXPECT_EQ(help.status, Done);
        EXPECT_THAT(help.out, HasSubstr("Example:"));
    }
}

TEST_F(CommandLine, RpcAnswersLineByLineAndGoesOnAfterEachFault)
{
    const Outcome talk =
        run({"rpc"}, "nonsense\n"
                     "\n"
                     "{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"nix\"}\n"
                     "{\"jsonrpc\":\"2.0\",\"method\":\"getAllLibraryUrls\"}\n"
                     "{\"jsonrpc\":\"2.0\",\"id\":2,\"method\":\"library\",\"params\":{\"locator\":\"x\"}}\n"
                     "{\"jsonrpc\":\"2.0\",\"id\":3,\"method\":\"initialLoadTask\"}");
    EXPECT_EQ(talk.status, Done);
    EXPECT_EQ(talk.out,
              "{\"jsonrpc\":\"2.0\",\"error\":{\"code\":-32700,\"message\":\"Parse error\"},\"id\":null}\n"
              "{\"jsonrpc\":\"2.0\",\"error\":{\"code\":-32700,\"message\":\"Parse error\"},\"id\":null}\n"
              "{\"jsonrpc\":\"2.0\",\"error\":{\"code\":-32601,\"message\":\"Method not found: nix\"},\"id\":1}\n"
              "{\"jsonrpc\":\"2.0\",\"error\":{\"code\":-32000,\"message\":\"Invalid library locator.\",\"data\":"
              "{\"type\":\"InvalidInput\",\"translatedText\":null,\"locator\":\"x\"}},\"id\":2}\n"
              "{\"jsonrpc\":\"2.0\",\"result\":{\"aborted\":false},\"id\":3}\n");
}

TEST_F(CommandLine, TheTreeIsShownWithItsUrls)
{
    writeFile(m_paths.local(u"Local/sub/mine.json"), libraryText({toolText(1)}));
    writeFile(m_paths.local(u"Local/bad.json"), "broken");
    const Outcome tree = run({"tree"});
    EXPECT_EQ(tree.status, Done);
    EXPECT_THAT(tree.out, HasSubstr("User Libraries                               all://\n"
                                    "  Documents                                  document://\n"
                                    "  Local                                      toollibraryroot://Local\n"
                                    "    sub                                      toollibraryroot://Local/sub\n"));
    EXPECT_THAT(tree.out, HasSubstr("  Blum                                       vendor://Blum/       "));
    EXPECT_EQ(tree.err, "");
    const std::string json = run({"tree", "--json"}).out;
    EXPECT_THAT(json, StartsWith(R"([{"name":"User Libraries","type":"folder","url":"all://","children":[{"name":)"));
    EXPECT_EQ(run({"tree", "--json", "--tools"}).status, WrongUsage);
}

TEST_F(CommandLine, TheTreeCountsToolsAndTellsWhatFailed)
{
    writeFile(m_paths.local(u"Local/mine.json"), libraryText({toolText(1)}));
    writeFile(m_paths.local(u"Local/bad.json"), "broken");
    const Outcome tree = run({"tree", "--tools"});
    EXPECT_EQ(tree.status, Done);
    EXPECT_THAT(tree.out,
                HasSubstr("    mine                                          1  toollibraryroot://Local/mine.json"));
    EXPECT_THAT(tree.out,
                HasSubstr("    bad                                      failed  toollibraryroot://Local/bad.json"));
    EXPECT_EQ(tree.err, "toollibraryroot://Local/bad.json: Failed to read or parse JSON file: " +
                            m_paths.local(u"Local/bad.json").toStdString() + "\n");
}

TEST_F(CommandLine, EachLibraryThatFailedHasOneLine)
{
    writeFile(m_paths.local(u"Local/a\nb\x1b[31m/bad.json"), "broken");
    const Outcome tree = run({"tree", "--tools"});
    EXPECT_EQ(tree.status, Done);
    EXPECT_THAT(tree.err, StartsWith("toollibraryroot://Local/a b [31m/bad.json: Failed to read"));
    EXPECT_EQ(tree.err.find('\n'), tree.err.size() - 1);
    EXPECT_EQ(tree.err.find('\x1b'), std::string::npos);
}

TEST_F(CommandLine, AFileMayHaveAnyName)
{
    for (const char *name : {"Fr\xc3\xa4ser.json", "latin1 \xfc.json"}) {
        const std::string path = m_paths.loose(u"").toStdString() + '/' + name;
        std::ofstream(path) << libraryText({toolText(1)});
        EXPECT_THAT(run({"tools", path}).out, HasSubstr("Tools 1 to 1 of 1")) << path;
        EXPECT_EQ(run({"tools", path, "--json"}).status, Done);
        EXPECT_EQ(run({"show", path, "1"}).status, Done);
    }
    std::filesystem::remove(m_paths.loose(u"").toStdString() + "/latin1 \xfc.json"); // which Qt does not see
}

TEST_F(CommandLine, LibrariesOfAHubAreShownToo)
{
    const auto hub = hubWithALibrary();
    hub->put("id", toolText(1, R"("description":"here")"));
    const std::string lost = hub->put("id", toolText(2));
    const HubInUse use(hub);
    EXPECT_THAT(run({"tree", "--tools"}).out, testing::ContainsRegex("\n    node +2  hub://a.hub\n"));
    hub->meanwhile = [&](const std::string &operation) {
        if (operation == "getTool")
            hub->drop(lost);
    };
    EXPECT_THAT(run({"tools", "hub://a.hub"}).out, HasSubstr("Tools 1 to 1 of 1"));
    hub->meanwhile = {};
    hub->put("id", toolText(2));
    hub->failAt("getTool", "offline");
    EXPECT_EQ(run({"show", "hub://a.hub", guidOf(2)}).err, "hub://a.hub: Tool not found: " + guidOf(2) + "\n");
}

TEST_F(CommandLine, ALongLoadShowsHowFarItIsOnATerminalWithoutTheLog)
{
    const auto hub = hubWithALibrary();
    const HubInUse use(hub);
    WatchedBuffer watched;
    hub->meanwhile = [&](const std::string &operation) {
        for (int round = 0; round < 1000 && operation == "listTools" && !watched.isWritten(); ++round)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
    };
    std::istringstream in;
    std::ostringstream out;
    std::ostream err(&watched);
    EXPECT_EQ(runCommandLine({"tree", "--tools"}, {in, out, err, 0, true}), Done);
    EXPECT_THAT(watched.str(), StartsWith("\r\x1b[KLoading libraries: "));
    EXPECT_THAT(watched.str(), testing::EndsWith(" of 2\r\x1b[K")) << "nothing stays of it";

    hub->meanwhile = [](const std::string &operation) {
        if (operation == "listTools")
            std::this_thread::sleep_for(std::chrono::milliseconds(600));
    };
    EXPECT_EQ(run({"tree", "--tools"}).err, "");
    EXPECT_THAT(run({"--verbose", "tree", "--tools"}, {}, 0, true).err, Not(HasSubstr("Loading")))
        << "other threads write to the log meanwhile";
}

TEST_F(CommandLine, AHomeThatIsNoUtf8IsRefusedRatherThanMistaken)
{
    const Outcome refused = run({"--home", "/tmp/\xff", "tree"});
    EXPECT_EQ(refused.status, WrongUsage);
    EXPECT_THAT(refused.err, HasSubstr("--home"));
    EXPECT_EQ(refused.out, "");
}

TEST_F(CommandLine, AConvertedLibraryIsTheSame)
{
    const std::string zipped = m_paths.loose(u"out.tools").toStdString();
    const std::string plain = m_paths.loose(u"out.json").toStdString();
    const Outcome toZip = run({"convert", file(), zipped});
    EXPECT_EQ(toZip.err, "");
    EXPECT_EQ(toZip.out, "Wrote 2 tools to " + zipped + "\n");
    EXPECT_EQ(run({"convert", zipped, plain}).status, Done);
    EXPECT_EQ(run({"tools", plain, "--json"}).out.size() - plain.size(),
              run({"tools", file(), "--json"}).out.size() - file().size());
    const std::string again = m_paths.loose(u"again.json").toStdString();
    EXPECT_EQ(run({"convert", plain, again}).status, Done);
    EXPECT_EQ(contentOf(again), contentOf(plain));
}

TEST_F(CommandLine, AFileThatIsThereIsReplacedOnlyByForce)
{
    const std::string out = m_paths.loose(u"out.json").toStdString();
    writeFile(m_paths.loose(u"out.json"), "precious");
    const Outcome refused = run({"convert", file(), out});
    EXPECT_EQ(refused.status, Failed);
    EXPECT_EQ(refused.err, file() + ": File already exists: " + out + "\n");
    EXPECT_EQ(contentOf(out), "precious");
    EXPECT_EQ(run({"convert", file(), out, "--force"}).status, Done);
    EXPECT_NE(contentOf(out), "precious");
}

TEST_F(CommandLine, WhatCannotBeConvertedIsToldAndTouchesNoFile)
{
    writeFile(m_paths.loose(u"bad.json"), "broken");
    writeFile(m_paths.loose(u"a.csv"), "x");
    const std::string folder = m_paths.loose(u"").toStdString() + "/";
    const struct {
        const char *in;
        const char *out;
        const char *text;
    } rows[] = {
        {"lib.json", "o.csv", "Not yet supported"},    {"lib.json", "o.zetlib", "Not yet supported"},
        {"lib.json", "o.JSON", "Invalid file format"}, {"lib.json", "o", "Invalid file format"},
        {"a.csv", "o.json", "Not yet supported"},      {"none.zip", "o.json", "Not yet supported"},
    };
    for (const auto &row : rows) {
        const Outcome outcome = run({"convert", folder + row.in, folder + row.out});
        EXPECT_EQ(outcome.status, Failed);
        EXPECT_EQ(outcome.err, folder + row.in + ": " + row.text + "\n") << row.out;
        EXPECT_FALSE(QFile::exists(QString::fromStdString(folder + row.out))) << row.out;
    }
    EXPECT_EQ(run({"convert", folder + "bad.json", folder + "o.json"}).err,
              folder + "bad.json: Failed to read or parse JSON file: " + folder + "bad.json\n");
}

TEST_F(CommandLine, GeometriesGoAlongWithAConvertedLibrary)
{
    const std::string tool = toolText(1, R"("geometry":{"3DGeometry":{"id":"solid-1"}},)"
                                         R"("tool-block":{"geometry":{"3DGeometry":{"id":"solid-2"}}})");
    writeFile(m_paths.loose(u"in/lib.json"),
              libraryText({tool, toolText(2, R"("geometry":{"3DGeometry":{"id":"../x"}})")}));
    writeFile(m_paths.loose(u"in/solid-1.3DTool"), "one");
    writeFile(m_paths.loose(u"in/solid-2.3DTool"), "two");
    writeFile(m_paths.loose(u"in/other.3DTool"), "not ours");
    writeFile(m_paths.loose(u"x.3DTool"), "outside");
    const auto path = [this](QStringView name) { return m_paths.loose(name).toStdString(); };
    EXPECT_EQ(run({"convert", path(u"in/lib.json"), path(u"a.tools")}).out,
              "Wrote 2 tools and 2 files beside them to " + path(u"a.tools") + "\n");
    EXPECT_EQ(run({"convert", path(u"a.tools"), path(u"b.tools")}).status, Done);
    writeFile(m_paths.loose(u"out/solid-2.3DTool"), "there before");
    EXPECT_EQ(run({"convert", path(u"b.tools"), path(u"out/lib.json")}).status, Done);
    EXPECT_EQ(contentOf(path(u"out/solid-1.3DTool")), "one");
    EXPECT_EQ(contentOf(path(u"out/solid-2.3DTool")), "there before");
    EXPECT_FALSE(QFile::exists(m_paths.loose(u"out/other.3DTool")));
}

TEST_F(CommandLine, OnlyGeometriesLeaveAnArchive)
{
    const auto path = [this](QStringView name) { return m_paths.loose(name).toStdString(); };
    ZipToolFormat archive(m_paths.loose(u"in.TOOLS"));
    for (const char *name : {"solid.3DTool", ".profile", "Library.json", "notes/read me.txt", "notes/far.3DTool"})
        ASSERT_TRUE(archive.addFile(name, name));
    ASSERT_TRUE(archive.addFile("tools.json", QByteArray::fromStdString(libraryText({toolText(1)}))));
    ASSERT_TRUE(archive.write());
    writeFile(m_paths.loose(u"out/there.json"), "");
    EXPECT_EQ(run({"convert", path(u"in.TOOLS"), path(u"out/lib.json")}).out,
              "Wrote 1 tools and 1 files beside them to " + path(u"out/lib.json") + "\n");
    EXPECT_THAT(filesBeside(m_paths.loose(u"out/lib.json")), ElementsAre("lib.json", "solid.3DTool", "there.json"));
    EXPECT_EQ(run({"convert", path(u"in.TOOLS"), path(u"all.tools")}).status, Done);
    EXPECT_THAT(ZipToolFormat(m_paths.loose(u"all.tools")).getFileNames(),
                UnorderedElementsAre("solid.3DTool", ".profile", "Library.json", "notes/read me.txt",
                                     "notes/far.3DTool", "tools.json"));
    EXPECT_EQ(run({"convert", path(u"all.tools"), path(u"all.tools"), "--force"}).status, Done);
    EXPECT_THAT(ZipToolFormat(m_paths.loose(u"all.tools")).getFileNames(), SizeIs(6)) << "onto itself";
}

TEST_F(CommandLine, AGeometryThatCannotBeReadIsNotLeftBehindInSilence)
{
    const std::string text = libraryText({toolText(1, R"("geometry":{"3DGeometry":{"id":"solid"}})")});
    writeFile(m_paths.loose(u"in/lib.json"), text);
    writeFile(m_paths.loose(u"in/solid.3DTool"), "solid");
    const std::string in = m_paths.loose(u"in/lib.json").toStdString();
    const std::string solid = m_paths.loose(u"in/solid.3DTool").toStdString();
    const std::string out = m_paths.loose(u"o.tools").toStdString();
    letEveryoneIn({m_paths.loose(u""), m_paths.loose(u"in")});
    ASSERT_EQ(chmod(solid.c_str(), 0), 0);
    {
        const AsNobody nobody;
        const Outcome outcome = run({"convert", in, out});
        EXPECT_EQ(outcome.status, Failed);
        EXPECT_EQ(outcome.err, in + ": Cannot read " + solid + "\n");
        EXPECT_FALSE(QFile::exists(m_paths.loose(u"o.tools")));
    }
    ASSERT_EQ(chmod(solid.c_str(), 0644), 0);
    EXPECT_EQ(run({"convert", in, out}).status, Done);
    std::string damaged = contentOf(out);
    damaged[damaged.find("solid.3DTool") + 12 + 2] ^= 1;
    writeFile(m_paths.loose(u"o.tools"), damaged);
    const Outcome outcome = run({"convert", out, m_paths.loose(u"o.json").toStdString()});
    EXPECT_EQ(outcome.status, Failed);
    EXPECT_THAT(outcome.err, StartsWith(out + ": Cannot read from the archive: entry 'solid.3DTool': "));
    EXPECT_FALSE(QFile::exists(m_paths.loose(u"o.json")));
}

TEST_F(CommandLine, ACloudFolderJoinsTheTree)
{
    writeFile(m_paths.cloud(u"team/shared.json"), libraryText({toolText(1), toolText(2)}));
    const std::string folder = m_paths.cloud(u"").toStdString();
    const Outcome tree = run({"--cloud", folder, "tree", "--tools"});
    EXPECT_EQ(tree.status, Done);
    EXPECT_THAT(tree.out, HasSubstr("cloud://\n"));
    EXPECT_THAT(tree.out, HasSubstr("      shared                                     2  cloud://team/shared.json\n"));
    EXPECT_EQ(run({"--cloud", folder, "show", "cloud://team/shared.json", guidOf(2)}).status, Done);
    EXPECT_THAT(run({"tree"}).out, testing::Not(HasSubstr("cloud://"))) << "one run's folder is not the next one's";
    EXPECT_EQ(run({"--cloud", folder + "none", "tree"}).status, WrongUsage);
}

TEST_F(CommandLine, ToolsAreSearchedFilteredAndSorted)
{
    writeFile(m_paths.loose(u"many.json"),
              libraryText({toolText(1, R"("type":"drill","unit":"millimeters","geometry":{"DC":6},"vendor":"A")"),
                           toolText(2, R"("type":"drill","unit":"inches","geometry":{"DC":0.5},"vendor":"A")"),
                           toolText(3, R"("type":"drill","unit":"millimeters","geometry":{"DC":10},"vendor":"B")"),
                           toolText(4, R"("type":"probe","unit":"millimeters","geometry":{"DC":8},"vendor":"A")")}));
    const std::string many = m_paths.loose(u"many.json").toStdString();
    const Outcome found = run({"tools", many, "--filter", "diameter=7mm..1/2in", "--filter", "type=drill", "--sort",
                               "diameter:desc", "--columns", "name,vendor"});
    EXPECT_EQ(found.status, Done);
    EXPECT_EQ(found.out, "Id        Name           Vendor\n"
                         "--------  -------------  ------\n"
                         "11111111  ∅1/2\" (Drill)  A\n"
                         "11111111  ∅10mm (Drill)  B\n"
                         "\n"
                         "Tools 1 to 2 of 2 that match, from 4\n");
    EXPECT_THAT(run({"tools", many, "--search", "PROBE", "--sort", "name"}).out,
                HasSubstr("Tools 1 to 1 of 1 that match, from 4\n"));
    EXPECT_EQ(run({"tools", many, "--search", "nothing like it"}).out, "No tools of 0 that match, from 4\n");
}

TEST_F(CommandLine, AFilterThatCannotBeReadIsWrongUsage)
{
    for (const char *option : {"--filter", "--sort", "--columns"}) {
        const Outcome wrong = run({"tools", file(), option, "diamter=3"});
        EXPECT_EQ(wrong.status, WrongUsage) << option;
        EXPECT_THAT(wrong.err, StartsWith("Unknown key: diamter"));
        EXPECT_THAT(wrong.err, HasSubstr("diameter, "));
        EXPECT_EQ(wrong.out, "");
    }
}

TEST_F(CommandLine, TheLanguageOfOneCallIsNotThatOfTheNext)
{
    EXPECT_THAT(run({"--locale", "fr", "tools", file()}).out, HasSubstr("  Foret  "));
    EXPECT_THAT(run({"tools", file()}).out, HasSubstr("  Drill  "));
    run({"rpc"}, R"({"jsonrpc":"2.0","id":1,"method":"locale.set","params":{"country":"fr"}})"
                 "\n");
    EXPECT_THAT(run({"tools", file()}).out, HasSubstr("  Drill  "));
}

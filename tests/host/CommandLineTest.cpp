#include "host/CommandLine.h"
#include "support/LibraryFile.h"
#include "support/TestPaths.h"

#include <gmock/gmock.h>

#include <sstream>

using namespace Quillon;
using namespace TestSupport;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

struct Outcome {
    ExitStatus status;
    std::string out;
    std::string err;
};

Outcome run(const std::vector<std::string> &arguments, const std::string &input = {}, std::size_t width = 0)
{
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream err;
    const ExitStatus status = runCommandLine(arguments, {in, out, err, width});
    return {status, out.str(), err.str()};
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

#include "host/CommandLine.h"

#include "host/Commands.h"
#include "host/Locale.h"
#include "host/Log.h"
#include "host/UsageError.h"
#include "platform/core/CloudLibraries.h"
#include "platform/core/VarnApplication.h"
#include "platform/utils/LocaleRegistry.h"
#include "platform/utils/Messages.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <functional>

namespace Quillon {

namespace {

struct GlobalOptions {
    std::string home;
    std::string cloud;
    std::string locale;
    bool verbose = false;
};

/// The cloud folder of this run, if there is one.
class CloudFolder
{
public:
    explicit CloudFolder(const std::string &path)
    {
        Varn::CloudLibraries::configure(Varn::Messages::fromUTF8ToWideUnicode(path));
    }
    ~CloudFolder() { Varn::CloudLibraries::reset(); }
    CloudFolder(const CloudFolder &) = delete;
    CloudFolder &operator=(const CloudFolder &) = delete;
};

/// Accepts the locales that there are texts for.
std::string checkLocale(const std::string &locale)
{
    if (Varn::LocaleRegistry::hasLanguage(countryOf(locale)))
        return {};
    std::string known;
    for (const std::string &language : Varn::LocaleRegistry::languages())
        known += (known.empty() ? "" : ", ") + language;
    return "no texts in \"" + locale + "\", only in " + known;
}

void addExample(CLI::App &command, const std::string &example)
{
    command.footer("Example:\n  " + example);
}

/// What the chosen command does, and what to name in the line that tells of its failure.
struct Action {
    std::function<void()> run;
    const std::string *subject = nullptr;
};

void addTree(CLI::App &app, const Streams &streams, Action &action, TreeOptions &options)
{
    CLI::App *command = app.add_subcommand("tree", "Show all libraries, with the folders that they lie in");
    command->add_flag("--tools", options.tools, "Count the tools of each library; waits until all are loaded");
    command->add_flag("--json", options.json, "Print the tree as JSON")->excludes("--tools");
    addExample(*command, "quillon tree --tools");
    command->callback([&] { action = {[&] { runTree(options, streams); }}; });
}

void addTools(CLI::App &app, const Streams &streams, Action &action, ToolsOptions &options)
{
    CLI::App *command = app.add_subcommand("tools", "List the tools of a library, a page at a time");
    command->add_option("LIBRARY", options.library, "URL of the tree, or a file")->required();
    command->add_option("--search", options.search, "Text in the name, comment, vendor or product id");
    command->add_option("--filter", options.filters, "Such as diameter=6mm..1/2in, flutes>=3 or type=drill; repeatable")
        ->allow_extra_args(false);
    command->add_option("--sort", options.sorts, "Such as diameter or name:desc; repeatable, the first counts most")
        ->allow_extra_args(false);
    command->add_option("--columns", options.columns, "Values to show, by commas, such as name,flutes,overall-length")
        ->delimiter(',')
        ->allow_extra_args(false);
    command->add_option("--limit", options.limit, "Tools on the page")
        ->capture_default_str()
        ->check(CLI::NonNegativeNumber);
    command->add_option("--offset", options.offset, "Tools before the page")
        ->capture_default_str()
        ->check(CLI::NonNegativeNumber);
    command->add_flag("--json", options.json, "Print the page as JSON");
    addExample(*command,
               "quillon tools \"samples/Milling Tools (Metric).json\" --filter diameter=6..12 --sort diameter");
    command->callback([&] { action = {[&] { runTools(options, streams); }, &options.library}; });
}

void addShow(CLI::App &app, const Streams &streams, Action &action, ShowOptions &options)
{
    CLI::App *command = app.add_subcommand("show", "Show one tool with all its values");
    command->add_option("LIBRARY", options.library, "URL of the tree, or a file")->required();
    command->add_option("TOOL", options.tool, "GUID of the tool, or its beginning")->required();
    command->add_flag("--json", options.json, "Print the tool as JSON");
    addExample(*command, "quillon show \"samples/Milling Tools (Metric).json\" 365c8ec4");
    command->callback([&] { action = {[&] { runShow(options, streams); }, &options.library}; });
}

void addConvert(CLI::App &app, const Streams &streams, Action &action, ConvertOptions &options)
{
    CLI::App *command = app.add_subcommand("convert", "Write a library in another format");
    command->add_option("IN", options.input, "File to read")->required();
    command->add_option("OUT", options.output, "File to write, .json or .tools")->required();
    command->add_flag("--force", options.force, "Replace a file that is there");
    addExample(*command, "quillon convert \"samples/Milling Tools (Metric).json\" mills.tools");
    command->callback([&] { action = {[&] { runConvert(options, streams); }, &options.input}; });
}

void addRpc(CLI::App &app, const Streams &streams, Action &action)
{
    CLI::App *command = app.add_subcommand("rpc", "Answer JSON-RPC 2.0 on the standard streams, one message a line");
    addExample(*command, R"(echo '{"jsonrpc":"2.0","id":1,"method":"getAllLibraryUrls","params":{}}' | quillon rpc)");
    command->callback([&] { action = {[&] { runRpc(streams); }}; });
}

/// Says what is wrong with the name of a home; nothing where all is well.
std::string refuseHome(const std::string &name)
{
    const bool isUtf8 = Varn::Messages::fromWideUnicodeToUTF8(Varn::Messages::fromUTF8ToWideUnicode(name)) == name;
    return isUtf8 ? std::string() : "The name of the folder is no UTF-8";
}

ExitStatus run(const Action &action, const Streams &streams)
{
    try {
        action.run();
    } catch (const UsageError &failure) {
        streams.err << oneLine(failure.what()) << '\n';
        return WrongUsage;
    } catch (const std::exception &failure) {
        const std::string subject = action.subject ? *action.subject + ": " : std::string();
        streams.err << oneLine(subject + failure.what()) << '\n';
        return Failed;
    }
    return Done;
}

} // namespace

std::string oneLine(std::string text)
{
    const auto isControl = [](unsigned char byte) { return byte < 0x20 || byte == 0x7f; };
    std::ranges::replace_if(text, isControl, ' ');
    return text;
}

ExitStatus runCommandLine(const std::vector<std::string> &arguments, const Streams &terminal)
{
    Streams streams = terminal;
    CLI::App app("quillon: libraries of cutting tools", "quillon");
    app.require_subcommand(1);
    addExample(app, "quillon tree");
    GlobalOptions global;
    app.add_option("--home", global.home, "Folder of all that quillon keeps")
        ->envname("QUILLON_HOME")
        ->check(refuseHome);
    app.add_option("--cloud", global.cloud, "Folder that is kept in step with a cloud; its libraries join the tree")
        ->envname("QUILLON_CLOUD")
        ->check(CLI::ExistingDirectory);
    app.add_option("--locale", global.locale, "Language of names and titles, such as de or fr_CA")
        ->envname("QUILLON_LOCALE")
        ->check(checkLocale);
    app.add_flag("--verbose", global.verbose, "Write the log to the standard error");
    Action action;
    TreeOptions tree;
    ToolsOptions tools;
    ShowOptions show;
    ConvertOptions convert;
    addTree(app, streams, action, tree);
    addTools(app, streams, action, tools);
    addShow(app, streams, action, show);
    addConvert(app, streams, action, convert);
    addRpc(app, streams, action);
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend())); // it takes the last first
    } catch (const CLI::ParseError &error) {
        const int status = app.exit(error, streams.out, streams.err);
        return status == 0 ? Done : WrongUsage;
    }
    if (!global.home.empty())
        Varn::VarnApplication::setHomeFolder(Varn::Messages::fromUTF8ToWideUnicode(global.home));
    const CloudFolder cloud(global.cloud);
    // Loads write to the log on threads of their own, so the log has the standard error for itself.
    streams.errIsTerminal = streams.errIsTerminal && !global.verbose;
    const LocaleScope locale(global.locale);
    const Log log(global.verbose ? &streams.err : nullptr);
    return run(action, streams);
}

} // namespace Quillon

#include "cli/CommandLine.h"

#include <cstdlib>
#include <ostream>
#include <string>
#include <string_view>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include "cli/AgentsCommand.h"
#include "cli/AnswerCommands.h"
#include "cli/AppcastCommand.h"
#include "cli/AppsCommands.h"
#include "cli/CliContext.h"
#include "cli/ClipboardCommand.h"
#include "cli/CommandBarCommands.h"
#include "cli/FeaturesCommand.h"
#include "cli/HardwareCommands.h"
#include "cli/KeysCommands.h"
#include "cli/NetCommands.h"
#include "cli/ShortcutsCommand.h"
#include "cli/SnippetsCommand.h"
#include "cli/StitchCommand.h"
#include "cli/UninstallCommands.h"
#include "cli/UpdatesCommand.h"
#include "cli/VersionCommand.h"
#include "cli/WindowsCommand.h"
#include "core/base/Diagnostics.h"
#include "core/base/Text.h"

namespace quillmar::cli {

namespace {

constexpr const char* debugVariable = "QUILLMAR_DEBUG";

// The parser's complaint as one sentence that says where to look: "Frobnicate isn't expected" style
// text from the parser, capitalised, with the pointer to the help after a semicolon.
std::string parseErrorSentence(std::string_view complaint)
{
    std::string text(trimmed(complaint));
    for (auto& character : text) {
        if (character == '\n' || character == '\r')
            character = ' ';
    }
    while (!text.empty() && (text.back() == '.' || text.back() == ' '))
        text.pop_back();
    if (text.empty())
        text = "The command line isn't complete";
    text.front() = asciiUpper(text.front());
    return text + "; run \"quillmar --help\" for the commands.";
}

} // namespace

int runCommandLine(int argc, const char* const* argv, std::istream& in, std::ostream& out, std::ostream& err,
    std::unique_ptr<FileLocations> locations)
{
    CliContext context(in, out, err, std::move(locations));
    // A person reads the commands' own sentences; developer diagnostics, with their internal codes, only
    // when asked for.
    if (const char* debug = std::getenv(debugVariable); debug != nullptr && *debug != '\0')
        setDiagnosticSink([&err](std::string_view line) { err << "quillmar: " << line << '\n'; });
    else
        setDiagnosticSink([](std::string_view) { });

    CLI::App app("Quillmar: everyday tools in one menu-bar application.", "quillmar");
    app.require_subcommand(1);
    app.set_help_all_flag("--help-all", "Every command with its options");
    addFeaturesCommand(app, context);
    addShortcutsCommand(app, context);
    addKeysCommands(app, context);
    addCommandBarCommands(app, context);
    addAnswerCommands(app, context);
    addClipboardCommand(app, context);
    addSnippetsCommand(app, context);
    addAgentsCommand(app, context);
    addHardwareCommands(app, context);
    addStitchCommand(app, context);
    addWindowsCommand(app, context);
    addVersionCommand(app, context);
    addNetCommands(app, context);
    addAppsCommands(app, context);
    addAppcastCommand(app, context);
    addUpdatesCommand(app, context);
    addUninstallCommands(app, context);

    int code = 0;
    try {
        app.parse(argc, argv);
        code = static_cast<int>(context.exitCode());
    } catch (const CLI::CallForHelp&) {
        out << app.help();
    } catch (const CLI::CallForAllHelp&) {
        out << app.help("", CLI::AppFormatMode::All);
    } catch (const CLI::ParseError& error) {
        err << parseErrorSentence(error.what()) << '\n';
        code = static_cast<int>(ExitCode::usage);
    }
    setDiagnosticSink(nullptr);
    return code;
}

} // namespace quillmar::cli

#include "cli/CommandLine.h"

#include <ostream>

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
#include "cli/NetCommands.h"
#include "cli/ShortcutsCommand.h"
#include "cli/SnippetsCommand.h"
#include "cli/StitchCommand.h"
#include "cli/UninstallCommands.h"
#include "cli/UpdatesCommand.h"
#include "cli/VersionCommand.h"
#include "cli/WindowsCommand.h"
#include "core/base/Diagnostics.h"

namespace quillmar::cli {

int runCommandLine(int argc, const char* const* argv, std::istream& in, std::ostream& out, std::ostream& err,
    std::unique_ptr<FileLocations> locations)
{
    CliContext context(in, out, err, std::move(locations));
    setDiagnosticSink([&err](std::string_view line) { err << "quillmar: " << line << '\n'; });

    CLI::App app("Quillmar: everyday tools in one menu-bar application.", "quillmar");
    app.require_subcommand(1);
    app.set_help_all_flag("--help-all", "Every command with its options");
    addFeaturesCommand(app, context);
    addShortcutsCommand(app, context);
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
        err << "quillmar: " << error.what() << "\nRun \"quillmar --help\" for the commands.\n";
        code = static_cast<int>(ExitCode::usage);
    }
    setDiagnosticSink(nullptr);
    return code;
}

} // namespace quillmar::cli

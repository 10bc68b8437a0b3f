#include "cli/UninstallCommands.h"

#include <cctype>
#include <filesystem>
#include <istream>
#include <iterator>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "cli/BatchRunner.h"
#include "cli/HomeFolder.h"
#include "core/base/Text.h"
#include "core/uninstaller/AppIdentity.h"
#include "core/uninstaller/AppRefusal.h"
#include "core/uninstaller/DiskMeasure.h"
#include "core/uninstaller/InstalledAppList.h"
#include "core/uninstaller/LeftoverSearch.h"
#include "core/uninstaller/MatchClass.h"
#include "core/uninstaller/ProtectedIdentifiers.h"
#include "core/uninstaller/Removal.h"
#include "core/uninstaller/SystemUninstallerPorts.h"
#include "core/uninstaller/TrashGuard.h"

namespace quillmar::cli {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view confirmQuestion = "Move these to the Trash? [y/N] ";

struct Options {
    std::string first;
    std::string second;
    std::string home;
    std::string library;
    std::string leftovers = "exact";
    bool json = false;
    bool batch = false;
    bool dryRun = false;
    bool yes = false;
};

// `path` made absolute against the current folder, so that relative arguments mean what a shell user expects.
fs::path absolutePath(const std::string& path)
{
    std::error_code error;
    auto absolute = fs::absolute(path, error);
    return error ? fs::path(path) : absolute;
}

// --home, else $HOME; none (refused) when neither is set.
std::optional<fs::path> homeFolder(CliContext& context, const Options& options)
{
    if (!options.home.empty())
        return TrashGuard::standardized(absolutePath(options.home));
    auto home = cli::homeFolder(context);
    if (!home)
        return std::nullopt;
    return TrashGuard::standardized(*home);
}

fs::path libraryFolder(const Options& options, const fs::path& home)
{
    return options.library.empty() ? home / "Library" : absolutePath(options.library);
}

// "512 bytes", "4.1 KB", "12.3 MB": decimal units, as file sizes are shown to users.
std::string byteText(std::int64_t bytes)
{
    if (bytes < 1000)
        return fmt::format("{} bytes", bytes);
    constexpr const char* units[] = { "KB", "MB", "GB", "TB" };
    double value = static_cast<double>(bytes);
    std::size_t unit = 0;
    value /= 1000;
    while (value >= 1000 && unit + 1 < std::size(units)) {
        value /= 1000;
        ++unit;
    }
    return fmt::format("{:.1f} {}", value, units[unit]);
}

// The application chosen on the command line with its leftovers, sizes measured.
struct Scan {
    InstalledApp app;
    std::vector<Leftover> leftovers;
};

std::optional<Scan> scanApp(CliContext& context, const Options& options, const SystemUninstallerPorts& system,
    const fs::path& library)
{
    auto bundle = absolutePath(options.first);
    if (auto refusal = AppRefusal::reason(bundle)) {
        context.refuse(*refusal);
        return std::nullopt;
    }
    auto app = InstalledAppList::read(TrashGuard::standardized(bundle));
    if (!app) {
        context.refuse(AppRefusal::notAnApp);
        return std::nullopt;
    }
    auto ports = system.ports();
    bool progress = context.errIsTerminal();
    auto identity = AppIdentity::make(app->url, app->bundleID, ports.signing);
    auto leftovers = LeftoverSearch::find(identity, library, [&](std::size_t index, const LeftoverLocation& location) {
        if (progress)
            context.err() << fmt::format("\rSearching {} ({}/{})\x1b[K", location.folder, index + 1,
                LeftoverLocation::all().size()) << std::flush;
    });
    if (progress)
        context.err() << "\r\x1b[K" << std::flush;
    app->size = DiskMeasure::allocatedSize(ports.diskUsage, app->url);
    for (auto& leftover : leftovers)
        leftover.size = DiskMeasure::allocatedSize(ports.diskUsage, leftover.url);
    return Scan { std::move(*app), std::move(leftovers) };
}

std::string leftoverLine(const Leftover& leftover)
{
    return fmt::format("[{}] {:<7}  {}: {} ({}{})", leftover.isSelected ? 'x' : ' ', leftover.isExact ? "exact" : "related",
        leftover.kind, leftover.url.string(), byteText(leftover.size), leftover.byName ? ", by name" : "");
}

void runScan(CliContext& context, const Options& options)
{
    auto home = homeFolder(context, options);
    if (!home)
        return;
    auto system = makeSystemUninstallerPorts();
    auto scan = scanApp(context, options, system, libraryFolder(options, *home));
    if (!scan)
        return;
    if (options.json) {
        nlohmann::ordered_json leftovers = nlohmann::ordered_json::array();
        for (const auto& leftover : scan->leftovers) {
            leftovers.push_back({ { "path", leftover.url.string() }, { "kind", leftover.kind }, { "size", leftover.size },
                { "exact", leftover.isExact }, { "selected", leftover.isSelected }, { "byName", leftover.byName } });
        }
        nlohmann::ordered_json app { { "name", scan->app.name }, { "bundleID", scan->app.bundleID },
            { "version", scan->app.version }, { "path", scan->app.url.string() }, { "size", scan->app.size } };
        nlohmann::ordered_json object { { "app", app }, { "leftovers", leftovers } };
        context.printJson(object);
        return;
    }
    auto title = scan->app.version.empty() ? scan->app.name : scan->app.name + " " + scan->app.version;
    context.out() << fmt::format("{} ({}), {}\n", title, scan->app.bundleID, byteText(scan->app.size));
    if (scan->leftovers.empty())
        context.out() << "No leftovers found.\n";
    for (const auto& leftover : scan->leftovers)
        context.out() << leftoverLine(leftover) << '\n';
}

bool confirmed(CliContext& context)
{
    context.out() << confirmQuestion << std::flush;
    std::string answer;
    if (!std::getline(context.in(), answer))
        return false;
    auto word = asciiLower(trimmed(answer));
    return word == "y" || word == "yes";
}

void runRemove(CliContext& context, const Options& options)
{
    if (options.leftovers != "exact" && options.leftovers != "all" && options.leftovers != "none") {
        context.usageError("--leftovers takes exact, all or none.");
        return;
    }
    auto home = homeFolder(context, options);
    if (!home)
        return;
    auto system = makeSystemUninstallerPorts();
    auto scan = scanApp(context, options, system, libraryFolder(options, *home));
    if (!scan)
        return;

    std::vector<RemovalItem> items;
    for (const auto& leftover : scan->leftovers) {
        bool chosen = options.leftovers == "all" || (options.leftovers == "exact" && leftover.isExact);
        if (chosen)
            items.push_back({ leftover.url, leftover.url.filename().string(), false });
    }
    items.push_back({ scan->app.url, scan->app.name, true });

    context.out() << (options.dryRun ? "Would move to the Trash:\n" : "To move to the Trash:\n");
    for (const auto& item : items) {
        bool safe = TrashGuard::isSafeToTrash(item.url, *home);
        context.out() << fmt::format("  {}{}\n", item.url.string(), safe ? "" : " (kept: a protected place)");
    }
    if (options.dryRun)
        return;
    if (!options.yes && !confirmed(context)) {
        context.refuse("Nothing was moved.");
        return;
    }

    bool progress = context.errIsTerminal();
    auto ports = system.ports();
    auto outcome = Removal::run(items, *home, ports.recycler, Removal::defaultBatchSize, [&](double fraction) {
        if (progress)
            context.err() << fmt::format("\rMoving to the Trash… {:.0f}%\x1b[K", fraction * 100) << std::flush;
    });
    if (progress)
        context.err() << "\r\x1b[K" << std::flush;
    context.out() << outcome.resultLine() << '\n';
    for (const auto& skipped : outcome.skipped)
        context.out() << fmt::format("Kept {}: a protected place.\n", skipped.url.string());
    if (auto failure = outcome.failureLine()) {
        context.refuse(*failure);
        for (const auto& failed : outcome.failed)
            context.err() << fmt::format("  {}\n", failed.item.url.string());
        if (auto hint = outcome.hint())
            context.err() << *hint << '\n';
    }
}

std::string classifyLine(std::string_view line)
{
    auto tab = line.find('\t');
    if (tab == std::string_view::npos)
        return {};
    return std::string(matchClassName(classify(line.substr(0, tab), line.substr(tab + 1))));
}

std::string trashVerdict(std::string_view path, const fs::path& home)
{
    if (path.empty())
        return "refused";
    return TrashGuard::isSafeToTrash(absolutePath(std::string(path)), home) ? "safe" : "refused";
}

void addUninstall(CLI::App& app, CliContext& context)
{
    auto* uninstall = app.add_subcommand("uninstall", "Remove applications with what they left in the Library");
    uninstall->require_subcommand(1);

    auto classifyOptions = std::make_shared<Options>();
    auto* classifyCommand = uninstall->add_subcommand("classify", "How a Library entry name matches a bundle identifier");
    classifyCommand->add_option("ENTRY", classifyOptions->first, "The entry's file name, such as com.example.App.plist");
    classifyCommand->add_option("IDENTIFIER", classifyOptions->second, "The bundle identifier, such as com.example.App");
    classifyCommand->add_flag("--batch", classifyOptions->batch,
        "Read ENTRY<TAB>IDENTIFIER lines; print exact, related or none for each (empty for a line without a tab)");
    classifyCommand->callback([&context, classifyOptions] {
        if (classifyOptions->batch) {
            runBatch(context.in(), context.out(), classifyLine);
            return;
        }
        if (classifyOptions->second.empty()) {
            context.usageError("Give an entry name and an identifier, for example: quillmar uninstall classify "
                               "com.example.App.plist com.example.App");
            return;
        }
        context.out() << matchClassName(classify(classifyOptions->first, classifyOptions->second)) << '\n';
    });

    auto protectedOptions = std::make_shared<Options>();
    auto* protectedCommand = uninstall->add_subcommand("protected", "Whether files of an identifier are never offered");
    protectedCommand->add_option("IDENTIFIER", protectedOptions->first, "The bundle identifier")->required();
    protectedCommand->callback([&context, protectedOptions] {
        context.out() << (ProtectedIdentifiers::isProtected(protectedOptions->first) ? "true" : "false") << '\n';
    });

    auto checkOptions = std::make_shared<Options>();
    auto* check = uninstall->add_subcommand("check", "Why an application may not be removed; silent when it may");
    check->add_option("PATH", checkOptions->first, "The application bundle")->required();
    check->callback([&context, checkOptions] {
        if (auto refusal = AppRefusal::reason(absolutePath(checkOptions->first)))
            context.refuse(*refusal);
    });

    auto scanOptions = std::make_shared<Options>();
    auto* scan = uninstall->add_subcommand("scan", "List what an application left in the Library");
    scan->add_option("APP", scanOptions->first, "The application bundle")->required();
    scan->add_option("--home", scanOptions->home, "The home folder (default: $HOME)");
    scan->add_option("--library", scanOptions->library, "The Library folder (default: <home>/Library)");
    scan->add_flag("--json", scanOptions->json, "Print one JSON object");
    scan->callback([&context, scanOptions] { runScan(context, *scanOptions); });

    auto removeOptions = std::make_shared<Options>();
    auto* remove = uninstall->add_subcommand("remove", "Move an application and its leftovers to the Trash");
    remove->add_option("APP", removeOptions->first, "The application bundle")->required();
    remove->add_option("--home", removeOptions->home, "The home folder (default: $HOME)");
    remove->add_option("--library", removeOptions->library, "The Library folder (default: <home>/Library)");
    remove->add_option("--leftovers", removeOptions->leftovers,
        "Which leftovers go with it: exact (default), all, or none");
    remove->add_flag("--dry-run", removeOptions->dryRun, "Only list what would be moved");
    remove->add_flag("--yes", removeOptions->yes, "Do not ask before moving");
    remove->callback([&context, removeOptions] { runRemove(context, *removeOptions); });
}

void addTrash(CLI::App& app, CliContext& context)
{
    auto* trash = app.add_subcommand("trash", "The rules on what may be moved to the Trash");
    trash->require_subcommand(1);
    auto options = std::make_shared<Options>();
    auto* check = trash->add_subcommand("check", "Print safe or refused for a path");
    check->add_option("PATH", options->first, "The path");
    check->add_option("--home", options->home, "The home folder (default: $HOME)");
    check->add_flag("--batch", options->batch, "Read one path per line; print safe or refused for each");
    check->callback([&context, options] {
        auto home = homeFolder(context, *options);
        if (!home)
            return;
        if (options->batch) {
            runBatch(context.in(), context.out(), [&home](std::string_view line) { return trashVerdict(line, *home); });
            return;
        }
        if (options->first.empty()) {
            context.usageError("Give a path, for example: quillmar trash check ~/Library/Caches/com.example.App");
            return;
        }
        context.out() << trashVerdict(options->first, *home) << '\n';
    });
}

} // namespace

void addUninstallCommands(CLI::App& app, CliContext& context)
{
    addUninstall(app, context);
    addTrash(app, context);
}

} // namespace quillmar::cli

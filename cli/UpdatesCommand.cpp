#include "cli/UpdatesCommand.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "cli/FetcherOptions.h"
#include "cli/HomeFolder.h"
#include "core/apps/AppInventory.h"
#include "core/updates/UpdateCheck.h"

namespace quillmar::cli {

namespace {

struct UpdatesArguments {
    std::vector<std::string> roots;
    bool json = false;
    std::string system = "15.0.0";
    std::string architecture = "arm64";
    std::string kernel = "24.0.0";
    std::string country;
    std::string storeOrigin;
    FetcherOptions fetcher;
};

std::string localeName()
{
    for (const char* name : { "LC_ALL", "LC_MESSAGES", "LANG" }) {
        if (const char* value = std::getenv(name); value && *value)
            return value;
    }
    return {};
}

nlohmann::json optionalJson(const std::optional<std::string>& value)
{
    return value ? nlohmann::json(*value) : nlohmann::json(nullptr);
}

nlohmann::json rowJson(const AppUpdate& row)
{
    return {
        { "path", row.app.url.string() },
        { "name", row.app.name },
        { "bundleID", row.app.bundleID },
        { "installed", row.installedText() },
        { "source", toString(row.source) },
        { "status", toString(row.status) },
        { "available", optionalJson(row.available) },
        { "releaseNotesURL", optionalJson(row.releaseNotesURL) },
        { "notes", optionalJson(row.notes) },
        { "pageURL", optionalJson(row.pageURL) },
        { "problem", row.problem ? nlohmann::json(toString(*row.problem)) : nlohmann::json(nullptr) },
        { "detail", row.detail.empty() ? nlohmann::json(nullptr) : nlohmann::json(row.detail) },
    };
}

std::string statusText(const AppUpdate& row)
{
    switch (row.status) {
    case UpdateStatus::upToDate:
        return "up to date";
    case UpdateStatus::updateAvailable: {
        auto text = fmt::format("update available: {}", row.available.value_or("?"));
        if (auto link = row.releaseNotesURL ? row.releaseNotesURL : row.pageURL)
            text += "  " + *link;
        return text;
    }
    case UpdateStatus::notCheckable:
        break;
    }
    return fmt::format("not checkable: {}", describe(row.problem.value_or(UpdateProblem::noSource)));
}

void printRows(CliContext& context, const std::vector<AppUpdate>& rows)
{
    if (rows.empty()) {
        context.out() << "No applications found.\n";
        return;
    }
    std::size_t nameWidth = 0;
    std::size_t versionWidth = 0;
    for (const auto& row : rows) {
        nameWidth = std::max(nameWidth, row.app.name.size());
        versionWidth = std::max(versionWidth, row.installedText().size());
    }
    for (const auto& row : rows)
        context.out() << fmt::format("{:<{}}  {:<{}}  {}\n", row.app.name, nameWidth, row.installedText(), versionWidth,
            statusText(row));
}

void check(CliContext& context, const UpdatesArguments& arguments)
{
    auto system = OperatingSystemVersion::parse(arguments.system);
    if (!system) {
        context.usageError(fmt::format("\"{}\" is not a system version such as 15.1.0.", arguments.system));
        return;
    }
    auto fetcher = arguments.fetcher.makeFetcher(context);
    if (!fetcher)
        return;

    std::vector<std::filesystem::path> roots(arguments.roots.begin(), arguments.roots.end());
    if (roots.empty()) {
        auto home = homeFolder(context);
        if (!home)
            return;
        roots = AppInventory::defaultRoots(*home);
    }
    auto apps = AppInventory(roots).scan();

    UpdateEnvironment environment;
    environment.system = *system;
    environment.architecture = arguments.architecture;
    environment.kernelRelease = arguments.kernel;
    environment.country = arguments.country.empty() ? AppStoreLookup::country(localeName()) : arguments.country;
    if (!arguments.storeOrigin.empty())
        environment.storeOrigins.lookup = arguments.storeOrigin;

    SafeFeedFetcher feeds(*fetcher);
    bool showProgress = context.errIsTerminal();
    auto rows = UpdateCheck(feeds, environment).run(apps, [&](std::size_t done, std::size_t total) {
        if (showProgress)
            context.err() << fmt::format("\rChecking for updates: {} of {}", done, total) << std::flush;
    });
    if (showProgress && !apps.empty())
        context.err() << "\r\033[K" << std::flush;

    if (arguments.json) {
        auto list = nlohmann::json::array();
        for (const auto& row : rows)
            list.push_back(rowJson(row));
        context.printJson({ { "apps", list } });
        return;
    }
    printRows(context, rows);
}

} // namespace

void addUpdatesCommand(CLI::App& app, CliContext& context)
{
    auto* updates = app.add_subcommand("updates", "Check the installed applications for updates");
    updates->require_subcommand(1);
    auto arguments = std::make_shared<UpdatesArguments>();
    auto* checkCommand = updates->add_subcommand("check", "One row per application: up to date, an update, or why it can't be checked");
    checkCommand->add_option("--root", arguments->roots, "Look for applications here instead of the usual folders (repeatable)");
    checkCommand->add_flag("--json", arguments->json, "Print one JSON object");
    checkCommand->add_option("--system", arguments->system, "The system version feeds are judged for (15.0.0)");
    checkCommand->add_option("--arch", arguments->architecture, "The architecture feeds are judged for (arm64)");
    checkCommand->add_option("--kernel", arguments->kernel, "The kernel release Electron manifests are judged for (24.0.0)");
    checkCommand->add_option("--country", arguments->country, "The store's country code (from the locale, else us)");
    checkCommand->add_option("--store-origin", arguments->storeOrigin, "Where the store lookup is asked (https://itunes.apple.com)");
    arguments->fetcher.addTo(*checkCommand);
    checkCommand->callback([&context, arguments] { check(context, *arguments); });
}

} // namespace quillmar::cli

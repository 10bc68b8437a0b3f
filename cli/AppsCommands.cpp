#include "cli/AppsCommands.h"

#include <iterator>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "cli/HomeFolder.h"
#include "core/apps/AppInventory.h"
#include "core/apps/AppStoreLookup.h"
#include "core/apps/ElectronFeed.h"
#include "core/base/Files.h"

namespace quillmar::cli {

namespace {

// The largest document these commands read: the fetcher's cap for appcasts and store replies.
constexpr std::size_t largestDocument = 2000000;

nlohmann::json optionalText(const std::optional<std::string>& text)
{
    return text ? nlohmann::json(*text) : nlohmann::json(nullptr);
}

nlohmann::json optionalUrl(const std::optional<Url>& url)
{
    return url ? nlohmann::json(url->text()) : nlohmann::json(nullptr);
}

nlohmann::json electronJson(const ElectronFeed::Config& config)
{
    return { { "manifestURL", config.manifestURL.text() }, { "releasesPage", optionalUrl(config.releasesPage) } };
}

nlohmann::json bundleJson(const InstalledBundle& bundle)
{
    return {
        { "path", bundle.url.string() },
        { "name", bundle.name },
        { "bundleID", bundle.bundleID },
        { "shortVersion", bundle.shortVersion },
        { "build", bundle.build },
        { "feedURL", optionalUrl(bundle.feedURL) },
        { "hasInsecureFeed", bundle.hasInsecureFeed },
        { "isAppStore", bundle.isAppStore },
        { "isWrappediOSApp", bundle.isWrappediOSApp },
        { "electron", bundle.electron ? electronJson(*bundle.electron) : nlohmann::json(nullptr) },
    };
}

// The document named on the command line, "-" for standard input; refuses with a sentence when it cannot be read.
std::optional<std::string> readDocument(CliContext& context, const std::string& file)
{
    if (file == "-") {
        std::string text((std::istreambuf_iterator<char>(context.in())), std::istreambuf_iterator<char>());
        if (text.size() > largestDocument) {
            context.refuse("The document is too large.");
            return std::nullopt;
        }
        return text;
    }
    std::error_code error;
    auto size = std::filesystem::file_size(file, error);
    if (!error && size > largestDocument) {
        context.refuse(fmt::format("{} is too large.", file));
        return std::nullopt;
    }
    auto text = readFile(file);
    if (!text.ok() || !text->has_value()) {
        context.refuse(fmt::format("Could not read {}.", file));
        return std::nullopt;
    }
    return std::move(**text);
}

struct ListOptions {
    std::vector<std::string> roots;
    bool json = false;
};

void listApps(CliContext& context, const ListOptions& options)
{
    std::vector<std::filesystem::path> roots(options.roots.begin(), options.roots.end());
    if (roots.empty()) {
        auto home = homeFolder(context);
        if (!home)
            return;
        roots = AppInventory::defaultRoots(*home);
    }
    auto bundles = AppInventory(std::move(roots)).scan();
    if (options.json) {
        auto apps = nlohmann::json::array();
        for (const auto& bundle : bundles)
            apps.push_back(bundleJson(bundle));
        context.printJson({ { "apps", apps } });
        return;
    }
    for (const auto& bundle : bundles) {
        std::string version = bundle.shortVersion;
        if (!bundle.build.empty() && bundle.build != bundle.shortVersion)
            version += fmt::format(" ({})", bundle.build);
        std::string source = bundle.isAppStore ? "App Store"
            : bundle.feedURL                  ? "appcast"
            : bundle.electron                 ? "Electron"
            : bundle.hasInsecureFeed          ? "insecure feed"
                                              : "-";
        context.out() << fmt::format("{}\t{}\t{}\t{}\t{}\n", bundle.name, bundle.bundleID, version, source, bundle.url.string());
    }
}

void electronConfig(CliContext& context, const std::string& file)
{
    auto text = readDocument(context, file);
    if (!text)
        return;
    auto config = ElectronFeed::config(*text);
    if (!config) {
        context.refuse("That file names no usable update feed.");
        return;
    }
    context.printJson(electronJson(*config));
}

void electronManifest(CliContext& context, const std::string& file)
{
    auto text = readDocument(context, file);
    if (!text)
        return;
    auto manifest = ElectronFeed::manifest(*text);
    if (!manifest) {
        context.refuse("That file is not an update manifest with a version.");
        return;
    }
    context.printJson({ { "version", manifest->version }, { "minimumSystemVersion", optionalText(manifest->minimumSystemVersion) },
        { "releaseDate", optionalText(manifest->releaseDate) } });
}

void appStoreParse(CliContext& context, const std::string& file)
{
    auto text = readDocument(context, file);
    if (!text)
        return;
    auto listings = AppStoreLookup::parse(*text);
    if (!listings) {
        context.refuse(listings.problem() == ParseProblem::tooLarge ? "That reply is too large." : "That reply is malformed.");
        return;
    }
    if (listings->empty()) {
        context.refuse("That reply holds no listings.");
        return;
    }
    auto results = nlohmann::json::array();
    for (const auto& listing : *listings) {
        results.push_back({
            { "bundleID", listing.bundleID },
            { "version", listing.version },
            { "minimumOS", optionalText(listing.minimumOS) },
            { "pageURL", optionalUrl(listing.pageURL) },
            { "releaseNotes", optionalText(listing.releaseNotes) },
            { "releaseDate", listing.releaseDate ? nlohmann::json(*listing.releaseDate) : nlohmann::json(nullptr) },
            { "isMacListing", listing.isMacListing },
        });
    }
    context.printJson({ { "listings", results } });
}

// Accepted, as by every command that prints JSON; these print nothing else.
void addJsonFlag(CLI::App& command)
{
    command.add_flag("--json")->description("Print one JSON object (what this command always prints)");
}

} // namespace

void addAppsCommands(CLI::App& app, CliContext& context)
{
    auto* apps = app.add_subcommand("apps", "The installed applications and their update sources");
    apps->require_subcommand(1);
    auto listOptions = std::make_shared<ListOptions>();
    auto* list = apps->add_subcommand("list",
        "Every application bundle under the roots (default /Applications and ~/Applications), sorted by name");
    list->add_option("--root", listOptions->roots, "A folder to scan instead of the default roots (repeatable)");
    list->add_flag("--json", listOptions->json, "Print one JSON object {\"apps\":[...]}");
    list->callback([&context, listOptions] { listApps(context, *listOptions); });

    auto* electron = app.add_subcommand("electron", "Read the update files of Electron applications");
    electron->require_subcommand(1);
    auto configFile = std::make_shared<std::string>();
    auto* config = electron->add_subcommand("config", "Where an app-update.yml says the updates live (JSON)");
    config->add_option("FILE", *configFile, "The app-update.yml, or - for standard input")->required();
    addJsonFlag(*config);
    config->callback([&context, configFile] { electronConfig(context, *configFile); });
    auto manifestFile = std::make_shared<std::string>();
    auto* manifest = electron->add_subcommand("manifest", "The version a latest-mac.yml offers (JSON)");
    manifest->add_option("FILE", *manifestFile, "The manifest, or - for standard input")->required();
    addJsonFlag(*manifest);
    manifest->callback([&context, manifestFile] { electronManifest(context, *manifestFile); });

    auto* appStore = app.add_subcommand("appstore", "Read App Store lookup replies");
    appStore->require_subcommand(1);
    auto replyFile = std::make_shared<std::string>();
    auto* parse = appStore->add_subcommand("parse", "The listings of a lookup reply, dates in seconds since 1970 (JSON)");
    parse->add_option("FILE", *replyFile, "The JSON reply, or - for standard input")->required();
    addJsonFlag(*parse);
    parse->callback([&context, replyFile] { appStoreParse(context, *replyFile); });
}

} // namespace quillmar::cli

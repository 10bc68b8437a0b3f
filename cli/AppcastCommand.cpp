#include "cli/AppcastCommand.h"

#include <chrono>
#include <iterator>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "core/appcast/Appcast.h"
#include "core/base/Files.h"

namespace quillmar::cli {

namespace {

struct AppcastOptions {
    std::string file;
    bool json = false;
    std::string build;
    std::string shortVersion;
    std::string system;
    std::string arch;
};

// The document's bytes from a file, or from standard input for "-"; none after a refusal.
std::optional<std::string> readDocument(CliContext& context, const std::string& file)
{
    if (file == "-")
        return std::string(std::istreambuf_iterator<char>(context.in()), {});
    auto bytes = readFile(file);
    if (!bytes) {
        context.refuse(fmt::format("The appcast {} could not be read.", file));
        return std::nullopt;
    }
    if (!bytes->has_value()) {
        context.refuse(fmt::format("There is no file at {}.", file));
        return std::nullopt;
    }
    return std::move(**bytes);
}

std::string_view refusalSentence(ParseProblem problem)
{
    switch (problem) {
    case ParseProblem::refused:
        return "The appcast was refused: it declares entities.";
    case ParseProblem::tooLarge:
        return "The appcast is too large: it nests too deeply or has too many items.";
    case ParseProblem::malformed:
        break;
    }
    return "The appcast is malformed.";
}

std::optional<std::vector<AppcastItem>> readItems(CliContext& context, const std::string& file)
{
    auto document = readDocument(context, file);
    if (!document)
        return std::nullopt;
    auto items = Appcast::parse(*document);
    if (!items) {
        context.refuse(refusalSentence(items.problem()));
        return std::nullopt;
    }
    return std::move(*items);
}

// "2024-03-05 09:15:00 UTC"; any year, without the C library's range limits.
std::string utcText(std::chrono::sys_seconds instant)
{
    auto day = std::chrono::floor<std::chrono::days>(instant);
    std::chrono::year_month_day date(day);
    std::chrono::hh_mm_ss time(instant - day);
    return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02} UTC", static_cast<int>(date.year()),
        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), time.hours().count(),
        time.minutes().count(), time.seconds().count());
}

nlohmann::json optionalJson(const std::optional<std::string>& value)
{
    return value ? nlohmann::json(*value) : nlohmann::json(nullptr);
}

nlohmann::json itemJson(const AppcastItem& item)
{
    return {
        { "title", optionalJson(item.title) },
        { "version", optionalJson(item.version) },
        { "shortVersion", optionalJson(item.shortVersion) },
        { "minimumSystemVersion", optionalJson(item.minimumSystemVersion) },
        { "maximumSystemVersion", optionalJson(item.maximumSystemVersion) },
        { "minimumUpdateVersion", optionalJson(item.minimumUpdateVersion) },
        { "channel", optionalJson(item.channel) },
        { "hardwareRequirements", optionalJson(item.hardwareRequirements) },
        { "os", optionalJson(item.os) },
        { "downloadURL", optionalJson(item.downloadURL) },
        { "link", optionalJson(item.link) },
        { "releaseNotesURL", optionalJson(item.releaseNotesURL) },
        { "notesHTML", optionalJson(item.notesHTML) },
        { "date", item.date ? nlohmann::json(item.date->time_since_epoch().count()) : nlohmann::json(nullptr) },
        { "hasDownload", item.hasDownload() },
    };
}

// A few lines per item: the title and versions, then each other field that is present.
void printItem(std::ostream& out, const AppcastItem& item)
{
    out << (item.title ? *item.title : std::string("(untitled)"));
    if (item.shortVersion || item.version)
        out << "  " << (item.shortVersion ? *item.shortVersion : "") << (item.version ? " (" + *item.version + ")" : "");
    out << '\n';
    auto line = [&out](const char* label, const std::optional<std::string>& value) {
        if (value)
            out << "  " << label << ": " << *value << '\n';
    };
    line("channel", item.channel);
    line("system", item.minimumSystemVersion ? "from " + *item.minimumSystemVersion : std::optional<std::string>());
    line("system up to", item.maximumSystemVersion);
    line("updates from build", item.minimumUpdateVersion);
    line("hardware", item.hardwareRequirements);
    line("os", item.os);
    line("download", item.downloadURL);
    line("page", item.link);
    line("release notes", item.releaseNotesURL);
    if (item.date)
        out << "  date: " << utcText(*item.date) << '\n';
}

void runParse(CliContext& context, const AppcastOptions& options)
{
    auto items = readItems(context, options.file);
    if (!items)
        return;
    if (options.json) {
        auto list = nlohmann::json::array();
        for (const auto& item : *items)
            list.push_back(itemJson(item));
        context.printJson({ { "items", list } });
        return;
    }
    if (items->empty())
        context.out() << "The appcast has no items.\n";
    for (const auto& item : *items)
        printItem(context.out(), item);
}

void runBest(CliContext& context, const AppcastOptions& options)
{
    auto system = OperatingSystemVersion::parse(options.system);
    if (!system) {
        context.usageError("Give the system version as numbers with dots, for example: --system 14.4.1");
        return;
    }
    auto items = readItems(context, options.file);
    if (!items)
        return;
    auto best = Appcast::bestUpdate(*items, options.build, options.shortVersion, *system, options.arch);
    if (!best) {
        context.refuse("The appcast offers no update newer than the installed version for this system.");
        return;
    }
    if (options.json) {
        context.printJson(itemJson(*best));
        return;
    }
    printItem(context.out(), *best);
}

} // namespace

void addAppcastCommand(CLI::App& app, CliContext& context)
{
    auto* appcast = app.add_subcommand("appcast", "Read update feeds and choose the update they offer");
    appcast->require_subcommand(1);

    auto parseOptions = std::make_shared<AppcastOptions>();
    auto* parse = appcast->add_subcommand("parse", "List the items of an appcast");
    parse->add_option("FILE", parseOptions->file, "The appcast; - reads standard input")->required();
    parse->add_flag("--json", parseOptions->json, "Print one JSON object {\"items\": [...]}");
    parse->callback([&context, parseOptions] { runParse(context, *parseOptions); });

    auto bestOptions = std::make_shared<AppcastOptions>();
    auto* best = appcast->add_subcommand("best", "The update an appcast offers to the installed copy");
    best->add_option("FILE", bestOptions->file, "The appcast; - reads standard input")->required();
    best->add_option("--build", bestOptions->build, "The installed build (CFBundleVersion); may be empty");
    best->add_option("--short", bestOptions->shortVersion, "The installed short version; may be empty");
    best->add_option("--system", bestOptions->system, "The system version, such as 14.4.1")->required();
    best->add_option("--arch", bestOptions->arch, "The architecture, such as arm64")->required();
    best->add_flag("--json", bestOptions->json, "Print the chosen item as one JSON object");
    best->callback([&context, bestOptions] { runBest(context, *bestOptions); });
}

} // namespace quillmar::cli

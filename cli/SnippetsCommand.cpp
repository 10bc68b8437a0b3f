#include "cli/SnippetsCommand.h"

#include <cmath>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include <fmt/format.h>

#include "core/base/Files.h"
#include "core/clipboard/ClipItem.h"
#include "core/snippets/Graphemes.h"
#include "core/snippets/SnippetLibrary.h"
#include "core/snippets/SnippetMatcher.h"
#include "core/snippets/SnippetVariables.h"
#include "core/snippets/Snippets.h"

namespace quillmar::cli {

namespace {

// The library as the application stores it; read only. None after a refusal.
std::optional<SnippetLibraryFile> storedLibrary(CliContext& context)
{
    auto text = readFile(Snippets::libraryFile(context.locations()));
    SnippetLibraryFile library;
    if (text && *text) {
        auto read = SnippetLibrary::read(**text);
        if (!read) {
            context.refuse("The snippet library could not be read.");
            return std::nullopt;
        }
        library = std::move(*read);
    } else if (!text) {
        context.refuse("The snippet library could not be read.");
        return std::nullopt;
    }
    if (auto groups = context.settings().saved(Snippets::groupsKey))
        library.groups = std::move(*groups);
    return library;
}

// A library file in the export format, with the import's rules and messages.
std::optional<SnippetLibraryFile> libraryFromFile(CliContext& context, const std::string& path)
{
    auto text = readFile(path);
    if (!text || !*text) {
        context.refuse(fmt::format("{} could not be read.", path));
        return std::nullopt;
    }
    auto decoded = SnippetLibrary::decode(**text);
    if (!decoded) {
        context.refuse(decoded.error().message);
        return std::nullopt;
    }
    return std::move(*decoded);
}

void listSnippets(CliContext& context, bool json)
{
    auto library = storedLibrary(context);
    if (!library)
        return;
    if (json) {
        auto snippets = nlohmann::json::array();
        for (const auto& snippet : library->snippets)
            snippets.push_back(snippet.toJson());
        context.printJson({ { "snippets", std::move(snippets) }, { "groups", library->groups } });
        return;
    }
    if (library->snippets.empty()) {
        context.setExitCode(ExitCode::noAnswer);
        return;
    }
    for (const auto& snippet : library->snippets) {
        auto group = snippet.group.empty() ? std::string() : fmt::format("  [{}]", snippet.group);
        context.out() << fmt::format("{:<12} {}{}\n", snippet.trigger, snippet.displayName(), group);
    }
}

void checkTrigger(CliContext& context, const std::string& trigger, const std::string& id)
{
    auto library = storedLibrary(context);
    if (!library)
        return;
    if (auto problem = SnippetMatcher::problem(trigger, id, library->snippets))
        context.refuse(message(*problem));
}

void matchBuffer(CliContext& context, const std::string& buffer, const std::string& libraryPath)
{
    auto library = libraryPath.empty() ? storedLibrary(context) : libraryFromFile(context, libraryPath);
    if (!library)
        return;
    auto found = SnippetMatcher::match(std::string_view(buffer), library->snippets);
    if (!found) {
        context.setExitCode(ExitCode::noAnswer);
        return;
    }
    context.out() << library->snippets[found->index].trigger << '\n';
}

struct ExpandOptions {
    std::string text;
    std::optional<double> now;
    std::string zone;
    std::string locale;
    std::optional<std::string> clipboard;
    bool json = false;
};

void expandText(CliContext& context, const ExpandOptions& options)
{
    if (!options.zone.empty() && !SnippetVariables::isKnownTimeZone(options.zone)) {
        context.usageError(fmt::format("There is no time zone \"{}\".", options.zone));
        return;
    }
    auto now = std::chrono::system_clock::now();
    if (options.now) {
        if (!std::isfinite(*options.now) || std::fabs(*options.now) > maximumEpochSeconds) {
            context.usageError("--now takes Unix epoch seconds.");
            return;
        }
        now = WallTime(std::chrono::duration_cast<WallTime::duration>(std::chrono::duration<double>(*options.now)));
    }
    auto expansion = SnippetVariables::expand(options.text, now, options.locale, options.zone, options.clipboard);
    if (options.json) {
        context.printJson({ { "text", expansion.text }, { "cursor", expansion.cursor } });
        return;
    }
    context.out() << expansion.text << '\n';
}

} // namespace

void addSnippetsCommand(CLI::App& app, CliContext& context)
{
    auto* snippets = app.add_subcommand("snippets", "Read the snippet library, check triggers, match and expand");
    snippets->require_subcommand(1);

    auto* list = snippets->add_subcommand("list", "Every snippet: trigger, name and group");
    auto listJson = std::make_shared<bool>(false);
    list->add_flag("--json", *listJson, "Print one JSON object");
    list->callback([&context, listJson] { listSnippets(context, *listJson); });

    auto* check = snippets->add_subcommand("check-trigger", "Say what is wrong with a trigger, if anything");
    auto trigger = std::make_shared<std::string>();
    auto id = std::make_shared<std::string>();
    check->add_option("TRIGGER", *trigger, "The trigger to check")->required();
    check->add_option("--id", *id, "The snippet the trigger is for (its own trigger is no duplicate)");
    check->callback([&context, trigger, id] { checkTrigger(context, *trigger, *id); });

    auto* match = snippets->add_subcommand("match", "The trigger that typing BUFFER would expand");
    auto buffer = std::make_shared<std::string>();
    auto library = std::make_shared<std::string>();
    match->add_option("BUFFER", *buffer, "What was typed; a trailing space ends the word")->required();
    match->add_option("--library", *library, "A snippet library file in the export format (default: yours)");
    match->callback([&context, buffer, library] { matchBuffer(context, *buffer, *library); });

    auto* expand = snippets->add_subcommand("expand", "Fill in the variables of a snippet text");
    auto options = std::make_shared<ExpandOptions>();
    expand->add_option("TEXT", options->text, "The snippet text, such as \"{date:yyyy-MM-dd}\"")->required();
    expand->add_option("--now", options->now, "The moment to use, in Unix epoch seconds (default: now)");
    expand->add_option("--zone", options->zone, "A time zone such as Europe/Paris (default: the system's)");
    expand->add_option("--locale", options->locale, "A locale such as en_US or de-DE (default: the system's)");
    expand->add_option("--clipboard", options->clipboard, "The text {clipboard} stands for (default: none)");
    expand->add_flag("--json", options->json, "Print {\"text\",\"cursor\"}, the cursor in characters from the start");
    expand->callback([&context, options] { expandText(context, *options); });
}

} // namespace quillmar::cli

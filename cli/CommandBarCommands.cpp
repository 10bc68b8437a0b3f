#include "cli/CommandBarCommands.h"

#include <chrono>
#include <istream>
#include <iterator>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include <fmt/format.h>

#include "cli/BatchRunner.h"
#include "cli/JsonText.h"
#include "core/commandbar/CommandLearningStore.h"
#include "core/commandbar/CommandMatcher.h"
#include "core/commandbar/CommandRanker.h"
#include "core/commandbar/CommandRankerRequest.h"
#include "core/commandbar/EpochTime.h"

namespace quillmar::cli {

namespace {

// The matcher alone, with the query cut as the ranker cuts it.
std::optional<CommandMatcher::Match> matchTitle(CommandMatcher& matcher, std::string_view query, std::string_view title)
{
    auto prepared = matcher.prepare(query);
    prepared.truncate(CommandRanker::maxQueryCharacters);
    return matcher.match(prepared, title);
}

nlohmann::json matchJson(const CommandMatcher::Match& match)
{
    return { { "score", match.score }, { "positions", match.positions } };
}

struct MatchOptions {
    std::optional<std::string> query;
    std::optional<std::string> title;
    bool json = false;
    bool batch = false;
};

void runMatch(CliContext& context, const MatchOptions& options)
{
    CommandMatcher matcher;
    if (options.batch) {
        if (options.query || options.title) {
            context.usageError("Give either QUERY and TITLE or --batch, not both.");
            return;
        }
        runBatch(context.in(), context.out(), [&matcher](std::string_view line) -> std::string {
            auto tab = line.find('\t');
            if (tab == std::string_view::npos)
                return "null";
            auto match = matchTitle(matcher, line.substr(0, tab), line.substr(tab + 1));
            if (!match)
                return "null";
            return jsonText(matchJson(*match));
        });
        return;
    }
    if (!options.query || !options.title) {
        context.usageError("Give a QUERY and a TITLE, or --batch.");
        return;
    }
    auto match = matchTitle(matcher, *options.query, *options.title);
    if (!match) {
        context.setExitCode(ExitCode::noAnswer);
        return;
    }
    if (options.json) {
        context.printJson(matchJson(*match));
        return;
    }
    context.out() << fmt::format("{:.4f} {}\n", match->score, fmt::join(match->positions, ","));
}

struct RankOptions {
    std::string query;
    std::string scope = "all";
    std::optional<double> now;
};

// The book from the input, else the one the application keeps, else nothing learned.
std::shared_ptr<const CommandLearning> learningBook(CliContext& context, std::optional<CommandLearning> fromInput)
{
    if (fromInput)
        return std::make_shared<const CommandLearning>(std::move(*fromInput));
    if (auto saved = context.settings().saved(CommandLearningStore::key)) {
        if (auto book = CommandLearning::fromJson(*saved))
            return std::make_shared<const CommandLearning>(std::move(*book));
    }
    return nullptr;
}

void runRank(CliContext& context, const RankOptions& options)
{
    auto scope = commandScopeFromRawValue(options.scope);
    if (!scope) {
        std::vector<std::string_view> names;
        for (auto each : allCommandScopes())
            names.push_back(rawValue(each));
        context.usageError(fmt::format("There is no scope \"{}\"; the scopes are {}.", options.scope, fmt::join(names, ", ")));
        return;
    }
    WallTime now = std::chrono::time_point_cast<WallTime::duration>(std::chrono::system_clock::now());
    if (options.now) {
        auto given = wallTimeFromEpochSeconds(*options.now);
        if (!given) {
            context.usageError("--now must be Unix epoch seconds within a few centuries of 1970.");
            return;
        }
        now = *given;
    }

    std::string text(std::istreambuf_iterator<char>(context.in()), {});
    auto json = text.find_first_not_of(" \t\r\n") == std::string::npos
        ? nlohmann::json::object()
        : nlohmann::json::parse(text, /*callback=*/nullptr, /*allow_exceptions=*/false);
    if (json.is_discarded()) {
        context.refuse("The input is not valid JSON.");
        return;
    }
    auto request = CommandRankerRequest::fromJson(json);
    if (!request) {
        context.refuse(request.error().message);
        return;
    }

    CommandRanker::Input input;
    input.query = options.query;
    input.scope = *scope;
    input.candidates = makeCandidateList(std::move(request->candidates));
    input.answers = std::move(request->answers);
    input.fallbacks = std::move(request->fallbacks);
    input.frecency = learningBook(context, std::move(request->learning));
    input.now = now;
    CommandRanker ranker;
    context.printJson(CommandRankerRequest::sectionsJson(ranker.rank(input)));
}

} // namespace

void addCommandBarCommands(CLI::App& app, CliContext& context)
{
    auto* match = app.add_subcommand("match", "Score a title against a query as the command bar does");
    auto matchOptions = std::make_shared<MatchOptions>();
    match->add_option("QUERY", matchOptions->query, "The query as typed");
    match->add_option("TITLE", matchOptions->title, "The title to match");
    match->add_flag("--json", matchOptions->json, "Print one JSON object");
    match->add_flag("--batch", matchOptions->batch,
        "Read \"query<TAB>title\" lines from standard input; print a JSON object or null for each");
    match->callback([&context, matchOptions] { runMatch(context, *matchOptions); });

    auto* rank = app.add_subcommand("rank",
        "Rank the candidates of a JSON object on standard input into the command bar's sections");
    auto rankOptions = std::make_shared<RankOptions>();
    rank->add_option("--query", rankOptions->query, "The query as typed")->required();
    rank->add_option("--scope", rankOptions->scope, "all, apps, files, windows, menus, clipboard, snippets, actions, emoji or scripts");
    rank->add_option("--now", rankOptions->now, "The time to rank at, in Unix epoch seconds (default: now)");
    rank->callback([&context, rankOptions] { runRank(context, *rankOptions); });
}

} // namespace quillmar::cli

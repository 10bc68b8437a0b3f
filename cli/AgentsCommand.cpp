#include "cli/AgentsCommand.h"

#include <cstdlib>
#include <limits>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

#include <fmt/format.h>

#include "cli/BatchRunner.h"
#include "cli/HomeFolder.h"
#include "cli/JsonText.h"
#include "core/agents/AgentLogFiles.h"
#include "core/agents/AgentPricing.h"
#include "core/agents/UsageReport.h"
#include "core/agents/UsageScan.h"

namespace quillmar::cli {

namespace {

std::optional<std::string> environmentVariable(const char* name)
{
    if (const char* value = std::getenv(name))
        return std::string(value);
    return std::nullopt;
}

// The shortest text that reads back as the same double, always in plain decimal notation.
std::string decimalText(double value)
{
    auto text = fmt::format("{}", value);
    auto exponentAt = text.find('e');
    if (exponentAt == std::string::npos)
        return text;
    auto exponent = std::stoi(text.substr(exponentAt + 1));
    std::string mantissa = text.substr(0, exponentAt);
    std::string sign;
    if (mantissa.starts_with('-')) {
        sign = "-";
        mantissa.erase(0, 1);
    }
    auto point = mantissa.find('.');
    std::string digits = mantissa;
    long integerDigits = static_cast<long>(mantissa.size());
    if (point != std::string::npos) {
        digits.erase(point, 1);
        integerDigits = static_cast<long>(point);
    }
    long pointAt = integerDigits + exponent;
    auto size = static_cast<long>(digits.size());
    if (pointAt <= 0)
        return sign + "0." + std::string(static_cast<std::size_t>(-pointAt), '0') + digits;
    if (pointAt >= size)
        return sign + digits + std::string(static_cast<std::size_t>(pointAt - size), '0');
    return sign + digits.substr(0, static_cast<std::size_t>(pointAt)) + "." + digits.substr(static_cast<std::size_t>(pointAt));
}

struct PriceOptions {
    std::string model;
    std::int64_t input = 0;
    std::int64_t output = 0;
    std::int64_t cacheRead = 0;
    std::int64_t cacheWrite = 0;
    std::int64_t cacheWrite1h = 0;
    bool fast = false;
    bool usOnly = false;
    std::int64_t webSearches = 0;
    std::optional<double> recordedCost;
    bool batch = false;
};

const char* const tooLarge = "The token counts are too large to add up.";

// One JSON UsageRecord of a batch line, or the sentence that says what is wrong with it.
std::variant<UsageRecord, std::string> recordFromJson(std::string_view line)
{
    auto json = nlohmann::json::parse(line, nullptr, /*allow_exceptions=*/false);
    if (!json.is_object())
        return std::string("That line is not a JSON object.");
    UsageRecord record;
    if (auto model = json.find("model"); model != json.end()) {
        if (!model->is_string())
            return std::string("\"model\" must be a string.");
        record.model = model->get<std::string>();
    }
    struct Count {
        const char* key;
        std::int64_t* value;
    };
    for (auto [key, value] : { Count { "input", &record.input }, Count { "output", &record.output },
             Count { "cacheRead", &record.cacheRead }, Count { "cacheWrite", &record.cacheWrite },
             Count { "cacheWrite1h", &record.cacheWrite1h }, Count { "webSearches", &record.webSearches } }) {
        auto found = json.find(key);
        if (found == json.end() || found->is_null())
            continue;
        if (found->is_number_integer() && !found->is_number_unsigned()) {
            *value = found->get<std::int64_t>();
        } else if (found->is_number_unsigned() && found->get<std::uint64_t>() <= std::uint64_t(std::numeric_limits<std::int64_t>::max())) {
            *value = static_cast<std::int64_t>(found->get<std::uint64_t>());
        } else {
            return fmt::format("\"{}\" must be a whole number.", key);
        }
    }
    for (auto [key, value] : { std::pair { "fast", &record.fast }, std::pair { "usOnly", &record.usOnly } }) {
        auto found = json.find(key);
        if (found == json.end() || found->is_null())
            continue;
        if (!found->is_boolean())
            return fmt::format("\"{}\" must be true or false.", key);
        *value = found->get<bool>();
    }
    if (auto cost = json.find("recordedCost"); cost != json.end() && !cost->is_null()) {
        if (!cost->is_number())
            return std::string("\"recordedCost\" must be a number.");
        record.recordedCost = cost->get<double>();
    }
    if (!AgentPricing::promptSideFits(record))
        return std::string(tooLarge);
    return record;
}

std::string priceLine(std::string_view line)
{
    auto parsed = recordFromJson(line);
    if (auto* sentence = std::get_if<std::string>(&parsed))
        return jsonText(nlohmann::json { { "error", *sentence } });
    const auto& record = std::get<UsageRecord>(parsed);
    const auto* rate = AgentPricing::rate(record.model);
    auto cost = AgentPricing::cost(record);
    nlohmann::json answer = {
        { "normalized", AgentPricing::normalize(record.model) },
        { "family", rate ? nlohmann::json(std::string(rate->family)) : nlohmann::json(nullptr) },
        { "cost", cost ? nlohmann::json(*cost) : nlohmann::json(nullptr) },
    };
    return jsonText(answer);
}

void price(CliContext& context, const PriceOptions& options)
{
    if (options.batch) {
        runBatch(context.in(), context.out(), priceLine);
        return;
    }
    if (options.model.empty()) {
        context.usageError("Give the model with --model, or price records from standard input with --batch.");
        return;
    }
    UsageRecord record;
    record.model = options.model;
    record.input = options.input;
    record.output = options.output;
    record.cacheRead = options.cacheRead;
    record.cacheWrite = options.cacheWrite;
    record.cacheWrite1h = options.cacheWrite1h;
    record.fast = options.fast;
    record.usOnly = options.usOnly;
    record.webSearches = options.webSearches;
    record.recordedCost = options.recordedCost;
    if (!AgentPricing::promptSideFits(record)) {
        context.usageError(tooLarge);
        return;
    }
    auto cost = AgentPricing::cost(record);
    if (!cost) {
        context.setExitCode(ExitCode::noAnswer);
        return;
    }
    context.out() << decimalText(*cost) << '\n';
}

struct ReportOptions {
    std::string agent = "all";
    std::string by = "day";
    std::string since;
    std::string until;
    bool json = false;
};

// The user's zone: TZ when it names one ("Europe/Paris", ":Europe/Paris", or a path into the zone
// database), else the system's.
Result<LocalDays> userZone()
{
    auto value = environmentVariable("TZ");
    if (!value || value->empty())
        return LocalDays::systemZone();
    std::string_view name = *value;
    if (name.starts_with(':'))
        name.remove_prefix(1);
    if (auto database = name.find("zoneinfo/"); name.starts_with('/') && database != std::string_view::npos)
        name.remove_prefix(database + 9);
    auto days = LocalDays::create(name);
    if (!days)
        return Error { "agents.zone", fmt::format("The time zone \"{}\" in TZ is not known.", *value), *value };
    return days;
}

std::string folderList(const std::vector<std::filesystem::path>& folders)
{
    std::string list;
    for (const auto& folder : folders) {
        if (!list.empty())
            list += folders.size() > 2 ? ", " : " ";
        if (&folder == &folders.back() && folders.size() > 1)
            list += "or ";
        list += folder.string();
    }
    return list;
}

std::optional<Day> readDay(CliContext& context, const std::string& text)
{
    if (text.empty())
        return std::nullopt;
    auto day = parseDay(text);
    if (!day)
        context.usageError(fmt::format("\"{}\" is not a day; write it as YYYY-MM-DD.", text));
    return day;
}

void report(CliContext& context, const ReportOptions& options)
{
    auto since = readDay(context, options.since);
    auto until = readDay(context, options.until);
    if (context.exitCode() != ExitCode::done)
        return;
    if (since && until && *since > *until) {
        context.usageError("--since is after --until, so no day is left.");
        return;
    }
    auto zone = userZone();
    if (!zone) {
        context.usageError(zone.error().message);
        return;
    }
    std::optional<Agent> agent;
    if (options.agent == "claude")
        agent = Agent::claude;
    else if (options.agent == "codex")
        agent = Agent::codex;

    if (!homeFolder(context))
        return;
    auto search = findAgentLogs(AgentLogLocations::fromEnvironment(environmentVariable), agent);
    if (search.files.empty()) {
        const char* whose = !agent ? "No Claude Code or Codex logs" : *agent == Agent::claude ? "No Claude Code logs" : "No Codex logs";
        context.refuse(fmt::format("{} were found in {}.", whose, folderList(search.searchedFolders)));
        return;
    }
    auto scan = scanUsage(search.files, { *zone, since, until, /*threads=*/0 });
    for (const auto& file : scan.unreadable)
        context.err() << fmt::format("Could not read {}; it is left out.\n", file.path.string());
    if (scan.ledger.empty()) {
        std::string when;
        if (since && until)
            when = fmt::format(" from {} to {}", formatDay(*since), formatDay(*until));
        else if (since)
            when = fmt::format(" since {}", formatDay(*since));
        else if (until)
            when = fmt::format(" until {}", formatDay(*until));
        context.refuse(fmt::format("The {} {} found record no usage{}.", search.files.size(),
            search.files.size() == 1 ? "log" : "logs", when));
        return;
    }
    auto grouping = reportGroupingFromRawValue(options.by).value_or(ReportGrouping::day);
    if (options.json) {
        auto object = usageJson(scan.ledger, grouping, *zone);
        object["files"] = search.files.size();
        object["bytes"] = scan.bytes;
        context.printJson(object);
        return;
    }
    context.out() << usageTable(scan.ledger, grouping);
}

} // namespace

void addAgentsCommand(CLI::App& app, CliContext& context)
{
    auto* agents = app.add_subcommand("agents", "What coding agents cost: model prices and usage from their logs");
    agents->require_subcommand(1);

    auto* normalize = agents->add_subcommand("normalize", "Print the key a model name is priced under");
    auto model = std::make_shared<std::string>();
    normalize->add_option("MODEL", *model, "A model name as an agent logs it")->required();
    normalize->callback([&context, model] {
        auto key = AgentPricing::normalize(*model);
        if (key.empty()) {
            context.refuse(fmt::format("\"{}\" leaves no model name once normalised.", *model));
            return;
        }
        context.out() << key << '\n';
    });

    auto* priceCommand = agents->add_subcommand("price", "Price one usage record, or one JSON record per line with --batch");
    auto options = std::make_shared<PriceOptions>();
    priceCommand->add_option("--model", options->model, "The model name");
    priceCommand->add_option("--input", options->input, "Input tokens (neither cached nor written to the cache)");
    priceCommand->add_option("--output", options->output, "Output tokens");
    priceCommand->add_option("--cache-read", options->cacheRead, "Cache-read tokens");
    priceCommand->add_option("--cache-write", options->cacheWrite, "Five-minute cache-write tokens");
    priceCommand->add_option("--cache-write-1h", options->cacheWrite1h, "One-hour cache-write tokens");
    priceCommand->add_flag("--fast", options->fast, "Made in fast mode");
    priceCommand->add_flag("--us-only", options->usOnly, "Inference kept in the United States");
    priceCommand->add_option("--web-searches", options->webSearches, "Web-search requests");
    priceCommand->add_option("--recorded-cost", options->recordedCost, "The cost the agent recorded, in dollars");
    priceCommand->add_flag("--batch", options->batch,
        "Read one JSON record a line from standard input and print one JSON answer a line");
    priceCommand->callback([&context, options] { price(context, *options); });

    auto* reportCommand = agents->add_subcommand("report", "Tokens and cost from the agents' logs by day, model or session");
    auto reportOptions = std::make_shared<ReportOptions>();
    reportCommand->add_option("--agent", reportOptions->agent, "claude, codex or all (the default)")
        ->check(CLI::IsMember({ "claude", "codex", "all" }));
    reportCommand->add_option("--by", reportOptions->by, "day (the default), model or session")
        ->check(CLI::IsMember({ "day", "model", "session" }));
    reportCommand->add_option("--since", reportOptions->since, "First day counted, YYYY-MM-DD in your time zone");
    reportCommand->add_option("--until", reportOptions->until, "Last day counted, YYYY-MM-DD in your time zone");
    reportCommand->add_flag("--json", reportOptions->json, "Print one JSON object");
    reportCommand->callback([&context, reportOptions] { report(context, *reportOptions); });
}

} // namespace quillmar::cli

#include "cli/AnswerCommands.h"

#include <chrono>
#include <cmath>
#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <unicode/locid.h>
#include <unicode/timezone.h>

#include "cli/BatchRunner.h"
#include "core/answers/CommandCalculator.h"
#include "core/answers/CommandTimeZones.h"
#include "core/answers/CommandUnits.h"
#include "core/answers/InlineAnswers.h"
#include "core/commandbar/EpochTime.h"

namespace quillmar::cli {

namespace {

// The words of a query as the shell split them, joined back with single spaces.
std::string joinedWords(const std::vector<std::string>& words)
{
    std::string query;
    for (const auto& word : words) {
        if (!query.empty())
            query += ' ';
        query += word;
    }
    return query;
}

struct QueryOptions {
    std::vector<std::string> words;
    bool json = false;
    bool batch = false;
    double now = 0;
    CLI::Option* nowOption = nullptr;
    std::string local;
    std::string locale;
};

void addQuery(CLI::App& command, QueryOptions& options, const char* name, const char* help)
{
    command.add_option(name, options.words, help);
}

void addJson(CLI::App& command, QueryOptions& options)
{
    command.add_flag("--json", options.json, "Print one JSON object");
}

void addTimeOptions(CLI::App& command, QueryOptions& options)
{
    options.nowOption = command.add_option("--now", options.now, "The current time, as Unix epoch seconds");
    command.add_option("--local", options.local, "The local time zone, as an identifier such as Europe/Berlin");
}

std::string systemZone()
{
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createDefault());
    icu::UnicodeString identifier;
    zone->getID(identifier);
    std::string utf8;
    identifier.toUTF8String(utf8);
    return utf8;
}

// The time, zone and locale the answers depend on: given on the command line, else the system's. Empty
// after a usage error.
std::optional<AnswerContext> answerContext(CliContext& context, const QueryOptions& options)
{
    AnswerContext answer { std::chrono::system_clock::now(), systemZone(), icu::Locale::getDefault().getName() };
    if (options.nowOption && options.nowOption->count() > 0) {
        auto now = wallTimeFromEpochSeconds(options.now);
        if (!now) {
            context.usageError("The time given with --now is out of range.");
            return std::nullopt;
        }
        answer.now = *now;
    }
    if (!options.local.empty()) {
        if (!CommandTimeZones::zoneWithIdentifier(options.local)) {
            context.usageError(fmt::format("There is no time zone \"{}\"; use an identifier such as Europe/Berlin.", options.local));
            return std::nullopt;
        }
        answer.localZone = options.local;
    }
    if (!options.locale.empty())
        answer.locale = options.locale;
    return answer;
}

bool requireQuery(CliContext& context, const QueryOptions& options)
{
    if (!options.words.empty())
        return true;
    context.usageError("Give a query, for example: quillmar convert 5 km in mi");
    return false;
}

// A whole number as a JSON integer ("5", not "5.0"); anything else as it is.
nlohmann::json jsonNumber(double value)
{
    constexpr double exactIntegers = 9007199254740992.0; // 2^53
    if (value == std::trunc(value) && std::fabs(value) < exactIntegers)
        return static_cast<std::int64_t>(value);
    return value;
}

std::string calculation(std::string_view query)
{
    auto answer = CommandCalculator::evaluate(query, CommandCalculator::copyLocale);
    return answer ? answer->copyText : std::string();
}

void runCalc(CliContext& context, const QueryOptions& options)
{
    if (options.batch) {
        runBatch(context.in(), context.out(), calculation);
        return;
    }
    if (!requireQuery(context, options))
        return;
    auto answer = calculation(joinedWords(options.words));
    if (answer.empty()) {
        context.setExitCode(ExitCode::noAnswer);
        return;
    }
    context.out() << answer << '\n';
}

void runConvert(CliContext& context, const QueryOptions& options)
{
    if (!requireQuery(context, options))
        return;
    auto conversion = CommandUnits::convert(joinedWords(options.words));
    if (!conversion) {
        context.setExitCode(ExitCode::noAnswer);
        return;
    }
    if (options.json) {
        context.printJson({ { "value", jsonNumber(conversion->to.value) }, { "unit", conversion->to.unit.label },
            { "text", conversion->text() },
            { "from", { { "value", jsonNumber(conversion->from.value) }, { "unit", conversion->from.unit.label } } } });
        return;
    }
    context.out() << conversion->text() << '\n';
}

void runTimeZones(CliContext& context, const QueryOptions& options)
{
    if (!requireQuery(context, options))
        return;
    auto answerTime = answerContext(context, options);
    if (!answerTime)
        return;
    CommandTimeZones zones;
    auto answer = zones.convert(joinedWords(options.words), answerTime->now, answerTime->localZone);
    if (!answer) {
        context.setExitCode(ExitCode::noAnswer);
        return;
    }
    if (options.json) {
        context.printJson({ { "text", answer->text }, { "zone", answer->zone }, { "time", answer->time }, { "date", answer->date } });
        return;
    }
    context.out() << answer->text << '\n';
}

void runAnswer(CliContext& context, const QueryOptions& options)
{
    if (!requireQuery(context, options))
        return;
    auto answerTime = answerContext(context, options);
    if (!answerTime)
        return;
    InlineAnswers answers;
    auto answer = answers.first(joinedWords(options.words), *answerTime);
    if (!answer) {
        context.setExitCode(ExitCode::noAnswer);
        return;
    }
    if (options.json) {
        context.printJson({ { "kind", rawValue(answer->kind) }, { "title", answer->title }, { "subtitle", answer->subtitle },
            { "copy", answer->copyText } });
        return;
    }
    context.out() << answer->title << '\n';
}

} // namespace

void addAnswerCommands(CLI::App& app, CliContext& context)
{
    auto calcOptions = std::make_shared<QueryOptions>();
    auto* calc = app.add_subcommand("calc", "Evaluate arithmetic; prints the plain number, as it pastes back");
    addQuery(*calc, *calcOptions, "EXPR", "The expression; its words are joined with spaces");
    calc->add_flag("--batch", calcOptions->batch, "Read one expression per line; print one answer line each (empty for none)");
    calc->callback([&context, calcOptions] { runCalc(context, *calcOptions); });

    auto convertOptions = std::make_shared<QueryOptions>();
    auto* convert = app.add_subcommand("convert", "Convert a quantity between units, such as \"5 km in mi\"");
    addQuery(*convert, *convertOptions, "QUERY", "The conversion; its words are joined with spaces");
    addJson(*convert, *convertOptions);
    convert->callback([&context, convertOptions] { runConvert(context, *convertOptions); });

    auto timeOptions = std::make_shared<QueryOptions>();
    auto* tz = app.add_subcommand("tz", "Times across zones, such as \"3pm pst in tokyo\" or \"time in london\"");
    addQuery(*tz, *timeOptions, "QUERY", "The question; its words are joined with spaces");
    addTimeOptions(*tz, *timeOptions);
    addJson(*tz, *timeOptions);
    tz->callback([&context, timeOptions] { runTimeZones(context, *timeOptions); });

    auto answerOptions = std::make_shared<QueryOptions>();
    auto* answer = app.add_subcommand("answer", "What the command bar shows as its inline answer for a query");
    addQuery(*answer, *answerOptions, "QUERY", "The query, as typed into the command bar");
    addTimeOptions(*answer, *answerOptions);
    answer->add_option("--locale", answerOptions->locale, "The locale of the shown number, such as de_DE");
    addJson(*answer, *answerOptions);
    answer->callback([&context, answerOptions] { runAnswer(context, *answerOptions); });
}

} // namespace quillmar::cli

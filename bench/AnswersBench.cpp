#include <benchmark/benchmark.h>

#include <array>
#include <string>
#include <string_view>

#include "core/answers/CommandCalculator.h"
#include "core/answers/CommandTimeZones.h"
#include "core/answers/CommandUnits.h"
#include "core/answers/InlineAnswers.h"

namespace quillmar {
namespace {

// What a user might type, keystroke by keystroke included: arithmetic, conversions, times, and the
// ordinary searches that every answerer must turn down quickly.
constexpr std::array<std::string_view, 24> mixedQueries {
    "2+3*4", "2^10", "sqrt(2)*pi", "200 + 10%", "1,000,000 / 7", "sin(30°)", "170!", "log(8, 2)",
    "5 km in mi", "100 °F to c", "3 cups", "20 Mbps in MB", "1 ly in km", "60 mph",
    "time in tokyo", "3pm pst in tokyo", "15:00 london to new york", "india",
    "safari", "mail", "s", "open terminal", "42", "12:30",
};

const AnswerContext context { WallTime(std::chrono::seconds(1772884800)), "Europe/Berlin", "en_US" };

void mixedAnswers(benchmark::State& state)
{
    InlineAnswers answers;
    answers.answers("tokyo", context); // the city index is built once per process, not per query
    for (auto _ : state) {
        for (auto query : mixedQueries)
            benchmark::DoNotOptimize(answers.candidates(query, context));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(mixedQueries.size()));
}
BENCHMARK(mixedAnswers);

void calculatorOnly(benchmark::State& state)
{
    for (auto _ : state) {
        for (auto query : mixedQueries)
            benchmark::DoNotOptimize(CommandCalculator::evaluate(query, "en_US"));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(mixedQueries.size()));
}
BENCHMARK(calculatorOnly);

void unitsOnly(benchmark::State& state)
{
    for (auto _ : state) {
        for (auto query : mixedQueries)
            benchmark::DoNotOptimize(CommandUnits::convert(query));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(mixedQueries.size()));
}
BENCHMARK(unitsOnly);

void timeZonesOnly(benchmark::State& state)
{
    CommandTimeZones zones;
    zones.cityIndex();
    for (auto _ : state) {
        for (auto query : mixedQueries)
            benchmark::DoNotOptimize(zones.convert(query, context.now, context.localZone));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(mixedQueries.size()));
}
BENCHMARK(timeZonesOnly);

// The first time-zone query of a process reads every zone identifier ICU knows.
void cityIndexBuild(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(TimeZoneCityIndex());
}
BENCHMARK(cityIndexBuild)->Unit(benchmark::kMillisecond);

// Hostile input: 100,000 opening brackets must be turned down quickly, whatever the answerers.
void hostileBrackets(benchmark::State& state)
{
    InlineAnswers answers;
    answers.answers("tokyo", context);
    std::string brackets(100000, '(');
    for (auto _ : state)
        benchmark::DoNotOptimize(answers.answers(brackets, context));
}
BENCHMARK(hostileBrackets)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace quillmar

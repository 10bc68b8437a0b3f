// The switcher's list work on a busy desktop: building the groups when a session starts, and filtering
// them on every typed character.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "core/switcher/SwitcherLogic.h"

namespace quillmar {
namespace {

// `appCount` apps with `windowsPerApp` windows each, some minimised or on other Spaces; every seventh app's
// titles are accented.
struct Desktop {
    std::vector<AppSnapshot> apps;
    std::vector<WindowEntry> windows;
    std::vector<std::int32_t> recency;
};

Desktop makeDesktop(int appCount, int windowsPerApp)
{
    Desktop desktop;
    for (int app = 0; app < appCount; ++app) {
        auto pid = static_cast<std::int32_t>(100 + app);
        std::string name = "Application " + std::to_string(app);
        desktop.apps.push_back({ pid, name, "com.example.app" + std::to_string(app), app % 11 == 5, app == 0 });
        if (app % 3 != 2)
            desktop.recency.push_back(pid);
        for (int window = 0; window < windowsPerApp; ++window) {
            std::string title = app % 7 == 3 ? "Réunion d'équipe — Ébauche " : "Quarterly report draft ";
            title += std::to_string(window);
            desktop.windows.push_back({ static_cast<std::uint32_t>(pid * 100 + window), pid, name, title,
                { 10.0 * window, 20.0 * window, 800, 600 }, window % 5 == 4, window % 4 != 3 });
        }
    }
    return desktop;
}

void BM_Groups(benchmark::State& state)
{
    auto desktop = makeDesktop(static_cast<int>(state.range(0)), 10);
    SwitcherOptions options;
    for (auto _ : state)
        benchmark::DoNotOptimize(SwitcherLogic::groups(desktop.apps, desktop.windows, desktop.recency, options));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(desktop.windows.size()));
}
BENCHMARK(BM_Groups)->Arg(10)->Arg(50);

void BM_Filter(benchmark::State& state, const char* query)
{
    auto desktop = makeDesktop(50, 10);
    auto groups = SwitcherLogic::groups(desktop.apps, desktop.windows, desktop.recency, SwitcherOptions {});
    for (auto _ : state)
        benchmark::DoNotOptimize(SwitcherLogic::filtered(groups, query));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(SwitcherLogic::itemCount(groups)));
}
BENCHMARK_CAPTURE(BM_Filter, ascii_two_words, "report 4");
BENCHMARK_CAPTURE(BM_Filter, accented_word, "réunion");

void BM_Limit(benchmark::State& state)
{
    auto desktop = makeDesktop(50, 10);
    auto groups = SwitcherLogic::groups(desktop.apps, desktop.windows, desktop.recency, SwitcherOptions {});
    for (auto _ : state)
        benchmark::DoNotOptimize(SwitcherLogic::limited(groups, 20));
}
BENCHMARK(BM_Limit);

} // namespace
} // namespace quillmar

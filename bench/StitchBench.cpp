#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <vector>

#include "core/capture/ProfileHintProvider.h"
#include "core/capture/RowSignature.h"
#include "core/capture/ScrollMatcher.h"
#include "core/capture/ScrollStitcher.h"
#include "tests/capture/GeneratedPage.h"

namespace quillmar {
namespace {

// Scroll steps for an 800-row frame, scaled to the frame height: still frames, creeping, ordinary
// wheel steps and fast flicks near the margin.
constexpr int stepsAt800[] = { 0, 5, 37, 120, 2, 64, 210, 16, 90, 300, 11, 48, 180, 1 };

// Frames of one generated page scrolled by the steps above, made once per size and kept.
const std::vector<std::shared_ptr<const Bitmap>>& scrolledFrames(int width, int height)
{
    static std::map<std::pair<int, int>, std::vector<std::shared_ptr<const Bitmap>>> cache;
    auto& frames = cache[{ width, height }];
    if (frames.empty()) {
        int total = 0;
        for (int step : stepsAt800)
            total += step * height / 800;
        testing_support::GeneratedPage page(width, total + height, 2024);
        int top = 0;
        frames.push_back(std::make_shared<const Bitmap>(page.frame(top, height)));
        for (int step : stepsAt800) {
            top += step * height / 800;
            frames.push_back(std::make_shared<const Bitmap>(page.frame(top, height)));
        }
    }
    return frames;
}

// Frames per second through ScrollStitcher::process: signatures, the hint (when on), the match and the
// append. The first frame of each pass only starts the plan and is not timed.
void stitchFrames(benchmark::State& state)
{
    int width = static_cast<int>(state.range(0));
    int height = static_cast<int>(state.range(1));
    bool withHints = state.range(2) != 0;
    const auto& frames = scrolledFrames(width, height);
    ProfileHintProvider hints;
    for (auto _ : state) {
        state.PauseTiming();
        ScrollStitcher stitcher(withHints ? &hints : nullptr);
        stitcher.process(frames.front());
        state.ResumeTiming();
        for (std::size_t i = 1; i < frames.size(); ++i)
            benchmark::DoNotOptimize(stitcher.process(frames[i]));
    }
    auto perPass = static_cast<double>(frames.size() - 1);
    state.counters["fps"] = benchmark::Counter(perPass, benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(stitchFrames)
    ->ArgNames({ "width", "height", "hints" })
    ->Args({ 1280, 800, 0 })
    ->Args({ 1280, 800, 1 })
    ->Args({ 2560, 1600, 0 })
    ->Args({ 2560, 1600, 1 })
    ->Unit(benchmark::kMillisecond);

// The parts on their own, one frame each.
void rowSignaturesOfFrame(benchmark::State& state)
{
    const auto& frame = *scrolledFrames(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)))[1];
    for (auto _ : state)
        benchmark::DoNotOptimize(rowSignatures(frame));
}
BENCHMARK(rowSignaturesOfFrame)->ArgNames({ "width", "height" })->Args({ 1280, 800 })->Args({ 2560, 1600 })->Unit(benchmark::kMicrosecond);

void hintPrepare(benchmark::State& state)
{
    const auto& frame = *scrolledFrames(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)))[4];
    ProfileHintProvider hints;
    for (auto _ : state)
        benchmark::DoNotOptimize(hints.prepare(frame));
}
BENCHMARK(hintPrepare)->ArgNames({ "width", "height" })->Args({ 1280, 800 })->Args({ 2560, 1600 })->Unit(benchmark::kMicrosecond);

void hintShift(benchmark::State& state)
{
    const auto& frames = scrolledFrames(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    ProfileHintProvider hints;
    auto reference = hints.prepare(*frames[3]);
    auto current = hints.prepare(*frames[4]);
    for (auto _ : state)
        benchmark::DoNotOptimize(hints.shift(*reference, *current));
}
BENCHMARK(hintShift)->ArgNames({ "width", "height" })->Args({ 1280, 800 })->Args({ 2560, 1600 })->Unit(benchmark::kMicrosecond);

// Matching a 120-row scroll of an 800-row frame (`hint` 1: the true shift is tried first).
void matchRows(benchmark::State& state)
{
    const auto& frames = scrolledFrames(1280, 800);
    auto previous = rowSignatures(*frames[3]);
    auto current = rowSignatures(*frames[4]);
    std::optional<int> hint;
    if (state.range(0) != 0)
        hint = 120;
    for (auto _ : state)
        benchmark::DoNotOptimize(ScrollMatcher::match(previous, current, hint));
}
BENCHMARK(matchRows)->ArgName("hint")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace quillmar

// The main thread's share of the shared event tap: running the filtering handlers for one event, and
// rebuilding the handler chains and masks when a registration changes. Both run on the main thread while
// an event, or the worker, may be waiting for it.

#include <benchmark/benchmark.h>

#include <string>

#include "core/eventtap/EventTap.h"
#include "core/runtime/VirtualRuntime.h"

namespace quillmar {
namespace {

// A system that grants every tap and posts nothing: the benchmark measures the core alone.
class GrantingEventTapSource final : public EventTapSource {
public:
    bool createTap(TapKind, std::uint64_t, EventTapSink&) override { return true; }
    void removeTap(TapKind) override { }
    void enableTap(TapKind) override { }
    bool postEvent(const InputEvent&) override { return true; }
    bool isAccessibilityTrusted() const override { return true; }
};

std::optional<InputEvent> nudgeKeyCode(const InputEvent& event)
{
    auto changed = event;
    changed.keyCode += 1;
    return changed;
}

// One key-down through a chain of `range(0)` handlers, each passing on a changed copy.
void filteredEvent(benchmark::State& state)
{
    VirtualRuntime runtime;
    GrantingEventTapSource source;
    EventTap tap(runtime, source);
    auto handlers = state.range(0);
    for (std::int64_t i = 0; i < handlers; ++i)
        tap.registerHandler("chain." + std::to_string(i), { EventType::keyDown }, ListenOnly::no, nudgeKeyCode);
    runtime.runUntilIdle();

    InputEvent event;
    event.type = EventType::keyDown;
    for (auto _ : state)
        benchmark::DoNotOptimize(tap.runFilters(event));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(filteredEvent)->Arg(1)->Arg(8)->Arg(32);

// Replacing one of `range(0)` registrations (a few types each, spread over the tappable range) with the
// same types: the chains and both masks are rebuilt, and no tap is touched since the masks stay equal.
void maskRecomputation(benchmark::State& state)
{
    VirtualRuntime runtime;
    GrantingEventTapSource source;
    EventTap tap(runtime, source);
    auto registrations = state.range(0);
    auto typesOf = [](std::int64_t i) {
        auto first = static_cast<std::uint32_t>(i % 60);
        return std::vector<std::uint32_t> { first, first + 1, first + 3 };
    };
    for (std::int64_t i = 0; i < registrations; ++i) {
        tap.registerHandler("registration." + std::to_string(i), typesOf(i),
            i % 2 == 0 ? ListenOnly::no : ListenOnly::yes, nudgeKeyCode);
    }
    runtime.runUntilIdle();

    for (auto _ : state) {
        tap.registerHandler("registration.0", typesOf(0), ListenOnly::no, nudgeKeyCode);
        benchmark::DoNotOptimize(tap.mask(ListenOnly::no));
    }
    if (runtime.pendingCount() != 0)
        state.SkipWithError("a mask changed: the worker was asked to replace a tap");
}
BENCHMARK(maskRecomputation)->Arg(1)->Arg(8)->Arg(32);

} // namespace
} // namespace quillmar

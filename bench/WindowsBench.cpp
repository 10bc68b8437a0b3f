// Drag snapping's per-event costs: finding the snap zone under the pointer, and the whole handling of one
// title-bar drag event (window-list poll, classification, zone, overlay) over a desktop of 50 windows.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

#include "core/eventtap/EventTap.h"
#include "core/runtime/VirtualRuntime.h"
#include "core/settings/MemorySettingsBackend.h"
#include "core/windows/WindowDragging.h"

namespace quillmar {
namespace {

class GrantingEventTapSource final : public EventTapSource {
public:
    bool createTap(TapKind, std::uint64_t, EventTapSink&) override { return true; }
    void removeTap(TapKind) override { }
    void enableTap(TapKind) override { }
    bool postEvent(const InputEvent&) override { return true; }
    bool isAccessibilityTrusted() const override { return true; }
};

// 50 windows staggered over the main display; the topmost one (number 1) is the one dragged. Its frame
// follows every pointer move, as a window dragged by its title bar does.
class Desktop final : public WindowList, public Accessibility, public Screens, public SnapOverlay,
                      public MouseEvents, public SystemPreferences {
public:
    Desktop()
    {
        for (std::uint32_t i = 0; i < 50; ++i) {
            double offset = 20.0 * i;
            windows.push_back({ i + 1, static_cast<std::int32_t>(100 + i % 7), "App", "Window", 0, 1.0,
                { 40 + offset, 60 + offset / 2, 800, 600 } });
        }
    }
    std::vector<WindowServerInfo> windows;

    std::vector<WindowServerInfo> list(WindowListScope) const override { return windows; }
    std::optional<WindowServerInfo> info(std::uint32_t number) const override
    {
        auto found = std::find_if(windows.begin(), windows.end(), [&](const auto& w) { return w.number == number; });
        return found == windows.end() ? std::nullopt : std::optional(*found);
    }
    std::int32_t ownProcessID() const override { return 1; }

    bool isTrusted() const override { return true; }
    AXElement applicationElement(std::int32_t pid) override { return { 1000u + static_cast<std::uint64_t>(pid) }; }
    void setMessagingTimeout(AXElement, Duration) override { }
    std::optional<std::int32_t> processID(AXElement) const override { return std::nullopt; }
    std::optional<AXValue> attribute(AXElement, std::string_view) const override { return std::nullopt; }
    bool setAttribute(AXElement, std::string_view, const AXValue&) override { return true; }
    std::optional<bool> isAttributeSettable(AXElement, std::string_view) const override { return true; }
    bool performAction(AXElement, std::string_view) override { return true; }
    bool canReadWindowNumbers() const override { return true; }
    std::optional<std::uint32_t> windowNumber(AXElement element) const override
    {
        return static_cast<std::uint32_t>(element.id);
    }

    std::vector<ScreenInfo> screens() const override
    {
        return { { { 0, 0, 1440, 900 }, { 0, 0, 1440, 875 } }, { { -1920, 0, 1920, 1080 }, { -1920, 0, 1920, 1055 } } };
    }
    double mainDisplayHeight() const override { return 900; }

    void show(const Rect&, const ScreenInfo&) override { }
    void hide() override { }
    bool isButtonDown(MouseButton) const override { return true; }
    bool post(const InputEvent&) override { return true; }
    void warpPointer(InputEvent::Location) override { }
    std::optional<double> number(std::string_view, std::string_view) const override { return std::nullopt; }
};

// One zone lookup per drag event, the pointer sweeping along the left edge (a shared one) and the top.
void zoneAtPointer(benchmark::State& state)
{
    Desktop desktop;
    auto screens = desktop.screens();
    SnapZones::Config config;
    std::size_t step = 0;
    for (auto _ : state) {
        Point pointer { static_cast<double>(step % 1440), static_cast<double>(step % 2 == 0 ? 3 : 898) };
        benchmark::DoNotOptimize(SnapZones::zone(pointer, screens, 250.0, config));
        ++step;
    }
}
BENCHMARK(zoneAtPointer);

// One left-drag event of a confirmed title-bar drag, as the shared tap delivers it: the sample, the
// window-list poll (at most 30 a second of the virtual clock's 8 ms steps), the zone and the overlay.
void titleDragEvent(benchmark::State& state)
{
    VirtualRuntime runtime;
    GrantingEventTapSource source;
    EventTap tap(runtime, source);
    Settings settings(std::make_unique<MemorySettingsBackend>());
    WindowsPreferences preferences(settings);
    Desktop desktop;
    struct NoFeedback final : Haptics, LayoutHud {
        void performAlignment() override { }
        void show(std::string_view, std::string_view) override { }
    } feedback;
    struct NoApplications final : RunningApplications {
        std::vector<AppSnapshot> applications() const override { return {}; }
        std::optional<std::int32_t> frontmostProcess() const override { return std::nullopt; }
        bool activate(std::int32_t, std::optional<std::uint32_t>) override { return false; }
    } applications;
    WindowManager manager(runtime, { desktop, applications, desktop, feedback, feedback }, preferences);
    WindowDragging dragging(runtime, tap, { desktop, desktop, desktop, desktop, desktop, desktop }, manager, preferences);
    dragging.configure({ .snap = true, .chordDrags = false });

    // The topmost window is the last one added; move it to the front of the list.
    std::rotate(desktop.windows.begin(), desktop.windows.end() - 1, desktop.windows.end());
    auto& dragged = desktop.windows.front();
    Point start { dragged.bounds.x + 100, dragged.bounds.y + 10 };
    InputEvent event;
    event.type = EventType::leftMouseDown;
    event.location = { start.x, start.y };
    dragging.handle(event);
    event.type = EventType::leftMouseDragged;

    double x = start.x;
    double direction = 1;
    for (auto _ : state) {
        runtime.advance(std::chrono::milliseconds(8));
        double dx = 3 * direction;
        x += dx;
        if (x > 1400 || x < 2)
            direction = -direction;
        dragged.bounds.x += dx;
        event.location.x = x;
        benchmark::DoNotOptimize(dragging.handle(event));
    }
    state.counters["confirmed"] = dragging.titleDrag() && dragging.titleDrag()->state
        == WindowDragging::TitleDragState::confirmed;
}
BENCHMARK(titleDragEvent);

} // namespace
} // namespace quillmar

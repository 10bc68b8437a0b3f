#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "core/desktop/InputEvent.h"
#include "core/eventtap/EventTap.h"
#include "core/runtime/LifetimeGuard.h"
#include "core/runtime/Runtime.h"
#include "core/windows/AX.h"
#include "core/windows/DragClassifier.h"
#include "core/windows/MouseEvents.h"
#include "core/windows/PointerSamples.h"
#include "core/windows/Screens.h"
#include "core/windows/SnapOverlay.h"
#include "core/windows/SnapZones.h"
#include "core/windows/SystemPreferences.h"
#include "core/windows/WindowManager.h"
#include "core/windows/WindowMover.h"
#include "core/windows/WindowServer.h"
#include "core/windows/WindowsPreferences.h"

namespace quillmar {

// Watches the mouse through the shared event tap. A window dragged by its title bar snaps to the layout of
// the screen edge or corner it is dropped on; a window dragged anywhere with the modifier chord held moves
// (left button) or resizes (right button, or Shift). Event locations are top-left global points, as are the
// window server's bounds; zones and overlays are bottom-left. Handlers run on the main thread, as the shared
// tap delivers them, and so does everything here except the mover's writes.
class WindowDragging final {
public:
    static constexpr const char* registrationName = "windows.drag";

    // The title-bar drag's verdict so far.
    enum class TitleDragState : std::uint8_t { undecided, confirmed, resize, abandoned };
    enum class GestureMode { move, resize };

    struct Ports {
        Accessibility& accessibility;
        WindowList& windows;
        Screens& screens;
        SnapOverlay& overlay;
        MouseEvents& mouse;
        SystemPreferences& systemPreferences;
    };

    struct TitleDrag {
        std::uint32_t windowNumber = 0;
        std::int32_t pid = 0;
        Rect startFrame; // top-left
        Point startPointer; // top-left
        Rect lastFrame; // the window's bounds at the last poll
        std::optional<double> lastPoll; // uptime seconds
        TitleDragState state = TitleDragState::undecided;
        std::size_t zone = noLayoutIndex;
        std::optional<ScreenInfo> zoneScreen;
    };

    struct Gesture {
        GestureMode mode = GestureMode::move;
        MouseButton button = MouseButton::left;
        AXElement window;
        std::uint32_t windowNumber = 0;
        std::int32_t pid = 0;
        AXElement app;
        bool enhancedWasOn = false;
        Rect startFrame; // top-left
        Point startPointer; // top-left
        ResizeEdges edges;
        bool passedThreshold = false;
        Rect lastFrame;
        std::optional<SnapZones::Zone> zone;
        std::optional<ScreenInfo> zoneScreen; // the screen `zone` was found on, as it was then
        InputEvent heldMouseDown;
    };

    // What a snapped window had before its snap, and the frame it was snapped to (top-left).
    struct SnapRecord {
        Size originalSize;
        Rect snappedFrame;
    };

    // Thresholds of the title-bar drag, in points unless said otherwise.
    static constexpr double sizeChangeLimit = 2.0; // a larger change of size is a resize
    static constexpr double windowMoveMinimum = 2.0;
    static constexpr double pointerMoveMinimum = 0.5;
    static constexpr double followCosine = 0.6;
    static constexpr double followRatioMinimum = 0.2;
    static constexpr double followRatioMaximum = 1.8;
    static constexpr double abandonDistance = 24.0;
    static constexpr double confirmedPollInterval = 1.0 / 30.0; // seconds
    static constexpr std::size_t snappedLimit = 64;
    static constexpr double unsnapTolerance = 6.0;
    // Modifier drags.
    static constexpr double gestureThreshold = 6.0;
    static constexpr double minimumWidth = 160.0;
    static constexpr double minimumHeight = 100.0;
    static constexpr Duration gestureCleanupDelay = seconds(0.4);

    WindowDragging(Runtime& runtime, EventTap& tap, Ports ports, WindowManager& manager,
        const WindowsPreferences& preferences);
    // Removes the tap registration.
    ~WindowDragging();

    WindowDragging(const WindowDragging&) = delete;
    WindowDragging& operator=(const WindowDragging&) = delete;

    // Registers "windows.drag" for what is on: title-bar snapping only observes the left button's events
    // (listen-only); chord drags must swallow events, so they make the registration a filter over both
    // buttons. Both off removes the registration and hides the overlay. Reads the Dock's top-drag preference.
    struct Modes {
        bool snap = false; // title-bar snapping
        bool chordDrags = false; // moving and resizing with the modifier chord held
    };
    void configure(Modes modes);

    // The tap's handler: the event to let on (possibly with its location clamped), or none to swallow it.
    std::optional<InputEvent> handle(const InputEvent& event);

    // Applies `layout` to the window `windowID` of `pid` on `screen` without feedback, then remembers its
    // `original` size for a later unsnap.
    void snap(std::uint32_t windowID, std::int32_t pid, WindowLayout layout, const ScreenInfo& screen, Size original);

    // The snap zone under `pointer` (top-left) at the present drag speed.
    std::optional<SnapZones::Zone> zone(Point pointer);

    // When a snapped window starts to follow the pointer while still at its snapped size, gives it back its
    // size from before the snap, placed so the pointer keeps its relative place along the title bar.
    void unsnapIfNeeded(std::uint32_t windowNumber, std::int32_t pid, const Rect& frame, Point pointer);

    const std::optional<TitleDrag>& titleDrag() const { return m_titleDrag; }
    const std::optional<Gesture>& gesture() const { return m_gesture; }
    const std::vector<std::pair<std::uint32_t, SnapRecord>>& snapped() const { return m_snapped; }
    bool topDragOpensMissionControl() const { return m_topDragOpensMissionControl; }
    WindowMover& mover() { return m_mover; }

private:
    double now() const;
    std::vector<ScreenInfo> screens() const;
    // The zone under `pointer` (top-left) and its screen, from one reading of the screen list: displays may
    // come and go or reorder between two reads, so a zone's index is never looked up in another reading.
    std::optional<std::pair<SnapZones::Zone, ScreenInfo>> zoneWithScreen(Point pointer);
    void showZone(const std::optional<std::pair<SnapZones::Zone, ScreenInfo>>& zone, const Rect& frame);
    void hideOverlay();
    void recordSnap(std::uint32_t windowID, Size original);

    void beginTitleDrag(const InputEvent& event);
    std::optional<InputEvent> dragTitle(const InputEvent& event);
    void classify(TitleDrag& drag, const Rect& bounds, Point pointer);
    void endTitleDrag();

    bool beginGesture(const InputEvent& event);
    void dragGesture(const InputEvent& event);
    std::optional<InputEvent> endGesture(const InputEvent& event);

    Runtime& m_runtime;
    EventTap& m_tap;
    Ports m_ports;
    AX m_ax;
    WindowServer m_server;
    WindowManager& m_manager;
    const WindowsPreferences& m_preferences;
    WindowMover m_mover;

    bool m_snapOn = false;
    bool m_chordOn = false;
    bool m_registered = false;
    bool m_listenOnly = true;
    bool m_topDragOpensMissionControl = true;
    bool m_overlayShown = false;
    PointerSamples m_samples;
    std::optional<TitleDrag> m_titleDrag;
    std::optional<Gesture> m_gesture;
    std::vector<std::pair<std::uint32_t, SnapRecord>> m_snapped; // oldest first
    // Last: ends before anything else goes.
    LifetimeGuard m_guard;
};

} // namespace quillmar

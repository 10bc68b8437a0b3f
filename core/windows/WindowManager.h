#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <vector>

#include "core/hotkeys/ShortcutAction.h"
#include "core/runtime/LifetimeGuard.h"
#include "core/runtime/Runtime.h"
#include "core/windows/AX.h"
#include "core/windows/Haptics.h"
#include "core/windows/LayoutHud.h"
#include "core/windows/RunningApplications.h"
#include "core/windows/Screens.h"
#include "core/windows/WindowLayout.h"
#include "core/windows/WindowsPreferences.h"

namespace quillmar {

// Whether an action confirms itself with a haptic tap and the heads-up display.
enum class Feedback { off, on };
// Which way `moveToDisplay` goes through the ordered screens.
enum class DisplayDirection { previous, next };

// Moves and resizes the focused window of the frontmost application: layouts, toggle maximise, the move to
// another display and the undo of the last layout. Window frames given to and returned by the accessibility
// layer are top-left (y down); layout geometry is computed in the screens' bottom-left (y up) space.
// Every entry point does nothing while Accessibility is not trusted. Main thread.
class WindowManager final {
public:
    using Layout = WindowLayout;

    struct Ports {
        Accessibility& accessibility;
        RunningApplications& applications;
        Screens& screens;
        Haptics& haptics;
        LayoutHud& hud;
    };

    // One window's frame from before a layout first touched it (top-left).
    struct HistoryEntry {
        AXElement window;
        Rect frame;
    };

    static constexpr std::size_t historyLimit = 50;
    // A frame read back 0.3 s after a move that is off the target by more than 16 points (summed over the
    // left edge, the top edge, the width and the height) is written once more.
    static constexpr Duration readBackDelay = seconds(0.3);
    static constexpr double readBackTolerance = 16.0;
    // A window within 4 points of the maximise frame on each of x, y, width and height counts as maximised.
    static constexpr double maximizedTolerance = 4.0;
    static constexpr const char* restoredTitle = "Restored";
    static constexpr const char* restoredSymbol = "arrow.uturn.backward";

    WindowManager(Runtime& runtime, Ports ports, const WindowsPreferences& preferences);
    ~WindowManager();

    WindowManager(const WindowManager&) = delete;
    WindowManager& operator=(const WindowManager&) = delete;

    // Applies `layout` to the focused window on the screen that holds it, with feedback.
    void apply(Layout layout);
    // Applies `layout` to `window` within `screen`'s visible frame.
    void apply(Layout layout, AXElement window, const ScreenInfo& screen, Feedback feedback);

    // Maximises the focused window, or, when it already is maximised and `restoreWhenMaximized`, returns it to
    // its remembered frame (or to a centred 72 % × 78 % frame when none is remembered).
    void toggleMaximize(bool restoreWhenMaximized);

    // Moves the focused window to the neighbouring display, keeping its relative place and size within the
    // visible frames. Displays are ordered left to right by their frames' minX, then top to bottom
    // (greater maxY first); the order wraps around. Nothing with a single display.
    void moveToDisplay(DisplayDirection direction);

    // Returns the focused window to the frame it had before its last remembered layout.
    void restore();

    // Runs a window shortcut action (layouts, restore, the display moves); false for other actions.
    bool perform(ShortcutAction action);

    // The focused window of the frontmost application, or its main window, or its first usable window.
    std::optional<AXElement> focusedWindow();

    // The focused window with its frame (top-left) and its screen; none without trust or when any is missing.
    struct FocusedPlacement {
        AXElement window;
        Rect frame;
        ScreenInfo screen;
    };
    std::optional<FocusedPlacement> focusedPlacement();
    // Whether a window element can be laid out (role, subrole, minimised, full screen, settable, size).
    bool isUsable(AXElement window) const;

    // Position and size, top-left; none when either is missing.
    std::optional<Rect> frame(AXElement window) const;

    // Moves and resizes `window` to `frame` (top-left), checking the result 0.3 s later on the main queue.
    void set(AXElement window, const Rect& frame);

    // The screen whose frame overlaps `frame` (top-left) the most; the first screen when none overlaps.
    std::optional<ScreenInfo> screen(const Rect& frame) const;

    // Converts a frame between the top-left and the bottom-left spaces, about the main display's height.
    Rect toAppKit(const Rect& frame) const;

    // Keeps `frame` (top-left) as `window`'s frame from before its first layout; a window already kept keeps
    // its first entry. The oldest entry goes when the history is full.
    void remember(AXElement window, const Rect& frame);
    const std::deque<HistoryEntry>& history() const { return m_history; }

private:
    void feedback(std::string_view title, std::string_view symbol);
    void writeFrame(AXElement window, const Rect& frame);
    std::optional<HistoryEntry> historyEntry(AXElement window) const;

    Runtime& m_runtime;
    Ports m_ports;
    AX m_ax;
    const WindowsPreferences& m_preferences;
    std::deque<HistoryEntry> m_history;
    // Last: ends before anything else goes, so the delayed read-back does nothing after the manager.
    LifetimeGuard m_guard;
};

} // namespace quillmar

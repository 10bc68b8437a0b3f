#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/desktop/KeyboardLayout.h"
#include "core/eventtap/EventTap.h"
#include "core/runtime/LifetimeGuard.h"
#include "core/runtime/Runtime.h"
#include "core/switcher/AppRecency.h"
#include "core/switcher/AppTerminator.h"
#include "core/switcher/ClickMonitor.h"
#include "core/switcher/SwitcherAction.h"
#include "core/switcher/SwitcherKeyEvent.h"
#include "core/switcher/SwitcherModel.h"
#include "core/switcher/SwitcherOptions.h"
#include "core/switcher/SwitcherPanel.h"
#include "core/switcher/SystemSwitcherTakeover.h"
#include "core/windows/WindowActions.h"
#include "core/windows/WindowCatalog.h"

namespace quillmar {

// What the controller reaches outside itself. Everything must outlive the controller.
struct SwitcherPorts {
    EventTap& eventTap;
    WindowCatalog& catalog;
    WindowActions& actions;
    AppRecency& recency;
    AppTerminator& terminator;
    SwitcherPanel& panel;
    ClickMonitor& clicks;
    KeyboardLayout& keyboard;
    SystemSwitcherTakeover& takeover;
};

// The app and window switcher's key handling. Holding the trigger modifier and pressing Tab starts a
// session (idle → active); the panel appears after `presentDelay` (active → shown); releasing the trigger,
// Return or a click on a card switches to the selected card and ends it; Escape with an empty query, a
// click outside, a suspension or disabling cancels it.
//
// The tap handler only decides whether an event is swallowed, from the state as it stands; the work itself
// is posted to the main queue in the order the events came, so the handler returns within the tap's budget.
// Confined to the main thread, like the tap's handlers.
class SwitcherController final {
public:
    using OptionsSource = std::function<SwitcherOptions()>;
    // True while another modal input owner (a recording of a shortcut, a capture) has the keyboard.
    using SuspensionCheck = std::function<bool()>;

    static constexpr const char* tapName = "windows.switcher";
    static constexpr const char* recencyClient = "switcher";

    // A quick trigger-Tab-release switches without the panel ever showing.
    static constexpr Duration presentDelay = std::chrono::milliseconds(100);
    // Shift pressed during a session steps back at once; the Tab of the same Shift-Tab chord arriving
    // within this time is not a second step.
    static constexpr Duration shiftTabWindow = std::chrono::milliseconds(350);
    // Apps animate a window away before the window list drops it.
    static constexpr Duration closeCheckDelay = std::chrono::milliseconds(300);
    // An app may take a while to save and exit; it is checked this often, this many times (3 s in all),
    // before its cards lose their marks.
    static constexpr Duration quitCheckInterval = std::chrono::milliseconds(500);
    static constexpr int quitCheckAttempts = 6;
    // How long an armed action key waits for its second press.
    static constexpr Duration secondPressWindow = std::chrono::milliseconds(1500);
    static constexpr std::int64_t maxPendingOffset = 64;

    SwitcherController(Runtime& runtime, SwitcherModel& model, SwitcherPorts ports, OptionsSource options,
        SuspensionCheck isSuspended);
    // Disables itself; queued work then does nothing.
    ~SwitcherController();

    SwitcherController(const SwitcherController&) = delete;
    SwitcherController& operator=(const SwitcherController&) = delete;

    // Registers the tap handler and claims app recency (with warm previews when previews are on), and lets
    // the takeover have Command-Tab for a Command trigger; disabling ends a session and undoes all three.
    void setEnabled(bool enabled);
    bool isEnabled() const { return m_enabled; }

    // Reads the trigger again and tells the takeover.
    void refreshTrigger();

    // The shared tap's handler: the event, or nothing to swallow it.
    std::optional<InputEvent> handle(const InputEvent& event);
    // The same decision for an event already read.
    TapVerdict handle(const SwitcherKeyEvent& event);

    // Opens a pinned session (no modifier held): shown at once, open until Return, Escape or a click.
    void openPinned();

    // The panel's callbacks: the pointer is over card `index`; card `index` was clicked.
    void hover(std::size_t index);
    void choose(std::size_t index);

    bool isActive() const { return m_active; }
    bool isShown() const { return m_shown; }
    bool isReady() const { return m_ready; }
    std::int64_t pendingOffset() const { return m_pendingOffset; }
    std::uint64_t token() const { return m_token; }
    SwitcherTrigger trigger() const { return m_trigger; }

private:
    void assertMainThread() const;
    void forward(std::function<void()> work);
    bool triggerHeld(std::uint64_t flags) const;

    // How a session starts: `reverse` selects backwards (Shift was held), `pinned` keeps the panel open
    // without a held trigger.
    struct Start {
        bool reverse = false;
        bool pinned = false;
    };
    void begin(Start start);
    void presentAfterDelay(std::uint64_t token);
    void present();
    void key(const SwitcherKeyEvent& event);
    void flagsChanged(std::uint64_t flags);
    void move(std::int64_t step, bool wrap);
    void commit();
    void end();
    void closeSelected();
    void quitSelected();
    void verifyClose(std::uint32_t windowNumber, std::uint64_t token);
    void verifyQuit(std::int32_t pid, std::set<std::string> ids, int attempt, std::uint64_t token);
    void selectionChanged();

    // The card a commit would pick now: the selection once shown, the initial selection moved by the
    // pending steps before.
    std::optional<std::size_t> currentIndex() const;
    void setCurrentIndex(std::size_t index);
    std::optional<SwitcherItem> currentItem() const;
    // Whether `action` on `item` was armed by a first press recently enough; arms it when not.
    bool confirmSecondPress(SwitcherAction action, const SwitcherItem& item);
    std::optional<AppSnapshot> appOf(std::int32_t pid) const;

    Runtime& m_runtime;
    SwitcherModel& m_model;
    SwitcherPorts m_ports;
    OptionsSource m_options;
    SuspensionCheck m_isSuspended;

    bool m_enabled = false;
    SwitcherTrigger m_trigger = SwitcherTrigger::option;
    SwitcherOptions m_sessionOptions;

    bool m_active = false;
    bool m_shown = false;
    bool m_ready = false;
    std::int64_t m_pendingOffset = 0;
    std::optional<Duration> m_lastShiftStep; // uptime
    bool m_shiftDown = false;
    std::uint64_t m_token = 0;
    std::size_t m_initialSelection = 0;
    WorkItemHandle m_presentItem;
    Duration m_armedAt { 0 };

    std::vector<AppSnapshot> m_apps;
    std::map<std::uint32_t, WindowEntry> m_entries; // this session's windows by number

    // Last: ends with the controller; work it posted does nothing after that.
    LifetimeGuard m_guard;
};

} // namespace quillmar

#pragma once

#include <optional>

#include "core/runtime/Clock.h"
#include "core/shell/StatusItemHost.h"

namespace quillmar {

// What clicks on the menu-bar item do to the panel. A click that lands just after the panel closed itself
// (the click took the focus away from it) must not reopen it at once: a show within `reopenGuard` of the
// last hide is ignored. Main thread only.
class StatusItemController final {
public:
    static constexpr Duration reopenGuard = std::chrono::milliseconds(300);
    static constexpr auto openSettingsNotification = "quillmarOpenSettings";

    StatusItemController(StatusItemHost& host, const Clock& clock);

    // A click, or the togglePanel action: hides a visible panel, otherwise shows it unless the guard holds.
    void click();
    void toggle() { click(); }

    // Shows the panel (reopening the application does this); not guarded.
    void show();
    void hide();

    // The host reports that the panel hid itself (it lost the focus).
    void panelDidHide();

    // The settings menu item.
    void menuSettings();

private:
    StatusItemHost& m_host;
    const Clock& m_clock;
    std::optional<Duration> m_lastHide;
};

} // namespace quillmar

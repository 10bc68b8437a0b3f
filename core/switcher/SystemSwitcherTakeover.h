#pragma once

#include "core/settings/Settings.h"
#include "core/switcher/SymbolicHotKeys.h"

namespace quillmar {

// Turns the system's Command-Tab application switcher off while the switcher owns Command-Tab, and on
// again otherwise. The user-defaults marker "windows.switcher.systemSwitcherOff" is true while it is off.
// Construction turns the system switcher back on first, so a crash while it was off never leaves the user
// without Command-Tab past the next launch. Main thread.
class SystemSwitcherTakeover final {
public:
    static constexpr SettingKey<bool> markerKey { "windows.switcher.systemSwitcherOff", false };

    SystemSwitcherTakeover(SymbolicHotKeys& hotKeys, Settings& settings);
    // Gives Command-Tab back when this object had taken it.
    ~SystemSwitcherTakeover();

    SystemSwitcherTakeover(const SystemSwitcherTakeover&) = delete;
    SystemSwitcherTakeover& operator=(const SystemSwitcherTakeover&) = delete;

    // `wanted`: the switcher is enabled with the Command trigger. The system switcher is turned off only
    // when its shortcut is Command-Tab itself (a user who moved it elsewhere keeps it); otherwise, and
    // whenever not wanted, it is turned on and the marker removed.
    void update(bool wanted);

    // Whether this object has the system switcher turned off now.
    bool isSystemSwitcherOff() const { return m_off; }

private:
    void giveBack();

    SymbolicHotKeys& m_hotKeys;
    Settings& m_settings;
    bool m_off = false;
};

} // namespace quillmar

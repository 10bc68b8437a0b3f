#pragma once

#include "core/windows/WindowsPreferences.h"

namespace quillmar {

// The user's switcher preferences ("windows.switcher.*") as one value, taken when a session starts so that
// a session sees one consistent set. The defaults are the settings' defaults.
struct SwitcherOptions {
    SwitcherTrigger trigger = SwitcherTrigger::option;
    SwitcherSpaces spaces = SwitcherSpaces::all;
    bool currentDisplayOnly = false;
    bool minimizedWindows = true;
    bool hiddenApps = true;
    bool windowlessApps = true;
    bool actionKeys = true; // "w" closes and "q" quits the selected card's window or app
    bool previews = true;

    friend bool operator==(const SwitcherOptions&, const SwitcherOptions&) = default;
};

inline SwitcherOptions switcherOptions(const WindowsPreferences& preferences)
{
    return { preferences.switcherTrigger(), preferences.switcherSpaces(), preferences.switcherCurrentDisplay(),
        preferences.switcherMinimized(), preferences.switcherHiddenApps(), preferences.switcherWindowlessApps(),
        preferences.switcherActionKeys(), preferences.switcherPreviews() };
}

} // namespace quillmar

#pragma once

#include "core/windows/WindowsPreferences.h"

namespace quillmar {

// The user's switcher preferences ("windows.switcher.*") as one value, taken when a session starts so that
// a session sees one consistent set. The defaults are the settings' defaults.
struct SwitcherOptions {
    using P = WindowsPreferences;

    SwitcherTrigger trigger = *P::switcherTriggerNamed(P::switcherTriggerKey.defaultValue);
    SwitcherSpaces spaces = *P::switcherSpacesNamed(P::switcherSpacesKey.defaultValue);
    bool currentDisplayOnly = P::switcherCurrentDisplayKey.defaultValue;
    bool minimizedWindows = P::switcherMinimizedKey.defaultValue;
    bool hiddenApps = P::switcherHiddenAppsKey.defaultValue;
    bool windowlessApps = P::switcherWindowlessAppsKey.defaultValue;
    bool actionKeys = P::switcherActionKeysKey.defaultValue; // "w" closes and "q" quits the selected card's window or app
    bool previews = P::switcherPreviewsKey.defaultValue;

    friend bool operator==(const SwitcherOptions&, const SwitcherOptions&) = default;
};

} // namespace quillmar

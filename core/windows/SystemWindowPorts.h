#pragma once

#include <memory>

#include "core/windows/Accessibility.h"
#include "core/windows/Haptics.h"
#include "core/windows/LayoutHud.h"
#include "core/windows/MouseEvents.h"
#include "core/windows/RunningApplications.h"
#include "core/windows/Screens.h"
#include "core/windows/SnapOverlay.h"
#include "core/windows/SystemPreferences.h"
#include "core/windows/WindowList.h"

namespace quillmar {

// The ports of window management on the system being built, owned together. The platform layer defines it once
// per system in quillmar_windows_system (platform/<os>); a port without a backend there is its Null twin
// (platform/null).
struct SystemWindowPorts {
    std::unique_ptr<Accessibility> accessibility;
    std::unique_ptr<WindowList> windows;
    std::unique_ptr<Screens> screens;
    std::unique_ptr<RunningApplications> applications;
    std::unique_ptr<Haptics> haptics;
    std::unique_ptr<LayoutHud> hud;
    std::unique_ptr<SnapOverlay> overlay;
    std::unique_ptr<MouseEvents> mouse;
    std::unique_ptr<SystemPreferences> systemPreferences;
};

SystemWindowPorts makeSystemWindowPorts();

} // namespace quillmar

#include "core/windows/SystemWindowPorts.h"
#include "platform/null/NullWindowPorts.h"

namespace quillmar {

SystemWindowPorts makeSystemWindowPorts()
{
    SystemWindowPorts ports;
    ports.accessibility = std::make_unique<NullAccessibility>();
    ports.windows = std::make_unique<NullWindowList>();
    ports.screens = std::make_unique<NullScreens>();
    ports.applications = std::make_unique<NullRunningApplications>();
    ports.haptics = std::make_unique<NullHaptics>();
    ports.hud = std::make_unique<NullLayoutHud>();
    ports.overlay = std::make_unique<NullSnapOverlay>();
    ports.mouse = std::make_unique<NullMouseEvents>();
    ports.systemPreferences = std::make_unique<NullSystemPreferences>();
    return ports;
}

} // namespace quillmar

#include "core/switcher/SystemSwitcherTakeover.h"

#include "core/base/Diagnostics.h"
#include "core/desktop/KeyCodes.h"

namespace quillmar {

namespace {

constexpr std::uint64_t shortcutModifiers = EventFlags::shift | EventFlags::control | EventFlags::option
    | EventFlags::command;

bool isCommandTab(const SymbolicHotKeys::Value& value)
{
    return value.keyCode == KeyCode::tab && (value.flags & shortcutModifiers) == EventFlags::command;
}

} // namespace

SystemSwitcherTakeover::SystemSwitcherTakeover(SymbolicHotKeys& hotKeys, Settings& settings)
    : m_hotKeys(hotKeys)
    , m_settings(settings)
{
    giveBack();
}

SystemSwitcherTakeover::~SystemSwitcherTakeover()
{
    if (m_off)
        giveBack();
}

void SystemSwitcherTakeover::update(bool wanted)
{
    if (wanted) {
        auto value = m_hotKeys.value(SymbolicHotKeys::applicationSwitcher);
        if (value && isCommandTab(*value)) {
            if (m_hotKeys.setEnabled(SymbolicHotKeys::applicationSwitcher, false)) {
                m_off = true;
                m_settings.set(markerKey, true);
            } else {
                diagnostic("switcher: the system switcher could not be turned off");
            }
            return;
        }
    }
    giveBack();
}

void SystemSwitcherTakeover::giveBack()
{
    // Only worth a line when it had been turned off: systems without the functions fail every call.
    bool wasOff = m_off || m_settings.contains(markerKey.name);
    if (!m_hotKeys.setEnabled(SymbolicHotKeys::applicationSwitcher, true) && wasOff)
        diagnostic("switcher: the system switcher could not be turned back on");
    m_off = false;
    m_settings.remove(markerKey.name);
}

} // namespace quillmar

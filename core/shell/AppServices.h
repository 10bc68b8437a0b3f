#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "core/eventtap/EventTap.h"
#include "core/hotkeys/HotKeyCenter.h"
#include "core/hotkeys/ShortcutStore.h"
#include "core/runtime/Runtime.h"
#include "core/settings/Settings.h"
#include "core/shell/FeatureStore.h"
#include "core/shell/Modules.h"
#include "core/shell/ShellServices.h"

namespace quillmar {

// The service container created at launch: owns the feature and shortcut stores, the hot-key registrar,
// the modules and the long-lived services, applies the feature switches and dispatches shortcut actions.
// Main thread only.
class AppServices final {
public:
    // The system side the container needs: global hot keys and the input event stream.
    struct SystemPorts {
        HotKeyRegistrar& hotKeys;
        EventTapSource& events;
    };

    AppServices(Runtime& runtime, Settings& settings, SystemPorts ports, ShellServices services, Modules modules);
    ~AppServices();

    AppServices(const AppServices&) = delete;
    AppServices& operator=(const AppServices&) = delete;

    // Installs the store callbacks and the hot-key handler, then applies the switches and the readouts.
    void start();

    // Brings every service and module into line with the switches, in a fixed order, and re-registers
    // the global shortcuts. Runs at start and after every switch change.
    void applyFeatures();

    // The (action, shortcut) pairs that should be global hot keys now: bound actions whose owning feature
    // is on, in declaration order; togglePanel, which no feature owns, always.
    std::vector<std::pair<ShortcutAction, Shortcut>> hotKeyList() const;
    void registerHotKeys();

    // Runs a shortcut action. An action whose owning feature is off does nothing.
    void perform(ShortcutAction action);

    void applyMenuBarReadouts();
    void applyLayout(ShortcutAction action);

    // What togglePanel does; installed by the application delegate once the status item exists.
    void setPanelToggle(std::function<void()> toggle);

    bool launchesAtLogin() const;
    void setLaunchesAtLogin(bool on);

    FeatureStore& features() { return m_features; }
    ShortcutStore& shortcuts() { return m_shortcuts; }
    HotKeyCenter& hotKeys() { return m_hotKeys; }
    // The one event tap that features share ("windows.drag", "windows.switcher", ...).
    EventTap& eventTap() { return m_eventTap; }
    const Modules& modules() const { return m_modules; }
    ShellServices& services() { return m_services; }
    Settings& settings() { return m_settings; }

private:
    Runtime& m_runtime;
    Settings& m_settings;
    FeatureStore m_features;
    ShortcutStore m_shortcuts;
    HotKeyCenter m_hotKeys;
    EventTap m_eventTap;
    ShellServices m_services;
    Modules m_modules;
    std::function<void()> m_panelToggle;
    // Callbacks hold this weakly, so that one arriving after the container is gone does nothing.
    std::shared_ptr<AppServices*> m_self;
};

} // namespace quillmar

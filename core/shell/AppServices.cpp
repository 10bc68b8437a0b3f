#include "core/shell/AppServices.h"

namespace quillmar {

namespace {

bool isWindowLayout(ShortcutAction action)
{
    return feature(action) == FeatureID::windowLayout;
}

} // namespace

AppServices::AppServices(Runtime& runtime, Settings& settings, SystemPorts ports, ShellServices services,
    Modules modules)
    : m_runtime(runtime)
    , m_settings(settings)
    , m_features(settings, runtime.mainQueue())
    , m_shortcuts(settings, runtime.mainQueue())
    , m_hotKeys(ports.hotKeys, runtime.mainQueue())
    , m_eventTap(runtime, ports.events)
    , m_services(std::move(services))
    , m_modules(std::move(modules))
    , m_self(std::make_shared<AppServices*>(this))
{
}

AppServices::~AppServices()
{
    m_features.setChangeCallback(nullptr);
    m_shortcuts.setChangeCallback(nullptr);
    m_hotKeys.setHandler(nullptr);
}

void AppServices::start()
{
    m_runtime.mainQueue().assertMainThread("app services");
    std::weak_ptr<AppServices*> weak = m_self;
    m_features.setChangeCallback([weak](FeatureID, bool) {
        if (auto self = weak.lock())
            (*self)->applyFeatures();
    });
    m_shortcuts.setChangeCallback([weak] {
        if (auto self = weak.lock())
            (*self)->registerHotKeys();
    });
    m_hotKeys.setHandler([weak](ShortcutAction action) {
        if (auto self = weak.lock())
            (*self)->perform(action);
    });
    applyFeatures();
    applyMenuBarReadouts();
}

void AppServices::applyFeatures()
{
    m_runtime.mainQueue().assertMainThread("app services");
    auto on = m_features.enabled();
    auto& services = m_services;

    if (on.contains(FeatureID::clipboard)) {
        services.clipboard->setCleansLinks(on.contains(FeatureID::cleanLinks));
        services.clipboard->start();
    } else {
        services.clipboard->stop();
    }
    if (!on.contains(FeatureID::keepAwake) && services.keepAwake->isActive())
        services.keepAwake->stop();
    if (!on.contains(FeatureID::timer) && services.countdown->isRunning())
        services.countdown->cancel();
    services.alerts->setEnabled(on.contains(FeatureID::monitor));
    services.snippets->setEnabled(on.contains(FeatureID::snippets));
    if (!on.contains(FeatureID::sound))
        services.audioDevices->stopWatching();
    services.quitProtection->setEnabled(on.contains(FeatureID::quitProtection));
    // The input features share one event tap, so any switch may change what it must listen to.
    services.input->setNeedsRefresh();
    applyMenuBarReadouts();
    for (auto* module : m_modules.all())
        module->apply(m_features);
    registerHotKeys();
}

std::vector<std::pair<ShortcutAction, Shortcut>> AppServices::hotKeyList() const
{
    std::vector<std::pair<ShortcutAction, Shortcut>> list;
    auto on = m_features.enabled();
    for (auto action : allShortcutActions()) {
        auto shortcut = m_shortcuts.shortcut(action);
        if (!shortcut)
            continue;
        if (auto owner = feature(action); owner && !on.contains(*owner))
            continue;
        list.emplace_back(action, *shortcut);
    }
    return list;
}

void AppServices::registerHotKeys()
{
    m_hotKeys.registerShortcuts(hotKeyList());
}

void AppServices::perform(ShortcutAction action)
{
    m_runtime.mainQueue().assertMainThread("app services");
    auto owner = feature(action);
    if (owner && !m_features.isEnabled(*owner))
        return;
    if (action == ShortcutAction::togglePanel) {
        if (m_panelToggle)
            m_panelToggle();
        return;
    }
    if (action == ShortcutAction::keepAwake) {
        m_services.keepAwake->toggle();
        return;
    }
    if (isWindowLayout(action)) {
        applyLayout(action);
        return;
    }
    if (!owner)
        return;
    if (auto* module = m_modules.moduleOwning(*owner))
        module->perform(action);
}

void AppServices::applyMenuBarReadouts()
{
    m_services.menuBarReadouts->apply();
}

void AppServices::applyLayout(ShortcutAction action)
{
    m_services.layout->applyLayout(action);
}

void AppServices::setPanelToggle(std::function<void()> toggle)
{
    m_panelToggle = std::move(toggle);
}

bool AppServices::launchesAtLogin() const
{
    return m_services.loginItems->launchesAtLogin();
}

void AppServices::setLaunchesAtLogin(bool on)
{
    m_services.loginItems->setLaunchesAtLogin(on);
}

} // namespace quillmar

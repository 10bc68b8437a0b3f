#include "core/shell/AppDelegate.h"

#include <algorithm>

namespace quillmar {

AppDelegate::AppDelegate(Runtime& runtime, AppServices& services, Ports ports)
    : m_runtime(runtime)
    , m_services(services)
    , m_ports(ports)
{
}

void AppDelegate::applicationDidFinishLaunching(std::span<const std::string> arguments)
{
    m_runtime.mainQueue().assertMainThread("app delegate");
    m_ports.updater.prepare();

    if (std::find(arguments.begin(), arguments.end(), checkForUpdatesArgument) != arguments.end()) {
        auto& updater = m_ports.updater;
        m_runtime.mainQueue().postAfter(checkForUpdatesDelay, [&updater] { updater.checkForUpdatesVisibly(); });
    }

    m_ports.presence.start();
    m_services.start();

    m_statusItem = std::make_unique<StatusItemController>(m_ports.statusItemHost, m_runtime.clock());
    auto* statusItem = m_statusItem.get();
    m_services.setPanelToggle([statusItem] { statusItem->toggle(); });
    m_ports.statusItemHost.setClickAction([statusItem] { statusItem->click(); });

    m_ports.integrations.start();
}

void AppDelegate::applicationWillTerminate()
{
    m_runtime.mainQueue().assertMainThread("app delegate");
    auto& services = m_services.services();
    services.keepAwake->stop();
    services.clipboard->flush();
    if (services.scratchpad->hasPendingSave())
        services.scratchpad->saveNow();
    for (auto* module : m_services.modules().all())
        module->shutdown();
}

bool AppDelegate::applicationShouldHandleReopen(bool hasVisibleWindows)
{
    if (!hasVisibleWindows && m_statusItem)
        m_statusItem->show();
    return hasVisibleWindows;
}

} // namespace quillmar

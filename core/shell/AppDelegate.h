#pragma once

#include <memory>
#include <span>
#include <string>

#include "core/shell/AppPresence.h"
#include "core/shell/AppServices.h"
#include "core/shell/Integrations.h"
#include "core/shell/SelfUpdater.h"
#include "core/shell/StatusItemController.h"

namespace quillmar {

// The platform-free half of the application delegate: the order of launch, reopen and termination.
// The menu-bar application forwards its delegate callbacks here. Main thread only.
class AppDelegate final {
public:
    struct Ports {
        SelfUpdater& updater;
        AppPresence& presence;
        StatusItemHost& statusItemHost;
        Integrations& integrations;
    };

    static constexpr auto checkForUpdatesArgument = "--check-for-updates";
    static constexpr Duration checkForUpdatesDelay = std::chrono::seconds(3);

    AppDelegate(Runtime& runtime, AppServices& services, Ports ports);

    // `arguments` are the process arguments; "--check-for-updates" asks for a visible check 3 s later.
    void applicationDidFinishLaunching(std::span<const std::string> arguments);

    // Stops keep-awake, flushes the clipboard history, saves a pending scratchpad edit at once, then
    // shuts every module down in order.
    void applicationWillTerminate();

    // Shows the panel when the system reports no visible windows; always answers with the flag given.
    bool applicationShouldHandleReopen(bool hasVisibleWindows);

    // Closing the last window never quits a menu-bar application.
    bool applicationShouldTerminateAfterLastWindowClosed() const { return false; }

    StatusItemController* statusItem() { return m_statusItem.get(); }

private:
    Runtime& m_runtime;
    AppServices& m_services;
    Ports m_ports;
    std::unique_ptr<StatusItemController> m_statusItem;
};

} // namespace quillmar

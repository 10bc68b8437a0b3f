#pragma once

#include "core/shell/AppPresence.h"
#include "core/shell/Integrations.h"
#include "core/shell/SelfUpdater.h"
#include "core/shell/services/AudioDeviceService.h"
#include "core/shell/services/ClipboardService.h"
#include "core/shell/services/CountdownService.h"
#include "core/shell/services/InputRefresher.h"
#include "core/shell/services/KeepAwakeService.h"
#include "core/shell/services/LoginItemService.h"
#include "core/shell/services/MenuBarReadouts.h"
#include "core/shell/services/MonitorAlertsService.h"
#include "core/shell/services/QuitProtectionService.h"
#include "core/shell/services/ScratchpadService.h"
#include "core/shell/services/SnippetService.h"
#include "core/shell/services/WindowLayoutService.h"

namespace quillmar {

// The container's services and the delegate's ports where nothing provides them: each does nothing, is never
// active and has nothing pending. ShellServices starts with these until a module brings the real service.

class NullKeepAwakeService final : public KeepAwakeService {
public:
    bool isActive() const override { return false; }
    void toggle() override { }
    void stop() override { }
};

class NullClipboardService final : public ClipboardService {
public:
    void setCleansLinks(bool) override { }
    void start() override { }
    void stop() override { }
    void flush() override { }
};

class NullCountdownService final : public CountdownService {
public:
    bool isRunning() const override { return false; }
    void cancel() override { }
};

class NullScratchpadService final : public ScratchpadService {
public:
    bool hasPendingSave() const override { return false; }
    void saveNow() override { }
};

class NullSnippetService final : public SnippetService {
public:
    void setEnabled(bool) override { }
};

class NullQuitProtectionService final : public QuitProtectionService {
public:
    void setEnabled(bool) override { }
};

class NullAudioDeviceService final : public AudioDeviceService {
public:
    void stopWatching() override { }
};

class NullMonitorAlertsService final : public MonitorAlertsService {
public:
    void setEnabled(bool) override { }
};

class NullMenuBarReadouts final : public MenuBarReadouts {
public:
    void apply() override { }
};

class NullInputRefresher final : public InputRefresher {
public:
    void setNeedsRefresh() override { }
};

class NullWindowLayoutService final : public WindowLayoutService {
public:
    void applyLayout(ShortcutAction) override { }
};

// Never set to launch at login.
class NullLoginItemService final : public LoginItemService {
public:
    bool launchesAtLogin() const override { return false; }
    void setLaunchesAtLogin(bool) override { }
};

class NullSelfUpdater final : public SelfUpdater {
public:
    void prepare() override { }
    void checkForUpdatesVisibly() override { }
};

class NullAppPresence final : public AppPresence {
public:
    void start() override { }
};

class NullIntegrations final : public Integrations {
public:
    void start() override { }
};

} // namespace quillmar

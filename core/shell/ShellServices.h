#pragma once

#include <memory>

#include "core/shell/NullServices.h"

namespace quillmar {

// The long-lived services the container owns and drives. Each starts as its Null service (NullServices.h)
// until a module provides the real one (and a test a recording fake).
struct ShellServices {
    std::unique_ptr<KeepAwakeService> keepAwake = std::make_unique<NullKeepAwakeService>();
    std::unique_ptr<ClipboardService> clipboard = std::make_unique<NullClipboardService>();
    std::unique_ptr<CountdownService> countdown = std::make_unique<NullCountdownService>();
    std::unique_ptr<ScratchpadService> scratchpad = std::make_unique<NullScratchpadService>();
    std::unique_ptr<SnippetService> snippets = std::make_unique<NullSnippetService>();
    std::unique_ptr<QuitProtectionService> quitProtection = std::make_unique<NullQuitProtectionService>();
    std::unique_ptr<AudioDeviceService> audioDevices = std::make_unique<NullAudioDeviceService>();
    std::unique_ptr<MonitorAlertsService> alerts = std::make_unique<NullMonitorAlertsService>();
    std::unique_ptr<MenuBarReadouts> menuBarReadouts = std::make_unique<NullMenuBarReadouts>();
    std::unique_ptr<InputRefresher> input = std::make_unique<NullInputRefresher>();
    std::unique_ptr<WindowLayoutService> layout = std::make_unique<NullWindowLayoutService>();
    std::unique_ptr<LoginItemService> loginItems = std::make_unique<NullLoginItemService>();
};

} // namespace quillmar

#pragma once

#include <memory>

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

// The long-lived services the container owns and drives. Each starts as its do-nothing base, which a
// subsystem replaces with its real service when it is built (and a test with a recording fake).
struct ShellServices {
    std::unique_ptr<KeepAwakeService> keepAwake = std::make_unique<KeepAwakeService>();
    std::unique_ptr<ClipboardService> clipboard = std::make_unique<ClipboardService>();
    std::unique_ptr<CountdownService> countdown = std::make_unique<CountdownService>();
    std::unique_ptr<ScratchpadService> scratchpad = std::make_unique<ScratchpadService>();
    std::unique_ptr<SnippetService> snippets = std::make_unique<SnippetService>();
    std::unique_ptr<QuitProtectionService> quitProtection = std::make_unique<QuitProtectionService>();
    std::unique_ptr<AudioDeviceService> audioDevices = std::make_unique<AudioDeviceService>();
    std::unique_ptr<MonitorAlertsService> alerts = std::make_unique<MonitorAlertsService>();
    std::unique_ptr<MenuBarReadouts> menuBarReadouts = std::make_unique<MenuBarReadouts>();
    std::unique_ptr<InputRefresher> input = std::make_unique<InputRefresher>();
    std::unique_ptr<WindowLayoutService> layout = std::make_unique<WindowLayoutService>();
    std::unique_ptr<LoginItemService> loginItems = std::make_unique<LoginItemService>();
};

} // namespace quillmar

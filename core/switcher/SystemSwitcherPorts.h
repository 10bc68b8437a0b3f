#pragma once

#include <memory>

#include "core/switcher/AppRecency.h"
#include "core/switcher/AppTerminator.h"
#include "core/switcher/ClickMonitor.h"
#include "core/switcher/SwitcherPanel.h"
#include "core/switcher/SymbolicHotKeys.h"

namespace quillmar {

// The ports of the app and window switcher on the system being built, owned together. The platform layer defines
// it once per system in quillmar_switcher_system (platform/<os>); a port without a backend there is its Null
// twin (platform/null).
struct SystemSwitcherPorts {
    std::unique_ptr<AppRecency> recency;
    std::unique_ptr<AppTerminator> terminator;
    std::unique_ptr<SwitcherPanel> panel;
    std::unique_ptr<ClickMonitor> clicks;
    std::unique_ptr<SymbolicHotKeys> symbolicHotKeys;
};

SystemSwitcherPorts makeSystemSwitcherPorts();

} // namespace quillmar

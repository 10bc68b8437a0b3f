#pragma once

#include <memory>

#include "core/shell/LoginItem.h"
#include "core/shell/SleepInhibitor.h"

namespace quillmar {

// The ports of the application shell on the system being built, owned together. The platform layer defines it
// once per system in quillmar_shell_system (platform/<os>); a port without a backend there is its Null twin
// (platform/null).
struct SystemShellPorts {
    std::unique_ptr<SleepInhibitor> sleepInhibitor;
    std::unique_ptr<LoginItem> loginItem;
};

SystemShellPorts makeSystemShellPorts();

} // namespace quillmar

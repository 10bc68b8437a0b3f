#pragma once

#include <memory>

#include "core/hotkeys/HotKeyRegistrar.h"

namespace quillmar {

// The ports of global hot keys on the system being built, owned together. The platform layer defines it once per
// system in quillmar_hotkeys_system (platform/<os>); a port without a backend there is its Null twin
// (platform/null).
struct SystemHotKeyPorts {
    std::unique_ptr<HotKeyRegistrar> registrar;
};

SystemHotKeyPorts makeSystemHotKeyPorts();

} // namespace quillmar

#pragma once

#include <memory>

#include "core/commandbar/RandomSource.h"

namespace quillmar {

// The ports of the command bar on the system being built, owned together. The platform layer defines it once per
// system in quillmar_commandbar_system (platform/<os>); a port without a backend there is its Null twin
// (platform/null).
struct SystemCommandBarPorts {
    std::unique_ptr<RandomSource> random;
};

SystemCommandBarPorts makeSystemCommandBarPorts();

} // namespace quillmar

#pragma once

#include <memory>

#include "core/apps/KernelRelease.h"

namespace quillmar {

// The ports of the installed applications on the system being built, owned together. The platform layer defines
// it once per system in quillmar_apps_system (platform/<os>); a port without a backend there is its Null twin
// (platform/null).
struct SystemAppsPorts {
    std::unique_ptr<KernelRelease> kernelRelease;
};

SystemAppsPorts makeSystemAppsPorts();

} // namespace quillmar

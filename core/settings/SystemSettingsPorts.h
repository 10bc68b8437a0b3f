#pragma once

#include <memory>

#include "core/settings/FileLocations.h"

namespace quillmar {

// The ports of settings on the system being built, owned together. The platform layer defines it once per system
// in quillmar_settings_system (platform/<os>); a port without a backend there is its Null twin (platform/null).
struct SystemSettingsPorts {
    std::unique_ptr<FileLocations> fileLocations;
};

SystemSettingsPorts makeSystemSettingsPorts();

} // namespace quillmar

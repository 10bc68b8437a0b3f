#pragma once

#include <memory>

#include "core/uninstaller/Uninstaller.h"

namespace quillmar {

// The uninstaller's ports on the system being built, owned together. The platform layer defines it once per
// system in quillmar_uninstaller_system (platform/<os>): the freedesktop.org Trash and lstat(2) sizes on Linux,
// the Null twins (platform/null) elsewhere.
struct SystemUninstallerPorts {
    std::unique_ptr<SigningInfo> signing;
    std::unique_ptr<DiskUsage> diskUsage;
    std::unique_ptr<Recycler> recycler;

    UninstallerPorts ports() const { return { *signing, *diskUsage, *recycler }; }
};

SystemUninstallerPorts makeSystemUninstallerPorts();

} // namespace quillmar

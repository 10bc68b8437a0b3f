#include "core/uninstaller/SystemUninstallerPorts.h"
#include "platform/linux/GioRecycler.h"
#include "platform/null/NullUninstallerPorts.h"
#include "platform/posix/PosixDiskUsage.h"

namespace quillmar {

SystemUninstallerPorts makeSystemUninstallerPorts()
{
    // Linux bundles carry no code signature the core can read.
    return { std::make_unique<NullSigningInfo>(), std::make_unique<PosixDiskUsage>(),
        std::make_unique<GioRecycler>() };
}

} // namespace quillmar

#include "core/uninstaller/SystemUninstallerPorts.h"
#include "platform/null/NullUninstallerPorts.h"

namespace quillmar {

SystemUninstallerPorts makeSystemUninstallerPorts()
{
    SystemUninstallerPorts ports;
    ports.signing = std::make_unique<NullSigningInfo>();
    ports.diskUsage = std::make_unique<NullDiskUsage>();
    ports.recycler = std::make_unique<NullRecycler>();
    return ports;
}

} // namespace quillmar

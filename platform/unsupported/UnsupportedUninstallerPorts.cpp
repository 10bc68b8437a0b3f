#include "core/uninstaller/SystemUninstallerPorts.h"
#include "platform/unsupported/UnsupportedDiskUsage.h"
#include "platform/unsupported/UnsupportedRecycler.h"
#include "platform/unsupported/UnsupportedSigningInfo.h"

namespace quillmar {

SystemUninstallerPorts makeSystemUninstallerPorts()
{
    return { std::make_unique<UnsupportedSigningInfo>(), std::make_unique<UnsupportedDiskUsage>(),
        std::make_unique<UnsupportedRecycler>() };
}

} // namespace quillmar

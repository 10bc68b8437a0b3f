#include "core/shell/SystemShellPorts.h"
#include "platform/null/NullShellPorts.h"

namespace quillmar {

SystemShellPorts makeSystemShellPorts()
{
    return { std::make_unique<NullSleepInhibitor>(), std::make_unique<NullLoginItem>() };
}

} // namespace quillmar

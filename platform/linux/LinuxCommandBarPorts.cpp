#include "core/commandbar/SystemCommandBarPorts.h"
#include "platform/linux/LinuxRandomSource.h"

namespace quillmar {

SystemCommandBarPorts makeSystemCommandBarPorts()
{
    return { std::make_unique<LinuxRandomSource>() };
}

} // namespace quillmar

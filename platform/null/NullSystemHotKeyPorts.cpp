#include "core/hotkeys/SystemHotKeyPorts.h"
#include "platform/null/NullHotKeyPorts.h"

namespace quillmar {

SystemHotKeyPorts makeSystemHotKeyPorts()
{
    return { std::make_unique<NullHotKeyRegistrar>() };
}

} // namespace quillmar

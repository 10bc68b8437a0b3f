#include "core/base/Diagnostics.h"
#include "core/hotkeys/SystemHotKeyPorts.h"
#include "platform/linux/X11HotKeyRegistrar.h"
#include "platform/null/NullHotKeyPorts.h"

namespace quillmar {

SystemHotKeyPorts makeSystemHotKeyPorts()
{
    // Key grabs on the X server; elsewhere (Wayland, no display) nothing is registered, and the refusal's
    // sentence is what X11HotKeyRegistrar::create gives to a front end that shows it.
    auto registrar = X11HotKeyRegistrar::create();
    if (!registrar) {
        diagnostic("hotkeys: {} ({})", registrar.error().message, registrar.error().context);
        return { std::make_unique<NullHotKeyRegistrar>() };
    }
    return { std::move(registrar).value() };
}

} // namespace quillmar

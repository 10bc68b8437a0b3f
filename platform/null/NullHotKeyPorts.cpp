#include "platform/null/NullHotKeyPorts.h"

namespace quillmar {

std::optional<HotKeyRef> NullHotKeyRegistrar::registerHotKey(std::uint32_t, std::uint32_t, HotKeyID)
{
    return std::nullopt;
}

void NullHotKeyRegistrar::unregisterHotKey(HotKeyRef)
{
    // Nothing was ever registered, so there is nothing to release.
}

void NullHotKeyRegistrar::setPressedHandler(std::function<void(HotKeyID)>)
{
    // Without registrations there are no presses to report.
}

} // namespace quillmar

#include "platform/unsupported/UnsupportedHotKeyRegistrar.h"

namespace quillmar {

std::optional<HotKeyRef> UnsupportedHotKeyRegistrar::registerHotKey(std::uint32_t, std::uint32_t, HotKeyID)
{
    return std::nullopt;
}

void UnsupportedHotKeyRegistrar::unregisterHotKey(HotKeyRef)
{
    // Nothing was ever registered, so there is nothing to release.
}

void UnsupportedHotKeyRegistrar::setPressedHandler(std::function<void(HotKeyID)>)
{
    // Without registrations there are no presses to report.
}

} // namespace quillmar

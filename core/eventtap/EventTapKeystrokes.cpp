#include "core/eventtap/EventTapKeystrokes.h"

namespace quillmar {

bool EventTapKeystrokes::isAccessibilityTrusted()
{
    return m_tap.refreshTrust();
}

bool EventTapKeystrokes::postKey(std::uint32_t keyCode, std::uint64_t flags)
{
    return m_tap.postKey(keyCode, flags);
}

} // namespace quillmar

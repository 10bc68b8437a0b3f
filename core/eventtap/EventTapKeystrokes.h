#pragma once

#include "core/desktop/Keystrokes.h"
#include "core/eventtap/EventTap.h"

namespace quillmar {

// Keystrokes through the shared event tap: marked as the application's own, so its filters let them pass.
class EventTapKeystrokes final : public Keystrokes {
public:
    explicit EventTapKeystrokes(EventTap& tap) : m_tap(tap) { }

    bool isAccessibilityTrusted() override;
    bool postKey(std::uint32_t keyCode, std::uint64_t flags) override;

private:
    EventTap& m_tap;
};

} // namespace quillmar

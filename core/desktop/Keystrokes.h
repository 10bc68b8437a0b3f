#pragma once

#include <cstdint>

#include "core/desktop/KeyCodes.h"

namespace quillmar {

// Synthetic key presses into the front application. Main thread only.
class Keystrokes {
public:
    virtual ~Keystrokes() = default;

    // Whether the user lets this application post input events (Accessibility), read now.
    virtual bool isAccessibilityTrusted() = 0;

    // Posts a press and release of `keyCode` with modifier `flags` (EventFlags bits); false when the
    // system did not take it.
    virtual bool postKey(std::uint32_t keyCode, std::uint64_t flags) = 0;

    // Posts the system's paste shortcut: Command-V here; a desktop whose editing shortcuts use Control
    // posts Control-V instead.
    virtual bool postPaste() { return postKey(KeyCode::v, EventFlags::command); }
};

} // namespace quillmar

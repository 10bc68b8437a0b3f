#pragma once

#include <string>

#include "core/desktop/InputEvent.h"

namespace quillmar {

// What a key press types with the current keyboard layout. Main thread only.
class KeyboardLayout {
public:
    virtual ~KeyboardLayout() = default;

    // The characters (UTF-8) that the key-down `event` produces with its modifiers, dead keys taken into
    // account; empty when it produces none.
    virtual std::string characters(const InputEvent& event) = 0;
};

} // namespace quillmar

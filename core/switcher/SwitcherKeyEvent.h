#pragma once

#include <cstdint>
#include <string>

namespace quillmar {

// What the switcher does with an event it was shown: let it go on, or keep it from the other applications.
enum class TapVerdict { pass, swallow };

// A keyboard event as the switcher reads it.
struct SwitcherKeyEvent {
    std::uint32_t type = 0;    // EventType::keyDown, keyUp or flagsChanged
    std::uint32_t keyCode = 0; // virtual key code
    std::uint64_t flags = 0;   // EventFlags bits held
    bool isAutorepeat = false; // a key-down the system repeats because the key is held
    // What a key-down types with Shift alone among the modifiers (UTF-8): Option-W still reads "w".
    std::string characters;
};

} // namespace quillmar

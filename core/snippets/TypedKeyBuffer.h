#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/desktop/KeyCodes.h"

namespace quillmar {

// The characters typed lately, for trigger matching. Characters are code points.
class TypedKeyBuffer final {
public:
    static constexpr std::size_t capacity = 64;
    static constexpr std::uint32_t deleteKeyCode = KeyCode::deleteBackward;
    // Keys after which the caret may be somewhere else, or the text field left: Return, Enter, Tab,
    // Escape, the four arrows, Home, End, Page Up, Page Down and Forward Delete.
    static constexpr std::array<std::uint32_t, 13> resetKeyCodes {
        KeyCode::returnKey, KeyCode::keypadEnter, KeyCode::tab, KeyCode::escape, KeyCode::leftArrow,
        KeyCode::rightArrow, KeyCode::downArrow, KeyCode::upArrow, KeyCode::home, KeyCode::end, KeyCode::pageUp,
        KeyCode::pageDown, KeyCode::deleteForward,
    };

    enum class Change { none, reset, removed, appended };

    // A key-down. With Command or Control held, or a reset key, the buffer empties; Delete removes the last
    // character (nothing on an empty buffer); otherwise `characters` (UTF-8, what the key produced; control
    // characters are ignored) are appended, and the buffer keeps its last `capacity` characters.
    Change keyDown(std::uint32_t keyCode, std::uint64_t flags, std::string_view characters);

    void reset() { m_text.clear(); }

    const std::u32string& text() const { return m_text; }
    std::string utf8() const;

private:
    std::u32string m_text;
};

} // namespace quillmar

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace quillmar {

// A key-down as the platform reports it, reduced to what a shortcut needs.
struct KeyPress {
    std::uint32_t keyCode = 0; // the layout-independent virtual key code
    std::uint32_t modifiers = 0; // Carbon modifier mask (see Shortcut)
    std::string characters; // UTF-8 text the key typed without modifiers
};

// One key combination: a virtual key code, the Carbon modifier mask and the text shown for the key.
struct Shortcut {
    // Carbon event-manager modifier bits; no other bit is used.
    static constexpr std::uint32_t commandMask = 256;
    static constexpr std::uint32_t shiftMask = 512;
    static constexpr std::uint32_t optionMask = 2048;
    static constexpr std::uint32_t controlMask = 4096;
    static constexpr std::uint32_t modifierMask = commandMask | shiftMask | optionMask | controlMask;

    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = 0;
    std::string keyLabel; // "V", "Space", "←"

    bool operator==(const Shortcut&) const = default;

    // For people: the symbols of the set modifiers in the order ⌃⌥⇧⌘, then the key label, no separators.
    std::string display() const;

    // The label of a key: a named key ("Space", "↩", "F5") when the code is in the special or function key
    // tables, else `characters` upper-cased. Characters that cannot be shown (control characters, the
    // private-use range the system uses for unnamed function keys, invalid UTF-8) are left out, so the
    // label may come out empty.
    static std::string label(std::uint32_t keyCode, std::string_view characters);

    // None for a bare modifier key (codes 54-63) or a key with no label. Modifier bits other than the
    // four above (caps lock, the function key) are dropped.
    static std::optional<Shortcut> fromEvent(const KeyPress& press);

    // Exactly the keys "keyCode", "modifiers" and "keyLabel".
    nlohmann::json toJson() const;

    // None, never an exception, for anything `fromEvent` could not have produced: not an object, a missing
    // key, a wrong type, a number outside 32 bits or a negative one, a modifier bit other than the four,
    // an empty label or one that is not valid UTF-8.
    static std::optional<Shortcut> fromJson(const nlohmann::json& json);
};

} // namespace quillmar

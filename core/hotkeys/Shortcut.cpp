#include "core/hotkeys/Shortcut.h"

#include <array>
#include <limits>
#include <span>

#include "core/base/Utf8.h"

namespace quillmar {

namespace {

struct NamedKey {
    std::uint32_t keyCode;
    std::string_view label;
};

// Keys whose characters are invisible or misleading, shown the way menus show them.
constexpr std::array specialKeys {
    NamedKey { 49, "Space" },
    NamedKey { 36, "↩" }, // Return
    NamedKey { 48, "⇥" }, // Tab
    NamedKey { 51, "⌫" }, // Delete
    NamedKey { 53, "⎋" }, // Escape
    NamedKey { 117, "⌦" }, // forward delete
    NamedKey { 115, "↖" }, // Home
    NamedKey { 119, "↘" }, // End
    NamedKey { 116, "⇞" }, // Page Up
    NamedKey { 121, "⇟" }, // Page Down
    NamedKey { 76, "⌤" }, // keypad Enter
    NamedKey { 71, "⌧" }, // keypad Clear
    NamedKey { 123, "←" },
    NamedKey { 124, "→" },
    NamedKey { 125, "↓" },
    NamedKey { 126, "↑" },
};

// The virtual key codes of F1 to F20 are not contiguous.
constexpr std::array functionKeys {
    NamedKey { 122, "F1" }, NamedKey { 120, "F2" }, NamedKey { 99, "F3" }, NamedKey { 118, "F4" },
    NamedKey { 96, "F5" }, NamedKey { 97, "F6" }, NamedKey { 98, "F7" }, NamedKey { 100, "F8" },
    NamedKey { 101, "F9" }, NamedKey { 109, "F10" }, NamedKey { 103, "F11" }, NamedKey { 111, "F12" },
    NamedKey { 105, "F13" }, NamedKey { 107, "F14" }, NamedKey { 113, "F15" }, NamedKey { 106, "F16" },
    NamedKey { 64, "F17" }, NamedKey { 79, "F18" }, NamedKey { 80, "F19" }, NamedKey { 90, "F20" },
};

// Command, shift, caps lock, option, control, the right-hand variants and the function key.
constexpr std::uint32_t firstModifierKeyCode = 54;
constexpr std::uint32_t lastModifierKeyCode = 63;

std::optional<std::string_view> namedLabel(std::uint32_t keyCode)
{
    for (const auto& table : { std::span<const NamedKey>(specialKeys), std::span<const NamedKey>(functionKeys) }) {
        for (const auto& key : table) {
            if (key.keyCode == keyCode)
                return key.label;
        }
    }
    return std::nullopt;
}

bool isShowable(char32_t codePoint)
{
    bool isControl = codePoint < 0x20 || (codePoint >= 0x7F && codePoint <= 0x9F);
    bool isFunctionKeyText = codePoint >= 0xF700 && codePoint <= 0xF8FF;
    return !isControl && !isFunctionKeyText;
}

std::optional<std::uint32_t> uint32Field(const nlohmann::json& object, const char* key)
{
    auto found = object.find(key);
    if (found == object.end() || !found->is_number_integer())
        return std::nullopt;
    // Numbers built in code are signed even when they are not negative; parsed ones are unsigned.
    if (!found->is_number_unsigned() && found->get<std::int64_t>() < 0)
        return std::nullopt;
    auto value = found->get<std::uint64_t>();
    if (value > std::numeric_limits<std::uint32_t>::max())
        return std::nullopt;
    return static_cast<std::uint32_t>(value);
}

} // namespace

std::string Shortcut::display() const
{
    std::string text;
    if (modifiers & controlMask)
        text += "⌃";
    if (modifiers & optionMask)
        text += "⌥";
    if (modifiers & shiftMask)
        text += "⇧";
    if (modifiers & commandMask)
        text += "⌘";
    return text + keyLabel;
}

std::string Shortcut::label(std::uint32_t keyCode, std::string_view characters)
{
    if (auto named = namedLabel(keyCode))
        return std::string(*named);
    std::u32string shown;
    for (char32_t codePoint : decodeUtf8(characters)) {
        if (isShowable(codePoint))
            shown.push_back(upperCase(codePoint));
    }
    return encodeUtf8(shown);
}

std::optional<Shortcut> Shortcut::fromEvent(const KeyPress& press)
{
    if (press.keyCode >= firstModifierKeyCode && press.keyCode <= lastModifierKeyCode)
        return std::nullopt;
    auto keyLabel = label(press.keyCode, press.characters);
    if (keyLabel.empty())
        return std::nullopt;
    return Shortcut { press.keyCode, press.modifiers & modifierMask, std::move(keyLabel) };
}

nlohmann::json Shortcut::toJson() const
{
    return nlohmann::json { { "keyCode", keyCode }, { "modifiers", modifiers }, { "keyLabel", keyLabel } };
}

std::optional<Shortcut> Shortcut::fromJson(const nlohmann::json& json)
{
    if (!json.is_object())
        return std::nullopt;
    auto keyCode = uint32Field(json, "keyCode");
    auto modifiers = uint32Field(json, "modifiers");
    auto label = json.find("keyLabel");
    if (!keyCode || !modifiers || label == json.end() || !label->is_string())
        return std::nullopt;
    if ((*modifiers & ~modifierMask) != 0)
        return std::nullopt;
    const auto& text = label->get_ref<const std::string&>();
    if (text.empty() || !isValidUtf8(text))
        return std::nullopt;
    return Shortcut { *keyCode, *modifiers, text };
}

} // namespace quillmar

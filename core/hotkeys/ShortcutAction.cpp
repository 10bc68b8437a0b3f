#include "core/hotkeys/ShortcutAction.h"

#include <array>
#include <cassert>

namespace quillmar {

namespace {

// A default binding as constant data; `Shortcut` itself owns a string and cannot live in a constexpr table.
struct DefaultKey {
    std::uint32_t keyCode;
    std::uint32_t modifiers;
    std::string_view keyLabel;
};

struct ActionInfo {
    std::string_view rawValue;
    std::string_view title;
    std::optional<FeatureID> feature;
    std::optional<DefaultKey> defaultKey;
};

// Modifier masks: 6144 is control+option, 6656 control+option+shift, 6400 control+option+command,
// 2048 option alone, 4352 control+command. clipboardPicker and plainPaste share V and differ by shift;
// commandBar takes option+Space while togglePanel takes control+option+Space. Both pairs are deliberate.
constexpr std::array<ActionInfo, shortcutActionCount> actionTable { {
    { "togglePanel", "Open Quillmar", std::nullopt, DefaultKey { 49, 6144, "Space" } },
    { "clipboardPicker", "Show clipboard history", FeatureID::clipboard, DefaultKey { 9, 6144, "V" } },
    { "plainPaste", "Paste as plain text", FeatureID::plainPaste, DefaultKey { 9, 6656, "V" } },
    { "colorPicker", "Pick a color", FeatureID::colorPicker, DefaultKey { 35, 6144, "P" } },
    { "textGrab", "Copy text from screen", FeatureID::textGrab, DefaultKey { 31, 6144, "O" } },
    { "keepAwake", "Toggle keep awake", FeatureID::keepAwake, std::nullopt },
    { "leftHalf", "Left half", FeatureID::windowLayout, DefaultKey { 123, 6144, "←" } },
    { "rightHalf", "Right half", FeatureID::windowLayout, DefaultKey { 124, 6144, "→" } },
    { "topHalf", "Top half", FeatureID::windowLayout, DefaultKey { 126, 6144, "↑" } },
    { "bottomHalf", "Bottom half", FeatureID::windowLayout, DefaultKey { 125, 6144, "↓" } },
    { "topLeft", "Top left", FeatureID::windowLayout, DefaultKey { 32, 6144, "U" } },
    { "topRight", "Top right", FeatureID::windowLayout, DefaultKey { 34, 6144, "I" } },
    { "bottomLeft", "Bottom left", FeatureID::windowLayout, DefaultKey { 38, 6144, "J" } },
    { "bottomRight", "Bottom right", FeatureID::windowLayout, DefaultKey { 40, 6144, "K" } },
    { "firstThird", "First third", FeatureID::windowLayout, DefaultKey { 2, 6144, "D" } },
    { "centerThird", "Center third", FeatureID::windowLayout, DefaultKey { 3, 6144, "F" } },
    { "lastThird", "Last third", FeatureID::windowLayout, DefaultKey { 5, 6144, "G" } },
    { "firstTwoThirds", "First two thirds", FeatureID::windowLayout, DefaultKey { 14, 6144, "E" } },
    { "lastTwoThirds", "Last two thirds", FeatureID::windowLayout, DefaultKey { 17, 6144, "T" } },
    { "maximize", "Maximize", FeatureID::windowLayout, DefaultKey { 36, 6144, "↩" } },
    { "almostMaximize", "Almost maximize", FeatureID::windowLayout, std::nullopt },
    { "center", "Center", FeatureID::windowLayout, DefaultKey { 8, 6144, "C" } },
    { "restore", "Restore", FeatureID::windowLayout, DefaultKey { 51, 6144, "⌫" } },
    { "nextDisplay", "Next display", FeatureID::windowLayout, DefaultKey { 124, 6400, "→" } },
    { "previousDisplay", "Previous display", FeatureID::windowLayout, DefaultKey { 123, 6400, "←" } },
    { "captureScreen", "Take a screenshot", FeatureID::screenshot, DefaultKey { 1, 6144, "S" } },
    { "recordScreen", "Record the screen", FeatureID::screenRecording, DefaultKey { 15, 6144, "R" } },
    { "commandBar", "Open the command bar", FeatureID::commandBar, DefaultKey { 49, 2048, "Space" } },
    { "quickPanel", "Open the quick panel", FeatureID::quickPanel, DefaultKey { 9, 4352, "V" } },
    { "radialMenu", "Open the radial menu", FeatureID::radialMenu, std::nullopt },
    { "micMute", "Mute the microphone", FeatureID::micTools, DefaultKey { 46, 6144, "M" } },
    { "switchOutput", "Switch sound output", FeatureID::outputSwitching, std::nullopt },
    { "cameraPreview", "Show camera preview", FeatureID::cameraPreview, std::nullopt },
    { "shelf", "Show the shelf", FeatureID::shelf, std::nullopt },
    { "cleaningMode", "Start cleaning mode", FeatureID::cleaningMode, std::nullopt },
} };

constexpr std::string_view referencePrefix = "shortcut.";

constexpr std::array<ShortcutAction, shortcutActionCount> makeAllActions()
{
    std::array<ShortcutAction, shortcutActionCount> actions {};
    for (std::size_t index = 0; index < shortcutActionCount; ++index)
        actions[index] = static_cast<ShortcutAction>(index);
    return actions;
}

constexpr auto allActions = makeAllActions();

static_assert(static_cast<std::size_t>(ShortcutAction::cleaningMode) + 1 == shortcutActionCount);

const ActionInfo& row(ShortcutAction action)
{
    auto index = static_cast<std::size_t>(action);
    assert(index < shortcutActionCount);
    return actionTable[index];
}

} // namespace

std::span<const ShortcutAction, shortcutActionCount> allShortcutActions()
{
    return allActions;
}

std::string_view rawValue(ShortcutAction action)
{
    return row(action).rawValue;
}

std::string_view title(ShortcutAction action)
{
    return row(action).title;
}

std::optional<FeatureID> feature(ShortcutAction action)
{
    return row(action).feature;
}

std::optional<Shortcut> defaultShortcut(ShortcutAction action)
{
    const auto& key = row(action).defaultKey;
    if (!key)
        return std::nullopt;
    return Shortcut { key->keyCode, key->modifiers, std::string(key->keyLabel) };
}

std::optional<ShortcutAction> shortcutActionFromRawValue(std::string_view raw)
{
    for (auto action : allActions) {
        if (row(action).rawValue == raw)
            return action;
    }
    return std::nullopt;
}

std::vector<ShortcutAction> shortcutActions(FeatureID owner)
{
    std::vector<ShortcutAction> owned;
    for (auto action : allActions) {
        if (row(action).feature == owner)
            owned.push_back(action);
    }
    return owned;
}

std::string reference(ShortcutAction action)
{
    return std::string(referencePrefix) + std::string(rawValue(action));
}

std::optional<ShortcutAction> shortcutActionFromReference(std::string_view text)
{
    if (!text.starts_with(referencePrefix))
        return std::nullopt;
    return shortcutActionFromRawValue(text.substr(referencePrefix.size()));
}

} // namespace quillmar

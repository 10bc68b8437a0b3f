#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/hotkeys/Shortcut.h"
#include "core/shell/FeatureID.h"

namespace quillmar {

// Every global shortcut action, in declaration order: the order of registration (hot-key numbers),
// of conflict lookups and of the settings list. The raw value is the action's persistent identifier.
enum class ShortcutAction : unsigned char {
    togglePanel,
    clipboardPicker,
    plainPaste,
    colorPicker,
    textGrab,
    keepAwake,
    leftHalf,
    rightHalf,
    topHalf,
    bottomHalf,
    topLeft,
    topRight,
    bottomLeft,
    bottomRight,
    firstThird,
    centerThird,
    lastThird,
    firstTwoThirds,
    lastTwoThirds,
    maximize,
    almostMaximize,
    center,
    restore,
    nextDisplay,
    previousDisplay,
    captureScreen,
    recordScreen,
    commandBar,
    quickPanel,
    radialMenu,
    micMute,
    switchOutput,
    cameraPreview,
    shelf,
    cleaningMode,
};

inline constexpr std::size_t shortcutActionCount = 35;

std::span<const ShortcutAction, shortcutActionCount> allShortcutActions();

std::string_view rawValue(ShortcutAction action);
std::string_view title(ShortcutAction action);

// The feature whose switch decides whether the action is registered; none for an action that is always
// available (togglePanel).
std::optional<FeatureID> feature(ShortcutAction action);

// None for an action that ships unbound.
std::optional<Shortcut> defaultShortcut(ShortcutAction action);

// None for a raw value that names no action: such entries are dropped wherever bindings are read.
std::optional<ShortcutAction> shortcutActionFromRawValue(std::string_view raw);

// The actions a feature owns, in declaration order; empty for a feature without shortcuts.
std::vector<ShortcutAction> shortcutActions(FeatureID owner);

// How other parts of the system name an action to run: "shortcut." followed by the raw value
// ("shortcut.clipboardPicker").
std::string reference(ShortcutAction action);

// The action a reference names; none without the "shortcut." prefix or with an unknown raw value.
std::optional<ShortcutAction> shortcutActionFromReference(std::string_view reference);

} // namespace quillmar

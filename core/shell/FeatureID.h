#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "core/shell/FeatureCategory.h"

namespace quillmar {

// Every feature switch, in declaration order: the order of every listing and of "features.known".
// The raw value is a feature's persistent identifier everywhere.
enum class FeatureID : unsigned char {
    monitor,
    keepAwake,
    quickToggles,
    sound,
    timer,
    windowLayout,
    quitApps,
    clipboard,
    cleanLinks,
    plainPaste,
    colorPicker,
    textGrab,
    scratchpad,
    ports,
    cleaner,
    uninstaller,
    homebrew,
    snippets,
    quitProtection,
    mouseScroll,
    island,
    cameraPreview,
    screenshot,
    screenRecording,
    mediaTools,
    commandBar,
    quickPanel,
    radialMenu,
    volumeMixer,
    micTools,
    outputSwitching,
    musicBlocker,
    appSwitcher,
    dockPreview,
    dockClicks,
    maximizeButton,
    dragSnap,
    fixedSpaces,
    quitOnClose,
    closeProtection,
    smoothScroll,
    linearScroll,
    pointerAcceleration,
    focusFollowsMouse,
    sidewaysScroll,
    sideButtons,
    mouseButtons,
    middleClick,
    clickFilter,
    keyDebounce,
    superKey,
    displays,
    extraBrightness,
    bluetoothSleep,
    fanControl,
    speedTest,
    shelf,
    finderShortcuts,
    diskImageInstaller,
    appUpdates,
    messagingDownloads,
    cleaningMode,
    aiAgents,
};

inline constexpr std::size_t featureCount = 63;

struct FeatureInfo {
    std::string_view rawValue;
    std::string_view title;
    FeatureCategory category;
    bool onByDefault;
    std::string_view symbol; // the icon's symbol name
    std::string_view summary; // one sentence for the settings page
};

// All features in declaration order.
std::span<const FeatureID, featureCount> allFeatures();

const FeatureInfo& info(FeatureID feature);
inline std::string_view rawValue(FeatureID feature) { return info(feature).rawValue; }
inline std::string_view title(FeatureID feature) { return info(feature).title; }
inline FeatureCategory category(FeatureID feature) { return info(feature).category; }

// None for a raw value that names no feature: such values are dropped wherever lists are read.
std::optional<FeatureID> featureFromRawValue(std::string_view raw);

} // namespace quillmar
